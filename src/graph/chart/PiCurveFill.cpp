#include "graph/chart/PiCurveFill.h"

#include <cmath>

#include "graph/chart/PiFiniteRuns.h"

namespace {

constexpr float kOnThreshold = 1e-20F;

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
    if (m_fill.points.size() == m_first || m_fill.points.back() != point) m_fill.points.push_back(point);
  }
  /// Ends the polygon, which is forgotten if it is none.
  void close() {
    const std::size_t num = m_fill.points.size() - m_first;
    if (num > 2)
      m_fill.numCorners.push_back(static_cast<std::int32_t>(num));
    else
      m_fill.points.resize(m_first);
    m_first = m_fill.points.size();
  }

  PiCurveFill& m_fill;
  const float m_threshold;
  std::size_t m_first = 0;  // of the corners of the polygon under way
};

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
  fill.points.reserve(curve.size() + 2);
  Polygons polygons(fill, threshold);
  PiFiniteRuns::forEach(curve, [&](std::span<const SbVec2f> run) { polygons.addRun(run); });
  return fill;
}
