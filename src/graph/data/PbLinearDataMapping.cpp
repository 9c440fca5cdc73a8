#include <Ormelle/PbLinearDataMapping.h>

#include "graph/data/PiHls.h"

PbLinearDataMapping& PbLinearDataMapping::operator=(const PbLinearDataMapping& other) {
  if (this == &other) return *this;
  copySettings(other);
  m_point1 = other.m_point1;
  m_point2 = other.m_point2;
  PbBase::operator=(other);
  return *this;
}

void PbLinearDataMapping::setValues(float value1, const SbColor& color1, float value2, const SbColor& color2) {
  setValues(value1, color1, 0, value2, color2, 0);
}

void PbLinearDataMapping::setValues(float value1, const SbColor& color1, float transparency1, float value2,
                                    const SbColor& color2, float transparency2) {
  m_point1 = {value1, transparency1, color1};
  m_point2 = {value2, transparency2, color2};
  notifyObjectChange();
}

void PbLinearDataMapping::setValues(float value1, const float hls1[3], float value2, const float hls2[3]) {
  setValues(value1, PiHls::toRgb(hls1), value2, PiHls::toRgb(hls2));
}

void PbLinearDataMapping::setValues(float value1, const float hls1[3], float transparency1, float value2,
                                    const float hls2[3], float transparency2) {
  setValues(value1, PiHls::toRgb(hls1), transparency1, value2, PiHls::toRgb(hls2), transparency2);
}

void PbLinearDataMapping::getValues(float& value1, SbColor& color1, float& value2, SbColor& color2) const {
  float transparency1, transparency2;
  getValues(value1, color1, transparency1, value2, color2, transparency2);
}

void PbLinearDataMapping::getValues(float& value1, SbColor& color1, float& transparency1, float& value2,
                                    SbColor& color2, float& transparency2) const {
  value1 = m_point1.value;
  color1 = m_point1.color;
  transparency1 = m_point1.transparency;
  value2 = m_point2.value;
  color2 = m_point2.color;
  transparency2 = m_point2.transparency;
}

void PbLinearDataMapping::getValues(float& value1, float hls1[3], float& value2, float hls2[3]) const {
  float transparency1, transparency2;
  getValues(value1, hls1, transparency1, value2, hls2, transparency2);
}

void PbLinearDataMapping::getValues(float& value1, float hls1[3], float& transparency1, float& value2, float hls2[3],
                                    float& transparency2) const {
  SbColor color1, color2;
  getValues(value1, color1, transparency1, value2, color2, transparency2);
  PiHls::fromRgb(color1, hls1);
  PiHls::fromRgb(color2, hls2);
}

const SbColor* PbLinearDataMapping::computeColor(float value, float& transparency) const {
  const SbColor* color;
  if (isBeyondThreshold(value, color, transparency)) return color;
  colorInterpolation(m_point1.color, m_point1.transparency, m_point1.value, m_point2.color, m_point2.transparency,
                     m_point2.value, value, getResultColor(), transparency);
  return getResultColor();
}

const SbColor* PbLinearDataMapping::computeColor(float value) const {
  const SbColor* color;
  if (isBeyondThreshold(value, color)) return color;
  colorInterpolation(m_point1.color, m_point1.value, m_point2.color, m_point2.value, value, getResultColor());
  return getResultColor();
}
