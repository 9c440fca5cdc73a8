#ifndef ORMELLE_PIVIEW2D_H
#define ORMELLE_PIVIEW2D_H

/// @file
/// Views of 2D meshes: what an algorithm reads of a mesh, without virtual calls and without knowing its class. An
/// algorithm is a template over PiView2D and serves every mesh class that has a `viewOf`.
///
/// A view is small and is passed by reference; it borrows from the mesh and is good until the mesh changes.

#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>
#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PbPolarGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>

#include <cmath>
#include <concepts>
#include <utility>
#include <vector>

#include "quillane/mesh/PiRegularAxis.h"
#include "quillane/search/PiAxisSearch.h"

/// The nodes of one cell, in cell order.
struct PiCellNodes {
  int num;
  int node[4];
};

/// A mesh of `numNodes()` nodes and `numCells()` cells of three or four nodes. `isGrid` tells that the nodes form rows
/// and columns, as in PiGridView2D. `z(node)` is 0 in a flat mesh; `hasZ()` tells which it is.
template <class V>
concept PiView2D = requires(const V view, int node, void (*useCell)(const PiCellNodes&),
                            void (*useNode)(int, SbVec2f)) {
  { V::isGrid } -> std::convertible_to<bool>;
  { view.numNodes() } -> std::same_as<int>;
  { view.numCells() } -> std::same_as<int>;
  { view.node(node) } -> std::same_as<SbVec2f>;
  { view.point(node) } -> std::same_as<SbVec3f>;
  { view.z(node) } -> std::same_as<float>;
  { view.hasZ() } -> std::same_as<bool>;
  view.forEachNode(useNode);
  view.forEachCell(useCell);
};

/// A view that is a grid, for the algorithms that have a tighter form for grids.
template <class V>
concept PiGridView = PiView2D<V> && V::isGrid;

/// A grid of `numX()` rows of `numY()` nodes. `Coords` is a callable from (i, j) to SbVec2f; its `areAxes` tells that
/// each coordinate depends on one index alone.
template <class Coords>
class PiGridView2D {
 public:
  static constexpr bool isGrid = true;
  static constexpr bool areAxes = Coords::areAxes;

  /// `z` holds one float a node, or is null.
  PiGridView2D(int numX, int numY, Coords coords, const float* z)
      : m_numX(numX), m_numY(numY), m_coords(std::move(coords)), m_z(z) {}

  const Coords& coords() const { return m_coords; }
  int numX() const { return m_numX; }
  int numY() const { return m_numY; }
  int numNodes() const { return m_numX * m_numY; }
  int numCells() const { return m_numX < 2 || m_numY < 2 ? 0 : (m_numX - 1) * (m_numY - 1); }

  SbVec2f node(int i, int j) const { return m_coords(i, j); }
  SbVec2f node(int node) const { return m_coords(node / m_numY, node % m_numY); }
  bool hasZ() const { return m_z != nullptr; }
  float z(int node) const { return m_z ? m_z[node] : 0.0F; }
  SbVec3f point(int index) const {
    const SbVec2f xy = node(index);
    return SbVec3f(xy[0], xy[1], z(index));
  }

  /// Calls `use(node, xy)` for every node in order.
  template <class Use>
  void forEachNode(Use&& use) const {
    int index = 0;
    for (int i = 0; i < m_numX; ++i)
      for (int j = 0; j < m_numY; ++j) use(index++, m_coords(i, j));
  }
  /// Calls `use(cell)` for every cell in order.
  template <class Use>
  void forEachCell(Use&& use) const {
    for (int i = 0; i + 1 < m_numX; ++i)
      for (int j = 0; j + 1 < m_numY; ++j) use(cell(i, j));
  }
  PiCellNodes cell(int i, int j) const {
    const int first = i * m_numY + j;
    return {4, {first, first + m_numY, first + m_numY + 1, first + 1}};
  }

 private:
  int m_numX, m_numY;
  Coords m_coords;
  const float* m_z;
};

/// Coordinates of one array element a node.
struct PiNodeCoords2D {
  static constexpr bool areAxes = false;
  const float *x, *y;
  int numY;
  SbVec2f operator()(int i, int j) const { return SbVec2f(x[i * numY + j], y[i * numY + j]); }
};

/// Coordinates of one array an axis. `cellOf` is the index along an axis of `num` nodes of the interval that holds `c`,
/// or -1.
struct PiAxisCoords2D {
  static constexpr bool areAxes = true;
  const float *x, *y;
  int cellOf(int axis, float c, int num) const { return findAxisCell(axis == 0 ? x : y, num, c); }
  SbVec2f operator()(int i, int j) const { return SbVec2f(x[i], y[j]); }
};

struct PiRegularCoords2D {
  static constexpr bool areAxes = true;
  PiRegularAxis x, y;
  int cellOf(int axis, float c, int) const { return (axis == 0 ? x : y).cellOf(c); }
  SbVec2f operator()(int i, int j) const { return SbVec2f(x.coord(i), y.coord(j)); }
};

/// Radii and angles; the sine and cosine of each angle are computed once.
class PiPolarCoords2D {
 public:
  static constexpr bool areAxes = false;

  PiPolarCoords2D(const float* radius, const float* angle, int numAngles) : m_radius(radius), m_directions(numAngles) {
    for (int j = 0; j < numAngles; ++j) m_directions[j].setValue(std::cos(angle[j]), std::sin(angle[j]));
  }
  SbVec2f operator()(int i, int j) const { return m_directions[j] * m_radius[i]; }

 private:
  const float* m_radius;
  std::vector<SbVec2f> m_directions;
};

/// @name viewOf
/// The view of a mesh with the z given: one float a node, or null for a flat view.
/// @{
inline auto viewOf(const PbCartesianGrid2D& mesh, const float* z) {
  PiNodeCoords2D coords{};
  int numX;
  mesh.getGeometry(numX, coords.numY, coords.x, coords.y);
  return PiGridView2D(numX, coords.numY, coords, z);
}
inline auto viewOf(const PbParalCartesianGrid2D& mesh, const float* z) {
  PiAxisCoords2D coords{};
  int numX, numY;
  mesh.getGeometry(numX, numY, coords.x, coords.y);
  return PiGridView2D(numX, numY, coords, z);
}
inline auto viewOf(const PbRegularCartesianGrid2D& mesh, const float* z) {
  int numX, numY;
  float xMin, yMin, xMax, yMax;
  mesh.getGeometry(numX, numY, xMin, yMin, xMax, yMax);
  return PiGridView2D(numX, numY, PiRegularCoords2D{PiRegularAxis(xMin, xMax, numX), PiRegularAxis(yMin, yMax, numY)},
                      z);
}
inline auto viewOf(const PbPolarGrid2D& mesh, const float* z) {
  const float *radius, *angle;
  int numX, numY;
  mesh.getGeometry(numX, numY, radius, angle);
  return PiGridView2D(numX, numY, PiPolarCoords2D(radius, angle, numY), z);
}
/// The view with the mesh's own z.
template <class Mesh>
auto viewOf(const Mesh& mesh) {
  return viewOf(mesh, mesh.getZcoord());
}
/// @}

#endif
