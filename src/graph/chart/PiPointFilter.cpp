#include "graph/chart/PiPointFilter.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "graph/chart/PiCurveFill.h"
#include "graph/chart/PiFiniteRuns.h"

namespace {

/// x from the least to the greatest of the curve.
std::vector<float> periodOf(std::span<const SbVec2f> curve, float period) {
  double least = INFINITY, greatest = -INFINITY;
  for (const SbVec2f& point : curve) {
    if (!PiFiniteRuns::isFinite(point)) continue;
    least = std::min<double>(least, point[0]);
    greatest = std::max<double>(greatest, point[0]);
  }
  std::vector<float> list;
  if (!(least <= greatest) || !(period > 0)) return list;
  const double numSteps = std::floor((greatest - least) / period);
  const int num = static_cast<int>(std::min<double>(numSteps, PiPointFilter::MAX_PLACES - 1)) + 1;
  list.reserve(static_cast<std::size_t>(num));
  for (int i = 0; i < num; ++i) list.push_back(static_cast<float>(least + i * static_cast<double>(period)));
  return list;
}

/// Sorted coordinates that are taken away once they are found, so that each is dealt with once however often a curve
/// passes it.
class Sought {
 public:
  explicit Sought(std::vector<float> sorted) : m_x(std::move(sorted)), m_next(m_x.size() + 1) {
    std::iota(m_next.begin(), m_next.end(), std::size_t{0});
  }

  /// Calls `use(i, x)` for each coordinate left from `least` to `greatest`, and takes it away.
  template <class Use>
  void take(float least, float greatest, Use&& use) {
    auto i = static_cast<std::size_t>(std::lower_bound(m_x.begin(), m_x.end(), least) - m_x.begin());
    for (i = left(i); i < m_x.size() && m_x[i] <= greatest; i = left(i)) {
      use(i, m_x[i]);
      m_next[i] = i + 1;
    }
  }

 private:
  /// The first one left from `i` on.
  std::size_t left(std::size_t i) {
    while (m_next[i] != i) {
      m_next[i] = m_next[m_next[i]];
      i = m_next[i];
    }
    return i;
  }

  std::vector<float> m_x;
  std::vector<std::size_t> m_next;  // itself for one that is left, else one further on
};

/// The first place on the curve of each x, in the order of x.
std::vector<SbVec2f> placesAt(std::span<const SbVec2f> curve, std::span<const float> list) {
  std::vector<float> sorted;
  for (const float x : list.first(std::min<std::size_t>(list.size(), PiPointFilter::MAX_PLACES)))
    if (std::isfinite(x)) sorted.push_back(x);
  std::sort(sorted.begin(), sorted.end());
  sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());

  std::vector<SbVec2f> places(sorted.size());
  std::vector<char> isFound(sorted.size());
  Sought sought(std::move(sorted));
  PiFiniteRuns::forEach(curve, [&](std::span<const SbVec2f> run) {
    for (std::size_t p = 0; p < run.size(); ++p) {
      const SbVec2f &from = run[p > 0 ? p - 1 : 0], &to = run[p];
      sought.take(std::min(from[0], to[0]), std::max(from[0], to[0]), [&](std::size_t i, float x) {
        isFound[i] = 1;
        places[i].setValue(x, x == to[0] && x != from[0] ? to[1] : yOnSegment(from, to, x));
      });
    }
  });
  std::size_t num = 0;
  for (std::size_t i = 0; i < places.size(); ++i)
    if (isFound[i]) places[num++] = places[i];
  places.resize(num);
  return places;
}

}  // namespace

std::vector<SbVec2f> PiPointFilter::select(std::span<const SbVec2f> curve) const {
  std::vector<SbVec2f> places;
  const auto add = [&](std::size_t i) {
    if (PiFiniteRuns::isFinite(curve[i])) places.push_back(curve[i]);
  };
  switch (type) {
    case PoCurve::ALL_POINTS:
      places.reserve(curve.size());
      for (std::size_t i = 0; i < curve.size(); ++i) add(i);
      break;
    case PoCurve::INDEX_PERIOD:
      for (std::size_t i = 0; i < curve.size(); i += static_cast<std::size_t>(std::max(indexPeriod, 1))) add(i);
      break;
    case PoCurve::INDEX_LIST:
      for (const std::int32_t i : indexList)
        if (i >= 0 && static_cast<std::size_t>(i) < curve.size()) add(static_cast<std::size_t>(i));
      break;
    case PoCurve::X_PERIOD:
      return placesAt(curve, periodOf(curve, xPeriod));
    case PoCurve::X_LIST:
      return placesAt(curve, xList);
    case PoCurve::INACTIVE:
      break;
  }
  return places;
}
