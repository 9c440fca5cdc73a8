#ifndef ORMELLE_PICELLREADERS_H
#define ORMELLE_PICELLREADERS_H

/// @file
/// How to get at single cells of a mesh: what a search reads of it, without virtual calls and without its cell objects.

#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PbPixelCell.h>
#include <Ormelle/PbVoxelCell.h>

#include <concepts>
#include <vector>

#include "quillane/cell/PiPlainCell.h"
#include "quillane/mesh/PiConnectivity.h"
#include "quillane/search/PiAxisSearch.h"
#include "quillane/view/PiView2D.h"
#include "quillane/view/PiView3D.h"

/// `read(index, cell)` fills in a cell; false, and `cell` holds none, if the mesh has no such cell. `announce(index)`
/// tells that it will soon be read.
template <class R>
concept PiCellReader = requires(const R reader, PiPlainCell& cell) {
  { reader.numCells() } -> std::same_as<int>;
  { reader.read(0, cell) } -> std::same_as<bool>;
  reader.announce(0);
};

/// A reader that tells directly which cell may hold a point: the only one, or -1.
template <class R>
concept PiDirectReader = PiCellReader<R> && requires(const R reader, const SbVec3f& point) {
  { reader.cellOf(point) } -> std::same_as<int>;
};

/// Of a mesh of indexed cells. `kCellSize` is the number of nodes of every cell, or 0 if each has its own. A null `z`
/// means 0.
template <int kCellSize>
class PiIndexedReader {
 public:
  PiIndexedReader(const PiConnectivity& cells, const float* x, const float* y, const float* z)
      : m_cells(&cells), m_x(x), m_y(y), m_z(z), m_kind(PiPlainCell::kindOf(cells.dimension(), kCellSize)) {}

  int numCells() const { return m_cells->numCells(); }
  bool read(int index, PiPlainCell& cell) const {
    const std::span<const int> nodes = m_cells->whole(index);
    if constexpr (kCellSize > 0) {
      cell.reset(nodes.empty() ? PiPlainCell::NONE : m_kind, index);
      if (nodes.empty()) return false;
      for (int n = 0; n < kCellSize; ++n) setNode(cell, n, nodes[static_cast<std::size_t>(n)]);
    } else {
      cell.reset(PiPlainCell::kindOf(m_cells->dimension(), static_cast<int>(nodes.size())), index);
      for (int n = 0; n < cell.numNodes(); ++n) setNode(cell, n, nodes[static_cast<std::size_t>(n)]);
    }
    return cell.numNodes() > 0;
  }
  void announce(int index) const { __builtin_prefetch(m_cells->given(index).data()); }

 private:
  void setNode(PiPlainCell& cell, int local, int node) const {
    cell.setNode(local, node, SbVec3f(m_x[node], m_y[node], m_z ? m_z[node] : 0.0F));
  }

  const PiConnectivity* m_cells;
  const float *m_x, *m_y, *m_z;
  PiPlainCell::Kind m_kind;
};

/// Of a grid of volume cells.
template <class View>
class PiGridReader3D {
 public:
  explicit PiGridReader3D(const View& view) : m_view(view) {}

  int numCells() const { return m_view.numCells(); }
  bool read(int index, PiPlainCell& cell) const {
    const bool isCell = index >= 0 && index < m_view.numCells();
    cell.reset(!isCell ? PiPlainCell::NONE : View::areAxes ? PiPlainCell::VOXEL : PiPlainCell::HEXAHEDRON, index);
    if (!isCell) return false;
    const PiGridShape& shape = m_view.shape();
    const int row = index / (shape.numZ - 1), k = index % (shape.numZ - 1);
    const int i = row / (shape.numY - 1), j = row % (shape.numY - 1);
    int nodes[8];
    shape.cellNodes(i, j, k, nodes);
    for (int n = 0; n < 8; ++n) {
      const int alongI = n % 4 == 1 || n % 4 == 2, alongJ = n % 4 > 1, alongK = n > 3;
      cell.setNode(n, nodes[n], m_view.point(i + alongI, j + alongJ, k + alongK));
    }
    return true;
  }
  void announce(int) const {}
  int cellOf(const SbVec3f& point) const requires(View::areAxes) {
    const PiGridShape& shape = m_view.shape();
    const int i = m_view.coords().cellOf(0, point[0], shape.numX), j = m_view.coords().cellOf(1, point[1], shape.numY),
              k = m_view.coords().cellOf(2, point[2], shape.numZ);
    return i < 0 || j < 0 || k < 0 ? -1 : shape.cell(i, j, k);
  }

 private:
  View m_view;
};

/// Of a grid of surface cells.
template <class View>
class PiGridReader2D {
 public:
  explicit PiGridReader2D(const View& view) : m_view(view) {}

  int numCells() const { return m_view.numCells(); }
  bool read(int index, PiPlainCell& cell) const {
    const bool isCell = index >= 0 && index < m_view.numCells(), isPixel = View::areAxes && !m_view.hasZ();
    cell.reset(!isCell ? PiPlainCell::NONE : isPixel ? PiPlainCell::PIXEL : PiPlainCell::QUADRANGLE, index);
    if (!isCell) return false;
    const int i = index / (m_view.numY() - 1), j = index % (m_view.numY() - 1);
    const PiCellNodes nodes = m_view.cell(i, j);
    for (int n = 0; n < 4; ++n) {
      const SbVec2f xy = m_view.node(i + (n == 1 || n == 2), j + (n > 1));
      cell.setNode(n, nodes.node[n], SbVec3f(xy[0], xy[1], m_view.z(nodes.node[n])));
    }
    return true;
  }
  void announce(int) const {}
  int cellOf(const SbVec3f& point) const requires(View::areAxes) {
    const int i = m_view.coords().cellOf(0, point[0], m_view.numX());
    const int j = m_view.coords().cellOf(1, point[1], m_view.numY());
    return i < 0 || j < 0 || m_view.numCells() < 1 ? -1 : i * (m_view.numY() - 1) + j;
  }

 private:
  View m_view;
};

/// Of a mesh class of which nothing is known: copies of the cells it gives.
class PiGatheredReader {
 public:
  explicit PiGatheredReader(const PbMesh& mesh) : m_cells(static_cast<std::size_t>(mesh.getNumCells())) {
    for (int c = 0; c < mesh.getNumCells(); ++c) {
      const PbCell* given = mesh.getCell(c);
      if (!given) continue;
      PiPlainCell& cell = m_cells[static_cast<std::size_t>(c)];
      cell.reset(kindOf(*given), c);
      for (int n = 0; n < cell.numNodes(); ++n) cell.setNode(n, given->getNodeIndex(n), given->getNodeCoord(n));
    }
  }

  int numCells() const { return static_cast<int>(m_cells.size()); }
  bool read(int index, PiPlainCell& cell) const {
    if (index < 0 || index >= numCells())
      cell.reset(PiPlainCell::NONE, -1);
    else
      cell = m_cells[static_cast<std::size_t>(index)];
    return cell.numNodes() > 0;
  }
  void announce(int) const {}

 private:
  static PiPlainCell::Kind kindOf(const PbCell& cell) {
    if (dynamic_cast<const PbVoxelCell*>(&cell)) return PiPlainCell::VOXEL;
    if (dynamic_cast<const PbPixelCell*>(&cell)) return PiPlainCell::PIXEL;
    return PiPlainCell::kindOf(cell.getNumFacets() > 1 ? 3 : 2, cell.getNumNodes());
  }

  std::vector<PiPlainCell> m_cells;
};

#endif
