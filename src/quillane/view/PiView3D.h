#ifndef ORMELLE_PIVIEW3D_H
#define ORMELLE_PIVIEW3D_H

/// @file
/// Views of volume meshes: what an algorithm reads of a mesh, without virtual calls and without knowing its class. An
/// algorithm is a template over PiView3D, or over PiGridView3D where grids have a tighter form, and serves every mesh
/// class that has a `viewOf`.
///
/// A view is small and is passed by reference; it borrows from the mesh and is good until the mesh changes.

#include <Inventor/SbVec3f.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>

#include <concepts>
#include <span>
#include <utility>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/mesh/PiConnectivity.h"
#include "quillane/mesh/PiRegularAxis.h"
#include "quillane/search/PiAxisSearch.h"

/// A mesh of `numNodes()` nodes and `numCells()` solid cells. `forEachCell(use)` calls `use(cell, nodes)` for every
/// cell that has a kind, by rising index, with its nodes in cell order as a span: 4, 5, 6 or 8 of them.
template <class V>
concept PiView3D = requires(const V view, int index, void (*useCell)(int, std::span<const int>)) {
  { V::isGrid } -> std::convertible_to<bool>;
  { view.numNodes() } -> std::same_as<int>;
  { view.numCells() } -> std::same_as<int>;
  { view.point(index) } -> std::same_as<SbVec3f>;
  view.forEachCell(useCell);
};

/// A view that is a grid.
template <class V>
concept PiGridView3DLike = PiView3D<V> && V::isGrid;

/// The cell of a point (i, j, k) of a grid and back, with its nodes; without coordinates.
struct PiGridShape {
  int numX, numY, numZ;  ///< nodes along i, j and k

  bool hasCells() const { return numX > 1 && numY > 1 && numZ > 1; }
  int numNodes() const { return numX * numY * numZ; }
  int numCells() const { return hasCells() ? (numX - 1) * (numY - 1) * (numZ - 1) : 0; }
  int node(int i, int j, int k) const { return (i * numY + j) * numZ + k; }
  int cell(int i, int j, int k) const { return (i * (numY - 1) + j) * (numZ - 1) + k; }
  /// Steps between neighbouring nodes along i and j; along k it is 1.
  int stepI() const { return numY * numZ; }
  int stepJ() const { return numZ; }
  void cellNodes(int i, int j, int k, int (&nodes)[8]) const {
    const int first = node(i, j, k);
    for (int up = 0; up < 2; ++up) {
      nodes[4 * up] = first + up;
      nodes[4 * up + 1] = first + up + stepI();
      nodes[4 * up + 2] = first + up + stepI() + stepJ();
      nodes[4 * up + 3] = first + up + stepJ();
    }
  }
};

/// A grid. `Coords` is a callable from (i, j, k) to SbVec3f; its `areAxes` tells that each coordinate depends on one
/// index alone.
template <class Coords>
class PiGridView3D {
 public:
  static constexpr bool isGrid = true;
  static constexpr bool areAxes = Coords::areAxes;

  PiGridView3D(const PiGridShape& shape, Coords coords) : m_shape(shape), m_coords(std::move(coords)) {}

  const PiGridShape& shape() const { return m_shape; }
  const Coords& coords() const { return m_coords; }
  int numNodes() const { return m_shape.numNodes(); }
  int numCells() const { return m_shape.numCells(); }
  SbVec3f point(int i, int j, int k) const { return m_coords(i, j, k); }
  SbVec3f point(int node) const {
    const int row = node / m_shape.numZ;
    return m_coords(row / m_shape.numY, row % m_shape.numY, node % m_shape.numZ);
  }
  template <class Use>
  void forEachCell(Use&& use) const {
    int nodes[8], cell = 0;
    for (int i = 0; i + 1 < m_shape.numX; ++i)
      for (int j = 0; j + 1 < m_shape.numY; ++j)
        for (int k = 0; k + 1 < m_shape.numZ; ++k) {
          m_shape.cellNodes(i, j, k, nodes);
          use(cell++, std::span<const int>(nodes));
        }
  }

  /// Finds points by node index, fast where the nodes asked for stay in one row for a while.
  class Walker {
   public:
    explicit Walker(const PiGridView3D& view) : m_view(&view) {}
    SbVec3f operator()(int node) {
      const int numZ = m_view->m_shape.numZ;
      unsigned k = static_cast<unsigned>(node) - static_cast<unsigned>(m_first);
      if (k >= static_cast<unsigned>(numZ)) {
        const int row = node / numZ;
        m_first = row * numZ;
        m_i = row / m_view->m_shape.numY;
        m_j = row % m_view->m_shape.numY;
        k = static_cast<unsigned>(node - m_first);
      }
      return m_view->m_coords(m_i, m_j, static_cast<int>(k));
    }

   private:
    const PiGridView3D* m_view;
    int m_first = 0, m_i = 0, m_j = 0;
  };
  Walker walker() const { return Walker(*this); }

 private:
  PiGridShape m_shape;
  Coords m_coords;
};

/// Coordinates of one array element a node.
struct PiNodeCoords3D {
  static constexpr bool areAxes = false;
  const float *x, *y, *z;
  int numY, numZ;
  SbVec3f operator()(int i, int j, int k) const {
    const std::size_t node = (static_cast<std::size_t>(i) * numY + j) * numZ + k;
    return SbVec3f(x[node], y[node], z[node]);
  }
};

/// Coordinates of one array an axis. `cellOf` is the index along an axis of `num` nodes of the interval that holds `c`,
/// or -1.
struct PiAxisCoords3D {
  static constexpr bool areAxes = true;
  const float *x, *y, *z;
  int cellOf(int axis, float c, int num) const { return findAxisCell(axis == 0 ? x : axis == 1 ? y : z, num, c); }
  SbVec3f operator()(int i, int j, int k) const { return SbVec3f(x[i], y[j], z[k]); }
};

struct PiRegularCoords3D {
  static constexpr bool areAxes = true;
  PiRegularAxis x, y, z;
  int cellOf(int axis, float c, int) const { return (axis == 0 ? x : axis == 1 ? y : z).cellOf(c); }
  SbVec3f operator()(int i, int j, int k) const { return SbVec3f(x.coord(i), y.coord(j), z.coord(k)); }
};

/// View of a volume of indexed cells. Cells that aren't whole are passed over.
class PiIndexedView3D {
 public:
  static constexpr bool isGrid = false;

  explicit PiIndexedView3D(const PbIndexedMesh3D& mesh) : m_cells(&mesh.getConnectivity()) {
    int numX, numY, numZ;
    mesh.getCoordinates(m_x, m_y, m_z, numX, numY, numZ);
  }

  int numNodes() const { return m_cells->numNodes(); }
  int numCells() const { return m_cells->numCells(); }
  SbVec3f point(int node) const { return SbVec3f(m_x[node], m_y[node], m_z[node]); }
  template <class Use>
  void forEachCell(Use&& use) const {
    m_cells->forEachWhole(use);
  }
  const PiConnectivity& cells() const { return *m_cells; }

  class Walker {
   public:
    explicit Walker(const PiIndexedView3D& view) : m_view(&view) {}
    SbVec3f operator()(int node) const { return m_view->point(node); }

   private:
    const PiIndexedView3D* m_view;
  };
  Walker walker() const { return Walker(*this); }

 private:
  const PiConnectivity* m_cells;
  const float *m_x = nullptr, *m_y = nullptr, *m_z = nullptr;
};

/// @name viewOf
/// @{
inline auto viewOf(const PbRegularCartesianGrid3D& mesh) {
  PiGridShape shape{};
  float xMin, yMin, zMin, xMax, yMax, zMax;
  mesh.getGeometry(shape.numX, shape.numY, shape.numZ, xMin, yMin, zMin, xMax, yMax, zMax);
  return PiGridView3D(shape,
                      PiRegularCoords3D{PiRegularAxis(xMin, xMax, shape.numX), PiRegularAxis(yMin, yMax, shape.numY),
                                        PiRegularAxis(zMin, zMax, shape.numZ)});
}
inline auto viewOf(const PbParalCartesianGrid3D& mesh) {
  PiGridShape shape{};
  PiAxisCoords3D coords{};
  mesh.getGeometry(shape.numX, shape.numY, shape.numZ, coords.x, coords.y, coords.z);
  return PiGridView3D(shape, coords);
}
inline auto viewOf(const PbCartesianGrid3D& mesh) {
  PiGridShape shape{};
  PiNodeCoords3D coords{};
  mesh.getGeometry(shape.numX, shape.numY, shape.numZ, coords.x, coords.y, coords.z);
  coords.numY = shape.numY;
  coords.numZ = shape.numZ;
  return PiGridView3D(shape, coords);
}
inline auto viewOf(const PbIndexedMesh3D& mesh) { return PiIndexedView3D(mesh); }
/// @}

static_assert(PiGridView3DLike<PiGridView3D<PiNodeCoords3D>> && PiGridView3DLike<PiGridView3D<PiRegularCoords3D>>);
static_assert(PiGridView3DLike<PiGridView3D<PiAxisCoords3D>> && PiView3D<PiIndexedView3D>);

/// Which way round the nodes of a solid run: above 0 where PbCell::getOrdering() is 1; 0 where node 0 and the three
/// beside it lie in a plane. In double, so that it neither vanishes nor overflows. A view serves, or anything else that
/// has the points of the nodes.
template <class Points>
requires requires(const Points points, int node) {
  { points.point(node) } -> std::same_as<SbVec3f>;
}
double signedCornerVolume(const Points& view, std::span<const int> nodes) {
  const PiCellTopology& topology = nodes.size() == 4   ? PiTopology::kTetrahedron
                                   : nodes.size() == 5 ? PiTopology::kPyramid
                                   : nodes.size() == 6 ? PiTopology::kWedge
                                                       : PiTopology::kHexahedron;
  double edges[3][3];
  const SbVec3f origin = view.point(nodes[0]);
  for (int e = 0; e < 3; ++e) {
    const SbVec3f end = view.point(nodes[static_cast<std::size_t>(topology.ordering[e])]);
    for (int axis = 0; axis < 3; ++axis) edges[e][axis] = double(end[axis]) - double(origin[axis]);
  }
  const auto& [a, b, c] = edges;
  return (a[1] * b[2] - a[2] * b[1]) * c[0] + (a[2] * b[0] - a[0] * b[2]) * c[1] + (a[0] * b[1] - a[1] * b[0]) * c[2];
}

#endif
