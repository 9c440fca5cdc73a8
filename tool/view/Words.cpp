#include "Words.h"

#include <Ormelle/PbDateFormatMapping.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <string_view>

#include "graph/format/PiDate.h"

namespace view {

namespace {

constexpr double kDay = 86400.0;  // seconds

// Without an exponent, but for numbers that would be long.
std::string plain(double value) {
  const double size = std::abs(value);
  const bool isShort = size == 0.0 || (size >= 1e-5 && size < 1e12);
  std::array<char, 64> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value + 0.0,
                                 isShort ? std::chars_format::fixed : std::chars_format::general);
  return {text.data(), end.ptr};
}

double numberIn(std::string_view text) {
  double number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

// The straight line between coordinates and seconds, which two dates give.
struct DateLine {
  PiDate first;
  double start = 0;   // the coordinate of `first`
  double second = 0;  // how many seconds a unit of the coordinate has
  double ulp = 0;     // how far floats are apart there

  explicit DateLine(const PbDateFormatMapping& dates) {
    SbString text1;
    SbString text2;
    float coord1 = 0;
    float coord2 = 0;
    dates.getDateMapping(text1, text2, coord1, coord2);
    PiDate last;
    if (first.setDateString(text1.getString(), dates.getFormat().getString()) != 0) return;
    if (last.setDateString(text2.getString(), dates.getFormat().getString()) != 0) return;
    start = static_cast<double>(coord1);
    const double range = static_cast<double>(coord2) - start;
    if (range > 0) second = PiDate::getDeltaSeconds(last, first) / range;
    ulp = std::max(std::abs(start), std::abs(static_cast<double>(coord2))) * 0x1p-23;
  }
};

}  // namespace

std::string print(const char* format, ...) {
  char text[256];
  std::va_list values;
  va_start(values, format);
  std::vsnprintf(text, sizeof(text), format, values);
  va_end(values);
  return text;
}

std::string nameOr(const std::string& name, const char* kind, int index) {
  return name.empty() ? print("%s %d", kind, index) : "\"" + name + "\"";
}

std::string exactly(float value) {
  if (!std::isfinite(value)) return std::isnan(value) ? "undefined" : plain(static_cast<double>(value));
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value);
  return plain(numberIn({text.data(), end.ptr}));
}

std::string roughly(double value) {
  return std::isnan(value) ? "undefined" : std::isfinite(value) ? plain(numberIn(print("%.7g", value))) : plain(value);
}

std::string roughly(double value, double origin) {
  if (!std::isfinite(value)) return roughly(value);
  const double digits = value == 0.0 ? 0.0 : std::floor(std::log10(std::abs(value))) + 1.0;
  return plain(numberIn(print("%.*f", static_cast<int>(std::clamp(7.0 - digits, 0.0, 6.0)), origin + value)));
}

std::string dateAt(const PbDateFormatMapping& dates, double coordinate, bool withTime) {
  const DateLine line(dates);
  if (!std::isfinite(coordinate)) return "undefined";
  std::string format = dates.getFormat().getString();
  const auto has = [&format](const char* letters) { return format.find_first_of(letters) != std::string::npos; };
  if (withTime && !has("hH'\"")) format += "h'";

  double seconds = (coordinate - line.start) * line.second;
  const double unsure = std::max(line.ulp, std::abs(coordinate) * 0x1p-23) * line.second;
  if (has("\"")) {
    double step = 1e-3;
    for (const double coarser : {1e-2, 1e-1, 1.0, 10.0, 60.0})
      if (step < unsure) step = coarser;
    seconds = std::round(seconds / step) * step;
  } else {
    seconds += has("'") ? 30.0 : unsure;
  }
  PiDate date = line.first;
  const double days = std::clamp(std::floor(seconds / kDay), -1e7, 1e7);  // which a float holds
  const double ofDay = std::clamp(seconds - days * kDay, 0.0, kDay);
  date.incDateStep(static_cast<float>(days), PiDate::DAY);
  date.incDateStep(static_cast<float>(std::floor(ofDay / 60.0)), PiDate::MINUTE);
  date.incDateStep(static_cast<float>(ofDay - std::floor(ofDay / 60.0) * 60.0), PiDate::SECOND);
  std::string text = date.getDateString(format.c_str());
  // Formats write days without a zero; where the year comes first, that is how nobody writes a date.
  constexpr std::size_t kDayAt = std::string_view("2026-01-").size();
  if (format.starts_with("Ymd") && (text.size() == kDayAt + 1 || text[kDayAt + 1] == ' ')) text.insert(kDayAt, 1, '0');
  return text;
}

double daysBetween(const PbDateFormatMapping& dates, double a, double b) {
  return std::abs(b - a) * DateLine(dates).second / kDay;
}

}  // namespace view
