#ifndef ORMELLE_TOOL_IMPORT_H
#define ORMELLE_TOOL_IMPORT_H

#include <cstdio>
#include <string>

#include "Commands.h"

namespace tool {

/// Whether a file is to be read as a scene: by its header, or its extension; a file that can't be looked into counts as
/// one, too. Others are for importScene().
bool isSceneFile(const std::string& file);

/// Has a file of another program made into a scene, which goes to `out`, and prints what was read and what could not be
/// kept. That is done by a program of its own, ormelle_import, with limits of memory and time: however it ends, this
/// one goes on. Throws Failure.
void importScene(const std::string& file, std::FILE* out, bool isBinary, const ImportLimits& limits);

}  // namespace tool

#endif
