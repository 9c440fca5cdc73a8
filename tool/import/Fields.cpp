#include "Fields.h"

#include <date/date.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <set>

namespace importer {

namespace {

constexpr double kBeyondDouble = std::numeric_limits<double>::quiet_NaN();

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Drops the marks between groups of three digits: 1.234.567 or 1,234,567.
bool dropGroups(std::string& number, char mark) {
  std::size_t at = number.find(mark);
  if (at == std::string::npos) return true;
  const std::size_t digits = number.find_first_of("0123456789");
  if (digits == std::string::npos || at < digits || at - digits > 3 || at == digits) return false;
  while (at != std::string::npos) {
    if (at + 3 >= number.size()) return false;
    for (std::size_t i = 1; i <= 3; ++i)
      if (!isDigit(number[at + i])) return false;
    if (at + 4 < number.size() && isDigit(number[at + 4])) return false;
    number.erase(at, 1);
    at = number.find(mark);
  }
  return true;
}

// ---- Dates ----------------------------------------------------------------------------------------------------------

// "06:30" or "06:30:15.5", with "Z" or "+01:00" or without: part of a day.
std::optional<double> parseTime(std::string_view text) {
  text = trimmed(text);
  double zone = 0;
  if (!text.empty() && (text.back() == 'Z' || text.back() == 'z')) text.remove_suffix(1);
  const std::size_t sign = text.find_first_of("+-");
  if (sign != std::string_view::npos) {
    int hours = 0, minutes = 0;
    const std::string offset(text.substr(sign + 1));
    if (std::sscanf(offset.c_str(), "%2d:%2d", &hours, &minutes) < 1 || hours > 14 || minutes > 59) return std::nullopt;
    zone = (hours * 60 + minutes) * (text[sign] == '-' ? -1 : 1);
    text = trimmed(text.substr(0, sign));
  }
  int hours = 0, minutes = 0, used = 0;
  double seconds = 0;
  const std::string time(text);
  if (std::sscanf(time.c_str(), "%2d:%2d%n", &hours, &minutes, &used) < 2) return std::nullopt;
  std::string_view rest = std::string_view(time).substr(static_cast<std::size_t>(used));
  if (!rest.empty()) {
    if (rest.front() != ':' || rest.size() < 2 || !isDigit(rest[1])) return std::nullopt;
    const std::optional<double> parsed = parseNumber(rest.substr(1), rest.find(',') != std::string_view::npos);
    if (!parsed) return std::nullopt;
    seconds = *parsed;
  }
  if (hours < 0 || hours > 24 || minutes < 0 || minutes > 59 || !(seconds >= 0 && seconds < 61)) return std::nullopt;
  return ((hours * 60 + minutes - zone) * 60 + seconds) / 86400;
}

// The items of a date: numbers and words, and where the time of day begins.
struct DateItems {
  std::array<std::string_view, 3> items;
  std::size_t count = 0;
  std::string_view time;
};

std::optional<DateItems> splitDate(std::string_view field) {
  DateItems date;
  std::size_t at = 0;
  const auto isWord = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  while (at < field.size() && date.count < 3) {
    const std::size_t start = at;
    if (isDigit(field[at]))
      while (at < field.size() && isDigit(field[at])) ++at;
    else if (isWord(field[at]))
      while (at < field.size() && isWord(field[at])) ++at;
    else
      return std::nullopt;
    // A clock where an item was expected: "1990-01 06:30" has no day.
    if (at < field.size() && field[at] == ':') {
      at = start;
      break;
    }
    date.items[date.count++] = field.substr(start, at - start);
    if (at >= field.size()) break;
    if (date.count == 3 || ((field[at] == 'T' || field[at] == 't') && at + 1 < field.size() && isDigit(field[at + 1])))
      break;
    const std::size_t gap = at;
    while (at < field.size() &&
           (field[at] == '-' || field[at] == '/' || field[at] == '.' || field[at] == ' ' || field[at] == ','))
      ++at;
    if (at == gap || at - gap > 2) return std::nullopt;
  }
  date.time = field.substr(at);
  if (!date.time.empty()) {
    const char first = date.time.front();
    if (first == 'T' || first == 't' || first == ' ')
      date.time.remove_prefix(1);
    else if (!isDigit(first))
      return std::nullopt;
  }
  return date;
}

int numberOf(std::string_view digits) {
  int value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string lowered(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return result;
}

bool isMissing(std::string_view field) {
  static const std::set<std::string, std::less<>> words{"",   "na",  "n/a", "#n/a", "nan", "null", "none", "nil", "-",
                                                        "--", "---", ".",   "..",   "?",   "void", "inf",  "-inf"};
  return field.size() <= 4 && words.count(lowered(field)) > 0;
}

std::optional<double> parseNumber(std::string_view field, bool decimalComma) {
  field = trimmed(field);
  if (!field.empty() && field.front() == '+') field.remove_prefix(1);
  if (field.empty() || field.size() > 60) return std::nullopt;
  const char first = field.front();
  if (!isDigit(first) && first != '-' && first != '.' && first != ',') return std::nullopt;
  double value = 0;
  const auto parse = [&](std::string_view text) {
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ptr != text.data() + text.size()) return false;
    if (result.ec == std::errc::result_out_of_range) value = kBeyondDouble;
    return result.ec != std::errc::invalid_argument;
  };
  if (field.find(',') == std::string_view::npos && (!decimalComma || field.find('.') == std::string_view::npos))
    return parse(field) ? std::optional(std::isfinite(value) ? value : kBeyondDouble) : std::nullopt;
  std::string number(field);
  if (!dropGroups(number, decimalComma ? '.' : ',')) return std::nullopt;
  if (decimalComma) std::replace(number.begin(), number.end(), ',', '.');
  return parse(number) ? std::optional(std::isfinite(value) ? value : kBeyondDouble) : std::nullopt;
}

std::optional<unsigned> monthNamed(std::string_view word) {
  static constexpr std::string_view names = "janfebmaraprmayjunjulaugsepoctnovdec";
  if (word.size() < 3) return std::nullopt;
  const std::string start = lowered(word.substr(0, 3));
  for (unsigned month = 0; month < 12; ++month)
    if (names.substr(month * std::size_t{3}, 3) == start) return month + 1;
  return std::nullopt;
}

std::optional<double> parseDate(std::string_view field, DateOrder order) {
  field = trimmed(field);
  if (field.size() < 6 || field.size() > 40) return std::nullopt;
  const std::optional<DateItems> split = splitDate(field);
  if (!split || split->count < 2) return std::nullopt;
  int year = -1, day = 1;
  unsigned month = 0;
  const auto& items = split->items;
  const auto isNumber = [&](std::size_t i) { return isDigit(items[i].front()) && items[i].size() <= 4; };
  std::size_t named = 3;
  for (std::size_t i = 0; i < split->count; ++i) {
    if (isNumber(i)) continue;
    const std::optional<unsigned> found = named == 3 ? monthNamed(items[i]) : std::nullopt;
    if (!found) return std::nullopt;
    month = *found;
    named = i;
  }
  const auto isYear = [&](std::size_t i) { return isNumber(i) && items[i].size() == 4; };
  std::array<std::size_t, 3> place{3, 3, 3};  // of year, month and day among the items
  if (split->count == 2) {                    // a month of a year
    if (isYear(0) == isYear(1)) return std::nullopt;
    place = isYear(0) ? std::array<std::size_t, 3>{0, 1, 3} : std::array<std::size_t, 3>{1, 0, 3};
  } else if (named < 3) {
    const std::size_t other = named == 0 ? 1 : 0;
    place = isYear(other) ? std::array<std::size_t, 3>{other, named, 3 - named - other}
                          : std::array<std::size_t, 3>{3 - named - other, named, other};
  } else if (isYear(0)) {
    place = {0, 1, 2};
  } else if (order == DateOrder::DMY) {
    place = {2, 1, 0};
  } else if (order == DateOrder::MDY) {
    place = {2, 0, 1};
  } else {
    return std::nullopt;
  }
  if (!isYear(place[0])) return std::nullopt;
  year = numberOf(items[place[0]]);
  if (named == 3) {
    if (items[place[1]].size() > 2) return std::nullopt;
    month = static_cast<unsigned>(numberOf(items[place[1]]));
  }
  if (place[2] < 3) {
    if (items[place[2]].size() > 2) return std::nullopt;
    day = numberOf(items[place[2]]);
  }
  if (day < 1) return std::nullopt;
  const date::year_month_day ymd{date::year(year), date::month(month), date::day(static_cast<unsigned>(day))};
  if (!ymd.ok()) return std::nullopt;
  double days = date::sys_days(ymd).time_since_epoch().count();
  if (!split->time.empty()) {
    const std::optional<double> time = parseTime(split->time);
    if (!time) return std::nullopt;
    days += *time;
  }
  return days;
}

std::string dateText(double daysSince1970, bool withTime) {
  const auto seconds = std::chrono::seconds(std::llround(daysSince1970 * 86400));
  const auto day = date::floor<date::days>(seconds);
  const date::year_month_day ymd{date::sys_days(day)};
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(ymd.year()),
                static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()));
  std::string result = text.data();
  if (withTime) {
    const auto time = static_cast<int>((seconds - day).count());
    std::snprintf(text.data(), text.size(), " %02d:%02d:%02d", time / 3600, time / 60 % 60, time % 60);
    result += text.data();
  }
  return result;
}

}  // namespace importer
