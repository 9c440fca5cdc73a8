// Gradations against dates of an established library, whose calendar is of other descent.

#include <gtest/gtest.h>

#ifndef ORMELLE_HAS_DATE_LIBRARY

TEST(DateGradationsLibrary, Agrees) { GTEST_SKIP() << "libhowardhinnant-date-dev is not installed"; }

#else

#include <Ormelle/PbDateFormatMapping.h>
#include <date/date.h>

#include <chrono>
#include <cmath>
#include <random>
#include <string>

#include "graph/axis/PiDateGradations.h"
#include "graph/axis/PiDateRepChoice.h"

namespace {

using Time = date::sys_seconds;
using std::chrono::seconds;

constexpr int kNumSpans = 100000;

PiDate toDate(Time time) {
  const auto day = date::floor<date::days>(time);
  const date::year_month_day ymd(day);
  const auto timeOfDay = date::make_time(time - day);
  PiDate date;
  date.m_year = int{ymd.year()};
  date.m_month = static_cast<int>(unsigned{ymd.month()});
  date.m_day = static_cast<int>(unsigned{ymd.day()});
  date.m_dayOfWeek = static_cast<int>(date::weekday(day).iso_encoding());
  date.m_hour = static_cast<int>(timeOfDay.hours().count());
  date.m_minute = static_cast<int>(timeOfDay.minutes().count());
  date.m_second = static_cast<float>(timeOfDay.seconds().count());
  return date;
}

std::string show(const PiDate& d) {
  char text[160];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d/%d %02d:%02d:%02.0f", d.m_year, d.m_month, d.m_day, d.m_dayOfWeek,
                d.m_hour, d.m_minute, double{d.m_second});
  return text;
}

Time moved(Time time, int n, PiDate::StepType unit) {
  const auto day = date::floor<date::days>(time);
  date::year_month_day ymd(day);
  switch (unit) {
    case PiDate::SECOND:
      return time + seconds(n);
    case PiDate::MINUTE:
      return time + std::chrono::minutes(n);
    case PiDate::HOUR:
      return time + std::chrono::hours(n);
    case PiDate::DAY:
      return time + date::days(n);
    case PiDate::MONTH:
      ymd += date::months(n);
      break;
    default:
      ymd += date::years(n);
  }
  if (!ymd.ok()) ymd = ymd.year() / ymd.month() / date::last;
  return date::sys_days(ymd) + (time - day);
}

// The first time at or behind `start` that begins a unit whose number is a multiple of n; from there on steps are
// added.
Time firstMultiple(Time start, int n, PiDate::StepType unit) {
  const auto day = date::floor<date::days>(start);
  const date::year_month_day ymd(day);
  const auto above = [&](long field) { return static_cast<int>((field + n - 1) / n * n - field); };
  Time first;
  switch (unit) {
    case PiDate::SECOND:
      return moved(start, above((start - date::floor<std::chrono::minutes>(start)).count()), unit);
    case PiDate::MINUTE:
      first = date::floor<std::chrono::minutes>(start);
      first = moved(first, above(date::make_time(first - day).minutes().count()), unit);
      break;
    case PiDate::HOUR:
      first = date::floor<std::chrono::hours>(start);
      first = moved(first, above(date::make_time(first - day).hours().count()), unit);
      break;
    case PiDate::DAY:
      first = moved(day, above(unsigned{ymd.day()}), unit);
      break;
    case PiDate::MONTH:
      first = moved(date::sys_days(ymd.year() / ymd.month() / 1), above(unsigned{ymd.month()}), unit);
      break;
    default:
      first = moved(date::sys_days(ymd.year() / 1 / 1), above(int{ymd.year()}), unit);
  }
  return first < start ? moved(first, n, unit) : first;
}

class Spans {
 public:
  // Spans of a second to ten thousand years, all lengths alike, within the years 1 to 9999.
  void next() {
    const Time least = date::sys_days(date::year{1} / 1 / 1),
               most = date::sys_days(date::year{10000} / 1 / 1) - seconds(1);
    const double length = std::exp(std::uniform_real_distribution<double>(0, std::log(3.155e11))(m_random));
    const auto span = std::min<int64_t>(static_cast<int64_t>(length), (most - least).count());
    start = least + seconds(std::uniform_int_distribution<int64_t>(0, (most - least).count() - span)(m_random));
    // Many start on a round date, where boundaries are.
    const int round = pick(0, 5);
    if (round == 1) start = date::floor<date::days>(start);
    if (round == 2) start = firstMultiple(moved(start, -1, PiDate::MONTH), 1, PiDate::MONTH);
    if (round == 3) start = date::floor<std::chrono::hours>(start);
    start = std::max(start, least);
    end = std::min(start + seconds(span), most);
  }

  int pick(int least, int greatest) { return std::uniform_int_distribution<int>(least, greatest)(m_random); }

  Time start, end;

 private:
  std::mt19937 m_random{1582};
};

class Scene {
 public:
  explicit Scene(const Spans& spans) {
    m_range.start = toDate(spans.start);
    m_range.end = toDate(spans.end);
    constexpr char format[] = "Ymdh'\"";
    m_mapping.setFormat(format);
    m_isGood = m_mapping.setDateMapping(m_range.start.getDateString(format).c_str(),
                                        m_range.end.getDateString(format).c_str(), -3, 1000) == 1;
    m_range.startCoord = m_mapping.getCoordinateP(m_range.start);
    m_range.endCoord = m_mapping.getCoordinateP(m_range.end);
  }

  bool isGood() const { return m_isGood; }
  PiDateSpan span() const { return {m_range.start, m_range.end}; }

  // What is wrong with the gradations of a level; empty if nothing.
  std::string fault(const Spans& spans, const PiDateLevel& level, PiDateGradations::Fit fit) const {
    const int n = static_cast<int>(level.numStep);
    const PiDateGradList list = PiDateGradations::getGradList(m_range, m_mapping, level, fit, {});
    Time expected = fit == PiDateGradations::FIT ? spans.start : firstMultiple(spans.start, n, level.unit);
    const double scale = 1003 / static_cast<double>((spans.end - spans.start).count());
    if (expected > spans.end) {
      // The float of a coordinate may not tell that the first one is behind the end.
      if (list.texts.size() == 1) return {};
      return "more than one, but none falls";
    }
    size_t i = 0;
    for (; expected <= spans.end; ++i, expected = moved(expected, n, level.unit)) {
      if (i == list.dates.size()) return "ends before " + show(toDate(expected));
      if (show(list.dates[i]) != show(toDate(expected))) return show(list.dates[i]) + ", not " + show(toDate(expected));
      const double coord = static_cast<double>((expected - spans.start).count()) * scale - 3;
      if (std::abs(list.coords[i] - coord) > 3e-4) return show(list.dates[i]) + " stands wrong";
      const date::year_month_day ymd(date::floor<date::days>(expected));
      const std::string text = std::to_string(int{ymd.year()}) + "-" + std::to_string(unsigned{ymd.month()}) + "-" +
                               std::to_string(unsigned{ymd.day()});
      if (list.texts[i] != text) return list.texts[i] + ", not " + text;
    }
    if (i < list.dates.size() && list.coords[i] < m_range.endCoord) return "goes on to " + show(list.dates[i]);
    return {};
  }

 private:
  PbDateFormatMapping m_mapping;
  PiDateRange m_range;
  bool m_isGood = false;
};

}  // namespace

TEST(DateGradationsLibrary, LevelsAgreeOnRandomSpans) {
  Spans spans;
  int numGradated = 0;
  for (int k = 0; k < kNumSpans; ++k) {
    spans.next();
    if (spans.end <= spans.start) continue;
    const Scene scene(spans);
    ASSERT_TRUE(scene.isGood());
    // Each level of the automatic representation, and every fourth time one of a random step.
    PiDateRep rep = PiDateRepChoice::getDateAxisRep(scene.span(), {}, {}, PiDate::ENGLISH);
    if (k % 4 == 0) rep[0].numStep = static_cast<float>(spans.pick(1, 70));
    for (PiDateLevel& level : rep) {
      level.numStep = std::max(level.numStep, 1.0F);  // times here are of whole seconds
      const double perUnit[] = {0, 1, 60, 3600, 86400, 2.6e6, 3.1e7};
      if (scene.span().inSeconds() / (level.numStep * perUnit[level.unit]) > 100) level.numStep = 60;
      level.elements = {{0, PiDateForm::YEAR, "-"}, {0, PiDateForm::MONTH, "-"}, {0, PiDateForm::DAY, ""}};
      const auto fit = k % 3 == 0 ? PiDateGradations::FIT : PiDateGradations::UNFIT;
      const std::string fault = scene.fault(spans, level, fit);
      ASSERT_EQ(fault, "") << "from " << show(toDate(spans.start)) << " to " << show(toDate(spans.end)) << " by "
                           << level.numStep << " of unit " << level.unit << (fit == 0 ? ", fit" : "");
      ++numGradated;
    }
  }
  EXPECT_GT(numGradated, kNumSpans);
}

// The rules in terms of the other library's durations.
TEST(DateGradationsLibrary, AutomaticUnitsFollowTheSpan) {
  Spans spans;
  for (int k = 0; k < kNumSpans; ++k) {
    spans.next();
    const auto span = spans.end - spans.start;
    const PiDateSpan found(toDate(spans.end), toDate(spans.start));
    ASSERT_EQ(found.inSeconds(), static_cast<double>(span.count()));
    PiDate::StepType unit = PiDate::SECOND;
    if (span >= std::chrono::minutes(6)) unit = PiDate::MINUTE;
    if (span >= std::chrono::hours(6)) unit = PiDate::HOUR;
    if (span >= date::days(6)) unit = PiDate::DAY;
    if (span >= date::days(151)) unit = PiDate::MONTH;
    if (span >= date::days(1826)) unit = PiDate::YEAR;
    const PiDateRep rep = PiDateRepChoice::getDateAxisRep(found, {}, {}, PiDate::ENGLISH);
    ASSERT_EQ(rep[0].unit, unit) << show(toDate(spans.start)) << " to " << show(toDate(spans.end));
    ASSERT_EQ(rep.size(), unit == PiDate::YEAR ? 1U : 2U);
  }
}

#endif
