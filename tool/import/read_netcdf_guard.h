#ifndef ORMELLE_TOOL_IMPORT_READ_NETCDF_GUARD_H
#define ORMELLE_TOOL_IMPORT_READ_NETCDF_GUARD_H

#include <string>

namespace importer {

/// Throws Failure if the header of a classic netCDF file breaks off, or has counts or names longer than it can hold:
/// the library would take what isn't there for zeros, and copy names past the end of their room.
void refuseBrokenNetcdf(const std::string& file);

}  // namespace importer

#endif
