#ifndef ORMELLE_PICURVEFILL_H
#define ORMELLE_PICURVEFILL_H

#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <cstdint>
#include <span>
#include <vector>

/// What lies between a curve and the line y = threshold, as polygons that are wholly above or wholly below it.
struct PiCurveFill {
  std::vector<SbVec3f> points;           ///< the corners of all polygons, z 0
  std::vector<std::int32_t> numCorners;  ///< of each polygon

  /// A piece of the curve that doesn't begin or end on the threshold is closed by a point on it there. Each polygon
  /// begins and ends on the threshold. Linear cost. Points that aren't finite part the curve; without a finite
  /// threshold there is no polygon.
  static PiCurveFill make(std::span<const SbVec2f> curve, float threshold);
};

/// The point of the line through p and q at a given y, or at a given x. Where the line has no single one, that of p.
/// @{
float xOnSegment(const SbVec2f& p, const SbVec2f& q, float y);
float yOnSegment(const SbVec2f& p, const SbVec2f& q, float x);
/// @}

#endif
