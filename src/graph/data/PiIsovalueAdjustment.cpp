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

  // The smallest distance that isn't 0 between `iso` and a value. In lanes, which the compiler takes several at once: a
  // volume has millions of values. What isn't finite is at no smaller distance than any.
  float nearestDistance(float iso) const {
    constexpr std::size_t kLanes = 16;
    float nearest[kLanes];
    std::fill(nearest, nearest + kLanes, farthest(iso));
    for (std::span<const float> values : m_arrays) {
      const std::size_t whole = values.size() / kLanes * kLanes;
      for (std::size_t i = 0; i < whole; i += kLanes)
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
          const float distance = std::fabs(values[i + lane] - iso);
          nearest[lane] = distance < nearest[lane] && distance > 0 ? distance : nearest[lane];
        }
      for (const float value : values.subspan(whole)) {
        const float distance = std::fabs(value - iso);
        if (distance < nearest[0] && distance > 0) nearest[0] = distance;
      }
    }
    return *std::min_element(nearest, nearest + kLanes);
  }

  // How many values are equal to `iso`, which is finite, and whether any finite one is greater.
  long numEqual(float iso, bool& hasGreater) const {
    long num = 0;
    unsigned areGreater = 0;
    for (std::span<const float> values : m_arrays)
      for (std::size_t begin = 0; begin < values.size(); begin += kBlock) {
        int numInBlock = 0;
        for (const float value : values.subspan(begin, std::min(kBlock, values.size() - begin))) {
          numInBlock += value == iso ? 1 : 0;
          areGreater |= (value > iso ? 1U : 0U) & (value <= std::numeric_limits<float>::max() ? 1U : 0U);
        }
        num += numInBlock;
      }
    hasGreater = areGreater != 0;
    return num;
  }

 private:
  static std::span<const float> span(int n, const float* values) {
    return {values, values && n > 0 ? static_cast<std::size_t>(n) : 0};
  }

  static constexpr std::size_t kBlock = 1 << 16;

  std::span<const float> m_arrays[3];
};

// Answers questions about the values beside some levels from the few that lie about there. If that takes too many
// passes, as with many levels among values that lie close all along, it sorts all of them.
class NearValues {
 public:
  explicit NearValues(const NodeValues& values) : m_values(values) {}

  // As NodeValues::nearestDistance().
  float nearestDistance(float iso) {
    for (;;) {
      float distance = farthest(iso);
      const int num = static_cast<int>(m_sorted.size());
      const int notBelow = PiSortedSearch::firstNotBelow(m_sorted.data(), num, iso);
      const int above = PiSortedSearch::firstAbove(m_sorted.data(), num, iso);
      if (notBelow > 0) distance = std::min(distance, iso - m_sorted[notBelow - 1]);
      if (above < num) distance = std::min(distance, m_sorted[above] - iso);
      if (iso - distance >= m_low && iso + distance <= m_high) return distance;
      collect(iso);
    }
  }

  // The next float along `direction` that is no value; infinite if there is none.
  float nextFree(float iso, float direction) {
    // Levels come in ascending order, and what one of them walked past needs no second walk.
    if (direction > 0 && iso >= m_walkedFrom && iso < m_walkedTo) return m_walkedTo;
    float next = iso;
    do next = std::nextafter(next, direction * kInfinity);
    while (contains(next));
    if (direction > 0) {
      m_walkedFrom = iso;
      m_walkedTo = next;
    }
    return next;
  }

 private:
  bool contains(float value) {
    if (value < m_low || value > m_high) collect(value);
    return std::binary_search(m_sorted.begin(), m_sorted.end(), value);
  }

  void collect(float iso) {
    const float ulp = std::nextafter(std::fabs(iso), kInfinity) - std::fabs(iso);
    const float width = ++m_numPasses <= kMaxPasses ? 1024 * ulp : kInfinity;
    m_low = iso - width;
    m_high = iso + width;
    m_sorted.clear();
    m_values.forEach([this](float value) {
      if (value >= m_low && value <= m_high) m_sorted.push_back(value);
    });
    std::sort(m_sorted.begin(), m_sorted.end());
  }

  static constexpr int kMaxPasses = 24;  // about what sorting all values costs

  const NodeValues& m_values;
  int m_numPasses = 0;
  float m_low = kInfinity;
  float m_high = -kInfinity;
  std::vector<float> m_sorted;
  float m_walkedFrom = 0, m_walkedTo = 0;
};

// Moves `iso` along `direction` (1 or -1) to where no value is; false if no finite float is left there. `delta` is the
// distance to the nearest other value.
bool moveAlong(float& iso, float direction, float delta, NearValues& values) {
  float moved = iso;
  for (int round = 0; round < 8; ++round) {
    const float old = moved;
    float factor = 0.01f;
    moved += delta * factor * direction;
    while (moved == old && factor < 0.1f) {
      factor += 0.01f;
      moved += delta * factor * direction;
    }
    if (!std::isfinite(moved)) return false;
    if (moved != old) {
      iso = moved;
      return true;
    }
    // The values are so close that a float can't part them: go on from the next one.
    moved += delta * direction;
    if (moved == old) moved = std::nextafter(old, direction * kInfinity);
    if (!std::isfinite(moved)) return false;
    delta = values.nearestDistance(moved);
  }
  // They lie close all along. The search for a wider gap would carry the level far off.
  moved = values.nextFree(iso, direction);
  if (!std::isfinite(moved)) return false;
  iso = moved;
  return true;
}

bool moveOff(float& iso, bool hasGreater, float delta, NearValues& values) {
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
  const NodeValues values(n1, v1, n2, v2, n3, v3);
  bool hasGreater = false;
  const long numEqual = std::isfinite(iso) ? values.numEqual(iso, hasGreater) : 0;
  if (numEqual == 0 || numEqual >= values.numOfFirst()) return 0;
  NearValues nearValues(values);
  m_isAdjusted = moveOff(iso, hasGreater, values.nearestDistance(iso), nearValues);
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

  const NodeValues values(n1, v1, n2, v2, n3, v3);
  const LevelNeighbours neighbours({levels, static_cast<std::size_t>(numLevels)}, values);
  const long numOfFirst = values.numOfFirst();
  NearValues nearValues(values);
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
    if (moveOff(m_isovalues[i], above < kInfinity, delta, nearValues)) m_isAdjusted = 1;
  }
  // A level may have passed one that lay closer than the values.
  std::sort(m_isovalues.begin(), m_isovalues.end());
  return m_isAdjusted;
}
