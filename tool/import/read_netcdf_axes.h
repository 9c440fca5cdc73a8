#ifndef ORMELLE_TOOL_IMPORT_READ_NETCDF_AXES_H
#define ORMELLE_TOOL_IMPORT_READ_NETCDF_AXES_H

#include <optional>
#include <string>
#include <vector>

#include "read_netcdf_file.h"

namespace importer {

enum class NetcdfRole { X, Y, Z, TIME, OTHER };

/// What a dimension means.
struct NetcdfAxis {
  NetcdfRole role = NetcdfRole::OTHER;
  std::vector<double> values;  ///< of the coordinate variable; empty if there is none
  const NetcdfVariable* variable = nullptr;
  bool isDown = false;  ///< values count downwards
};

/// What a dimension or a coordinate means, by the conventions for its attributes, or else by its name. `variable` may
/// be null.
NetcdfRole netcdfRoleOf(const NetcdfFile& file, const std::string& name, const NetcdfVariable* variable);

/// An axis for each dimension. Marks the variables that are coordinates or help with them.
std::vector<NetcdfAxis> takeNetcdfAxes(NetcdfFile& file);

/// A time of an axis as days since 1970-01-01; none for other calendars than the usual one, and other words.
std::optional<double> netcdfDayOf(const NetcdfFile& file, const NetcdfAxis& axis, double time);

/// A value of an axis with its unit; times are dates where their calendar is the usual one.
std::string netcdfValueText(const NetcdfFile& file, const NetcdfAxis& axis, std::size_t step);

}  // namespace importer

#endif
