#include "graph/axis/PiDateRepChoice.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "graph/axis/PiTimeAxisLanguage.h"

namespace {

constexpr double kMinute = 60, kHour = 3600, kDay = 86400;

PiDateSpan spanOf(double seconds) {
  PiDate start, end;
  end.incDateStep(static_cast<float>(std::floor(seconds / kDay)), PiDate::DAY);
  end.incDateStep(static_cast<float>(std::fmod(seconds, kDay)), PiDate::SECOND);
  return {start, end};
}

PiDateRep parsed(const char* text) { return PiTimeAxisLanguage::parseAxisRep(text, '|').value(); }

std::string steps(const PiDateRep& rep) {
  std::string text;
  for (const PiDateLevel& level : rep) {
    char step[40];
    std::snprintf(step, sizeof step, "%s%g:%d", text.empty() ? "" : " ", double{level.numStep}, level.unit);
    text += step;
  }
  return text;
}

std::string elements(const PiDateLevel& level) {
  std::string text;
  for (const PiDateElement& e : level.elements)
    text += "(" + std::to_string(e.count) + "," + std::to_string(static_cast<int>(e.form)) + "," + e.text + ")";
  return text;
}

PiDateRep automatic(double seconds, PiDate::Language language = PiDate::ENGLISH) {
  return PiDateRepChoice::getDateAxisRep(spanOf(seconds), {}, {}, language);
}

// The representation among those with these first levels, by its index.
std::string chosen(double seconds, const std::vector<const char*>& texts, const char* periods = nullptr) {
  std::vector<PiDateRep> reps;
  for (const char* text : texts) reps.push_back(parsed(text));
  std::vector<double> sorted;
  if (periods) sorted = PiDateRepChoice::sortedPeriods(*PiTimeAxisLanguage::parseDateList(periods));
  return steps(PiDateRepChoice::getDateAxisRep(spanOf(seconds), reps, sorted, PiDate::ENGLISH));
}

}  // namespace

TEST(DateSpan, IsTheSameBothWays) {
  PiDate a, b;
  b.incDateStep(3, PiDate::MONTH);
  b.m_hour = 1;
  a.m_hour = 23;
  a.m_second = 59.5F;
  for (const PiDateSpan& span : {PiDateSpan(a, b), PiDateSpan(b, a)}) {
    EXPECT_EQ(span.days, 89);
    EXPECT_EQ(span.hours, 1);
    EXPECT_EQ(span.minutes, 59);
    EXPECT_EQ(span.seconds, 0.5);
  }
}

TEST(DateRepChoice, AutomaticLevels) {
  const struct {
    double seconds;
    const char* steps;
  } rows[] = {
      {0, "1:1 1:2"},
      {0.05, "0.01:1 1:2"},
      {5, "1:1 1:2"},
      {3, "0.4:1 1:2"},
      {6, "1:1 1:2"},
      {12, "1:1 1:2"},
      {13, "2:1 1:2"},
      {60, "5:1 1:2"},
      {180, "15:1 1:2"},
      {359, "30:1 1:2"},
      {6 * kMinute, "1:2 1:3"},
      {59 * kMinute, "5:2 1:3"},
      {6 * kHour - 1, "30:2 1:3"},
      {6 * kHour, "1:3 1:4"},
      {kDay, "2:3 1:4"},
      {3 * kDay, "6:3 1:4"},
      {6 * kDay - 1, "12:3 1:4"},
      {6 * kDay, "1:4 1:5"},
      {18 * kDay, "2:4 1:5"},
      {150 * kDay, "13:4 1:5"},
      {151 * kDay, "1:5 1:6"},
      {365 * kDay, "1:5 1:6"},
      {1825 * kDay, "5:5 1:6"},
      {1826 * kDay, "1:6"},
      {40 * 365.25 * kDay, "3:6"},
      {9998 * 365.25 * kDay, "834:6"},
  };
  for (const auto& row : rows) EXPECT_EQ(steps(automatic(row.seconds)), row.steps) << row.seconds;
}

TEST(DateRepChoice, AutomaticElements) {
  const auto both = [](double seconds, PiDate::Language language = PiDate::ENGLISH) {
    const PiDateRep rep = automatic(seconds, language);
    return elements(rep[0]) + " " + elements(rep[1]);
  };
  EXPECT_EQ(both(30), "(0,0,\") (24,2,h )(0,1,')");
  EXPECT_EQ(both(kHour), "(0,1,') (0,3, )(24,2,h)");
  EXPECT_EQ(both(kDay), "(0,2,h) (3,6, )(0,3, )(2,7,)");
  for (const auto language : {PiDate::FRANCAIS, PiDate::DEUTSCH, PiDate::ESPANOL})
    EXPECT_EQ(both(kDay, language), "(0,2,h) (0,3, )(3,6, )(2,7,)");
  EXPECT_EQ(both(30 * kDay), "(0,3,) (3,6, )(4,7,)");
  EXPECT_EQ(both(365 * kDay), "(3,6,) (4,7,)");
  EXPECT_EQ(elements(automatic(2000 * kDay)[0]), "(24,7,)");
}

TEST(DateRepChoice, CompletesWhatIsLeftOpen) {
  const auto completed = [](double seconds, const char* text) { return chosen(seconds, {text}, nullptr); };
  EXPECT_EQ(completed(kDay, "HOU"), "2:3");
  EXPECT_EQ(completed(kDay, "1 HOU | | | | | |"), "1:3 1:4 1:5 1:6");  // beyond years there is nothing
  EXPECT_EQ(completed(kDay, "1 HOU | | 2 DAY"), "1:3 1:4 2:4");
  EXPECT_EQ(completed(kDay, "0.5 DAY | 1.5 DAY | -3 HOU"), "12:3 1:4 3:3");
  EXPECT_EQ(completed(kDay, "0.25 YEA | .5 MON | .5 SEC"), "3:5 15:4 0.5:1");
  EXPECT_EQ(completed(400 * kDay, "SEC"), "33:4");  // much too fine: its unit follows the span

  const auto rep = [](double seconds, const char* text) {
    const PiDateRep given = parsed(text);
    return PiDateRepChoice::getDateAxisRep(spanOf(seconds), {&given, 1}, {}, PiDate::ENGLISH);
  };
  EXPECT_EQ(elements(rep(kDay, "1 HOU s m")[0]), "(0,0,)(0,1,)");  // a step that is given keeps all elements
  EXPECT_EQ(elements(rep(kDay, "1 HOU s | s H 3 D 3 M")[1]), "(3,4,)(3,6,)");
  EXPECT_EQ(elements(rep(400 * kDay, "SEC s D M")[0]), "(0,3,)(0,5,)");
  EXPECT_EQ(elements(rep(kDay, "1 HOU")[0]), "(0,2,h)");
  EXPECT_EQ(elements(rep(kDay, "1 HOU '|'")[0]), "");
}

TEST(DateRepChoice, ChoosesTheStepNearestToATwelfth) {
  const std::vector<const char*> reps = {"1 YEA", "1 DAY", "1 MON", "6 HOU"};
  EXPECT_EQ(chosen(kDay, reps), "6:3");
  EXPECT_EQ(chosen(7 * kDay, reps), "6:3");  // 14 hours of 6 or 24
  EXPECT_EQ(chosen(8 * kDay, reps), "1:4");  // 16 hours
  EXPECT_EQ(chosen(12 * kDay, reps), "1:4");
  EXPECT_EQ(chosen(200 * kDay, reps), "1:5");  // 16 days of 1 or 30
  EXPECT_EQ(chosen(180 * kDay, reps), "1:4");  // 15 days: 14 to 1, 15 to 30
  EXPECT_EQ(chosen(40 * 365 * kDay, reps), "1:6");
  EXPECT_EQ(chosen(kDay, {"5 YEA"}), "5:6");
  EXPECT_EQ(chosen(kDay, {"D", "5 YEA"}), "5:6");  // an open step takes no part
  EXPECT_EQ(chosen(kDay, {"D", "M"}), "2:3 1:4");  // none is left
}

TEST(DateRepChoice, PeriodsSelectByTheSpan) {
  const std::vector<const char*> reps = {"1 HOU", "1 DAY", "1 YEA"};
  const char* periods = "3 MON 1 DAY";
  EXPECT_EQ(chosen(kDay, reps, periods), "1:3");  // a period that equals the span is its own
  EXPECT_EQ(chosen(kDay + 1, reps, periods), "1:4");
  EXPECT_EQ(chosen(91 * kDay, reps, periods), "1:4");  // 91.5 days without the fraction
  EXPECT_EQ(chosen(91 * kDay + 1, reps, periods), "1:6");
  EXPECT_EQ(chosen(kDay, {"D", "1 DAY"}, "YEA"), "2:3");   // the step is completed here
  EXPECT_EQ(chosen(3 * kDay, reps, "60 SEC MIN"), "1:6");  // one weight, kept once: beyond it is the last
}

TEST(DateRepChoice, SortsPeriods) {
  const auto sorted = [](const char* text) {
    return PiDateRepChoice::sortedPeriods(*PiTimeAxisLanguage::parseDateList(text));
  };
  EXPECT_EQ(sorted("YEA 1.5 MON 2.9 DAY 1.9 HOU 1.9 MIN 1.5 SEC"),
            (std::vector<double>{1.5, 60, 3600, 2 * kDay, 45 * kDay, 365 * kDay}));
  EXPECT_EQ(sorted("1 YEA 20 MON"), (std::vector<double>{610 * kDay, 365 * kDay}));  // by weight, not by length
}
