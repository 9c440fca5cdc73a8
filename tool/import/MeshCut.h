#ifndef ORMELLE_TOOL_IMPORT_MESHCUT_H
#define ORMELLE_TOOL_IMPORT_MESHCUT_H

#include "MeshBuilder.h"

namespace importer {

/// Cuts a volume open towards the viewer of the first view, if what is seen of its outside has few of the colours: adds
/// a set with the place of each cell, and shows the cells behind the middle. Notes that in `data`.
void cutOpen(BuiltMesh& mesh, Dataset& data);

}  // namespace importer

#endif
