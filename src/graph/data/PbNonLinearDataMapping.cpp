#include <Ormelle/PbNonLinearDataMapping.h>

#include "graph/data/PiHls.h"

PbNonLinearDataMapping& PbNonLinearDataMapping::operator=(const PbNonLinearDataMapping& other) {
  if (this == &other) return *this;
  copySettings(other);
  m_color = other.m_color;
  m_transparency = other.m_transparency;
  PbBase::operator=(other);
  return *this;
}

void PbNonLinearDataMapping::setSource(const ColorSource& source) {
  m_color = source;
  notifyObjectChange();
}

void PbNonLinearDataMapping::setSource(const TransparencySource& source) {
  m_transparency = source;
  notifyObjectChange();
}

void PbNonLinearDataMapping::setRGBFunction(RGBFunction* function) {
  ColorSource source;
  source.rgb = function;
  setSource(source);
}

void PbNonLinearDataMapping::setRGBFunction(RGBDataFunction* function, void* userData) {
  ColorSource source;
  source.rgbData = function;
  source.userData = userData;
  setSource(source);
}

void PbNonLinearDataMapping::setHLSFunction(HLSFunction* function) {
  ColorSource source;
  source.hls = function;
  setSource(source);
}

void PbNonLinearDataMapping::setHLSFunction(HLSDataFunction* function, void* userData) {
  ColorSource source;
  source.hlsData = function;
  source.userData = userData;
  setSource(source);
}

void PbNonLinearDataMapping::setTransparencyFunction(TransparencyFunction* function) {
  setSource(TransparencySource{function, nullptr, nullptr});
}

void PbNonLinearDataMapping::setTransparencyFunction(TransparencyDataFunction* function, void* userData) {
  setSource(TransparencySource{nullptr, function, userData});
}

const SbColor* PbNonLinearDataMapping::colorOf(float value) const {
  SbColor* result = getResultColor();
  if (m_color.rgb || m_color.rgbData) {
    const SbColor* color = m_color.rgb ? m_color.rgb(value) : m_color.rgbData(m_color.userData, value);
    if (!color) return nullptr;
    *result = *color;
  } else if (m_color.hls || m_color.hlsData) {
    const float* hls = m_color.hls ? m_color.hls(value) : m_color.hlsData(m_color.userData, value);
    if (!hls) return nullptr;
    *result = PiHls::toRgb(hls);
  } else {
    colorInterpolation(SbColor(0, 0, 0), 0, SbColor(1, 1, 1), 1, value, result);
  }
  return result;
}

const SbColor* PbNonLinearDataMapping::computeColor(float value, float& transparency) const {
  const SbColor* color;
  if (isBeyondThreshold(value, color, transparency)) return color;
  if (m_transparency.plain)
    transparency = m_transparency.plain(value);
  else if (m_transparency.withData)
    transparency = m_transparency.withData(m_transparency.userData, value);
  else
    transparency = 0;
  return colorOf(value);
}

const SbColor* PbNonLinearDataMapping::computeColor(float value) const {
  const SbColor* color;
  return isBeyondThreshold(value, color) ? color : colorOf(value);
}
