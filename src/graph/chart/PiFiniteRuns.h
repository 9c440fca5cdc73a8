#ifndef ORMELLE_PIFINITERUNS_H
#define ORMELLE_PIFINITERUNS_H

#include <Inventor/SbBox2f.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

/// Points that aren't finite part a curve into pieces.
namespace PiFiniteRuns {

template <class Vec>
bool isFinite(const Vec& point) {
  // The sum is finite, or it overflows: then it is looked at more closely.
  float sum = 0;
  constexpr int size = static_cast<int>(sizeof(Vec) / sizeof(float));
  for (int i = 0; i < size; ++i) sum += point[i];
  if (std::isfinite(sum)) return true;
  for (int i = 0; i < size; ++i)
    if (!std::isfinite(point[i])) return false;
  return true;
}

/// Calls `use(run)` with each longest sequence of finite points, a span of `points`.
template <class Vec, class Use>
void forEach(std::span<const Vec> points, Use&& use) {
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= points.size(); ++i) {
    if (i < points.size() && isFinite(points[i])) continue;
    if (i > begin) use(points.subspan(begin, i - begin));
    begin = i + 1;
  }
}

/// The larger side of the box of the finite points, once `stretch` has stretched it; 0 without one.
inline float largestExtent(std::span<const SbVec2f> points, const SbVec3f& stretch) {
  SbBox2f box;
  for (const SbVec2f& point : points)
    if (isFinite(point)) box.extendBy(point);
  if (box.isEmpty()) return 0;
  const SbVec2f size = box.getMax() - box.getMin();
  return std::max(std::fabs(size[0] * stretch[0]), std::fabs(size[1] * stretch[1]));
}

}  // namespace PiFiniteRuns

#endif
