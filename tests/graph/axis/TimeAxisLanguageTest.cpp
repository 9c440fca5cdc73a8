#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <string>

#include "graph/axis/PiTimeAxisLanguage.h"

namespace {

// Levels between bars: step, prefix in brackets, elements with their counts and texts.
std::string show(const PiDateRep& rep) {
  static const char* const forms[] = {"s", "m", "H", "D", "dayname", "M", "monthname", "Y"};
  std::string text;
  for (size_t i = 0; i < rep.size(); ++i) {
    char step[40];
    std::snprintf(step, sizeof step, "%g:%d", double{rep[i].numStep}, rep[i].unit);
    text += std::string(i > 0 ? " | " : "") + step;
    if (rep[i].hasPrefix) text += "[" + rep[i].prefix + "]";
    for (const PiDateElement& e : rep[i].elements)
      text += " " + std::to_string(e.count) + forms[static_cast<int>(e.form)] + "<" + e.text + ">";
  }
  return text;
}

std::string parseRep(const std::string& text, int separator = '|') {
  const auto rep = PiTimeAxisLanguage::parseAxisRep(text, separator);
  return rep ? show(*rep) : "error";
}

std::string parseList(const std::string& text) {
  const auto list = PiTimeAxisLanguage::parseDateList(text);
  if (!list) return "error";
  std::string shown;
  for (const PiDatePeriod& period : *list) {
    char item[40];
    std::snprintf(item, sizeof item, "%g:%d ", double{period.value}, period.unit);
    shown += item;
  }
  return shown;
}

}  // namespace

TEST(TimeAxisLanguage, ReadsRepresentations) {
  const struct {
    const char* text;
    const char* levels;
  } rows[] = {
      {"", "0:0"},
      {"1 DAY D '/' M '/' 2 Y", "1:4 0D</> 0M</> 2Y<>"},
      {"1DAYD'/'M'/'2Y", "1:4 0D</> 0M</> 2Y<>"},  // no blanks
      {"\tDAY\n3 D 2 M\r", "0:4 3dayname<> 2monthname<>"},
      {"SEC s | MIN m | HOU H | MON M | YEA Y", "0:1 0s<> | 0:2 0m<> | 0:3 0H<> | 0:5 0M<> | 0:6 0Y<>"},
      {"6 HOU H 'h' | | 3 M", "6:3 0H<h> | 0:0 | 0:0 3monthname<>"},
      {"|", "0:0 | 0:0"},
      {"3 M 'x' 1 D", "0:0 3monthname<x> 1dayname<>"},  // counts, since no period follows
      {"'from ' 0 D '' '", "error"},
      {"1 DAY 'from ' 0 D ''", "1:4[from ] 0D<>"},
      {"'it''s' m ''''", "0:0[it's] 0m<'>"},
      {"-2 DAY | +.5E1 HOU | 1. MIN | 2e-1SEC", "-2:4 | 5:3 | 1:2 | 0.2:1"},
      {"1e999 YEA | 1e-999 YEA | -1e999 YEA", "3.40282e+38:6 | 0:6 | -3.40282e+38:6"},
      {"99999999999999999999 M", "0:0 2147483647monthname<>"},
  };
  for (const auto& row : rows) EXPECT_EQ(parseRep(row.text), row.levels) << row.text;
}

TEST(TimeAxisLanguage, RefusesWhatIsNoRepresentation) {
  for (const std::string text :
       {"x",         "d",           "S",       "-",         "'",     "'abc",       "'''",   "1",
        "1 2 DAY",   "1 'a' DAY",   "DAY DAY", "D DAY",     "-1 M",  "1 DAY -3 D", "1.5 M", "2e0 D",
        "D 'a' 'b'", "DAY 'a' 'b'", "1E DAY",  "1 DAY D ;", ". DAY", "+ DAY"})
    EXPECT_EQ(parseRep(text), "error") << text;
  EXPECT_EQ(parseRep(std::string("D\0M", 3)), "error");
  EXPECT_EQ(parseRep("D\xff"), "error");
}

// A separator that is some other token, or can't stand between two, never separates; longer tokens go first.
TEST(TimeAxisLanguage, SeparatorsThatMeanSomethingElse) {
  EXPECT_EQ(parseRep("D / M", '/'), "0:0 0D<> | 0:0 0M<>");
  EXPECT_EQ(parseRep("D M", ' '), "0:0 0D<> 0M<>");
  EXPECT_EQ(parseRep("D | M", ' '), "error");
  EXPECT_EQ(parseRep("D\nM\n\nY", '\n'), "0:0 0D<> | 0:0 0M<> | 0:0 | 0:0 0Y<>");
  EXPECT_EQ(parseRep("D D D", 'D'), "0:0 0D<> 0D<> 0D<>");
  EXPECT_EQ(parseRep("SEC S SEC", 'S'), "0:1 | 0:1");
  EXPECT_EQ(parseRep("DAY + +1 DAY", '+'), "0:4 | 1:4");
  EXPECT_EQ(parseRep("DAY ' DAY", '\''), "0:4 | 0:4");
  EXPECT_EQ(parseRep("D\xa6M", static_cast<char>(0xa6)), "0:0 0D<> | 0:0 0M<>");
  EXPECT_EQ(parseRep("D\xa6M", 0xa6), "0:0 0D<> | 0:0 0M<>");
}

TEST(TimeAxisLanguage, ReadsPeriods) {
  EXPECT_EQ(parseList("YEA"), "1:6 ");
  EXPECT_EQ(parseList(" 3 DAY MON-1.5YEA .5e1 SEC"), "3:4 1:5 -1.5:6 5:1 ");
  for (const char* text : {"", " ", "1", "DAY 1", "1 1 DAY", "D", "DAY 'a'", "DAY|MON", "1 day"})
    EXPECT_EQ(parseList(text), "error") << text;
}

TEST(TimeAxisLanguage, EndsAtTokensThatAreTooLong) {
  const std::string letters(PiTimeAxisLanguage::kMaxTokenLength - 2, 'a');
  EXPECT_EQ(parseRep("D '" + letters + "' M"), "0:0 0D<" + letters + "> 0M<>");

  testing::internal::CaptureStderr();
  EXPECT_EQ(parseRep("D 'a" + letters + "' M"), "error");
  EXPECT_EQ(parseList(std::string(513, '1') + "DAY"), "error");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Input string too long, limit 512\nInput string too long, limit 512\n");
}

// Many tokens cost neither stack nor more than their number.
TEST(TimeAxisLanguage, BearsLongTexts) {
  std::string text;
  for (int i = 0; i < 200000; ++i) text += "1 DAY D 'x' |";
  const auto rep = PiTimeAxisLanguage::parseAxisRep(text, '|');
  ASSERT_TRUE(rep);
  EXPECT_EQ(rep->size(), 200001U);
  EXPECT_EQ(parseRep(text + "'"), "error");
  EXPECT_FALSE(PiTimeAxisLanguage::parseDateList(std::string(1000000, ' ') + "DAY D"));
}

TEST(TimeAxisLanguage, KnowsNoDecimalComma) {
  for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE"})
    if (std::setlocale(LC_ALL, name)) break;
  if (*std::localeconv()->decimal_point != ',') GTEST_SKIP() << "no locale with a decimal comma is installed";
  const auto rep = PiTimeAxisLanguage::parseAxisRep("2.5 SEC", '|');
  const auto wrong = PiTimeAxisLanguage::parseAxisRep("2,5 SEC", '|');
  std::setlocale(LC_ALL, "C");
  ASSERT_TRUE(rep);
  EXPECT_EQ(rep->front().numStep, 2.5F);
  EXPECT_FALSE(wrong);
}
