#ifndef ORMELLE_PICELLVALUE_H
#define ORMELLE_PICELLVALUE_H

#include <limits>

#include <Ormelle/PbDataMapping.h>

#include "quillane/view/PiView2D.h"

/// The one value of a cell that stands for those of its nodes: their mean. Where the mapping shows transparency, a cell
/// that touches the range behind a threshold takes the threshold itself, so that it is wholly removed with that range
/// and not averaged back into sight.
class PiCellValue {
 public:
  explicit PiCellValue(const PbDataMapping& mapping) {
    if (!mapping.isTransparencyEnabled()) return;
    int isMinEnabled, isMaxEnabled;
    mapping.thresholdsEnabled(isMinEnabled, isMaxEnabled);
    float threshold;
    if (isMinEnabled) {
      mapping.getMinRGBThreshold(threshold);
      m_min = threshold;
      m_isMinEnabled = true;
    }
    if (isMaxEnabled) {
      mapping.getMaxRGBThreshold(threshold);
      m_max = threshold;
      m_isMaxEnabled = true;
    }
  }

  float operator()(const float* values, const PiCellNodes& cell) const {
    if (m_isMaxEnabled && isAny(values, cell, [this](float value) { return value >= m_max; })) return m_max;
    if (m_isMinEnabled && isAny(values, cell, [this](float value) { return value <= m_min; })) return m_min;
    const int* node = cell.node;
    if (cell.num == 4) return (values[node[0]] + values[node[1]] + values[node[2]] + values[node[3]]) * 0.25F;
    float sum = 0;
    for (int i = 0; i < cell.num; ++i) sum += values[node[i]];
    return sum / static_cast<float>(cell.num);
  }

 private:
  template <class Test>
  static bool isAny(const float* values, const PiCellNodes& cell, Test&& test) {
    for (int i = 0; i < cell.num; ++i)
      if (test(values[cell.node[i]])) return true;
    return false;
  }

  bool m_isMinEnabled = false;
  bool m_isMaxEnabled = false;
  float m_min = 0;
  float m_max = 0;
};

#endif
