#ifndef ORMELLE_PISURFACEPLACING_H
#define ORMELLE_PISURFACEPLACING_H

#include <cmath>
#include <span>

#include <Inventor/SbVec3f.h>

#include "graph/frame/PiParallel.h"
#include "quillane/surface/PiPairTable.h"
#include "quillane/view/PiView3D.h"

/// The place of a point between nodes at `a` and `b` whose values are `valueA` and `valueB`, when plain arithmetic in
/// floats gave none: an infinite value has the surface at the other end of the edge. Sets `t`.
inline SbVec3f placedSafely(const SbVec3f& a, const SbVec3f& b, double valueA, double valueB, double iso, float& t) {
  double fraction = (valueA - iso) / (valueA - valueB);
  if (std::isinf(valueA)) fraction = std::isinf(valueB) ? 0.5 : 1;
  if (!(fraction >= 0)) fraction = 0;
  if (fraction > 1) fraction = 1;
  t = static_cast<float>(fraction);
  SbVec3f point;
  for (int axis = 0; axis < 3; ++axis)
    point[axis] = static_cast<float>(double(a[axis]) - fraction * (double(a[axis]) - double(b[axis])));
  return point;
}

/// Where the surface cuts the edge between nodes at `a` and `b`, and `t`, its fraction of the edge. The nodes have
/// finite coordinates, and no value is NaN.
inline SbVec3f placedSurfacePoint(const SbVec3f& a, const SbVec3f& b, float valueA, float valueB, float iso, float& t) {
  t = (valueA - iso) / (valueA - valueB);
  const SbVec3f point(a[0] - t * (a[0] - b[0]), a[1] - t * (a[1] - b[1]), a[2] - t * (a[2] - b[2]));
  const float sum = point[0] + point[1] + point[2];
  return t >= 0 && t <= 1 && sum - sum == 0 ? point : placedSafely(a, b, valueA, valueB, iso, t);
}

/// Places all points: sets `t` of each, and writes where it is.
template <PiView3D View>
void placeSurfacePoints(const View& view, const float* values, float iso, std::span<PiSurfacePoint> points,
                        SbVec3f* places) {
  PiParallel::forBlocks(points.size(), 1 << 14, [&](std::size_t begin, std::size_t end) {
    auto pointA = view.walker(), pointB = view.walker();
    for (std::size_t i = begin; i < end; ++i) {
      PiSurfacePoint& cut = points[i];
      places[i] = placedSurfacePoint(pointA(cut.a), pointB(cut.b), values[cut.a], values[cut.b], iso, cut.t);
    }
  });
}

#endif
