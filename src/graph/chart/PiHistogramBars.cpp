#include "graph/chart/PiHistogramBars.h"

#include <algorithm>
#include <cmath>

float PiHistogramBars::widthOf(float pitch, const Axis& axis) {
  const float length = std::abs(pitch);
  float width = length;
  if (!axis.isFixedSpace)
    width = (1 - axis.space) * length;
  else if (axis.space > 0)
    width = std::max(0.0f, length - axis.space);
  // Wider than the pitch, bars would cover each other.
  return std::copysign(std::clamp(width, 0.0f, length), pitch);
}

void PiHistogramBars::compute(const Table& table, const Axis& axis) {
  m_bars.clear();
  m_sums.clear();
  m_numGroups = m_numMembers = 0;
  if (table.numValues <= 0) return;
  const int numRows = std::clamp(table.numRows, 1, table.numValues);
  const int numColumns = (table.numValues - 1) / numRows + 1;
  m_numGroups = table.isGroupedByRow ? numRows : numColumns;
  m_numMembers = table.isGroupedByRow ? numColumns : numRows;
  m_sums.assign(static_cast<std::size_t>(m_numGroups), 0);

  const float pitch = (axis.end - axis.start) / static_cast<float>(m_numGroups);
  const float width = widthOf(pitch, axis);
  const bool isStacked = table.representation != JUXTAPOSED;
  const float barWidth = isStacked ? width : width / static_cast<float>(m_numMembers);

  m_bars.resize(static_cast<std::size_t>(table.numValues));
  for (int i = 0; i < table.numValues; ++i) {
    Bar& bar = m_bars[static_cast<std::size_t>(i)];
    const int row = i / numColumns;
    const int column = i % numColumns;
    bar.group = table.isGroupedByRow ? row : column;
    bar.member = table.isGroupedByRow ? column : row;
    bar.isDefined = std::isfinite(table.values[i]);
    bar.value = bar.isDefined ? static_cast<double>(table.values[i]) : 0;
    bar.isBelow = bar.value < 0;
    const float first = axis.start + (static_cast<float>(bar.group) + 0.5f) * pitch - width / 2;
    bar.low = isStacked ? first : first + static_cast<float>(bar.member) * barWidth;
    bar.high = bar.low + barWidth;
    if (table.representation == PERCENTAGE) {
      bar.value = std::max(0.0, bar.value);
      bar.isBelow = false;
    }
    m_sums[static_cast<std::size_t>(bar.group)] += bar.value;
  }

  // Where the stacks have come to: above the base and below.
  std::vector<double> above(isStacked ? m_sums.size() : 0, 0);
  std::vector<double> below(above);
  for (Bar& bar : m_bars) {
    if (!isStacked) {
      bar.foot = axis.base;
      bar.top = axis.base + static_cast<float>(bar.value * axis.valueScale);
      continue;
    }
    const auto group = static_cast<std::size_t>(bar.group);
    double scale = axis.valueScale;
    if (table.representation == PERCENTAGE) scale *= m_sums[group] > 0 ? table.percentageHeight / m_sums[group] : 0;
    double& reached = bar.isBelow ? below[group] : above[group];
    bar.foot = axis.base + static_cast<float>(reached * scale);
    reached += bar.value;
    bar.top = axis.base + static_cast<float>(reached * scale);
  }
}
