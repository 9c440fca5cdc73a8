#ifndef ORMELLE_PICONTOURWALK_H
#define ORMELLE_PICONTOURWALK_H

#include <cmath>
#include <type_traits>
#include <vector>

#include "quillane/contour/PiContourLevels.h"
#include "quillane/contour/PiCutCell.h"
#include "quillane/contour/PiEdgeTable.h"
#include "quillane/contour/PiHandedSurface.h"

/// The band of a node whose value lies beyond a threshold: cells are cut back to their other nodes.
inline constexpr int kHiddenBand = -2;

/// What one walk over a surface needs and fills, kept from one to the next.
struct PiContourScratch {
  PiContourLevels levels;
  PiGrowBuffer<int> bands;  // of each node; below 0 for those that no cell keeps
  PiCutPoints cuts;
  PiEdgeTable edges;
  std::vector<int> rowEdges, nextRowEdges;  // first cut points of the edges along two rows of a grid

  std::size_t memorySize() const {
    return levels.memorySize() + bands.capacity() * sizeof(int) + cuts.memorySize() + edges.memorySize() +
           (rowEdges.capacity() + nextRowEdges.capacity()) * sizeof(int);
  }
};

/// Takes nodes whose coordinates aren't all finite out of the bands.
template <class View>
void hideNonFiniteNodes(const View& view, int* bands) {
  const bool hasZ = view.hasZ();
  // Anything but a finite number times 0 is a NaN.
  const auto isFinite = [&](int node, SbVec2f xy) {
    const float nothing = xy[0] * 0 + xy[1] * 0;
    return (hasZ ? nothing + view.z(node) * 0 : nothing) == 0;
  };
  unsigned areSomeNot = 0;
  view.forEachNode([&](int node, SbVec2f xy) { areSomeNot |= static_cast<unsigned>(!isFinite(node, xy)); });
  if (areSomeNot == 0) return;
  view.forEachNode([&](int node, SbVec2f xy) {
    if (!isFinite(node, xy)) bands[node] = PiContourLevels::kUndefinedBand;
  });
}

/// Goes over the cells of a surface and cuts each edge once. `Sink` gets every cell that keeps an inside, either by
/// `whole(cell, band)` if no level cuts it or by `cut(cell)`.
template <class View, class Sink>
class PiContourWalk {
 public:
  PiContourWalk(const View& view, const float* values, PiContourScratch& scratch, Sink& sink)
      : m_view(view), m_values(values), m_scratch(scratch), m_bands(scratch.bands.data()), m_sink(sink) {}

  void run() {
    if constexpr (View::isGrid) {
      walkGrid();
    } else {
      m_scratch.edges.clear();
      m_view.forEachCell([this](const PiCellNodes& cell) { walkCell(cell); });
    }
  }

 private:
  static constexpr bool kIsSpatial = std::is_base_of_v<PiHandedView, View>;

  PiEdgeEnd endAt(int node, const SbVec3f& point) const { return {node, m_bands[node], m_values[node], point}; }
  void cutEdge(PiCutCell& cell, int edge, int& stored) {
    if (stored < 0) stored = m_scratch.cuts.cutEdge(cell.corner[edge], cell.corner[cell.next(edge)], m_scratch.levels);
    cell.firstCut[edge] = stored;
  }

  void walkGrid();
  void walkGridCell(int i, int j, int& edgeBefore, int& edgeAfter);
  void walkCell(const PiCellNodes& cell);

  const View& m_view;
  const float* m_values;
  PiContourScratch& m_scratch;
  const int* m_bands;
  Sink& m_sink;
};

namespace PiContourGrid {

/// The first cell from `cell` on, or `end`, of which not all nodes are in one band. The cells lie between the nodes of
/// two rows.
inline int findMixedCell(const int* row, const int* nextRow, int cell, int end) {
  constexpr int kBlock = 16;
  for (; cell + kBlock <= end; cell += kBlock) {
    int areMixed = 0;
    for (int k = cell; k < cell + kBlock; ++k) areMixed |= (row[k] ^ nextRow[k]) | (row[k] ^ row[k + 1]);
    if ((areMixed | (row[cell + kBlock] ^ nextRow[cell + kBlock])) != 0) break;
  }
  while (cell < end && row[cell] == row[cell + 1] && row[cell] == nextRow[cell] && row[cell] == nextRow[cell + 1])
    ++cell;
  return cell;
}

template <class View>
SbVec3f pointAt(const View& view, int i, int j) {
  const int node = i * view.numY() + j;
  if constexpr (std::is_base_of_v<PiHandedView, View>) {
    return view.point(node);
  } else {
    const SbVec2f xy = view.node(i, j);
    return SbVec3f(xy[0], xy[1], view.z(node));
  }
}

}  // namespace PiContourGrid

template <class View, class Sink>
void PiContourWalk<View, Sink>::walkGrid() {
  const int numX = m_view.numX(), numY = m_view.numY();
  if (m_view.numCells() < 1) return;
  std::vector<int>&rowEdges = m_scratch.rowEdges, &nextRowEdges = m_scratch.nextRowEdges;
  rowEdges.assign(static_cast<std::size_t>(numY), -1);
  for (int i = 0; i + 1 < numX; ++i) {
    nextRowEdges.assign(static_cast<std::size_t>(numY), -1);
    const int* row = m_bands + static_cast<std::ptrdiff_t>(i) * numY;
    int edgeBefore = -1;
    for (int j = 0; j + 1 < numY;) {
      const int mixed = PiContourGrid::findMixedCell(row, row + numY, j, numY - 1);
      if constexpr (Sink::kWantsWholeCells) {
        for (int k = j; k < mixed; ++k)
          if (row[k] >= 0) m_sink.whole(m_view.cell(i, k), row[k]);
      }
      if (mixed + 1 == numY) break;
      // Behind cells of one band the edge before is one that no level cuts, and isn't asked for.
      int edgeAfter = -1;
      walkGridCell(i, mixed, edgeBefore, edgeAfter);
      edgeBefore = edgeAfter;
      j = mixed + 1;
    }
    rowEdges.swap(nextRowEdges);
  }
}

template <class View, class Sink>
void PiContourWalk<View, Sink>::walkGridCell(int i, int j, int& edgeBefore, int& edgeAfter) {
  const PiCellNodes nodes = m_view.cell(i, j);
  int kept[4], numKept = 0;
  for (int c = 0; c < 4; ++c) {
    const int band = m_bands[nodes.node[c]];
    if (band == PiContourLevels::kUndefinedBand) return;
    if (band >= 0) kept[numKept++] = c;
  }
  if (numKept < 3) return;

  PiCutCell cell;
  cell.num = numKept;
  cell.isSpatial = kIsSpatial;
  for (int c = 0; c < numKept; ++c) {
    const int corner = kept[c];
    const bool isInNextRow = corner == 1 || corner == 2, isFurther = corner >= 2;
    cell.corner[c] = endAt(nodes.node[corner], PiContourGrid::pointAt(m_view, i + isInNextRow, j + isFurther));
  }
  int diagonal = -1;
  const auto column = static_cast<std::size_t>(j);
  int* stored[4] = {&edgeBefore, &m_scratch.nextRowEdges[column], &edgeAfter, &m_scratch.rowEdges[column]};
  bool isCut = false;
  for (int e = 0; e < numKept; ++e) {
    const int from = kept[e], to = kept[cell.next(e)];
    cell.firstCut[e] = -1;
    if (cell.corner[e].band == cell.corner[cell.next(e)].band) continue;
    isCut = true;
    cutEdge(cell, e, to == (from + 1) % 4 ? *stored[from] : diagonal);
  }
  if (isCut) {
    m_sink.cut(cell);
  } else if constexpr (Sink::kWantsWholeCells) {
    m_sink.whole({3, {cell.corner[0].node, cell.corner[1].node, cell.corner[2].node, -1}}, cell.corner[0].band);
  }
}

template <class View, class Sink>
void PiContourWalk<View, Sink>::walkCell(const PiCellNodes& given) {
  // Nodes that follow themselves, and those behind a threshold, are left out.
  PiCellNodes nodes{0, {}};
  int band = 0;
  bool isMixed = false;
  for (int c = 0; c < given.num; ++c) {
    const int node = given.node[c];
    const int bandOfNode = m_bands[node];
    if (bandOfNode == PiContourLevels::kUndefinedBand) return;
    if (bandOfNode < 0 || (nodes.num > 0 && nodes.node[nodes.num - 1] == node)) continue;
    if (nodes.num == 0) band = bandOfNode;
    isMixed |= bandOfNode != band;
    nodes.node[nodes.num++] = node;
  }
  while (nodes.num > 1 && nodes.node[nodes.num - 1] == nodes.node[0]) --nodes.num;
  if (nodes.num < 3) return;
  if (nodes.num == 4 && (nodes.node[0] == nodes.node[2] || nodes.node[1] == nodes.node[3])) return;
  if (!isMixed) {
    if constexpr (Sink::kWantsWholeCells) m_sink.whole(nodes, band);
    return;
  }

  PiCutCell cell;
  cell.num = nodes.num;
  cell.isSpatial = kIsSpatial;
  for (int c = 0; c < nodes.num; ++c) cell.corner[c] = endAt(nodes.node[c], m_view.point(nodes.node[c]));
  for (int e = 0; e < cell.num; ++e) {
    cell.firstCut[e] = -1;
    const PiEdgeEnd &from = cell.corner[e], &to = cell.corner[cell.next(e)];
    if (from.band != to.band) cutEdge(cell, e, m_scratch.edges.use(from.node, to.node));
  }
  m_sink.cut(cell);
}

#endif
