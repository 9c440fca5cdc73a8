#include "quillane/contour/PiContourLevels.h"

#include <Ormelle/PbIsovaluesList.h>

#include <algorithm>
#include <cmath>

#include "graph/data/PiSortedSearch.h"

void PiContourLevels::findBands(const PbIsovaluesList* list, const float* values, int num, PiGrowBuffer<int>& bands) {
  m_listValues = nullptr;
  m_numListed = 0;
  if (list) {
    float min, max, step;
    int isRegular;
    m_listValues = list->getIsoList(m_numListed, min, max, step, isRegular);
  }
  m_isMoved.clear();
  setLevels(m_listValues, m_numListed);
  bands.resize(static_cast<std::size_t>(num));
  if (!writeBands(values, num, bands.data())) return;

  m_adjustment.adjustIsovalList(*list, num, values);
  if (!m_adjustment.isAdjusted()) return;
  setLevels(m_adjustment.getIsovalues().data(), m_numListed);
  noteMovedLevels();
  writeBands(values, num, bands.data());
}

void PiContourLevels::setLevels(const float* levels, int num) {
  m_levels.clear();
  m_listIndices.clear();
  for (int i = 0; i < num; ++i) {
    if (i > 0 && levels[i] == levels[i - 1]) continue;
    m_levels.push_back(levels[i]);
    m_listIndices.push_back(i);
  }
  m_num = static_cast<int>(m_levels.size());

  constexpr int kMaxBuckets = 1 << 16;
  const int numBuckets = std::clamp(4 * std::min(m_num, kMaxBuckets), 1, kMaxBuckets);
  m_first = m_num > 0 ? m_levels.front() : 0;
  m_lastBucket = static_cast<float>(numBuckets - 1);
  const float range = m_num > 0 ? m_levels.back() - m_first : 0;
  // A range that a float can't hold leaves one bucket; in a range of nothing every other value is at an end.
  m_scale = m_lastBucket / range;
  if (std::isnan(m_scale)) m_scale = 0;

  m_bucketStarts.assign(static_cast<std::size_t>(numBuckets) + 1, 0);
  for (int i = 0; i < m_num; ++i) ++m_bucketStarts[static_cast<std::size_t>(bucketOf(level(i))) + 1];
  m_isOnePerBucket = std::all_of(m_bucketStarts.begin(), m_bucketStarts.end(), [](int count) { return count <= 1; });
  for (std::size_t b = 1; b < m_bucketStarts.size(); ++b) m_bucketStarts[b] += m_bucketStarts[b - 1];
  m_levels.push_back(std::numeric_limits<float>::quiet_NaN());
}

void PiContourLevels::noteMovedLevels() {
  m_isMoved.assign(static_cast<std::size_t>(m_num) + 1, 0);
  for (int i = 0; i < m_num; ++i) {
    const float listed = m_listValues[listIndex(i)];
    const auto below = static_cast<std::size_t>(i);
    if (level(i) > listed) m_isMoved[below] = 1;
    if (level(i) < listed) m_isMoved[below + 1] = 1;
  }
}

// Returns whether a value is equal to a level.
bool PiContourLevels::writeBands(const float* values, int num, int* bands) const {
  const float* levels = m_levels.data();
  const int* starts = m_bucketStarts.data();
  unsigned isAnyEqual = 0;
  const auto bandOf = [](float value, int numBelow) { return value == value ? numBelow : kUndefinedBand; };
  if (m_isOnePerBucket) {
    // All levels of lower buckets are below, those of higher ones above; the one of the same bucket is compared. Where
    // there is none, the next one above is, or the NaN at the end.
    for (int i = 0; i < num; ++i) {
      const float value = values[i];
      const int start = starts[bucketOf(value)];
      isAnyEqual |= static_cast<unsigned>(levels[start] == value);
      bands[i] = bandOf(value, start + static_cast<int>(levels[start] < value));
    }
  } else {
    for (int i = 0; i < num; ++i) {
      const float value = values[i];
      const int bucket = bucketOf(value);
      const int start = starts[bucket];
      const int band = start + PiSortedSearch::firstNotBelow(levels + start, starts[bucket + 1] - start, value);
      isAnyEqual |= static_cast<unsigned>(levels[band] == value);
      bands[i] = bandOf(value, band);
    }
  }
  return isAnyEqual != 0;
}

int PiContourLevels::lowerIsovalueOf(double value) const {
  return static_cast<int>(std::upper_bound(m_listValues, m_listValues + m_numListed, value) - m_listValues) - 1;
}

std::size_t PiContourLevels::memorySize() const {
  return m_levels.capacity() * sizeof(float) + (m_listIndices.capacity() + m_bucketStarts.capacity()) * sizeof(int) +
         m_isMoved.capacity() + m_adjustment.getIsovalues().size() * sizeof(float);
}
