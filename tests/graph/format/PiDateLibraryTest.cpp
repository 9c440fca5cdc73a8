// PiDate against an established library, whose calendar is of other descent.

#include <gtest/gtest.h>

#include "graph/format/PiDate.h"

#ifndef ORMELLE_HAS_DATE_LIBRARY

TEST(PiDateLibrary, Agrees) { GTEST_SKIP() << "libhowardhinnant-date-dev is not installed"; }

#else

#include <date/date.h>

#include <chrono>
#include <cmath>
#include <random>
#include <string>

namespace {

constexpr int kNumDates = 1000000;

class Dates {
 public:
  int pick(int least, int greatest) { return std::uniform_int_distribution<int>(least, greatest)(m_random); }

  date::year_month_day next() {
    const date::sys_days first = date::year{1} / 1 / 1;
    const date::sys_days last = date::year{9999} / 12 / 31;
    return first + date::days(pick(0, static_cast<int>((last - first).count())));
  }

 private:
  std::mt19937 m_random{1992};
};

PiDate dateOf(const date::year_month_day& ymd) {
  PiDate date;
  date.m_year = int{ymd.year()};
  date.m_month = static_cast<int>(unsigned{ymd.month()});
  date.m_day = static_cast<int>(unsigned{ymd.day()});
  return date;
}

bool isSameDay(const PiDate& date, const date::year_month_day& ymd) {
  return date.m_year == int{ymd.year()} && date.m_month == static_cast<int>(unsigned{ymd.month()}) &&
         date.m_day == static_cast<int>(unsigned{ymd.day()});
}

int weekday(const date::year_month_day& ymd) {
  return static_cast<int>(date::weekday(date::sys_days(ymd)).iso_encoding());
}

}  // namespace

TEST(PiDateLibrary, AgreesOnDaysAndWeekdays) {
  Dates dates;
  date::year_month_day before = dates.next();
  for (int i = 0; i < kNumDates; ++i) {
    const date::year_month_day ymd = dates.next();
    const PiDate date = dateOf(ymd);
    ASSERT_EQ(date.getDayWeek(), weekday(ymd)) << ymd;
    const int delta = static_cast<int>((date::sys_days(ymd) - date::sys_days(before)).count());
    const PiDate other = dateOf(before);
    ASSERT_EQ(date.getDeltaDays(other), delta) << ymd << ' ' << before;
    PiDate walked = other;
    walked.incDateStep(static_cast<float>(delta), PiDate::DAY);
    ASSERT_TRUE(isSameDay(walked, ymd)) << ymd << ' ' << before;
    ASSERT_EQ(walked.m_dayOfWeek, weekday(ymd)) << ymd;
    before = ymd;
  }
}

TEST(PiDateLibrary, AgreesOnMonthsAndYears) {
  Dates dates;
  for (int i = 0; i < kNumDates; ++i) {
    const date::year_month_day ymd = dates.next();
    const int n = dates.pick(-20000, 20000);
    PiDate walked = dateOf(ymd);
    date::year_month_day expected;
    if (i % 2) {
      walked.incDateStep(static_cast<float>(n), PiDate::MONTH);
      expected = ymd + date::months(n);
    } else {
      walked.incDateStep(static_cast<float>(n / 10), PiDate::YEAR);
      expected = ymd + date::years(n / 10);
    }
    if (!expected.ok()) expected = expected.year() / expected.month() / date::last;
    ASSERT_TRUE(isSameDay(walked, expected)) << ymd << ' ' << n;
    ASSERT_EQ(walked.m_dayOfWeek, weekday(expected)) << ymd << ' ' << n;
  }
}

TEST(PiDateLibrary, AgreesOnSeconds) {
  using Seconds = std::chrono::duration<double>;
  Dates dates;
  for (int i = 0; i < kNumDates; ++i) {
    const date::year_month_day ymd = dates.next();
    PiDate walked = dateOf(ymd);
    walked.m_hour = dates.pick(0, 23);
    walked.m_minute = dates.pick(0, 59);
    walked.m_second = static_cast<float>(dates.pick(0, 59999)) / 1000;
    const Seconds timeOfDay(walked.m_hour * 3600.0 + walked.m_minute * 60.0 + double{walked.m_second});
    // From fractions of a second up to 200 years; beyond 34 years whole minutes are all that a float can tell.
    const float n = std::ldexp(static_cast<float>(dates.pick(-(1 << 24), 1 << 24)), dates.pick(-24, 8));
    const double moved = std::abs(n) >= 1 << 30 ? std::trunc(double{n} / 60) * 60 : double{n};
    walked.incDateStep(n, PiDate::SECOND);

    const Seconds expected = date::sys_days(ymd).time_since_epoch() + timeOfDay + Seconds(moved);
    const auto walkedDay = date::sys_days(date::year{walked.m_year} / walked.m_month / walked.m_day);
    const Seconds found = walkedDay.time_since_epoch() +
                          Seconds(walked.m_hour * 3600.0 + walked.m_minute * 60.0 + double{walked.m_second});
    // Half a last place of a float just below a minute, and of a double of ten thousand years of seconds.
    const double tolerance = std::abs(n) >= 1 << 30 ? 60.0001 : 2e-6 + 6.2e-5;
    ASSERT_NEAR(found.count(), expected.count(), tolerance) << ymd << ' ' << n;
  }
}

TEST(PiDateLibrary, ReadsTheDatesItWrites) {
  Dates dates;
  for (int i = 0; i < kNumDates / 10; ++i) {
    const date::year_month_day ymd = dates.next();
    PiDate date;
    ASSERT_EQ(date.setDateString(date::format("%F", ymd).c_str(), "Ymd"), 0);
    ASSERT_TRUE(isSameDay(date, ymd)) << ymd;
    ASSERT_EQ(date.m_dayOfWeek, weekday(ymd)) << ymd;
    ASSERT_EQ(date.getDateString("Y") + "-" + date.getDateString("m"), date::format("%Y-%m", ymd));
  }
}

#endif
