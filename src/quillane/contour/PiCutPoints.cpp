#include "quillane/contour/PiCutPoints.h"

#include <cmath>

namespace {

bool areFinite(const SbVec3f& point) { return std::isfinite(point[0] + point[1] + point[2]); }

// What a float can't compute: differences beyond its range, and the infinite values of nodes, which push a level
// against the other end.
float positionOfLevel(float level, float low, float high) {
  const bool isLowInfinite = std::isinf(low), isHighInfinite = std::isinf(high);
  if (isLowInfinite && isHighInfinite) return 0.5F;
  if (isLowInfinite) return 1;
  if (isHighInfinite) return 0;
  return static_cast<float>((static_cast<double>(level) - low) / (static_cast<double>(high) - low));
}

SbVec3f pointBetween(const SbVec3f& low, const SbVec3f& high, double t) {
  SbVec3f point;
  for (int c = 0; c < 3; ++c) point[c] = static_cast<float>(low[c] * (1 - t) + high[c] * t);
  return point;
}

// A level this near to the value of an end cuts the edge there. Coordinates of points in between would be too coarse to
// tell which way the edge goes, and polygons between them would have no area.
constexpr float kNearEnd = 1e-6F;

// Whether no float or hardly one lies between a point of an edge and an end of it.
bool isSame(const SbVec3f& point, const SbVec3f& end, const SbVec3f& rounding) {
  return std::fabs(point[0] - end[0]) <= rounding[0] && std::fabs(point[1] - end[1]) <= rounding[1] &&
         std::fabs(point[2] - end[2]) <= rounding[2];
}

}  // namespace

int PiCutPoints::cut(const PiEdgeEnd& low, const PiEdgeEnd& high, const PiContourLevels& levels) {
  const int first = num();
  const auto numCuts = static_cast<std::size_t>(high.band - low.band);
  SbVec3f* points = m_points.room(numCuts);
  int* nodes = m_nodes.room(numCuts);
  int* indices = m_levels.room(numCuts);

  const SbVec3f along = high.point - low.point;
  const float range = high.value - low.value;
  SbVec3f rounding;
  for (int c = 0; c < 3; ++c)
    rounding[c] = std::numeric_limits<float>::epsilon() * std::max(std::fabs(low.point[c]), std::fabs(high.point[c]));

  for (int level = low.band; level < high.band; ++level) {
    const float iso = levels.level(level);
    float t = (iso - low.value) / range;
    if (!(t >= 0 && t <= 1) || !std::isfinite(range)) t = positionOfLevel(iso, low.value, high.value);
    SbVec3f point = low.point + along * t;
    if (!areFinite(point)) point = pointBetween(low.point, high.point, t);
    int node = -1;
    if (t <= kNearEnd || isSame(point, low.point, rounding)) {
      node = low.node;
      point = low.point;
    } else if (1 - t <= kNearEnd || isSame(point, high.point, rounding)) {
      node = high.node;
      point = high.point;
    }
    *points++ = point;
    *nodes++ = node;
    *indices++ = level;
  }
  m_points.addWritten(numCuts);
  m_nodes.addWritten(numCuts);
  m_levels.addWritten(numCuts);
  return first;
}
