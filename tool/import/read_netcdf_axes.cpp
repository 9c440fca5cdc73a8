// What the dimensions of NetCDF files mean.

#include "read_netcdf_axes.h"

#include <date/date.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

#include "Fields.h"

namespace importer {

namespace {

// Days since 1970-01-01 of a time counted as "hours since 1990-01-01 00:00"; none for other calendars and words.
std::optional<double> dayOf(double time, const std::string& units, const std::string& calendar) {
  if (!isOneOf(lowered(calendar), {"", "standard", "gregorian", "proleptic_gregorian"}) || !std::isfinite(time))
    return {};
  std::array<char, 32> word{};
  int year = 0;
  unsigned month = 1, day = 1, hour = 0, minute = 0;
  if (std::sscanf(units.c_str(), "%31s since %d-%u-%u%*1[ T]%u:%u", word.data(), &year, &month, &day, &hour, &minute) <
      4)
    return {};
  const std::string unit = lowered(word.data());
  const double length = unit.starts_with("day") || unit == "d"                    ? 1.0
                        : unit.starts_with("hour") || unit == "h" || unit == "hr" ? 1.0 / 24
                        : unit.starts_with("min")                                 ? 1.0 / 1440
                        : unit.starts_with("sec") || unit == "s"                  ? 1.0 / 86400
                                                                                  : 0.0;
  const date::year_month_day start{date::year(year), date::month(month), date::day(day)};
  if (length == 0 || !start.ok()) return {};
  const double days = date::sys_days(start).time_since_epoch().count() + (hour + minute / 60.0) / 24 + time * length;
  return std::abs(days) < 3e6 ? std::optional(days) : std::nullopt;
}

// Marks the variables that an attribute names.
void markCoordinates(NetcdfFile& file, const std::string& words) {
  std::size_t at = 0;
  while (at < words.size()) {
    const std::size_t end = std::min(words.find(' ', at), words.size());
    for (NetcdfVariable& variable : file.variables())
      if (variable.name == words.substr(at, end - at)) variable.isCoordinate = true;
    at = end + 1;
  }
}

bool countsDown(const NetcdfFile& file, const NetcdfVariable& variable) {
  const std::string positive = lowered(file.text(variable, "positive"));
  if (!positive.empty()) return positive == "down";
  const std::string units = lowered(variable.units);
  return variable.standardName == "depth" || variable.standardName == "air_pressure" ||
         lowered(variable.name).starts_with("depth") ||
         isOneOf(units, {"hpa", "pa", "mb", "mbar", "millibar", "millibars", "dbar", "decibar"});
}

}  // namespace

NetcdfRole netcdfRoleOf(const NetcdfFile& file, const std::string& name, const NetcdfVariable* variable) {
  if (variable) {
    const std::string axis = lowered(file.text(*variable, "axis"));
    if (axis == "x") return NetcdfRole::X;
    if (axis == "y") return NetcdfRole::Y;
    if (axis == "z") return NetcdfRole::Z;
    if (axis == "t") return NetcdfRole::TIME;
    const std::string units = lowered(variable->units), standard = variable->standardName;
    if (units.find(" since ") != std::string::npos || standard == "time") return NetcdfRole::TIME;
    if (isOneOf(units, {"degrees_east", "degree_east", "degrees_e", "degree_e", "degreese", "degreee"}))
      return NetcdfRole::X;
    if (isOneOf(units, {"degrees_north", "degree_north", "degrees_n", "degree_n", "degreesn", "degreen"}))
      return NetcdfRole::Y;
    if (isOneOf(standard, {"longitude", "projection_x_coordinate", "grid_longitude"})) return NetcdfRole::X;
    if (isOneOf(standard, {"latitude", "projection_y_coordinate", "grid_latitude"})) return NetcdfRole::Y;
    if (isOneOf(standard, {"depth", "height", "altitude", "air_pressure", "model_level_number"}) ||
        !file.text(*variable, "positive").empty())
      return NetcdfRole::Z;
  }
  const std::string word = lowered(name);
  if (word.starts_with("lon") || isOneOf(word, {"x", "xc", "easting", "i", "ni", "nx", "rlon", "nav_lon"}))
    return NetcdfRole::X;
  if (word.starts_with("lat") || isOneOf(word, {"y", "yc", "northing", "j", "nj", "ny", "rlat", "nav_lat"}))
    return NetcdfRole::Y;
  if (word.starts_with("lev") || word.starts_with("depth") || word.starts_with("plev") ||
      isOneOf(word, {"z", "zc", "height", "alt", "altitude", "pressure", "k", "nz", "isobaric", "sigma"}))
    return NetcdfRole::Z;
  if (word.starts_with("time") || isOneOf(word, {"t", "date"})) return NetcdfRole::TIME;
  return NetcdfRole::OTHER;
}

std::vector<NetcdfAxis> takeNetcdfAxes(NetcdfFile& file) {
  const std::vector<NetcdfDimension>& dimensions = file.dimensions();
  std::vector<NetcdfAxis> axes;
  for (std::size_t i = 0; i < dimensions.size(); ++i) {
    NetcdfAxis axis;
    for (NetcdfVariable& variable : file.variables()) {
      if (variable.name != dimensions[i].name || variable.dimensions != std::vector<int>{static_cast<int>(i)}) continue;
      variable.isCoordinate = true;
      axis.variable = &variable;
    }
    if (axis.variable && axis.variable->isNumber()) axis.values = file.numbersOf(*axis.variable);
    axis.role = netcdfRoleOf(file, dimensions[i].name, axis.variable);
    axis.isDown = axis.role == NetcdfRole::Z && axis.variable && countsDown(file, *axis.variable);
    axes.push_back(std::move(axis));
  }
  // Bounds of coordinates, and coordinates that others name.
  for (const NetcdfVariable& variable : file.variables())
    for (const char* attribute : {"bounds", "climatology", "grid_mapping", "coordinates"})
      markCoordinates(file, file.text(variable, attribute));
  return axes;
}

std::optional<double> netcdfDayOf(const NetcdfFile& file, const NetcdfAxis& axis, double time) {
  return dayOf(time, axis.variable->units, file.text(*axis.variable, "calendar"));
}

std::string netcdfValueText(const NetcdfFile& file, const NetcdfAxis& axis, std::size_t step) {
  const double value = axis.values[step];
  if (const std::optional<double> day = netcdfDayOf(file, axis, value)) return dateText(*day, *day != std::floor(*day));
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%g", value);
  return std::string(text.data()) + (axis.variable->units.empty() ? "" : " " + axis.variable->units);
}

}  // namespace importer
