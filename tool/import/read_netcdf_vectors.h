#ifndef ORMELLE_TOOL_IMPORT_READ_NETCDF_VECTORS_H
#define ORMELLE_TOOL_IMPORT_READ_NETCDF_VECTORS_H

#include <vector>

#include "read_netcdf_file.h"

namespace importer {

/// Adds a set of vectors for each two or three variables of a grid that name themselves as components of one: "u" and
/// "v", "eastward_wind" and "northward_wind". `variables` are those of the scalar sets, in their order.
void addNetcdfVectors(Piece& piece, const std::vector<const NetcdfVariable*>& variables);

}  // namespace importer

#endif
