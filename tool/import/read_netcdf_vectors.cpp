#include "read_netcdf_vectors.h"

#include <algorithm>
#include <array>
#include <string>

namespace importer {

namespace {

using Variables = std::vector<const NetcdfVariable*>;

// The names of the second and third component of a vector whose first has this name; empty if it is no first one.
std::array<std::string, 2> partnersOf(const std::string& name, bool isStandard) {
  static constexpr std::array<std::array<const char*, 3>, 3> kStandard{
      {{"eastward_", "northward_", "upward_"}, {"x_", "y_", "z_"}, {"_x_", "_y_", "_z_"}}};
  if (isStandard) {
    for (const auto& words : kStandard) {
      const std::size_t at = name.find(words[0]);
      if (at == std::string::npos || (words[0][0] != '_' && at != 0 && name[at - 1] != '_')) continue;
      std::array<std::string, 2> result{name, name};
      for (std::size_t i = 0; i < 2; ++i) result[i].replace(at, std::char_traits<char>::length(words[0]), words[i + 1]);
      return result;
    }
    return {};
  }
  // The letter u first, or alone between underscores.
  for (std::size_t at = 0; at < name.size(); ++at) {
    if (name[at] != 'u' && name[at] != 'U') continue;
    const bool isLast = at + 1 == name.size() || name[at + 1] == '_' || (name[at + 1] >= '0' && name[at + 1] <= '9');
    if (at != 0 && !(name[at - 1] == '_' && isLast)) continue;
    std::array<std::string, 2> result{name, name};
    result[0][at] = static_cast<char>(name[at] + 1);
    result[1][at] = static_cast<char>(name[at] + 2);
    return result;
  }
  return {};
}

void addVector(Piece& piece, std::size_t first, int second, int third,
               const std::vector<const NetcdfVariable*>& variables, bool isStandard) {
  const NetcdfVariable& variable = *variables[first];
  const NetcdfVariable& other = *variables[static_cast<std::size_t>(second)];
  std::string name = variable.name + ", " + other.name;
  if (third >= 0) name += ", " + variables[static_cast<std::size_t>(third)]->name;
  // What the standard names have in common: "eastward_wind" is wind.
  const std::size_t cut = isStandard ? variable.standardName.find("eastward_") : std::string::npos;
  if (cut == 0) {
    name = variable.standardName.substr(9);
    std::replace(name.begin(), name.end(), '_', ' ');
  }
  if (!variable.units.empty()) name += " (" + variable.units + ")";
  VectorSet set{name, Binding::NODE, {}};
  const std::vector<float>& x = piece.scalars[first].values;
  const std::vector<float>& y = piece.scalars[static_cast<std::size_t>(second)].values;
  set.values.reserve(x.size());
  for (std::size_t i = 0; i < x.size(); ++i)
    set.values.push_back({x[i], y[i], third < 0 ? 0.0F : piece.scalars[static_cast<std::size_t>(third)].values[i]});
  piece.vectors.push_back(std::move(set));
}

}  // namespace

void addNetcdfVectors(Piece& piece, const std::vector<const NetcdfVariable*>& variables) {
  if (piece.kind == PieceKind::SERIES) return;
  const auto find = [&](const std::string& name, bool isStandard, const NetcdfVariable& like) {
    for (std::size_t i = 0; i < variables.size(); ++i) {
      const NetcdfVariable& other = *variables[i];
      if (!name.empty() && (isStandard ? other.standardName : other.name) == name && other.units == like.units)
        return static_cast<int>(i);
    }
    return -1;
  };
  for (std::size_t i = 0; i < variables.size(); ++i) {
    const NetcdfVariable& first = *variables[i];
    for (const bool isStandard : {true, false}) {
      const std::array<std::string, 2> names = partnersOf(isStandard ? first.standardName : first.name, isStandard);
      const int second = find(names[0], isStandard, first), third = find(names[1], isStandard, first);
      if (second < 0) continue;
      addVector(piece, i, second, third, variables, isStandard);
      break;
    }
  }
}

}  // namespace importer
