#include "graph/format/PiDate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <string>

namespace {

PiDate dateOf(int year, int month, int day, int hour = 0, int minute = 0, float second = 0) {
  PiDate date;
  date.m_year = year;
  date.m_month = month;
  date.m_day = day;
  date.m_hour = hour;
  date.m_minute = minute;
  date.m_second = second;
  date.m_dayOfWeek = PiDate::getDayWeek(date);
  return date;
}

// Year-month-day, day of the week, time.
std::string show(const PiDate& d) {
  char text[160];
  std::snprintf(text, sizeof text, "%d-%d-%d %d %d:%d:%g", d.m_year, d.m_month, d.m_day, d.m_dayOfWeek, d.m_hour,
                d.m_minute, static_cast<double>(d.m_second));
  return text;
}

std::string parse(const char* text, const char* format) {
  PiDate date;
  return date.setDateString(text, format) == 0 ? show(date) : "fails";
}

std::string moved(PiDate date, float n, PiDate::StepType step) {
  date.incDateStep(n, step);
  return show(date);
}

bool isInRange(const PiDate& d) {
  return d.m_month >= 1 && d.m_month <= 12 && d.m_day >= 1 && d.m_day <= 31 && d.m_hour >= 0 && d.m_hour < 24 &&
         d.m_minute >= 0 && d.m_minute < 60 && d.m_second >= 0 && d.m_second < 60 && d.m_dayOfWeek >= 1 &&
         d.m_dayOfWeek <= 7;
}

}  // namespace

TEST(PiDate, ReadsDates) {
  const struct {
    const char* text;
    const char* format;
    const char* date;
  } rows[] = {
      {"12-03-71", "dmy", "1971-3-12 5 0:0:0"},
      {" 1/2/2004 ", "dmY", "2004-2-1 7 0:0:0"},
      {"20040229T2359", "Ymdh'", "fails"},  // a letter isn't skipped
      {"20040229 2359", "Ymdh'", "2004-2-29 7 23:59:0"},
      {"MARS 71", "My", "1971-3-1 1 0:0:0"},
      {"MAY 71", "My", "1971-5-1 6 0:0:0"},
      {"MAI71", "My", "1971-5-1 6 0:0:0"},
      {"MAYO 71", "My", "1971-5-1 6 0:0:0"},
      {"DEZE 71", "My", "1971-12-1 3 0:0:0"},
      {"MAR 71", "My", "fails"},
      {"MAYX 71", "My", "fails"},
      {"MARCH 71", "My", "fails"},  // four letters and no more
      {"mars 71", "My", "fails"},
      {"JUIN", "M", "1993-6-1 2 0:0:0"},
      {"WEN 03 92", "Dmy", "1992-3-4 3 0:0:0"},  // the first such day of the month
      {"SON 03 92", "Dmy", "1992-3-1 7 0:0:0"},
      {"MIE 12-03-92", "Ddmy", "1992-3-12 4 0:0:0"},  // the day number counts
      {"31 02 96", "dmy", "1996-2-29 4 0:0:0"},
      {"31 02 1900", "dmY", "1900-2-28 3 0:0:0"},
      {"0000", "Y", "0-1-1 6 0:0:0"},
      {"25:61", "h'", "fails"},
      {"24", "h", "fails"},
      {"23:59:59.5", "H'\"", "1993-1-1 5 23:59:59.5"},
      {"59.", "\"", "1993-1-1 5 0:0:59"},
      {"60", "\"", "fails"},
      {"59,5", "\"", "1993-1-1 5 0:0:59"},
      {"0-1-70", "dmy", "fails"},
      {"1-13-70", "dmy", "fails"},
      {"1-1-7", "dmy", "fails"},
      {"1-1-197", "dmY", "fails"},
      {"-5", "d", "1993-1-5 2 0:0:0"},  // a sign is no part of a number
      {"12 \xC3\xA9 3", "dm", "1993-3-12 5 0:0:0"},
      {"", "", "1993-1-1 5 0:0:0"},
      {"", "d", "fails"},
      {nullptr, "d", "fails"},
      {"5", nullptr, "1993-1-1 5 0:0:0"},
      {"5", "?x d", "1993-1-5 2 0:0:0"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(parse(row.text, row.format), row.date)
        << (row.text ? row.text : "null") << " by " << (row.format ? row.format : "null");
}

TEST(PiDate, ReadsNamesOfAllLanguages) {
  for (int language = 0; language < PiDate::NUM_LANGUAGES; ++language) {
    const auto* months = PiDate::getMonths(static_cast<PiDate::Language>(language));
    const auto* days = PiDate::getDays(static_cast<PiDate::Language>(language));
    for (int month = 1; month <= 12; ++month) {
      PiDate date;
      EXPECT_EQ(date.setDateString(std::string(months[month]).substr(0, 4).c_str(), "M"), 0) << months[month];
      EXPECT_EQ(date.m_month, month) << months[month];
    }
    for (int day = 1; day <= 7; ++day) {
      PiDate date;
      EXPECT_EQ(date.setDateString(std::string(days[day]).substr(0, 3).c_str(), "D"), 0) << days[day];
      EXPECT_EQ(date.m_dayOfWeek, day) << days[day];
    }
  }
}

TEST(PiDate, KeepsWhatWasReadBeforeAFailure) {
  PiDate date;
  EXPECT_NE(date.setDateString("12-03-xx", "dmy"), 0);
  EXPECT_EQ(show(date), "0-3-12 0 0:0:0");
}

TEST(PiDate, SecondsStayBelowAMinute) {
  PiDate date;
  EXPECT_EQ(date.setDateString("59.99999999999999999999999", "\""), 0);
  EXPECT_LT(date.m_second, 60.f);
  EXPECT_GT(date.m_second, 59.99f);
}

TEST(PiDate, WritesWhatItReads) {
  std::mt19937 random(7);
  const auto pick = [&](int least, int greatest) {
    return std::uniform_int_distribution<int>(least, greatest)(random);
  };
  const std::string letters[] = {"Yy", "mM", "d", "D", "hH", "'", "\""};
  for (int i = 0; i < 20000; ++i) {
    std::string items;
    for (const std::string& choice : letters)
      if (pick(0, 3)) items += choice[static_cast<size_t>(pick(0, static_cast<int>(choice.size()) - 1))];
    std::shuffle(items.begin(), items.end(), random);
    const PiDate original = dateOf(pick(1900, 1999), pick(1, 12), pick(1, 31), pick(0, 23), pick(0, 59),
                                   pick(0, 1) ? static_cast<float>(pick(0, 59))
                                              : std::ldexp(static_cast<float>(pick(1, 1 << 24)), pick(-60, -19)));
    PiDate read, again;
    ASSERT_EQ(read.setDateString(original.getDateString(items.c_str()).c_str(), items.c_str()), 0)
        << original.getDateString(items.c_str()) << " by " << items;
    const std::string text = read.getDateString(items.c_str());
    ASSERT_EQ(again.setDateString(text.c_str(), items.c_str()), 0) << text << " by " << items;
    ASSERT_EQ(show(again), show(read)) << text << " by " << items;
    ASSERT_EQ(again.m_second, read.m_second);
  }
  EXPECT_EQ(dateOf(1971, 3, 5, 4, 7, 2.5f).getDateString("DdMYh'\""), "FRI 5-MARC-1971 04:07:02.5");
}

TEST(PiDate, Moves) {
  const PiDate start = dateOf(1992, 1, 31, 23, 59, 30);
  const struct {
    float n;
    PiDate::StepType step;
    const char* date;
  } rows[] = {
      {1, PiDate::MONTH, "1992-2-29 6 23:59:30"},
      {-11.9f, PiDate::MONTH, "1991-2-28 4 23:59:30"},
      {13, PiDate::MONTH, "1993-2-28 7 23:59:30"},
      {-1, PiDate::YEAR, "1991-1-31 4 23:59:30"},
      {30.25f, PiDate::SECOND, "1992-2-1 6 0:0:0.25"},
      {-31, PiDate::SECOND, "1992-1-31 5 23:58:59"},
      {1.9f, PiDate::MINUTE, "1992-2-1 6 0:0:30"},
      {-24, PiDate::HOUR, "1992-1-30 4 23:59:30"},
      {30, PiDate::DAY, "1992-3-1 7 23:59:30"},
      {-1e6f, PiDate::DAY, "-746-3-5 4 23:59:30"},
      {5, PiDate::NO_STEP, "1992-1-31 5 23:59:30"},
      {std::numeric_limits<float>::quiet_NaN(), PiDate::DAY, "1992-1-31 5 23:59:30"},
      {1 << 30, PiDate::SECOND, "2026-2-9 1 13:36:30"},  // whole minutes only
      {-2e38f, PiDate::YEAR, "-2147483648-1-31 4 23:59:30"},
      {std::numeric_limits<float>::infinity(), PiDate::SECOND, "2147483647"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(moved(start, row.n, row.step).substr(0, std::strlen(row.date)), row.date) << row.n << ' ' << row.step;
  EXPECT_EQ(moved(dateOf(1992, 1, 1), -1e-9f, PiDate::SECOND), "1992-1-1 3 0:0:0") << "rounded, never 60 seconds";
}

TEST(PiDate, CountsDaysBothWays) {
  const PiDate reference = dateOf(1992, 9, 21);
  for (int delta = -800000; delta <= 800000; delta += 37) {
    PiDate date = reference;
    date.incDateStep(static_cast<float>(delta), PiDate::DAY);
    ASSERT_EQ(date.getDeltaDays(reference), delta);
    ASSERT_EQ(PiDate::getDeltaDays(reference, date), -delta);
    const int backwards = 8 - (-delta) % 7;
    ASSERT_EQ(date.m_dayOfWeek, delta > 0 ? delta % 7 + 1 : backwards == 8 ? 1 : backwards);
  }
  EXPECT_EQ(PiDate::getDeltaDays(dateOf(2147483647, 1, 1), dateOf(-2147483647, 1, 1)), 2147483647);
  EXPECT_DOUBLE_EQ(PiDate::getDeltaSeconds(dateOf(1970, 1, 2, 1, 1, 1.5f), dateOf(1970, 1, 1)), 86400 + 3661.5);
}

// Random texts in exact allocations, so that a byte read too far is seen by the address sanitizer.
TEST(PiDate, SurvivesAnyText) {
  std::mt19937 random(11);
  const std::string usual = "0123456789 -/:.'\"YymMdDhHMARSMAYJUNELUN\xC3\xA9";
  const auto makeText = [&](size_t greatest) {
    std::string text(std::uniform_int_distribution<size_t>(0, greatest)(random), ' ');
    for (char& c : text) c = random() % 8 ? usual[random() % usual.size()] : static_cast<char>(random() % 255 + 1);
    return text;
  };
  const auto copyOf = [](const std::string& text) {
    auto copy = std::make_unique<char[]>(text.size() + 1);
    std::memcpy(copy.get(), text.c_str(), text.size() + 1);
    return copy;
  };
  int numRead = 0;
  for (int i = 0; i < 100000; ++i) {
    const auto text = copyOf(makeText(24));
    const auto format = copyOf(makeText(6));
    PiDate date;
    if (date.setDateString(text.get(), format.get()) == 0) {
      ++numRead;
      ASSERT_TRUE(isInRange(date)) << text.get() << " by " << format.get();
    }
    date.incDateStep(static_cast<float>(static_cast<int>(random())), static_cast<PiDate::StepType>(random() % 8));
    ASSERT_TRUE(isInRange(date)) << show(date);
  }
  EXPECT_GT(numRead, 1000);
  const std::string longText(1 << 20, '7');
  EXPECT_EQ(parse(("5." + longText).c_str(), "\""), "1993-1-1 5 0:0:5.77778");
  EXPECT_EQ(parse(longText.c_str(), longText.c_str()), "1993-1-1 5 0:0:0");
  EXPECT_EQ(parse(longText.c_str(), std::string(1 << 20, 'd').c_str()), "fails");
}

TEST(PiDate, SurvivesAnyMembers) {
  std::mt19937 random(12);
  for (int i = 0; i < 20000; ++i) {
    int members[6];
    for (int& member : members) member = static_cast<int>(random() >> random() % 31);
    PiDate date;
    date.m_year = members[0];
    date.m_month = -members[1];
    date.m_day = members[2];
    date.m_dayOfWeek = members[3];
    date.m_hour = -members[4];
    date.m_minute = members[5];
    const uint32_t pattern = static_cast<uint32_t>(random());
    std::memcpy(&date.m_second, &pattern, sizeof pattern);
    date.getDateString("YmMdDh'\"");
    date.getDeltaDays(PiDate());
    PiDate::getDeltaSeconds(date, PiDate());
    date.incDateStep(1, static_cast<PiDate::StepType>(i % 7));
    ASSERT_TRUE(isInRange(date)) << show(date);
  }
}
