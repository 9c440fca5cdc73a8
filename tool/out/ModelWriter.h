#ifndef ORMELLE_TOOL_OUT_MODELWRITER_H
#define ORMELLE_TOOL_OUT_MODELWRITER_H

#include <cstdio>
#include <string>

#include "out/SceneModel.h"

namespace tool {

/// Writes a model as glTF 2.0: with `isBinary` as one binary file, else as text that holds its data. Returns what went
/// wrong, empty if nothing did; a failure of the stream shows in its error flag.
std::string writeGltf(const SceneModel& model, bool isBinary, std::FILE* stream);

/// Writes a model in VRML 97, texts as such. Returns the same.
std::string writeVrml(const SceneModel& model, std::FILE* stream);

}  // namespace tool

#endif
