#ifndef ORMELLE_PILINEARSTEP_H
#define ORMELLE_PILINEARSTEP_H

#include <cmath>

/// Round steps of about a tenth of a range: 1, 2, 3, 4 or 5 times a power of ten.
namespace PiLinearStep {

/// The step for a range of this length, with its sign; 0 for 0 and what isn't finite.
inline float automatic(float delta) {
  const float f = std::abs(delta) / 10;
  if (!(f > 0) || !std::isfinite(f)) return 0;
  int exponent = 0;
  if (f > 1) {
    exponent = static_cast<int>(std::log10(f)) + 1;
  } else {
    double power = 1;
    while (power > f) {
      power /= 10;
      --exponent;
    }
    ++exponent;
  }
  const double p = std::pow(10.0, exponent);
  const double r = f / p;
  const double factor = r > 0.49 ? 1.0 : r > 0.39 ? 0.5 : r > 0.29 ? 0.4 : r > 0.19 ? 0.3 : 0.2;
  return static_cast<float>(std::copysign(p * factor, delta));
}

}  // namespace PiLinearStep

#endif
