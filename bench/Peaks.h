#ifndef ORMELLE_BENCH_PEAKS_H
#define ORMELLE_BENCH_PEAKS_H

#include <cmath>
#include <vector>

/// Values of hills and hollows with a fine ripple at n x n equally spaced nodes of [-3, 3]^2, the last index running
/// fastest. They lie between -8 and 10.
inline std::vector<float> peaksRipple(int n) {
  std::vector<float> values;
  values.reserve(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i) {
    const double x = -3 + 6 * (static_cast<double>(i) / (n - 1));
    for (int j = 0; j < n; ++j) {
      const double y = -3 + 6 * (static_cast<double>(j) / (n - 1));
      const double hills = 3 * (1 - x) * (1 - x) * std::exp(-x * x - (y + 1) * (y + 1)) -
                           10 * (x / 5 - x * x * x - y * y * y * y * y) * std::exp(-x * x - y * y) -
                           std::exp(-(x + 1) * (x + 1) - y * y) / 3;
      values.push_back(static_cast<float>(hills + 0.25 * std::sin(40 * x) * std::cos(43 * y)));
    }
  }
  return values;
}

#endif
