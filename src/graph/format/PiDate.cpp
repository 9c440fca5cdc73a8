#include "graph/format/PiDate.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr int kNumDays[13] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr int kNumDaysLeap[13] = {0, 31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr int64_t kDaysPerEra = 146097;  // 400 years, after which the calendar repeats

int64_t floorDiv(int64_t a, int64_t b) { return a / b - (a % b != 0 && (a < 0) != (b < 0)); }

bool isLeap(int64_t year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int numDays(int64_t year, int64_t month) { return (isLeap(year) ? kNumDaysLeap : kNumDays)[month]; }

struct Month {
  int64_t year;
  int64_t month;  // 1 to 12
};

// Years are counted from March on, so that the leap day is the last of its year and the days before a month are a
// linear function of the month (H. Hinnant, "chrono-Compatible Low-Level Date Algorithms"). Day 0 is 1 January 1970.
int64_t firstDayNumber(Month m) {
  const int64_t year = m.year - (m.month <= 2);
  const int64_t era = floorDiv(year, 400);
  const int64_t yearOfEra = year - era * 400;
  const int64_t dayOfYear = (153 * (m.month > 2 ? m.month - 3 : m.month + 9) + 2) / 5;
  return era * kDaysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

Month monthOfDay(int64_t dayNumber, int& day) {
  const int64_t shifted = dayNumber + 719468;
  const int64_t era = floorDiv(shifted, kDaysPerEra);
  const int64_t dayOfEra = shifted - era * kDaysPerEra;
  const int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const int64_t fromMarch = (5 * dayOfYear + 2) / 153;
  day = static_cast<int>(dayOfYear - (153 * fromMarch + 2) / 5 + 1);
  const int64_t month = fromMarch < 10 ? fromMarch + 3 : fromMarch - 9;
  return {yearOfEra + era * 400 + (month <= 2), month};
}

Month monthOfIndex(int64_t index) {
  const int64_t year = floorDiv(index, 12);
  return {year, index - year * 12 + 1};
}

int64_t monthIndex(const PiDate& date) { return int64_t{date.m_year} * 12 + date.m_month - 1; }

int64_t dayNumber(const PiDate& date) { return firstDayNumber(monthOfIndex(monthIndex(date))) + date.m_day - 1; }

int dayWeek(int64_t dayNumber) { return static_cast<int>(dayNumber + 3 - floorDiv(dayNumber + 3, 7) * 7) + 1; }

int toInt(int64_t value) {
  return static_cast<int>(std::clamp<int64_t>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// Beyond these steps any unit leaves the years of an int, and no sum of units leaves an int64_t.
constexpr double kMaxSteps = 1e13;

}  // namespace

const int* PiDate::getNumDaysPerMonth() { return kNumDays; }
const int* PiDate::getNumDaysParMonthBissex() { return kNumDaysLeap; }
bool PiDate::isLeapYear(int year) { return isLeap(year); }

int PiDate::getDeltaDays(const PiDate& a, const PiDate& b) { return toInt(dayNumber(a) - dayNumber(b)); }

double PiDate::getDeltaSeconds(const PiDate& a, const PiDate& b) {
  const auto seconds = [](const PiDate& d) { return d.m_hour * 3600.0 + d.m_minute * 60.0 + d.m_second; };
  return static_cast<double>(dayNumber(a) - dayNumber(b)) * 86400.0 + (seconds(a) - seconds(b));
}

int PiDate::getDayWeek(const PiDate& date) { return dayWeek(dayNumber(date)); }

void PiDate::incDateStep(float n, StepType step, PiDate& date) {
  double steps = n;
  const auto grow = [&](StepType from, float factor) {
    if (step != from || n + factor != n) return;
    steps /= factor;  // in double: a float would round to a few minutes
    n = static_cast<float>(steps);
    step = static_cast<StepType>(from + 1);
  };
  grow(SECOND, 60.f);
  grow(MINUTE, 60.f);
  grow(HOUR, 24.f);
  steps = std::isnan(steps) ? 0 : std::clamp(steps, -kMaxSteps, kMaxSteps);
  const int64_t wholeSteps = static_cast<int64_t>(steps);

  double second = std::isfinite(date.m_second) ? std::clamp<double>(date.m_second, -kMaxSteps, kMaxSteps) : 0;
  if (step == SECOND) second += steps;
  double carry = std::floor(second / 60);
  second -= carry * 60;
  date.m_second = static_cast<float>(second);
  if (date.m_second >= 60) {  // rounded up to the minute
    date.m_second = 0;
    ++carry;
  }
  const int64_t minute = date.m_minute + static_cast<int64_t>(carry) + (step == MINUTE ? wholeSteps : 0);
  const int64_t hour = date.m_hour + floorDiv(minute, 60) + (step == HOUR ? wholeSteps : 0);
  date.m_minute = static_cast<int>(minute - floorDiv(minute, 60) * 60);
  date.m_hour = static_cast<int>(hour - floorDiv(hour, 24) * 24);

  int64_t index = monthIndex(date);
  if (step == MONTH) index += wholeSteps;
  if (step == YEAR) index += wholeSteps * 12;
  Month month = monthOfIndex(index);
  int64_t day = date.m_day;
  if (step == MONTH || step == YEAR) day = std::clamp<int64_t>(day, 1, numDays(month.year, month.month));
  day += floorDiv(hour, 24) + (step == DAY ? wholeSteps : 0);
  month = monthOfDay(firstDayNumber(month) + day - 1, date.m_day);

  date.m_year = toInt(month.year);
  date.m_month = static_cast<int>(month.month);
  date.m_day = std::min(date.m_day, numDays(date.m_year, date.m_month));
  date.m_dayOfWeek = getDayWeek(date);
}
