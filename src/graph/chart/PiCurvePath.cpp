#include "graph/chart/PiCurvePath.h"

#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <array>
#include <climits>
#include <cmath>
#include <numeric>

#include "graph/chart/PiCubicSpline.h"

namespace {

constexpr int kSmoothPoints = 10;  ///< in an interval, with the node at its start

/// Which of two neighbouring nodes a coordinate is taken from.
enum Place : unsigned char { FROM, MIDDLE, TO };

struct Corner {
  Place x, y;
};

/// The way from a node to the next: up to three corners and then, of most interpretations, the next node itself.
struct Pattern {
  int numCorners;
  Corner corners[3];
  bool endsOnNode = true;
  bool dropsRepeats = true;

  int numPoints(bool isLast) const { return numCorners + (endsOnNode || isLast); }
};

/// In the order of PoMesh1DHints::GeomInterpretation.
constexpr Pattern kPatterns[] = {
    {0, {}, true, false},                                   // AS_IS
    {kSmoothPoints - 1, {}, true, false},                   // SMOOTH, whose points come from the spline
    {1, {{TO, FROM}}},                                      // STAIRS_X
    {1, {{FROM, TO}}},                                      // STAIRS_Y
    {2, {{FROM, MIDDLE}, {TO, MIDDLE}}, false},             // HISTO_X
    {2, {{MIDDLE, FROM}, {MIDDLE, TO}}, false},             // HISTO_Y
    {3, {{FROM, MIDDLE}, {MIDDLE, MIDDLE}, {MIDDLE, TO}}},  // STAIRS_2X
    {3, {{MIDDLE, FROM}, {MIDDLE, MIDDLE}, {TO, MIDDLE}}},  // STAIRS_2Y
};

/// A point's share of the way along a few segments, by length.
class Way {
 public:
  void start(float x, float y) {
    m_num = 0;
    m_total = 0;
    m_x = x;
    m_y = y;
  }
  void goTo(float x, float y) {
    const double dx = static_cast<double>(x) - m_x, dy = static_cast<double>(y) - m_y;
    m_total += std::sqrt(dx * dx + dy * dy);
    m_lengths[static_cast<size_t>(m_num++)] = m_total;
    m_x = x;
    m_y = y;
  }
  /// Of the k-th point gone to; 0 on a way without a length.
  float shareOf(int k) const {
    return m_total > 0 && std::isfinite(m_total) ? static_cast<float>(m_lengths[static_cast<size_t>(k)] / m_total) : 0;
  }

 private:
  std::array<double, kSmoothPoints> m_lengths{};
  int m_num = 0;
  double m_total = 0;
  float m_x = 0, m_y = 0;
};

class Walk {
 public:
  /// `z` is empty for a path in the plane.
  Walk(const Pattern& pattern, std::span<const float> x, std::span<const float> y, std::span<const float> z,
       const PiCurvePath::Wants& wants)
      : m_pattern(pattern), m_nodeX(x), m_nodeY(y), m_nodeZ(z), m_wants(wants) {}

  PiCurvePath go() {
    const int numNodes = static_cast<int>(m_nodeX.size());
    reserve();
    add(m_nodeX[0], m_nodeY[0], m_nodeZ.empty() ? 0 : m_nodeZ[0], PiMaterialMix::of(0));
    endNode();
    for (int to = 1; to < numNodes; ++to) {
      goTo(to, m_pattern.numPoints(to == numNodes - 1));
      endNode();
    }
    return std::move(m_path);
  }

 private:
  void reserve() {
    const size_t num = 1 + (m_nodeX.size() - 1) * static_cast<size_t>(m_pattern.numPoints(false)) + 1;
    m_path.x = PiNewArray<float>(num);
    m_path.y = PiNewArray<float>(num);
    if (!m_nodeZ.empty()) m_path.z = PiNewArray<float>(num);
    if (m_wants.mixes) m_path.mixes.reserve(num);
    if (m_wants.nodePoints) m_path.nodePoints = PiNewArray<int>(m_nodeX.size());
  }

  void goTo(int to, int numPoints) {
    const auto t = static_cast<size_t>(to);
    const float x[] = {m_nodeX[t - 1], std::midpoint(m_nodeX[t - 1], m_nodeX[t]), m_nodeX[t]};
    const float y[] = {m_nodeY[t - 1], std::midpoint(m_nodeY[t - 1], m_nodeY[t]), m_nodeY[t]};
    float z[3] = {};
    if (!m_nodeZ.empty()) {
      z[FROM] = m_nodeZ[t - 1];
      z[MIDDLE] = std::midpoint(m_nodeZ[t - 1], m_nodeZ[t]);
      z[TO] = m_nodeZ[t];
    }
    const bool isMixed = m_wants.mixes && !m_wants.isPerPart;
    if (isMixed) {
      m_way.start(x[FROM], y[FROM]);
      for (int c = 0; c < m_pattern.numCorners; ++c) m_way.goTo(x[m_pattern.corners[c].x], y[m_pattern.corners[c].y]);
      m_way.goTo(x[TO], y[TO]);
    }
    for (int c = 0; c < m_pattern.numCorners; ++c)
      add(x[m_pattern.corners[c].x], y[m_pattern.corners[c].y], z[m_pattern.corners[c].y],
          isMixed ? PiMaterialMix{to - 1, to, m_way.shareOf(c)} : PiMaterialMix::of(to - 1));
    if (numPoints > m_pattern.numCorners) add(x[TO], y[TO], z[TO], PiMaterialMix::of(to));
  }

  void add(float x, float y, float z, const PiMaterialMix& mix) {
    if (m_pattern.dropsRepeats && m_path.x.num() > 0 && x == m_path.x.back() && y == m_path.y.back() &&
        (m_nodeZ.empty() || z == m_path.z.back())) {
      // The segment that starts here is that of the later point.
      if (m_wants.mixes) m_path.mixes.back() = mix;
      return;
    }
    m_path.x.add(x);
    m_path.y.add(y);
    if (!m_nodeZ.empty()) m_path.z.add(z);
    if (m_wants.mixes) m_path.mixes.push_back(mix);
  }

  void endNode() {
    if (m_wants.nodePoints) m_path.nodePoints.add(static_cast<int>(m_path.x.num()) - 1);
  }

  const Pattern& m_pattern;
  const std::span<const float> m_nodeX, m_nodeY, m_nodeZ;
  const PiCurvePath::Wants m_wants;
  PiCurvePath m_path;
  Way m_way;
};

PiCurvePath makeSmoothPath(std::span<const float> x, std::span<const float> y, const PiCurvePath::Wants& wants) {
  std::vector<SbVec2f> nodes(x.size());
  for (size_t n = 0; n < nodes.size(); ++n) nodes[n].setValue(x[n], y[n]);
  const std::vector<SbVec2f> curve = PiCubicSpline::subdivide(std::span<const SbVec2f>(nodes), kSmoothPoints);

  PiCurvePath path;
  path.x = PiNewArray<float>(curve.size());
  path.y = PiNewArray<float>(curve.size());
  for (const SbVec2f& point : curve) {
    path.x.add(point[0]);
    path.y.add(point[1]);
  }
  const int numNodes = static_cast<int>(nodes.size());
  if (wants.nodePoints) {
    path.nodePoints = PiNewArray<int>(nodes.size());
    for (int n = 0; n < numNodes; ++n) path.nodePoints.add(n * kSmoothPoints);
  }
  if (!wants.mixes) return path;

  path.mixes.reserve(curve.size());
  Way way;
  for (int n = 0; n < numNodes - 1; ++n) {
    const SbVec2f* point = &curve[static_cast<size_t>(n) * kSmoothPoints];
    way.start(point[0][0], point[0][1]);
    if (!wants.isPerPart)
      for (int k = 1; k <= kSmoothPoints; ++k) way.goTo(point[k][0], point[k][1]);
    path.mixes.push_back(PiMaterialMix::of(n));
    for (int k = 1; k < kSmoothPoints; ++k)
      path.mixes.push_back(wants.isPerPart ? PiMaterialMix::of(n) : PiMaterialMix{n, n + 1, way.shareOf(k - 1)});
  }
  path.mixes.push_back(PiMaterialMix::of(numNodes - 1));
  return path;
}

PiCurvePath makeSmoothPath(std::span<const float> x, std::span<const float> y, std::span<const float> z) {
  std::vector<SbVec3f> nodes(x.size());
  for (size_t n = 0; n < nodes.size(); ++n) nodes[n].setValue(x[n], y[n], z[n]);
  const std::vector<SbVec3f> curve = PiCubicSpline::subdivide(std::span<const SbVec3f>(nodes), kSmoothPoints);
  PiCurvePath path;
  PiNewArray<float>* const coordinates[] = {&path.x, &path.y, &path.z};
  for (int axis = 0; axis < 3; ++axis) {
    *coordinates[axis] = PiNewArray<float>(curve.size());
    for (const SbVec3f& point : curve) coordinates[axis]->add(point[axis]);
  }
  return path;
}

bool isCountable(const Pattern& pattern, size_t numNodes) {
  return numNodes * static_cast<size_t>(pattern.numCorners + 1) < static_cast<size_t>(INT_MAX);
}

}  // namespace

PiCurvePath PiCurvePath::make(PoMesh1DHints::GeomInterpretation interpretation, std::span<const float> x,
                              std::span<const float> y, const Wants& wants) {
  if (x.empty()) return {};
  if (!isCountable(kPatterns[interpretation], x.size())) interpretation = PoMesh1DHints::AS_IS;
  if (interpretation == PoMesh1DHints::SMOOTH) return makeSmoothPath(x, y, wants);
  return Walk(kPatterns[interpretation], x, y, {}, wants).go();
}

PiCurvePath PiCurvePath::makeInSpace(PoMesh1DHints::GeomInterpretation interpretation, std::span<const float> x,
                                     std::span<const float> y, std::span<const float> z) {
  if (x.empty()) return {};
  if (!isCountable(kPatterns[interpretation], x.size())) interpretation = PoMesh1DHints::AS_IS;
  if (interpretation == PoMesh1DHints::SMOOTH) return makeSmoothPath(x, y, z);
  return Walk(kPatterns[interpretation], x, y, z, {}).go();
}
