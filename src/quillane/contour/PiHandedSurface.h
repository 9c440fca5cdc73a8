#ifndef ORMELLE_PIHANDEDSURFACE_H
#define ORMELLE_PIHANDEDSURFACE_H

#include <algorithm>
#include <vector>

#include "quillane/view/PiView2D.h"

/// Points and cells that were handed in.
struct PiHandedSurface {
  std::vector<SbVec3f> points;
  std::vector<PiCellNodes> cells;
  int numX = 0, numY = 0;  ///< of a grid
};

/// What the views of handed-in surfaces have in common. Unlike the meshes of which views are made, such a surface may
/// stand any way in space.
class PiHandedView {
 public:
  explicit PiHandedView(const PiHandedSurface& surface) : m_surface(&surface) {}

  int numNodes() const { return static_cast<int>(m_surface->points.size()); }
  SbVec3f point(int node) const { return m_surface->points[static_cast<std::size_t>(node)]; }
  SbVec2f node(int node) const { return SbVec2f(point(node)[0], point(node)[1]); }
  bool hasZ() const { return true; }
  float z(int node) const { return point(node)[2]; }
  template <class Use>
  void forEachNode(Use&& use) const {
    for (int n = 0; n < numNodes(); ++n) use(n, node(n));
  }

 protected:
  const PiHandedSurface* m_surface;
};

/// Cells that name points. Those that name one that there isn't are passed over.
class PiHandedCellsView : public PiHandedView {
 public:
  static constexpr bool isGrid = false;
  using PiHandedView::PiHandedView;

  int numCells() const { return static_cast<int>(m_surface->cells.size()); }
  template <class Use>
  void forEachCell(Use&& use) const {
    const auto num = static_cast<unsigned>(numNodes());
    for (const PiCellNodes& cell : m_surface->cells) {
      unsigned greatest = 0;
      for (int i = 0; i < cell.num; ++i) greatest = std::max(greatest, static_cast<unsigned>(cell.node[i]));
      if (greatest < num) use(cell);
    }
  }
};

/// Points that are the nodes of a grid. Without as many points as nodes it has no cells.
class PiHandedGridView : public PiHandedView {
 public:
  static constexpr bool isGrid = true;
  using PiHandedView::PiHandedView;

  int numX() const { return isWhole() ? m_surface->numX : 0; }
  int numY() const { return isWhole() ? m_surface->numY : 0; }
  int numCells() const { return numX() < 2 || numY() < 2 ? 0 : (numX() - 1) * (numY() - 1); }
  PiCellNodes cell(int i, int j) const {
    const int first = i * m_surface->numY + j;
    return {4, {first, first + m_surface->numY, first + m_surface->numY + 1, first + 1}};
  }
  template <class Use>
  void forEachCell(Use&& use) const {
    for (int i = 0; i + 1 < numX(); ++i)
      for (int j = 0; j + 1 < numY(); ++j) use(cell(i, j));
  }

 private:
  bool isWhole() const {
    return m_surface->numX > 0 && m_surface->numY > 0 &&
           static_cast<long long>(m_surface->numX) * m_surface->numY <= numNodes();
  }
};

static_assert(PiView2D<PiHandedCellsView> && PiGridView<PiHandedGridView>);

#endif
