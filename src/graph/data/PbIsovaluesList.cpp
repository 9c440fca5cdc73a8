#include <Ormelle/PbIsovaluesList.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>

#include "graph/data/PiSortedSearch.h"

namespace {

bool isCount(int num) { return num >= 1 && num <= PbIsovaluesList::MAX_REGULAR_ISOVALUES; }

// The distance of two ends may pass the range of a float although its parts don't.
float stepBetween(float min, float max, int numSteps) {
  const float distance = max - min;
  if (std::isfinite(distance)) return distance / numSteps;
  return static_cast<float>(std::min((static_cast<double>(max) - min) / numSteps, static_cast<double>(FLT_MAX)));
}

bool findEnds(int n, const float* values, float& min, float& max) {
  min = FLT_MAX;
  max = -FLT_MAX;
  bool isFound = false;
  for (int i = 0; values && i < n; ++i) {
    if (!std::isfinite(values[i])) continue;
    min = std::min(min, values[i]);
    max = std::max(max, values[i]);
    isFound = true;
  }
  return isFound;
}

}  // namespace

PbIsovaluesList::PbIsovaluesList() { homogIsovalList(1, 10, 10); }

PbIsovaluesList::PbIsovaluesList(float min, float max, int num) : PbIsovaluesList() { homogIsovalList(min, max, num); }

PbIsovaluesList& PbIsovaluesList::operator=(const PbIsovaluesList& other) {
  if (this == &other) return *this;
  m_min = other.m_min;
  m_max = other.m_max;
  m_values = other.m_values;
  m_step = other.m_step;
  m_minDelta = other.m_minDelta;
  m_isRegular = other.m_isRegular;
  m_dependsOnRep = other.m_dependsOnRep;
  PbBase::operator=(other);
  return *this;
}

void PbIsovaluesList::setRegularIsoList(float min, float max, int num) { homogIsovalList(min, max, num); }

void PbIsovaluesList::setRegularIsoList(float min, float max) { homogIsovalList(min, max, m_values.getNum()); }

void PbIsovaluesList::setRegularIsoList(int num) { homogIsovalList(m_min, m_max, num); }

void PbIsovaluesList::setRegularIsoList(int n, const float* values) { setRegularIsoList(n, values, m_values.getNum()); }

void PbIsovaluesList::setRegularIsoList(int n, const float* values, int num) {
  float min, max;
  if (findEnds(n, values, min, max)) homogIsovalList(min, max, num);
}

void PbIsovaluesList::setRegularIsoList(int num, float start, float step) {
  if (!isCount(num) || !std::isfinite(start + static_cast<double>(step) * (num - 1)) || !std::isfinite(step)) return;
  if (std::fabs(start + static_cast<double>(step) * (num - 1)) > FLT_MAX) return;
  if (allocIsovalList(num)) {
    float value = start;
    for (int i = 0; i < num; ++i, value += step)
      m_values[step < 0 ? num - 1 - i : i] = std::clamp(value, -FLT_MAX, FLT_MAX);
    m_min = m_values.get(0);
    m_max = m_values.get(num - 1);
  }
  m_isRegular = 1;
  m_step = m_minDelta = std::fabs(step);
  notifyObjectChange();
}

void PbIsovaluesList::homogIsovalList(float min, float max, int num) {
  if (!isCount(num) || !std::isfinite(min) || !std::isfinite(max)) return;
  m_min = std::min(min, max);
  m_max = std::max(min, max);
  m_step = m_minDelta = stepBetween(m_min, m_max, std::max(num - 1, 1));
  m_isRegular = 1;
  if (allocIsovalList(num)) {
    float value = m_min;
    for (int i = 0; i < num - 1; ++i, value += m_step) m_values[i] = std::min(value, m_max);
    m_values[num - 1] = m_max;
  }
  notifyObjectChange();
}

void PbIsovaluesList::setIrregularIsoList(int n, const float* values) {
  float min, max;
  if (!findEnds(n, values, min, max)) return;
  m_min = min;
  m_max = max;
  m_isRegular = 1;
  if (allocIsovalList(n)) {
    for (int i = 0; i < n; ++i)
      if (std::isfinite(values[i])) m_values.add(values[i]);
    m_values.increasingSort();

    const int num = m_values.getNum();
    const float firstGap = num > 1 ? m_values.get(1) - m_values.get(0) : m_step;
    m_minDelta = firstGap;
    for (int i = 2; i < num; ++i) {
      const float gap = m_values.get(i) - m_values.get(i - 1);
      if (gap != firstGap) m_isRegular = 0;
      m_minDelta = std::min(m_minDelta, gap);
    }
    m_step = m_minDelta = std::min(m_minDelta, FLT_MAX);
  }
  notifyObjectChange();
}

// Replaces the memory of the list by room for `num` levels, none of them set.
bool PbIsovaluesList::allocIsovalList(int num) {
  m_values = PbArrayOfFloat(num, 1);
  return m_values.getCapacity() > 0;
}

void PbIsovaluesList::notifyObjectChange() {
  setChangeType(OBJECT_CHANGE);
  notifyChange();
}

const float* PbIsovaluesList::getIsoList(int& num, float& min, float& max, float& step, int& isRegular) const {
  num = m_values.getNum();
  min = m_min;
  max = m_max;
  step = m_step;
  isRegular = m_isRegular;
  return num > 0 ? m_values.get() : nullptr;
}

float PbIsovaluesList::getLowerIsovalue(float value) const {
  const int above = PiSortedSearch::firstAbove(m_values.get(), m_values.getNum(), value);
  return above > 0 ? m_values.get(above - 1) : -1e20f;
}

float PbIsovaluesList::getUpperIsovalue(float value) const {
  const int index = getIndex(value);
  return index < m_values.getNum() ? m_values.get(index) : 1e20f;
}

int PbIsovaluesList::getIndex(float value) const {
  if (std::isnan(value)) return m_values.getNum();
  return PiSortedSearch::firstNotBelow(m_values.get(), m_values.getNum(), value);
}

void PbIsovaluesList::print() const {
  std::printf("\nNumber of isovalues : %d\n", m_values.getNum());
  std::printf("Min isovalues : %f, max isovalues : %f\n", m_min, m_max);
  if (m_isRegular)
    std::printf("Regular isovalues list\nStep : %f\n", m_step);
  else
    std::printf("Irregular isovalues list\nMin delta between values : %f\n", m_minDelta);
  std::printf("Isovalues list =>\n");
  for (int i = 0; i < m_values.getNum(); ++i) std::printf("%f \n", m_values.get(i));
}
