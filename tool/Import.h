#ifndef ORMELLE_TOOL_IMPORT_H
#define ORMELLE_TOOL_IMPORT_H

#include <cstdio>
#include <string>

#include "Commands.h"
#include "SceneFile.h"

namespace tool {

/// Whether a file is to be read as a scene: by its header, or its extension; a file that can't be looked into counts as
/// one, too. Others are for importScene().
bool isSceneFile(const std::string& file);

/// What is printed of a file of another program: what was read and what could not be kept, on the standard output, or
/// the latter alone, on the error output.
enum class ImportReport { All, Notes };

/// Has a file of another program made into a scene, which goes to `out`. That is done by a program of its own,
/// ormelle_import, with limits of memory and time: however it ends, this one goes on. Throws Failure.
void importScene(const std::string& file, std::FILE* out, bool isBinary, const ImportLimits& limits,
                 ImportReport report);

/// Reads a scene, or the one that a file of another program makes. Throws Failure.
Scene readAnyScene(const std::string& file, const ImportLimits& limits = {}, ImportReport report = ImportReport::Notes);

}  // namespace tool

#endif
