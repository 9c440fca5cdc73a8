#ifndef ORMELLE_PILEVELSURF_H
#define ORMELLE_PILEVELSURF_H

#include <cstddef>
#include <functional>

#include "quillane/surface/PiCellBlocks.h"
#include "quillane/surface/PiPairTable.h"
#include "quillane/surface/PiQuadMerge.h"

/// What surface is to be made of a volume: the one that parts the nodes whose value is above `iso` from the others, or
/// if `isToMax` is off those below it from the others.
struct PiLevelSurfInput {
  const float* values;  ///< one for each node; cells with a NaN are left out
  float iso;
  bool isToMax;
  bool asStrips;  ///< triangle strips, and else polygons
  /// Moves a level off the values of the nodes; called if it is equal to one of them.
  std::function<void(float& iso)> moveOff;
  /// Whether a cell takes part; empty if all do. Asked once for each cell that the surface may cut.
  std::function<bool(int cell)> accepts;
  /// Whether a node has finite coordinates; empty if all have. Cells with one that hasn't are left out.
  std::function<bool(int node)> isNodeFinite;
  /// If not null, the values are distances along the normal of `plane`, and the level is its distance: what stands away
  /// from the plane isn't looked at.
  const PiCellBlocks* blocks = nullptr;
  PiSectionPlane plane{1, 0, 0, 0};
};

/// Where the surface goes. The indices of each facet are ended by -1.
struct PiLevelSurfOutput {
  PiPairTable& points;       ///< empty when it begins; `t` isn't set
  PiQuadMerge& quadrangles;  ///< likewise
  PiGrowBuffer<int>& cells;  ///< the cell of each facet
  /// Gives memory for that many indices, or with less than the last time keeps the first of them; null if there can't
  /// be so many.
  std::function<int*(std::size_t count)> indices;
  float iso = 0;  ///< the level, moved off the values
};

/// Writes the quadrangles that two cells proposed behind `count` indices and closes the surface.
void finishLevelSurf(bool asStrips, int* indices, std::size_t count, PiLevelSurfOutput& output);

#endif
