#ifndef ORMELLE_PISKINFACETS_H
#define ORMELLE_PISKINFACETS_H

#include <algorithm>
#include <span>

#include "quillane/surface/PiMeshSkin.h"
#include "quillane/view/PiView3D.h"

/// The nodes of any cell of a mesh. None for a cell that isn't whole. The span is good until the next call.
template <PiView3D View>
class PiCellNodesOf {
 public:
  explicit PiCellNodesOf(const View& view) : m_view(view) {}

  std::span<const int> operator()(int cell) {
    if constexpr (View::isGrid) {
      const PiGridShape& shape = m_view.shape();
      const int row = cell / (shape.numZ - 1);
      shape.cellNodes(row / (shape.numY - 1), row % (shape.numY - 1), cell % (shape.numZ - 1), m_nodes);
      return m_nodes;
    } else {
      return m_view.cells().whole(cell);
    }
  }

 private:
  const View& m_view;
  int m_nodes[8];
};

struct PiPointsOfNodes {
  const SbVec3f* points;
  SbVec3f point(int node) const { return points[node]; }
};

/// Calls `use(cell, cellNodes, facetNodes, isReversed)` for each facet of the skin, which must be that of the mesh of
/// the view; `points` holds the place of each of its nodes. `isReversed` tells that the nodes run anticlockwise for who
/// looks from outside, as those of a cell with ordering 1 do.
template <PiView3D View, class Use>
void forEachSkinFacet(const View& view, const SbVec3f* points, const PiMeshSkin& skin, Use&& use) {
  const PiPointsOfNodes places{points};
  PiCellNodesOf<View> nodesOf(view);
  std::span<const int> nodes;
  int cell = -1;
  bool isReversed = false;
  for (int facet = 0; facet < skin.getNumFacets(); ++facet) {
    if (skin.getCell(facet) != cell) {
      cell = skin.getCell(facet);
      nodes = nodesOf(cell);
      isReversed = !nodes.empty() && signedCornerVolume(places, nodes) > 0;
    }
    if (!nodes.empty()) use(cell, nodes, skin.getNodes(facet), isReversed);
  }
}

#endif
