#include "graph/format/PiNumericFormat.h"

#include <Ormelle/PbNumericDisplayFormat.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace {

double tenTo(int power) { return std::pow(10.0, power); }

// Powers far beyond any float, clear of what a double can't hold.
double scaled(float value, int tenPower) { return value / tenTo(std::clamp(tenPower, -200, 200)); }

// How many digits stand before the decimal point; below 1, minus the number of zeros that follow it. Taken from the
// shortest text that reads back to the same float, so that 0.01f and 1000.f count as the numbers they are meant to be.
int magnitude(float value) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr;
  const std::string_view shortest(text, static_cast<size_t>(end - text));
  const size_t mark = shortest.find('e');
  if (mark == shortest.npos) return 0;
  int exponent = 0;
  std::from_chars(text + mark + (text[mark + 1] == '+' ? 2 : 1), end, exponent);
  return exponent + 1;
}

float roundToThreeFigures(float value, int valueMagnitude) {
  const double factor = tenTo(3 - valueMagnitude);
  return static_cast<float>(std::floor(value * factor + 0.5) / factor);
}

// The decimals left of `value` at `numDecimal` of them once trailing zeros, and the nines of a number that all but
// reached the next figure, are dropped.
int countDecimals(float value, int numDecimal) {
  char text[128];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, numDecimal).ptr;
  const std::string_view printed(text, static_cast<size_t>(end - text));
  const size_t point = printed.find('.');
  if (point == printed.npos) return 0;
  size_t last = printed.size();
  char dropped = '9';
  for (; last > point + 1; --last) {
    const char digit = printed[last - 1];
    if (digit != '0' && !(digit == '9' && dropped == '9')) break;
    dropped = digit;
  }
  return static_cast<int>(last - point - 1);
}

int decimalsOf(float value, int magnitudeOfZero, int round) {
  const int valueMagnitude = value == 0 ? magnitudeOfZero : magnitude(value);
  const int numDecimal = value == 0 || valueMagnitude <= 0 ? 4 : std::max(0, 5 - valueMagnitude);
  if (round && value != 0) value = roundToThreeFigures(value, valueMagnitude);
  return countDecimals(value, numDecimal);
}

struct BestFormat {
  int tenPower = 0;
  int numDecimal = 0;
};

BestFormat findBestFormatOfDomain(float a, float b, float delta, int round) {
  const auto size = [](float v) { return std::isfinite(v) ? std::abs(v) : 0.f; };
  a = size(a);
  delta = size(delta);
  const float greatest = std::max(a, size(b));
  BestFormat best;
  if (greatest == 0) return best;
  const int e = magnitude(greatest);
  best.tenPower = e >= 0 ? (e - 1) / 3 * 3 : e / 3 * 3 - 3;
  if (best.tenPower != 0) {
    a = static_cast<float>(scaled(a, best.tenPower));
    delta = static_cast<float>(scaled(delta, best.tenPower));
    if (!std::isfinite(delta)) delta = 0;
  }
  best.numDecimal = std::max(decimalsOf(delta, 1, round), decimalsOf(a, 0, round));
  return best;
}

// Writes into the whole of `out` and says whether the text fitted.
bool writeFixed(double value, int numDecimal, char* out) {
  const auto [end, error] =
      std::to_chars(out, out + PiNumericFormat::TEXT_SIZE - 1, value, std::chars_format::fixed, numDecimal);
  if (error != std::errc()) return false;
  *end = 0;
  return true;
}

// "-0.00" is what a rounding error of the step leaves of the zero of an axis.
void dropSignOfZero(char* text) {
  const std::string_view view(text);
  if (view.starts_with('-') && view.find_first_not_of("-0.") == view.npos)
    std::copy(text + 1, text + view.size() + 1, text);
}

}  // namespace

void PiNumericFormat::setFormatInteger(int tenPower) {
  m_isFloatingPoint = 0;
  m_numDecimal = 0;
  m_tenPower = tenPower;
}

void PiNumericFormat::setFormatFloatingPoint(int numDecimal, int tenPower) {
  m_isFloatingPoint = 1;
  m_numDecimal = std::clamp(numDecimal, 0, MAX_DECIMALS);
  m_tenPower = tenPower;
}

void PiNumericFormat::setFormatAuto(float a, float b, float delta, int round) {
  const BestFormat best = findBestFormatOfDomain(a, b, delta, round);
  if (best.numDecimal == 0)
    setFormatInteger(best.tenPower);
  else
    setFormatFloatingPoint(best.numDecimal, best.tenPower);
}

void PiNumericFormat::setFormat(const PbNumericDisplayFormat* format, float a, float b, float delta, int round) {
  PbNumericDisplayFormat::FormatType type = PbNumericDisplayFormat::AUTO_FORMAT;
  int tenPower = 0;
  int numDecimal = 0;
  if (format) format->getFormat(type, tenPower, numDecimal);
  if (type == PbNumericDisplayFormat::FLOAT_FORMAT)
    setFormatFloatingPoint(numDecimal, tenPower);
  else if (type == PbNumericDisplayFormat::INTEGER_FORMAT)
    setFormatInteger(tenPower);
  else
    setFormatAuto(a, b, delta, round);
}

void PiNumericFormat::setFormat(const PbNumericDisplayFormat* format, int n, const float* values, int round) {
  if (!values) return;
  int count = 0;
  float least = 0;
  float greatest = 0;
  for (int i = 0; i < n; ++i) {
    if (!std::isfinite(values[i])) continue;
    least = count ? std::min(least, values[i]) : values[i];
    greatest = count ? std::max(greatest, values[i]) : values[i];
    ++count;
  }
  if (count == 0) return;
  const float delta = count == 1 ? greatest : static_cast<float>((double{greatest} - least) / (count - 1));
  setFormat(format, least, greatest, delta, round);
}

void PiNumericFormat::getString(float value, char* out) const {
  double number = scaled(value, m_tenPower);
  if (std::isnan(number)) number = std::abs(number);  // its sign means nothing
  if (!m_isFloatingPoint) number = std::trunc(number < 0 ? number - 0.5 : number + 0.5);
  if (!writeFixed(number, m_numDecimal, out))
    *std::to_chars(out, out + TEXT_SIZE - 1, number, std::chars_format::scientific, 6).ptr = 0;
  dropSignOfZero(out);
}
