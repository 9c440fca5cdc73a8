#include <Ormelle/PbNonLinearDataMapping2.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

#include "graph/data/PiHls.h"
#include "graph/data/PiSortedSearch.h"

PbNonLinearDataMapping2::PbNonLinearDataMapping2()
    : m_values{0, 1}, m_colors{SbColor(0, 0, 0), SbColor(1, 1, 1)}, m_transparencies{0, 0} {}

PbNonLinearDataMapping2& PbNonLinearDataMapping2::operator=(const PbNonLinearDataMapping2& other) {
  if (this == &other) return *this;
  copySettings(other);
  m_type = other.m_type;
  m_values = other.m_values;
  m_colors = other.m_colors;
  m_transparencies = other.m_transparencies;
  PbBase::operator=(other);
  return *this;
}

void PbNonLinearDataMapping2::setValues(Type type, int numValues, const float* values, const SbColor* colors) {
  setValues(type, numValues, values, colors, nullptr);
}

void PbNonLinearDataMapping2::setValues(Type type, int numValues, const float* values, const SbColor* colors,
                                        const float* transparencies) {
  if (numValues <= 0 || !values || !colors || (type != NON_LINEAR_PER_LEVEL && type != LINEAR_PER_LEVEL)) return;
  std::vector<int> order(numValues);
  std::iota(order.begin(), order.end(), 0);
  std::erase_if(order, [values](int level) { return std::isnan(values[level]); });
  if (order.empty()) return;
  std::stable_sort(order.begin(), order.end(), [values](int a, int b) { return values[a] < values[b]; });

  std::vector<float> newValues, newTransparencies;
  std::vector<SbColor> newColors;
  for (int level : order) newValues.push_back(values[level]);
  if (type == NON_LINEAR_PER_LEVEL) order.push_back(numValues);
  for (int level : order) {
    newColors.push_back(colors[level]);
    newTransparencies.push_back(transparencies ? transparencies[level] : 0);
  }
  m_type = type;
  m_values.swap(newValues);
  m_colors.swap(newColors);
  m_transparencies.swap(newTransparencies);
  notifyObjectChange();
}

void PbNonLinearDataMapping2::setValues(Type type, int numValues, const float* values, const float* hls) {
  setValues(type, numValues, values, hls, nullptr);
}

void PbNonLinearDataMapping2::setValues(Type type, int numValues, const float* values, const float* hls,
                                        const float* transparencies) {
  if (numValues <= 0 || !hls) return;
  std::vector<SbColor> colors(static_cast<std::size_t>(numValues) + (type == NON_LINEAR_PER_LEVEL ? 1 : 0));
  for (std::size_t i = 0; i < colors.size(); ++i) colors[i] = PiHls::toRgb(hls + 3 * i);
  setValues(type, numValues, values, colors.data(), transparencies);
}

const float* PbNonLinearDataMapping2::getValuesList(int& num) const {
  num = static_cast<int>(m_values.size());
  return m_values.data();
}

const SbColor* PbNonLinearDataMapping2::getRGBColorsList(int& num) const {
  num = static_cast<int>(m_colors.size());
  return m_colors.data();
}

const float* PbNonLinearDataMapping2::getHLSColorsList(int& num) const {
  num = static_cast<int>(m_colors.size());
  m_hls.resize(3 * m_colors.size());
  for (int i = 0; i < num; ++i) PiHls::fromRgb(m_colors[i], &m_hls[3 * i]);
  return m_hls.data();
}

const float* PbNonLinearDataMapping2::getTransparencyList(int& num) const {
  num = static_cast<int>(m_transparencies.size());
  return m_transparencies.data();
}

int PbNonLinearDataMapping2::constantColorOf(float value) const {
  const int num = static_cast<int>(m_values.size());
  if (value <= m_values.front()) return 0;
  if (value >= m_values.back()) return num;
  return PiSortedSearch::firstAbove(m_values.data(), num, value);
}

// The upper level of the interval whose line gives the colour; 0 if there is but one level.
int PbNonLinearDataMapping2::intervalOf(float value) const {
  const int num = static_cast<int>(m_values.size());
  if (num == 1) return 0;
  if (value <= m_values.front()) return 1;
  if (value >= m_values.back()) return num - 1;
  return PiSortedSearch::firstNotBelow(m_values.data(), num, value);
}

const SbColor* PbNonLinearDataMapping2::computeColor(float value, float& transparency) const {
  const SbColor* color;
  if (isBeyondThreshold(value, color, transparency)) return color;
  if (m_type == NON_LINEAR_PER_LEVEL) {
    const int i = constantColorOf(value);
    transparency = m_transparencies[i];
    return &m_colors[i];
  }
  const int above = intervalOf(value), below = std::max(above - 1, 0);
  colorInterpolation(m_colors[below], m_transparencies[below], m_values[below], m_colors[above],
                     m_transparencies[above], m_values[above], value, getResultColor(), transparency);
  return getResultColor();
}

const SbColor* PbNonLinearDataMapping2::computeColor(float value) const {
  const SbColor* color;
  if (isBeyondThreshold(value, color)) return color;
  if (m_type == NON_LINEAR_PER_LEVEL) return &m_colors[constantColorOf(value)];
  const int above = intervalOf(value), below = std::max(above - 1, 0);
  colorInterpolation(m_colors[below], m_values[below], m_colors[above], m_values[above], value, getResultColor());
  return getResultColor();
}
