#ifndef ORMELLE_PICONTOURLEVELS_H
#define ORMELLE_PICONTOURLEVELS_H

#include <cstdint>
#include <limits>
#include <vector>

#include "graph/data/PiIsovalueAdjustment.h"
#include "quillane/surface/PiGrowBuffer.h"

class PbIsovaluesList;

/// The levels to cut at: those of a list, moved off the values of the nodes, each once. And the band of each node: how
/// many levels lie below its value. Two nodes of an edge in different bands tell which levels cut it.
class PiContourLevels {
 public:
  /// The band of a node without a value.
  static constexpr int kUndefinedBand = -1;

  /// Sets the levels, and `bands` to the band of each of the `num` values. A null list has no levels. Takes one pass
  /// over the values, and a few more if a level is equal to one of them.
  void findBands(const PbIsovaluesList* list, const float* values, int num, PiGrowBuffer<int>& bands);

  int num() const { return m_num; }
  float level(int index) const { return m_levels[static_cast<std::size_t>(index)]; }
  /// Where a level comes from in the list: the first of those that are equal.
  int listIndex(int index) const { return m_listIndices[static_cast<std::size_t>(index)]; }

  /// Whether values of a band may lie on the other side of the list's own isovalue, because a level was moved.
  bool isMovedAt(int band) const { return !m_isMoved.empty() && m_isMoved[static_cast<std::size_t>(band)] != 0; }
  /// Index in the list of the isovalue below a band, or -1.
  int lowerIsovalue(int band) const { return band > 0 ? listIndex(band - 1) : -1; }
  /// Index in the list of the greatest isovalue that isn't above `value`, or -1.
  int lowerIsovalueOf(double value) const;

  std::size_t memorySize() const;

 private:
  void setLevels(const float* levels, int num);
  void noteMovedLevels();
  bool writeBands(const float* values, int num, int* bands) const;
  int bucketOf(float value) const {
    float position = (value - m_first) * m_scale;
    position = position > 0 ? position : 0;  // also what is no number
    position = position < m_lastBucket ? position : m_lastBucket;
    return static_cast<int>(position);
  }

  PiIsovalueAdjustment m_adjustment;
  const float* m_listValues = nullptr;
  int m_numListed = 0;

  int m_num = 0;
  std::vector<float> m_levels;  // ascending, and behind them a NaN
  std::vector<int> m_listIndices;
  std::vector<std::uint8_t> m_isMoved;  // of each band; empty if no level was moved

  // The range of levels is divided into equal buckets: first level of each bucket, and behind the last.
  std::vector<int> m_bucketStarts;
  float m_first = 0;
  float m_scale = 0;
  float m_lastBucket = 0;
  bool m_isOnePerBucket = true;
};

#endif
