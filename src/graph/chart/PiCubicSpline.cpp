#include "graph/chart/PiCubicSpline.h"

#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <cfloat>
#include <cmath>
#include <type_traits>

namespace {

template <class Vec>
constexpr int kDim = std::is_same_v<Vec, SbVec2f> ? 2 : 3;

template <class Vec>
bool isFinite(const Vec& point) {
  for (int d = 0; d < kDim<Vec>; ++d)
    if (!std::isfinite(point[d])) return false;
  return true;
}

/// Shares of the two ends and of the second derivatives there, at each step of the way through an interval.
class IntervalWeights {
 public:
  struct Weights {
    double first, second, firstBend, secondBend;
  };

  explicit IntervalWeights(int subdivision) : m_weights(static_cast<size_t>(subdivision)) {
    for (size_t k = 0; k < m_weights.size(); ++k) {
      const double second = static_cast<double>(k) / subdivision, first = 1 - second;
      m_weights[k] = {first, second, (first * first * first - first) / 6, (second * second * second - second) / 6};
    }
  }
  const Weights& operator[](int k) const { return m_weights[static_cast<size_t>(k)]; }

 private:
  std::vector<Weights> m_weights;
};

/// The spline through points that are all finite.
template <class Vec>
class Piece {
 public:
  explicit Piece(std::span<const Vec> points) : m_points(points) {
    setIntervals();
    solveBends();
  }

  /// Writes `subdivision` points for each interval, and the last point.
  void write(const IntervalWeights& weights, int subdivision, Vec* out) const {
    size_t knot = 0;
    for (size_t i = 0; i + 1 < m_points.size(); ++i, out += subdivision) {
      out[0] = m_points[i];
      const double length = m_lengths[i];
      for (int k = 1; k < subdivision; ++k) out[k] = length > 0 ? at(i, knot, length, weights[k]) : m_points[i];
      if (length > 0) ++knot;
    }
    *out = m_points.back();
  }

 private:
  using Bend = std::array<double, static_cast<size_t>(kDim<Vec>)>;

  /// Whether the first coordinate goes on in the direction of `sign` from each point to the next.
  bool isMonotone(float sign) const {
    for (size_t i = 1; i < m_points.size(); ++i)
      if (!(sign * m_points[i][0] > sign * m_points[i - 1][0])) return false;
    return true;
  }

  void setIntervals() {
    std::array<double, static_cast<size_t>(kDim<Vec>)> scales{};
    if (isMonotone(1) || isMonotone(-1)) {
      scales[0] = 1;
    } else {
      for (int d = 0; d < kDim<Vec>; ++d) {
        const auto [low, high] = std::minmax_element(m_points.begin(), m_points.end(),
                                                     [d](const Vec& a, const Vec& b) { return a[d] < b[d]; });
        const double extent = static_cast<double>((*high)[d]) - (*low)[d];
        scales[static_cast<size_t>(d)] = extent > 0 ? 1 / extent : 0;
      }
    }
    m_lengths.resize(m_points.size() - 1);
    for (size_t i = 0; i < m_lengths.size(); ++i) {
      double square = 0;
      for (int d = 0; d < kDim<Vec>; ++d) {
        const double side = difference(i, i + 1, d) * scales[static_cast<size_t>(d)];
        square += side * side;
      }
      m_lengths[i] = std::sqrt(square);
    }
  }

  /// Solves the tridiagonal equations of the natural spline for the second derivatives at the knots: the points, but
  /// without those that equal the one before. The equations are diagonally dominant, so elimination needs no pivots.
  /// (de Boor, A Practical Guide to Splines, chapter IV.)
  void solveBends() {
    std::vector<size_t> knots{0};
    for (size_t i = 0; i < m_lengths.size(); ++i)
      if (m_lengths[i] > 0) knots.push_back(i + 1);
    m_bends.assign(knots.size(), Bend{});
    if (knots.size() < 3) return;

    std::vector<double> above(knots.size());  // what elimination leaves right of the diagonal
    for (size_t k = 1; k + 1 < knots.size(); ++k) {
      const double before = m_lengths[knots[k] - 1], after = m_lengths[knots[k + 1] - 1];
      const double pivot = 2 * (before + after) - before * above[k - 1];
      above[k] = after / pivot;
      for (int d = 0; d < kDim<Vec>; ++d) {
        const auto e = static_cast<size_t>(d);
        const double turn =
            difference(knots[k], knots[k + 1], d) / after - difference(knots[k - 1], knots[k], d) / before;
        m_bends[k][e] = (6 * turn - before * m_bends[k - 1][e]) / pivot;
      }
    }
    for (size_t k = knots.size() - 2; k > 0; --k)
      for (size_t e = 0; e < m_bends[k].size(); ++e) m_bends[k][e] -= above[k] * m_bends[k + 1][e];
  }

  double difference(size_t from, size_t to, int d) const {
    return static_cast<double>(m_points[to][d]) - m_points[from][d];
  }

  Vec at(size_t i, size_t knot, double length, const IntervalWeights::Weights& weights) const {
    Vec point;
    for (int d = 0; d < kDim<Vec>; ++d) {
      const auto e = static_cast<size_t>(d);
      const double bend = weights.firstBend * m_bends[knot][e] + weights.secondBend * m_bends[knot + 1][e];
      const double value =
          weights.first * m_points[i][d] + weights.second * m_points[i + 1][d] + bend * length * length;
      // A spline may swing beyond its points, and so beyond what a float holds.
      point[d] = static_cast<float>(std::clamp<double>(value, -FLT_MAX, FLT_MAX));
    }
    return point;
  }

  std::span<const Vec> m_points;
  std::vector<double> m_lengths;  ///< of the parameter, from point i to i + 1
  std::vector<Bend> m_bends;      ///< second derivative at each knot
};

}  // namespace

template <class Vec>
std::vector<Vec> PiCubicSpline::subdivide(std::span<const Vec> points, int subdivision) {
  assert(subdivision >= 1 && "an interval has at least its own start");
  if (points.empty()) return {};
  Vec gap;
  for (int d = 0; d < kDim<Vec>; ++d) gap[d] = NAN;
  const auto step = static_cast<size_t>(subdivision);
  std::vector<Vec> curve((points.size() - 1) * step + 1, gap);
  const IntervalWeights weights(subdivision);
  for (size_t first = 0; first < points.size();) {
    size_t end = first;
    while (end < points.size() && isFinite(points[end])) ++end;
    if (end > first) {
      Piece<Vec>(points.subspan(first, end - first)).write(weights, subdivision, &curve[first * step]);
    } else {
      curve[first * step] = points[first];
      ++end;
    }
    first = end;
  }
  return curve;
}

template std::vector<SbVec2f> PiCubicSpline::subdivide(std::span<const SbVec2f>, int);
template std::vector<SbVec3f> PiCubicSpline::subdivide(std::span<const SbVec3f>, int);
