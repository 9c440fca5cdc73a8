#ifndef ORMELLE_PIVOLUMECELLS_H
#define ORMELLE_PIVOLUMECELLS_H

#include <cstddef>
#include <span>

#include <Inventor/SbVec3f.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbIndexedMesh3D.h>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/mesh/PiConnectivity.h"

/// The cells of volume meshes that have arrays of coordinates, as algorithms read them: any cell at any time, from any
/// thread.

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
    int numX;
    grid.getGeometry(numX, m_numY, m_numZ, points.x, points.y, points.z);
    m_numCells = grid.getNumCells();
  }
  int numCells() const { return m_numCells; }
  /// Valid until the next call in the same thread's copy of `this`.
  std::span<const int> nodes(int cell) {
    const int numK = m_numZ - 1, numJ = m_numY - 1;
    const int k = cell % numK, j = cell / numK % numJ, i = cell / numK / numJ;
    const int first = (i * m_numY + j) * m_numZ + k, stepI = m_numY * m_numZ;
    for (int up = 0; up < 2; ++up) {
      int* corner = m_nodes + 4 * up;
      corner[0] = first + up;
      corner[1] = corner[0] + stepI;
      corner[2] = corner[1] + m_numZ;
      corner[3] = corner[0] + m_numZ;
    }
    return m_nodes;
  }
  const PiCellTopology& topologyOf(std::size_t) const { return PiTopology::kHexahedron; }

  PiNodeArrays points{nullptr, nullptr, nullptr};

 private:
  int m_numY = 0, m_numZ = 0, m_numCells = 0;
  int m_nodes[8] = {};
};

#endif
