#include "graph/axis/PiGradFormat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace PiGradFormat {

namespace {

bool isClear(std::span<const float> values, char** slots) {
  for (size_t i = 1; i < values.size(); ++i)
    if (values[i] != values[i - 1] && std::strcmp(slots[i], slots[i - 1]) == 0) return false;
  return true;
}

/// Whether `numDecimal` decimals at this power of ten bring every value near enough to itself.
bool isClose(const PiNumericFormat& format, int numDecimal, std::span<const float> values, double tolerance) {
  const double unit = std::pow(10.0, format.getTenPower());
  const double digit = std::pow(10.0, -numDecimal);
  return std::all_of(values.begin(), values.end(), [&](float value) {
    const double scaled = value / unit;
    return std::abs(std::round(scaled / digit) * digit - scaled) * unit <= tolerance;
  });
}

}  // namespace

void write(const PiNumericFormat& format, std::span<const float> values, char** slots) {
  for (size_t i = 0; i < values.size(); ++i) format.getString(values[i], slots[i]);
}

void addDecimals(PiNumericFormat& format, std::span<const float> values, char** slots) {
  if (isClear(values, slots)) return;
  double gap = std::numeric_limits<double>::infinity();
  for (size_t i = 1; i < values.size(); ++i)
    if (values[i] != values[i - 1]) gap = std::min(gap, std::abs(static_cast<double>(values[i]) - values[i - 1]));
  for (int numDecimal = format.getNumDecimal() + 1; numDecimal <= PiNumericFormat::MAX_DECIMALS; ++numDecimal) {
    if (numDecimal < PiNumericFormat::MAX_DECIMALS && !isClose(format, numDecimal, values, gap / 10)) continue;
    format.setFormatFloatingPoint(numDecimal, format.getTenPower());
    write(format, values, slots);
    if (isClear(values, slots)) return;
  }
}

}  // namespace PiGradFormat
