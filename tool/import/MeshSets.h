#ifndef ORMELLE_TOOL_IMPORT_MESHSETS_H
#define ORMELLE_TOOL_IMPORT_MESHSETS_H

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "MeshBuilder.h"

namespace importer {

inline std::size_t sizeOf(int number) { return static_cast<std::size_t>(number); }
inline int intOf(std::size_t number) { return static_cast<int>(number); }

/// The numbers that floats hold, of those added.
struct Range {
  double low = std::numeric_limits<double>::infinity(), high = -low;
  std::size_t count = 0;

  void add(double number) {
    if (!(std::abs(number) <= static_cast<double>(std::numeric_limits<float>::max()))) return;
    low = std::min(low, number);
    high = std::max(high, number);
    ++count;
  }
};

/// For each node and cell of a mesh the index of its values in the sets of the piece that it is made of.
struct Sources {
  std::vector<int> nodes, cells;

  const std::vector<int>& of(Binding binding) const { return binding == Binding::NODE ? nodes : cells; }
};

/// Adds the sets of `piece` to the mesh, and settles which is shown.
void addSets(const Piece& piece, const Sources& sources, PoMeshProperty* node, BuiltMesh& mesh, Dataset& data);

/// A name without what would break a line, and not without end.
std::string cleaned(const std::string& name);

}  // namespace importer

#endif
