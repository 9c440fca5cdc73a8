#ifndef ORMELLE_PICURVEFILL_H
#define ORMELLE_PICURVEFILL_H

#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <cstdint>
#include <span>
#include <vector>

#include "graph/chart/PiNewArray.h"

/// What lies between a curve and the line y = threshold, as polygons that are wholly above or wholly below it.
struct PiCurveFill {
  PiNewArray<SbVec3f> points;            ///< the corners of all polygons, z 0
  std::vector<std::int32_t> numCorners;  ///< of each polygon

  bool areSlices = false;  ///< no polygon is concave, and all run counter-clockwise

  /// A piece of the curve that doesn't begin or end on the threshold is closed by a point on it there. What is between
  /// two places on the threshold is one polygon, which begins and ends there. If the toolkit would be slow with one of
  /// them, as it is with many corners, or wrong, as with steps straight up or down, all are cut into slices, one a
  /// segment, but for those that turn back along x.
  ///
  /// Linear cost. Points that aren't finite part the curve; without a finite threshold there is no polygon.
  static PiCurveFill make(std::span<const SbVec2f> curve, float threshold);
};

/// The point of the line through p and q at a given y, or at a given x. Where the line has no single one, that of p.
/// @{
float xOnSegment(const SbVec2f& p, const SbVec2f& q, float y);
float yOnSegment(const SbVec2f& p, const SbVec2f& q, float x);
/// @}

#endif
