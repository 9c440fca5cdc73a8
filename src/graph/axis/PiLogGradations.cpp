#include "graph/axis/PiLogGradations.h"

#include <algorithm>
#include <cmath>

#include "graph/axis/PiGradations.h"
#include "graph/axis/PiLinearGradations.h"

namespace PiLogGradations {

namespace {

/// The fewest decimals that show multiples of `step`.
int decimalsOf(double step) {
  constexpr int kMost = 7;  // of a float from 1 to 10
  double scaled = std::abs(step);
  int numDecimal = 0;
  while (numDecimal < kMost && std::abs(scaled - std::round(scaled)) > 1e-3 * scaled) {
    scaled *= 10;
    ++numDecimal;
  }
  return numDecimal;
}

}  // namespace

bool isResolved(float low, float high) {
  constexpr float kOneApart = 1 << 23;  // beyond, a decade is less than two neighbouring floats
  return low < high && std::abs(low) < kOneApart && std::abs(high) < kOneApart;
}

void powers(float low, float high, std::vector<float>& out) {
  out.clear();
  if (!isResolved(low, high)) return;
  const int first = static_cast<int>(std::ceil(low)), last = static_cast<int>(std::floor(high));
  const int period = (last - first) / PiGradations::MAX_GRADATIONS + 1;
  for (int power = first; power <= last; ++power)
    if (power % period == 0) out.push_back(static_cast<float>(power));
}

void digits(float low, float high, std::span<const int> list, std::vector<PiLogGradation>& out) {
  out.clear();
  if (!isResolved(low, high)) return;
  const int first = static_cast<int>(std::floor(low)), last = static_cast<int>(std::floor(high));
  if (static_cast<long>(last - first + 1) * static_cast<long>(list.size()) > PiGradations::MAX_GRADATIONS) return;
  bool isWanted[10] = {};
  for (const int digit : list)
    if (digit >= 2 && digit <= 9) isWanted[digit] = true;
  for (int exponent = first; exponent <= last; ++exponent) {
    for (int digit = 2; digit <= 9; ++digit) {
      if (!isWanted[digit]) continue;
      const auto coord = static_cast<float>(exponent + std::log10(static_cast<double>(digit)));
      if (coord >= low && coord <= high) out.push_back({coord, static_cast<float>(digit), exponent});
    }
  }
}

void between(float low, float high, std::vector<PiLogGradation>& out) {
  out.clear();
  if (!isResolved(low, high) || high - low > 1) return;
  const auto exponent = static_cast<int>(std::floor(low));
  const auto valueAt = [&](float coord) {
    return static_cast<float>(std::pow(10.0, static_cast<double>(coord) - exponent));
  };
  const float start = valueAt(low), end = valueAt(high);
  const PiLinearGradations grads = PiLinearGradations::makeResolved(true, start, end);
  std::vector<float> values;
  grads.values(end, values);
  const double near = 1e-3 * std::abs(static_cast<double>(grads.step));
  for (const float value : values) {
    // A power of ten is a main gradation.
    if (std::abs(value - 1) < near || std::abs(value - 10) < near) continue;
    PiLogGradation gradation;
    gradation.value = value;
    gradation.exponent = exponent;
    gradation.numDecimal = grads.isOnMultiples ? decimalsOf(grads.step) : decimalsOf(1e-7);
    const auto coord = static_cast<float>(exponent + std::log10(static_cast<double>(value)));
    gradation.coord = std::clamp(coord, low, high);
    if (!out.empty() && out.back().coord == gradation.coord) continue;
    out.push_back(gradation);
  }
}

long firstMultiple(std::span<const float> powers) {
  if (powers.empty()) return 0;
  const float distance = powers.size() > 1 ? powers[1] - powers[0] : 1;
  return static_cast<long>(powers[0] / distance);
}

float leastDistance(std::span<const float> powers, std::span<const PiLogGradation> digits) {
  if (digits.empty()) return 1;
  float least = 2;
  float former = -INFINITY;
  size_t p = 0, d = 0;
  while (p < powers.size() || d < digits.size()) {
    const bool isPower = d == digits.size() || (p < powers.size() && powers[p] < digits[d].coord);
    const float coord = isPower ? powers[p++] : digits[d++].coord;
    least = std::min(least, coord - former);
    former = coord;
  }
  return least;
}

}  // namespace PiLogGradations
