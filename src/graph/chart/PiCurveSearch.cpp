#include "graph/chart/PiCurveSearch.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

/// How many of the sorted coordinates are below a value that moves, and how many not above it.
///
/// A move passes just the coordinates that the segment holds, so that all moves along a curve cost what is found.
class Cursor {
 public:
  explicit Cursor(std::span<const float> sorted) : m_sorted(sorted) {}

  void jumpTo(float value) {
    m_below = static_cast<size_t>(std::lower_bound(m_sorted.begin(), m_sorted.end(), value) - m_sorted.begin());
    m_notAbove = static_cast<size_t>(std::upper_bound(m_sorted.begin(), m_sorted.end(), value) - m_sorted.begin());
  }
  void moveTo(float value) {
    while (m_below < m_sorted.size() && m_sorted[m_below] < value) ++m_below;
    while (m_below > 0 && m_sorted[m_below - 1] >= value) --m_below;
    while (m_notAbove < m_sorted.size() && m_sorted[m_notAbove] <= value) ++m_notAbove;
    while (m_notAbove > 0 && m_sorted[m_notAbove - 1] > value) --m_notAbove;
  }
  size_t below() const { return m_below; }
  size_t notAbove() const { return m_notAbove; }

 private:
  std::span<const float> m_sorted;
  size_t m_below = 0, m_notAbove = 0;
};

}  // namespace

bool PiCurveSearch::isFinite(size_t point) const {
  return std::isfinite(m_along[point]) && std::isfinite(m_across[point]);
}

PiFiniteRange PiCurveSearch::range() const {
  PiFiniteRange range(nullptr, 0);
  for (size_t p = 0; p < m_along.size(); ++p) {
    if (!isFinite(p)) continue;
    range.low = std::min(range.low, m_along[p]);
    range.high = std::max(range.high, m_along[p]);
  }
  return range;
}

PiCurvePlace PiCurveSearch::placeOn(size_t segment, float coordinate) const {
  const double start = m_along[segment], startAcross = m_across[segment];
  const double t = (coordinate - start) / (m_along[segment + 1] - start);
  const auto across = static_cast<float>(startAcross + t * (m_across[segment + 1] - startAcross));
  return {static_cast<int>(segment), static_cast<float>(t), m_isAlongX ? coordinate : across,
          m_isAlongX ? across : coordinate};
}

std::vector<PiCurvePlace> PiCurveSearch::find(std::span<const float> coordinates, int maxNum) const {
  std::vector<int> order;
  order.reserve(coordinates.size());
  for (size_t c = 0; c < coordinates.size(); ++c)
    if (std::isfinite(coordinates[c])) order.push_back(static_cast<int>(c));
  const auto coordinateOf = [&](int c) { return coordinates[static_cast<size_t>(c)]; };
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return coordinateOf(a) < coordinateOf(b); });
  std::vector<float> sorted;
  sorted.reserve(order.size());
  for (const int c : order) sorted.push_back(coordinateOf(c));

  struct Hit {
    int coordinate, segment;
  };
  std::vector<Hit> hits;
  std::vector<size_t> starts(coordinates.size() + 1);  // of the places of each coordinate, once summed up
  Cursor cursor(sorted);
  bool isCursorSet = false;
  for (size_t p = 0; p < m_along.size(); ++p) {
    if (!isFinite(p)) {
      isCursorSet = false;
      continue;
    }
    if (!isCursorSet) {
      cursor.jumpTo(m_along[p]);
      isCursorSet = true;
      continue;
    }
    const bool isRising = m_along[p] > m_along[p - 1];
    const size_t former = isRising ? cursor.below() : cursor.notAbove();
    cursor.moveTo(m_along[p]);
    const size_t latter = isRising ? cursor.below() : cursor.notAbove();
    for (size_t s = std::min(former, latter); s < std::max(former, latter); ++s) {
      if (hits.size() >= static_cast<size_t>(maxNum)) break;
      hits.push_back({order[s], static_cast<int>(p) - 1});
      ++starts[static_cast<size_t>(order[s]) + 1];
    }
    if (hits.size() >= static_cast<size_t>(maxNum)) break;
  }

  std::partial_sum(starts.begin(), starts.end(), starts.begin());
  std::vector<PiCurvePlace> places(hits.size());
  for (const Hit& hit : hits)
    places[starts[static_cast<size_t>(hit.coordinate)]++] =
        placeOn(static_cast<size_t>(hit.segment), coordinateOf(hit.coordinate));
  return places;
}

std::vector<PiCurvePlace> PiCurveSearch::findCrossings(float coordinate) const {
  std::vector<PiCurvePlace> places;
  for (size_t p = 1; p < m_along.size(); ++p) {
    const float start = m_along[p - 1], end = m_along[p];
    if (!((start < coordinate && coordinate < end) || (end < coordinate && coordinate < start))) continue;
    if (isFinite(p - 1) && isFinite(p)) places.push_back(placeOn(p - 1, coordinate));
  }
  return places;
}
