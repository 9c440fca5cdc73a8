#include "graph/data/PiIsovalueAdjustment.h"

#include <Ormelle/PbIsovaluesList.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "graph/data/PiSortedSearch.h"

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
// The distance that stands for all greater ones: a level farther than this from all other values moves by a hundredth
// of it, which must not be lost beside the level.
float farthest(float iso) { return std::max(1e30f, std::fabs(iso) * 0.01f); }

// The finite values of up to three arrays, taken as one.
class NodeValues {
 public:
  NodeValues(int n1, const float* v1, int n2 = 0, const float* v2 = nullptr, int n3 = 0, const float* v3 = nullptr)
      : m_arrays{span(n1, v1), span(n2, v2), span(n3, v3)} {}

  template <class Visit>
  void forEach(Visit visit) const {
    for (std::span<const float> values : m_arrays)
      for (float value : values)
        if (std::isfinite(value)) visit(value);
  }

  long numOfFirst() const {
    return std::count_if(m_arrays[0].begin(), m_arrays[0].end(), [](float v) { return std::isfinite(v); });
  }

  // The smallest distance that isn't 0 between `iso` and a value. Asked again and again, it sorts the values:
  // neighbours that are consecutive floats would otherwise cost a pass each.
  float nearestDistance(float iso) {
    float distance = farthest(iso);
    const auto consider = [&](float value) {
      if (value != iso) distance = std::min(distance, std::fabs(value - iso));
    };
    if (++m_numPasses <= 4) {
      forEach(consider);
      return distance;
    }
    if (m_sorted.empty()) {
      forEach([this](float value) { m_sorted.push_back(value); });
      std::sort(m_sorted.begin(), m_sorted.end());
    }
    const int num = static_cast<int>(m_sorted.size());
    const int below = PiSortedSearch::firstNotBelow(m_sorted.data(), num, iso) - 1;
    const int above = PiSortedSearch::firstAbove(m_sorted.data(), num, iso);
    if (below >= 0) consider(m_sorted[below]);
    if (above < num) consider(m_sorted[above]);
    return distance;
  }

 private:
  static std::span<const float> span(int n, const float* values) {
    return {values, values && n > 0 ? static_cast<std::size_t>(n) : 0};
  }

  std::span<const float> m_arrays[3];
  std::vector<float> m_sorted;
  int m_numPasses = 0;
};

// Moves `iso` along `direction` (1 or -1) to where no value is. `delta` is the distance to the nearest other value.
// Each round either ends or goes on past one more float at least, so it comes to an end; false if that is the last
// float.
bool moveAlong(float& iso, float direction, float delta, NodeValues& values) {
  float moved = iso;
  for (;;) {
    const float old = moved;
    float factor = 0.01f;
    moved += delta * factor * direction;
    while (moved == old && factor < 0.1f) {
      factor += 0.01f;
      moved += delta * factor * direction;
    }
    if (!std::isfinite(moved)) return false;
    if (moved != old) break;
    // The values are so close that a float can't part them: go on from the next one.
    moved += delta * direction;
    if (moved == old) moved = std::nextafter(old, direction * kInfinity);
    if (!std::isfinite(moved)) return false;
    delta = values.nearestDistance(moved);
  }
  iso = moved;
  return true;
}

bool moveOff(float& iso, bool hasGreater, float delta, NodeValues& values) {
  const float direction = hasGreater ? 1.0f : -1.0f;
  return moveAlong(iso, direction, delta, values) || moveAlong(iso, -direction, delta, values);
}

// What one pass over the values tells about each of several ascending levels.
class LevelNeighbours {
 public:
  LevelNeighbours(std::span<const float> levels, const NodeValues& values)
      : m_levels(levels), m_numEqual(levels.size()), m_gaps(levels.size() + 1) {
    int gap = 0;
    values.forEach([&](float value) { gap = add(value, gap); });
    // Downwards, the least value above each gap; upwards, the greatest below.
    const int num = static_cast<int>(levels.size());
    for (int i = num - 1; i >= 0; --i)
      m_gaps[i].min = std::min(m_gaps[i].min, m_numEqual[i] ? levels[i] : m_gaps[i + 1].min);
    for (int i = 0; i < num; ++i)
      m_gaps[i + 1].max = std::max(m_gaps[i + 1].max, m_numEqual[i] ? levels[i] : m_gaps[i].max);
  }

  long numEqual(int level) const { return m_numEqual[level]; }
  float below(int level) const { return m_gaps[level].max; }
  float above(int level) const { return m_gaps[level + 1].min; }

 private:
  // The values between two neighbouring levels; gap i lies below level i.
  struct Gap {
    float min = kInfinity;
    float max = -kInfinity;
  };

  // Neighbouring values mostly fall into the same gap, so the last one is tried first.
  int add(float value, int gap) {
    const int num = static_cast<int>(m_levels.size());
    if ((gap > 0 && !(m_levels[gap - 1] < value)) || (gap < num && !(value < m_levels[gap]))) {
      gap = PiSortedSearch::firstNotBelow(m_levels.data(), num, value);
      if (gap < num && m_levels[gap] == value) {
        ++m_numEqual[gap];
        return gap;
      }
    }
    m_gaps[gap].min = std::min(m_gaps[gap].min, value);
    m_gaps[gap].max = std::max(m_gaps[gap].max, value);
    return gap;
  }

  std::span<const float> m_levels;
  std::vector<long> m_numEqual;
  std::vector<Gap> m_gaps;
};

}  // namespace

int PiIsovalueAdjustment::adjustIsoval(int n, const float* values, float& iso) {
  return adjustIsovalMultiple(n, values, 0, nullptr, 0, nullptr, iso);
}

int PiIsovalueAdjustment::adjustIsovalMultiple(int n1, const float* v1, int n2, const float* v2, int n3,
                                               const float* v3, float& iso) {
  m_isAdjusted = 0;
  NodeValues values(n1, v1, n2, v2, n3, v3);
  long numEqual = 0;
  bool hasGreater = false;
  values.forEach([&](float value) {
    numEqual += value == iso;
    hasGreater |= value > iso;
  });
  if (numEqual == 0 || numEqual >= values.numOfFirst()) return 0;
  m_isAdjusted = moveOff(iso, hasGreater, values.nearestDistance(iso), values);
  return m_isAdjusted;
}

int PiIsovalueAdjustment::adjustIsovalList(const PbIsovaluesList& list, int n1, const float* v1, int n2,
                                           const float* v2, int n3, const float* v3) {
  m_isAdjusted = 0;
  int numLevels, isRegular;
  float min, max, step;
  const float* levels = list.getIsoList(numLevels, min, max, step, isRegular);
  m_isovalues.assign(levels, levels + numLevels);
  if (numLevels == 0) return 0;

  NodeValues values(n1, v1, n2, v2, n3, v3);
  const LevelNeighbours neighbours({levels, static_cast<std::size_t>(numLevels)}, values);
  const long numOfFirst = values.numOfFirst();
  for (int i = 0; i < numLevels; ++i) {
    if (i > 0 && levels[i] == levels[i - 1]) {
      m_isovalues[i] = m_isovalues[i - 1];
      continue;
    }
    if (neighbours.numEqual(i) == 0 || neighbours.numEqual(i) >= numOfFirst) continue;
    int last = i;  // of the levels equal to this one
    while (last + 1 < numLevels && levels[last + 1] == levels[i]) ++last;
    const float above = neighbours.above(last), below = neighbours.below(i);
    const float delta = std::min({farthest(levels[i]), levels[i] - below, above - levels[i]});
    if (moveOff(m_isovalues[i], above < kInfinity, delta, values)) m_isAdjusted = 1;
  }
  // A level may have passed one that lay closer than the values.
  std::sort(m_isovalues.begin(), m_isovalues.end());
  return m_isAdjusted;
}
