#ifndef ORMELLE_PIINDEXEDMESH_H
#define ORMELLE_PIINDEXEDMESH_H

/// @file
/// What surfaces and volumes of indexed cells have in common.

#include <Inventor/SbVec3f.h>
#include <Ormelle/PbArrayOfInt.h>

#include <cmath>
#include <cstdio>
#include <vector>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/mesh/PiConnectivity.h"
#include "quillane/search/PiOwnerCells.h"

namespace PiIndexedMesh {

inline const int* nodesOf(const PiConnectivity& cells, int cell, int& num) {
  const std::span<const int> nodes = cells.given(cell);
  num = static_cast<int>(nodes.size());
  return nodes.empty() ? nullptr : nodes.data();
}

/// Makes `rows` point to the nodes of each cell, unless it does. Clear it when the cells change.
inline const int* const* updateRows(std::vector<const int*>& rows, const PiConnectivity& cells) {
  if (cells.cellSize() < 1 || cells.numCells() < 1) return nullptr;
  if (rows.empty()) {
    rows.resize(static_cast<std::size_t>(cells.numCells()));
    for (int cell = 0; cell < cells.numCells(); ++cell) rows[static_cast<std::size_t>(cell)] = cells.given(cell).data();
  }
  return rows.data();
}

inline void getOwnerCells(const PiOwnerCells& owners, int node, PbArrayOfInt& result) {
  result.empty();
  const std::span<const int> cells = owners.of(node);
  if (!cells.empty()) result.add(static_cast<int>(cells.size()), cells.data());
}

inline void getOwnerCells(const PiOwnerCells& owners, const PbArrayOfInt& nodes, PbArrayOfInt& result) {
  result.empty();
  owners.forEachOfAll({nodes.get(), static_cast<std::size_t>(nodes.getNum())}, [&](int cell) { result.add(cell); });
}

/// Length of the longest edge of all whole cells; edges with a non-finite end don't count. `pointOf` gives the place of
/// a node.
template <class PointOf>
float longestEdgeLength(const PiConnectivity& cells, PointOf&& pointOf) {
  double longest = 0;
  cells.forEachWhole([&](int, std::span<const int> nodes) {
    SbVec3f points[8];
    for (std::size_t n = 0; n < nodes.size(); ++n) points[n] = pointOf(nodes[n]);
    for (const auto& edge : cells.topologyOf(nodes.size())->edges) {
      double length = 0;
      for (int a = 0; a < 3; ++a) {
        const double extent = double(points[edge[1]][a]) - double(points[edge[0]][a]);
        length += extent * extent;
      }
      if (length > longest && std::isfinite(length)) longest = length;
    }
  });
  return static_cast<float>(std::sqrt(longest));
}

/// Writes the nodes of each cell, one cell a line.
inline void printCells(FILE* file, const char* className, const PiConnectivity& cells) {
  std::fprintf(file, "%s:: number of indices = %d\n", className, cells.numIndices());
  for (int cell = 0; cell < cells.numCells(); ++cell) {
    std::fprintf(file, "%s:: cell %d :", className, cell);
    for (const int node : cells.given(cell)) std::fprintf(file, " %d", node);
    std::fprintf(file, "\n");
  }
}

}  // namespace PiIndexedMesh

#endif
