#ifndef ORMELLE_PIHLS_H
#define ORMELLE_PIHLS_H

#include <algorithm>
#include <cmath>

#include <Inventor/SbColor.h>

/// Conversions between RGB and the HLS double cone (Foley, van Dam, Feiner, Hughes, "Computer Graphics", section 13.3).
/// Triples are ordered hue, lightness, saturation, each in 0..1.
namespace PiHls {

/// 0..1; what is no number becomes 0.
inline float clampToUnit(float value) { return value > 0 ? std::min(value, 1.0f) : 0.0f; }

inline void fromRgb(const SbColor& rgb, float hls[3]) {
  const float red = rgb[0], green = rgb[1], blue = rgb[2];
  const float max = std::max({red, green, blue});
  const float min = std::min({red, green, blue});
  const float difference = max - min;
  float hue = 0, saturation = 0;
  const float lightness = (max + min) / 2;
  if (difference >= 0.0001f) {
    saturation = lightness <= 0.5f ? difference / (max + min) : difference / (2 - max - min);
    if (red == max)
      hue = (green - blue) / (6 * difference);
    else if (green == max)
      hue = 1.0f / 3 + (blue - red) / (6 * difference);
    else
      hue = 2.0f / 3 + (red - green) / (6 * difference);
    if (hue < 0) hue += 1;
  }
  hls[0] = hue;
  hls[1] = lightness;
  hls[2] = saturation;
}

/// The channel whose hue is shifted by `hue`, which may lie outside 0..1.
inline float channel(float m1, float m2, float hue) {
  hue -= std::floor(hue);
  float value = m1;
  if (hue < 1.0f / 6)
    value = m1 + (m2 - m1) * 6 * hue;
  else if (hue < 0.5f)
    value = m2;
  else if (hue < 2.0f / 3)
    value = m1 + (m2 - m1) * 6 * (2.0f / 3 - hue);
  return clampToUnit(value);
}

inline SbColor toRgb(const float hls[3]) {
  const float hue = hls[0], lightness = hls[1], saturation = hls[2];
  if (saturation < 0.001f) {
    const float grey = clampToUnit(lightness);
    return SbColor(grey, grey, grey);
  }
  const float m2 = lightness <= 0.5f ? lightness * (1 + saturation) : lightness + saturation - lightness * saturation;
  const float m1 = 2 * lightness - m2;
  return SbColor(channel(m1, m2, hue + 1.0f / 3), channel(m1, m2, hue), channel(m1, m2, hue - 1.0f / 3));
}

}  // namespace PiHls

#endif
