#ifndef ORMELLE_TOOL_IMPORT_READ_GMSH_GUARD_H
#define ORMELLE_TOOL_IMPORT_READ_GMSH_GUARD_H

#include <string>

namespace importer {

/// Throws Failure if the results of a Gmsh file are counted or numbered as none are: the library would write them
/// beyond its arrays. What it doesn't know it leaves to the library.
void refuseBrokenGmsh(const std::string& file);

}  // namespace importer

#endif
