#include <Ormelle/PbDataMapping.h>

#include <cfloat>
#include <cmath>

#include "graph/data/PiHls.h"

namespace {

// HLS results of all mappings.
const float* toStaticHls(const SbColor* color) {
  static float s_hls[3];
  if (!color) return nullptr;
  PiHls::fromRgb(*color, s_hls);
  return s_hls;
}

// Where `v` lies between `v1` and `v2`; always finite. 0 if they are equal.
float parameterOf(float v1, float v2, float v) {
  if (v1 == v2) return 0;
  float t = (v - v1) / (v2 - v1);
  if (!(std::fabs(t) <= FLT_MAX) || !(std::fabs(v2 - v1) <= FLT_MAX)) {
    // The differences may pass the range of a float although the values don't.
    t = static_cast<float>((static_cast<double>(v) - v1) / (static_cast<double>(v2) - v1));
    if (std::isnan(t)) return v == v1 ? 0 : 1;  // one of them is infinite: `v` is at the other
    if (std::isinf(t)) return std::copysign(FLT_MAX, t);
  }
  return t;
}

float interpolate(float a, float b, float t) { return PiHls::clampToUnit(a + (b - a) * t); }

void interpolate(const SbColor& c1, const SbColor& c2, float t, SbColor* result) {
  result->setValue(interpolate(c1[0], c2[0], t), interpolate(c1[1], c2[1], t), interpolate(c1[2], c2[2], t));
}

}  // namespace

std::atomic<unsigned> PbDataMapping::sm_nextUniqueId{1};

PbDataMapping::PbDataMapping(const PbDataMapping& other) : PbBase(other) { copySettings(other); }

void PbDataMapping::copySettings(const PbDataMapping& other) {
  m_transparencyValueDeletedParts = other.m_transparencyValueDeletedParts;
  m_isTransparencyEnabled = other.m_isTransparencyEnabled;
  m_minThreshold = other.m_minThreshold;
  m_maxThreshold = other.m_maxThreshold;
}

const float* PbDataMapping::getHLSColor(float value) const { return toStaticHls(getRGBColor(value)); }

const float* PbDataMapping::getHLSColor(float value, float& transparency) const {
  return toStaticHls(getRGBColor(value, transparency));
}

void PbDataMapping::setThreshold(Threshold& threshold, float value, const SbColor* color, float transparency) {
  threshold.value = value;
  threshold.hasColor = color ? 1 : 0;
  if (color) {
    threshold.color = *color;
    threshold.transparency = transparency;
  }
  if (threshold.isEnabled) notifyObjectChange();
}

const SbColor* PbDataMapping::colorOf(const Threshold& threshold, float& value, float* transparency) {
  value = threshold.value;
  if (transparency) *transparency = threshold.transparency;
  return threshold.hasColor ? &threshold.color : nullptr;
}

void PbDataMapping::setMinThreshold(float value) { setThreshold(m_minThreshold, value, nullptr, 0); }

void PbDataMapping::setMinThreshold(float value, const SbColor& color, float transparency) {
  setThreshold(m_minThreshold, value, &color, transparency);
}

void PbDataMapping::setMinThreshold(float value, const float hls[3], float transparency) {
  setMinThreshold(value, PiHls::toRgb(hls), transparency);
}

void PbDataMapping::setMaxThreshold(float value) { setThreshold(m_maxThreshold, value, nullptr, 0); }

void PbDataMapping::setMaxThreshold(float value, const SbColor& color, float transparency) {
  setThreshold(m_maxThreshold, value, &color, transparency);
}

void PbDataMapping::setMaxThreshold(float value, const float hls[3], float transparency) {
  setMaxThreshold(value, PiHls::toRgb(hls), transparency);
}

const SbColor* PbDataMapping::getMinRGBThreshold(float& value) const { return colorOf(m_minThreshold, value, nullptr); }

const SbColor* PbDataMapping::getMinRGBThreshold(float& value, float& transparency) const {
  return colorOf(m_minThreshold, value, &transparency);
}

const float* PbDataMapping::getMinHLSThreshold(float& value) const { return toStaticHls(getMinRGBThreshold(value)); }

const float* PbDataMapping::getMinHLSThreshold(float& value, float& transparency) const {
  return toStaticHls(getMinRGBThreshold(value, transparency));
}

const SbColor* PbDataMapping::getMaxRGBThreshold(float& value) const { return colorOf(m_maxThreshold, value, nullptr); }

const SbColor* PbDataMapping::getMaxRGBThreshold(float& value, float& transparency) const {
  return colorOf(m_maxThreshold, value, &transparency);
}

const float* PbDataMapping::getMaxHLSThreshold(float& value) const { return toStaticHls(getMaxRGBThreshold(value)); }

const float* PbDataMapping::getMaxHLSThreshold(float& value, float& transparency) const {
  return toStaticHls(getMaxRGBThreshold(value, transparency));
}

void PbDataMapping::enableThresholds(int min, int max) {
  m_minThreshold.isEnabled = min;
  m_maxThreshold.isEnabled = max;
  notifyObjectChange();
}

void PbDataMapping::thresholdsEnabled(int& min, int& max) const {
  min = m_minThreshold.isEnabled;
  max = m_maxThreshold.isEnabled;
}

void PbDataMapping::enableTransparency(int enabled) {
  m_isTransparencyEnabled = enabled;
  notifyObjectChange();
}

void PbDataMapping::colorInterpolation(const SbColor& c1, float v1, const SbColor& c2, float v2, float v,
                                       SbColor* result) {
  interpolate(c1, c2, parameterOf(v1, v2, v), result);
}

void PbDataMapping::colorInterpolation(const SbColor& c1, float t1, float v1, const SbColor& c2, float t2, float v2,
                                       float v, SbColor* result, float& transparency) {
  const float t = parameterOf(v1, v2, v);
  interpolate(c1, c2, t, result);
  transparency = interpolate(t1, t2, t);
}

void PbDataMapping::notifyChange() {
  // First, because a kit that rebuilds at once asks for it.
  m_id = sm_nextUniqueId++;
  PbBase::notifyChange();
}
