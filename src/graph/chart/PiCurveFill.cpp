#include "graph/chart/PiCurveFill.h"

#include <cmath>
#include <utility>

#include "graph/chart/PiFiniteRuns.h"

namespace {

constexpr float kOnThreshold = 1e-20F;

// The toolkit needs time with the square of the corners of a polygon, and then errs now and then.
constexpr std::size_t kMaxCorners = 64;

enum Course {
  STRICT,  ///< each point is further along x than the one before, but for those on the threshold at the ends
  ALONG,   ///< there are steps straight up or down
  TURNS    ///< it goes back
};

Course courseOf(std::span<const SbVec3f> corners) {
  bool isRising = false, isFalling = false, isStep = false;
  for (std::size_t i = 1; i < corners.size(); ++i) {
    const float from = corners[i - 1][0], to = corners[i][0];
    isRising = isRising || to > from;
    isFalling = isFalling || to < from;
    isStep = isStep || (to == from && i > 1 && i + 1 < corners.size());
  }
  if (isRising && isFalling) return TURNS;
  // A step next to an end makes three corners on a line.
  const std::size_t last = corners.size() - 1;
  isStep = isStep || corners[0][0] == corners[2][0] || corners[last][0] == corners[last - 2][0];
  return isStep ? ALONG : STRICT;
}

class Polygons {
 public:
  Polygons(PiCurveFill& fill, float threshold) : m_fill(fill), m_threshold(threshold) {}

  void addRun(std::span<const SbVec2f> run) {
    if (run.size() < 2) return;
    addOnThreshold(run.front()[0]);
    for (std::size_t i = 0; i < run.size(); ++i) {
      if (i > 0 && isCrossing(run[i - 1][1], run[i][1])) cutAt(xOnSegment(run[i - 1], run[i], m_threshold));
      if (std::fabs(run[i][1] - m_threshold) < kOnThreshold)
        cutAt(run[i][0]);
      else
        add(SbVec3f(run[i][0], run[i][1], 0));
    }
    addOnThreshold(run.back()[0]);
    close();
  }

 private:
  bool isCrossing(float from, float to) const {
    return (from < m_threshold && m_threshold < to) || (to < m_threshold && m_threshold < from);
  }
  void addOnThreshold(float x) { add(SbVec3f(x, m_threshold, 0)); }
  void cutAt(float x) {
    addOnThreshold(x);
    close();
    addOnThreshold(x);
  }
  void add(const SbVec3f& point) {
    if (m_fill.points.num() == m_first || m_fill.points.back() != point) m_fill.points.add(point);
  }
  /// Ends the polygon, which is forgotten if it is none.
  void close() {
    const std::size_t num = m_fill.points.num() - m_first;
    if (num > 2)
      m_fill.numCorners.push_back(static_cast<std::int32_t>(num));
    else
      m_fill.points.truncate(m_first);
    m_first = m_fill.points.num();
  }

  PiCurveFill& m_fill;
  const float m_threshold;
  std::size_t m_first = 0;  // of the corners of the polygon under way
};

/// Slices instead of the polygons.
class Slices {
 public:
  explicit Slices(float threshold, std::size_t numCorners) : m_threshold(threshold) {
    m_fill.points = PiNewArray<SbVec3f>(4 * numCorners);
    m_fill.numCorners.reserve(numCorners);
    m_fill.areSlices = true;
  }

  void addPolygon(std::span<const SbVec3f> corners) {
    if (courseOf(corners) != TURNS) {
      for (std::size_t i = 1; i < corners.size(); ++i) addSlice(corners[i - 1], corners[i]);
      return;
    }
    for (const SbVec3f& corner : corners) m_fill.points.add(corner);
    m_fill.numCorners.push_back(static_cast<std::int32_t>(corners.size()));
    m_fill.areSlices = false;
  }
  PiCurveFill take() { return std::move(m_fill); }

 private:
  void addSlice(const SbVec3f& from, const SbVec3f& to) {
    if (from[0] == to[0]) return;
    const std::size_t first = m_fill.points.num();
    // Counter-clockwise.
    const bool isReversed = (to[0] > from[0]) == (from[1] > m_threshold || to[1] > m_threshold);
    const SbVec3f &start = isReversed ? to : from, &end = isReversed ? from : to;
    m_fill.points.add(start);
    m_fill.points.add(end);
    if (end[1] != m_threshold) m_fill.points.add(SbVec3f(end[0], m_threshold, 0));
    if (start[1] != m_threshold) m_fill.points.add(SbVec3f(start[0], m_threshold, 0));
    m_fill.numCorners.push_back(static_cast<std::int32_t>(m_fill.points.num() - first));
  }

  const float m_threshold;
  PiCurveFill m_fill;
};

template <class Use>
void forEachPolygon(const PiCurveFill& fill, Use&& use) {
  std::size_t first = 0;
  for (const std::int32_t num : fill.numCorners) {
    use(fill.points.span().subspan(first, static_cast<std::size_t>(num)));
    first += static_cast<std::size_t>(num);
  }
}

/// The toolkit takes any quadrangle for convex, whatever the hints say.
bool isConcaveQuad(std::span<const SbVec3f> corners) {
  if (corners.size() != 4) return false;
  bool isLeft = false, isRight = false;
  for (std::size_t i = 0; i < 4; ++i) {
    const SbVec3f in = corners[(i + 1) % 4] - corners[i], out = corners[(i + 2) % 4] - corners[(i + 1) % 4];
    const float turn = in[0] * out[1] - in[1] * out[0];
    isLeft = isLeft || turn > 0;
    isRight = isRight || turn < 0;
  }
  return isLeft && isRight;
}

/// Whether the toolkit would draw some of the polygons slowly, or wrongly.
bool isHard(const PiCurveFill& fill) {
  bool isHard = false;
  forEachPolygon(fill, [&](std::span<const SbVec3f> corners) {
    if (isHard) return;
    const Course course = courseOf(corners);
    isHard = course == ALONG || (course == STRICT && (corners.size() > kMaxCorners || isConcaveQuad(corners)));
  });
  return isHard;
}

float onLine(float p, float q, float pAcross, float qAcross, float at) {
  if (p == q) return pAcross;
  const double t = (static_cast<double>(at) - p) / (static_cast<double>(q) - p);
  return static_cast<float>(pAcross + t * (static_cast<double>(qAcross) - pAcross));
}

}  // namespace

float xOnSegment(const SbVec2f& p, const SbVec2f& q, float y) { return onLine(p[1], q[1], p[0], q[0], y); }

float yOnSegment(const SbVec2f& p, const SbVec2f& q, float x) { return onLine(p[0], q[0], p[1], q[1], x); }

PiCurveFill PiCurveFill::make(std::span<const SbVec2f> curve, float threshold) {
  PiCurveFill fill;
  if (!std::isfinite(threshold)) return fill;
  fill.points = PiNewArray<SbVec3f>(5 * curve.size());  // three for each point, and two for the ends of a run
  Polygons polygons(fill, threshold);
  PiFiniteRuns::forEach(curve, [&](std::span<const SbVec2f> run) { polygons.addRun(run); });
  if (!isHard(fill)) return fill;
  Slices slices(threshold, fill.points.num());
  forEachPolygon(fill, [&](std::span<const SbVec3f> corners) { slices.addPolygon(corners); });
  return slices.take();
}
