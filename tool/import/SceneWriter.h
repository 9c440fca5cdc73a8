#ifndef ORMELLE_TOOL_IMPORT_SCENEWRITER_H
#define ORMELLE_TOOL_IMPORT_SCENEWRITER_H

#include <string>
#include <vector>

#include "Dataset.h"

class SoSeparator;

namespace importer {

/// A scene made from a data set: the origin, if coordinates have one, the meshes with all their sets, and what shows
/// them at once: surfaces coloured by the first set with a legend, or curves with axes.
struct ImportedScene {
  SoSeparator* root = nullptr;         ///< without a reference
  std::vector<std::string> summaries;  ///< a line for each mesh, with the names of its sets
};

/// Adds notes to `data`, which has been checked. Throws Failure if nothing of it can be shown.
ImportedScene makeScene(Dataset& data);

}  // namespace importer

#endif
