#ifndef ORMELLE_PILINESBUILDER_H
#define ORMELLE_PILINESBUILDER_H

#include <algorithm>

#include <Inventor/nodes/SoIndexedLineSet.h>

#include "quillane/emit/PiIndexList.h"
#include "quillane/emit/PiMeshEmitter.h"

/// Draws the edges of the cells of a surface mesh, of whatever class, in one colour or with a colour for each node.
///
/// It appends to the group: a material binding, coordinates and a SoIndexedLineSet; and makes the material. A grid
/// gives one polyline a row and then one a column, broken where no cell beside an edge is drawn; another mesh gives one
/// closed polyline a cell.
class PiLinesBuilder : public PiMeshEmitter {
 public:
  using PiMeshEmitter::PiMeshEmitter;

  template <PiView2D View>
  void build(const View& view) {
    if (m_request.values) bindMaterial(SoMaterialBinding::PER_VERTEX_INDEXED);
    const PiDrawnNodes drawn = emitCoordinates(view);
    auto* shape = new SoIndexedLineSet;
    m_nodes.group->addChild(shape);
    PiIndexList indices;
    collectLines(view, drawn, indices);
    indices.handTo(shape->coordIndex);
    if (m_request.values) colorNodes(drawn, view.numNodes());
  }

 private:
  template <PiGridView View>
  static void collectLines(const View& view, const PiDrawnNodes& drawn, PiIndexList& indices);
  template <PiView2D View>
  static void collectLines(const View& view, const PiDrawnNodes& drawn, PiIndexList& indices);
  /// Appends the nodes first, first + stride, ... as polylines of the edges that are drawn; edge k joins nodes k, k
  /// + 1.
  template <class IsEdgeDrawn>
  static void addLine(int first, int stride, int num, IsEdgeDrawn&& isEdgeDrawn, PiIndexList& indices);
};

template <class IsEdgeDrawn>
void PiLinesBuilder::addLine(int first, int stride, int num, IsEdgeDrawn&& isEdgeDrawn, PiIndexList& indices) {
  bool isOpen = false;
  for (int edge = 0; edge + 1 < num; ++edge) {
    if (isEdgeDrawn(edge)) {
      if (!isOpen) indices.push_back(first + edge * stride);
      indices.push_back(first + (edge + 1) * stride);
      isOpen = true;
    } else if (isOpen) {
      indices.push_back(-1);
      isOpen = false;
    }
  }
  if (isOpen) indices.push_back(-1);
}

template <PiGridView View>
void PiLinesBuilder::collectLines(const View& view, const PiDrawnNodes& drawn, PiIndexList& indices) {
  const int numX = view.numX();
  const int numY = view.numY();
  indices.reserve(2 * static_cast<std::size_t>(view.numNodes()) + static_cast<std::size_t>(numX + numY));
  const bool hasCells = view.numCells() > 0;
  const auto isCellDrawn = [&](int i, int j) {
    return i >= 0 && j >= 0 && i + 1 < numX && j + 1 < numY && drawn.hasAll(view.cell(i, j));
  };
  // A grid of one row has no cell beside its edges, and shows them nevertheless.
  const auto isEdgeDrawn = [&](int i, int j, int nextI, int nextJ, int besideI, int besideJ) {
    if (drawn.areAll()) return true;
    if (!hasCells) return drawn.has(i * numY + j) && drawn.has(nextI * numY + nextJ);
    return isCellDrawn(i, j) || isCellDrawn(besideI, besideJ);
  };
  for (int i = 0; i < numX; ++i)
    addLine(
        i * numY, 1, numY, [&](int j) { return isEdgeDrawn(i, j, i, j + 1, i - 1, j); }, indices);
  for (int j = 0; j < numY; ++j)
    addLine(
        j, numY, numX, [&](int i) { return isEdgeDrawn(i, j, i + 1, j, i, j - 1); }, indices);
}

template <PiView2D View>
void PiLinesBuilder::collectLines(const View& view, const PiDrawnNodes& drawn, PiIndexList& indices) {
  indices.reserve(6 * static_cast<std::size_t>(view.numCells()));
  view.forEachCell([&](const PiCellNodes& cell) {
    if (cell.num < 1 || !drawn.hasAll(cell)) return;
    int corners[5];
    std::copy(cell.node, cell.node + cell.num, corners);
    corners[cell.num] = cell.node[0];
    indices.addPart(corners, cell.num + 1);
  });
}

#endif
