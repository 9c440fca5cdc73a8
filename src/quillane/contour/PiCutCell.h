#ifndef ORMELLE_PICUTCELL_H
#define ORMELLE_PICUTCELL_H

#include <Inventor/SbVec3f.h>

#include <algorithm>

#include "quillane/contour/PiCutPoints.h"

/// A triangle or quadrangle that at least one level cuts. Edge e goes from corner e to the next one.
struct PiCutCell {
  int num;
  PiEdgeEnd corner[4];
  int firstCut[4];  ///< of each edge: its first cut point; -1 if no level cuts it
  bool isSpatial;   ///< distances within the cell count the third coordinate

  int next(int edge) const { return edge + 1 < num ? edge + 1 : 0; }
  int lowBand(int edge) const { return std::min(corner[edge].band, corner[next(edge)].band); }
  int highBand(int edge) const { return std::max(corner[edge].band, corner[next(edge)].band); }
  /// The cut point of a level that cuts the edge.
  int cutPoint(int edge, int level) const { return firstCut[edge] + level - lowBand(edge); }
};

/// The two edges that a set of edges, one bit each, holds.
inline constexpr int kEdgePairs[15][2] = {{}, {}, {}, {0, 1}, {}, {0, 2}, {1, 2}, {}, {}, {0, 3}, {1, 3}, {}, {2, 3}};

/// Calls `use(level, edge1, edge2)` for each line across the cell, by rising level. The lines of one cell don't cross.
///
/// A level that cuts all four edges has two lines. They join the two of its cut points that are next to each other and
/// nearest, and the other two.
template <class Use>
void forEachCrossing(const PiCutCell& cell, const PiCutPoints& cuts, Use&& use) {
  const auto distance = [&](int level, int edge1, int edge2) {
    SbVec3f along = cuts.point(cell.cutPoint(edge1, level)) - cuts.point(cell.cutPoint(edge2, level));
    if (!cell.isSpatial) along[2] = 0;
    return along.dot(along);
  };
  int low = cell.corner[0].band, high = low;
  for (int c = 1; c < cell.num; ++c) {
    low = std::min(low, cell.corner[c].band);
    high = std::max(high, cell.corner[c].band);
  }
  // As the level rises, cut points leave the low corners for the high ones. So once the lines go round the high corners
  // they stay there, which rounding mustn't make different.
  bool isRoundHighCorners = false;
  for (int level = low; level < high; ++level) {
    unsigned isAbove = 0;
    for (int c = 0; c < cell.num; ++c) isAbove |= static_cast<unsigned>(cell.corner[c].band > level) << c;
    const auto num = static_cast<unsigned>(cell.num);
    const unsigned isNextAbove = isAbove >> 1 | (isAbove & 1U) << (num - 1);
    const unsigned isCut = isAbove ^ isNextAbove;
    if (isCut != 0xF) {
      use(level, kEdgePairs[isCut][0], kEdgePairs[isCut][1]);
      continue;
    }
    // Round corners 1 and 3 the lines join edges 0 with 1 and 2 with 3; round corners 0 and 2, 3 with 0 and 1 with 2.
    const bool areEvenAbove = (isAbove & 1U) != 0;
    bool isRoundEven = areEvenAbove;
    if (!isRoundHighCorners) {
      const float d01 = distance(level, 0, 1), d12 = distance(level, 1, 2);
      const float d23 = distance(level, 2, 3), d30 = distance(level, 3, 0);
      const bool is01 = d01 <= std::min({d30, d12, d23});
      isRoundEven = !is01 && (d30 <= std::min(d12, d23) || d12 <= d23);
      isRoundHighCorners = isRoundEven == areEvenAbove;
    }
    if (isRoundEven) {
      use(level, 3, 0);
      use(level, 1, 2);
    } else {
      use(level, 0, 1);
      use(level, 2, 3);
    }
  }
}

#endif
