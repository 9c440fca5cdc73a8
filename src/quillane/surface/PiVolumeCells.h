#ifndef ORMELLE_PIVOLUMECELLS_H
#define ORMELLE_PIVOLUMECELLS_H

#include <cstddef>
#include <span>

#include <Inventor/SbVec3f.h>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/mesh/PiConnectivity.h"
#include "quillane/view/PiView3D.h"

/// @file
/// The cells of volume meshes that have arrays of coordinates, for algorithms that look at some cells only, in an order
/// of their own. Each thread has a copy.

/// Where the nodes are.
struct PiNodeArrays {
  const float *x, *y, *z;
  SbVec3f operator[](int node) const { return SbVec3f(x[node], y[node], z[node]); }
};

/// Cells that list their nodes. `Size` is the number of nodes of every cell, 0 if each has its own.
template <int Size>
class PiIndexedCells {
 public:
  static constexpr std::size_t kCellSize = Size;

  explicit PiIndexedCells(const PbIndexedMesh3D& mesh) : m_cells(mesh.getConnectivity()) {
    int numX, numY, numZ;
    mesh.getCoordinates(points.x, points.y, points.z, numX, numY, numZ);
  }
  int numCells() const { return m_cells.numCells(); }
  /// The nodes of a cell; none if it isn't whole.
  std::span<const int> nodes(int cell) const {
    if constexpr (Size > 0)
      if (m_cells.areAllWhole())
        return {m_cells.nodes() + static_cast<std::size_t>(cell) * Size, static_cast<std::size_t>(Size)};
    return m_cells.whole(cell);
  }
  /// The kind of a cell that is whole, by its number of nodes.
  const PiCellTopology& topologyOf(std::size_t size) const { return *m_cells.topologyOf(size); }

  PiNodeArrays points{nullptr, nullptr, nullptr};

 private:
  const PiConnectivity& m_cells;
};

/// The hexahedra of a curvilinear grid.
class PiGridCells {
 public:
  static constexpr std::size_t kCellSize = 8;

  explicit PiGridCells(const PbCartesianGrid3D& grid) {
    grid.getGeometry(m_shape.numX, m_shape.numY, m_shape.numZ, points.x, points.y, points.z);
  }
  int numCells() const { return m_shape.numCells(); }
  /// Good until the next call.
  std::span<const int> nodes(int cell) {
    const int numK = m_shape.numZ - 1, numJ = m_shape.numY - 1;
    m_shape.cellNodes(cell / numK / numJ, cell / numK % numJ, cell % numK, m_nodes);
    return m_nodes;
  }
  const PiCellTopology& topologyOf(std::size_t) const { return PiTopology::kHexahedron; }

  PiNodeArrays points{nullptr, nullptr, nullptr};

 private:
  PiGridShape m_shape{};
  int m_nodes[8] = {};
};

#endif
