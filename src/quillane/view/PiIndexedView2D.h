#ifndef ORMELLE_PIINDEXEDVIEW2D_H
#define ORMELLE_PIINDEXEDVIEW2D_H

#include <Ormelle/PbIndexedMesh2D.h>
#include <Ormelle/PbQuadrangleMesh2D.h>
#include <Ormelle/PbTriangleMesh2D.h>

#include <algorithm>

#include "quillane/mesh/PiConnectivity.h"
#include "quillane/view/PiView2D.h"

/// View of a surface of indexed cells. `kCellSize` is the number of nodes of every cell, or 0 if each has its own.
///
/// Cells that aren't whole are passed over, so there may be less cells than `numCells()`. Cells are shown
/// counter-clockwise if the mesh knows their orientation: the first node stays and the others come in reverse.
template <int kCellSize>
class PiIndexedView2D {
 public:
  static constexpr bool isGrid = false;

  /// `z` holds one float a node, or is null.
  PiIndexedView2D(const PbIndexedMesh2D& mesh, const float* z)
      : m_cells(&mesh.getConnectivity()), m_orientFlags(mesh.getOrientFlags()), m_z(z) {
    int numX, numY, numZ;
    const float* ownZ;
    mesh.getCoordinates(m_x, m_y, ownZ, numX, numY, numZ);
  }

  int numNodes() const { return m_cells->numNodes(); }
  int numCells() const { return m_cells->numCells(); }
  SbVec2f node(int node) const { return SbVec2f(m_x[node], m_y[node]); }
  bool hasZ() const { return m_z != nullptr; }
  float z(int node) const { return m_z ? m_z[node] : 0.0F; }
  SbVec3f point(int node) const { return SbVec3f(m_x[node], m_y[node], z(node)); }

  /// Calls `use(node, xy)` for every node in order.
  template <class Use>
  void forEachNode(Use&& use) const {
    for (int n = 0; n < numNodes(); ++n) use(n, node(n));
  }
  /// Calls `use(cell)` for every whole cell in order.
  template <class Use>
  void forEachCell(Use&& use) const {
    m_cells->forEachWhole([&](int cell, std::span<const int> nodes) {
      const int num = kCellSize > 0 ? kCellSize : static_cast<int>(nodes.size());
      PiCellNodes shown{num, {nodes[0], nodes[1], nodes[2], num > 3 ? nodes[3] : -1}};
      if (m_orientFlags && m_orientFlags[cell] != 1) std::reverse(shown.node + 1, shown.node + num);
      use(static_cast<const PiCellNodes&>(shown));
    });
  }

 private:
  const PiConnectivity* m_cells;
  const int* m_orientFlags;
  const float *m_x, *m_y, *m_z;
};

/// @name viewOf
/// The view of a mesh with the z given: one float a node, or null for a flat view.
/// @{
inline auto viewOf(const PbIndexedMesh2D& mesh, const float* z) { return PiIndexedView2D<0>(mesh, z); }
inline auto viewOf(const PbTriangleMesh2D& mesh, const float* z) { return PiIndexedView2D<3>(mesh, z); }
inline auto viewOf(const PbQuadrangleMesh2D& mesh, const float* z) { return PiIndexedView2D<4>(mesh, z); }
/// @}

static_assert(PiView2D<PiIndexedView2D<0>> && PiView2D<PiIndexedView2D<3>>);

#endif
