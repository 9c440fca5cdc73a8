#include "graph/axis/PiDateGradations.h"

#include <gtest/gtest.h>

#include <Ormelle/PbDateFormatMapping.h>

#include <cmath>
#include <string>

#include "graph/axis/PiDateRepChoice.h"
#include "graph/axis/PiTimeAxisLanguage.h"

namespace {

constexpr char kFormat[] = "Ymdh'\"";

struct Axis {
  Axis(const char* start, const char* end) {
    mapping.setFormat(kFormat);
    mapping.setDateMapping(start, end, 0, 1);
    range.start.setDateString(start, kFormat);
    range.end.setDateString(end, kFormat);
    range.startCoord = mapping.getCoordinateP(range.start);
    range.endCoord = mapping.getCoordinateP(range.end);
  }

  PiDateGradList list(const char* level, PiDateGradations::Fit fit = PiDateGradations::UNFIT,
                      PiDate::Language language = PiDate::ENGLISH, bool hasDistinctNames = false) const {
    const PiDateRep rep = PiTimeAxisLanguage::parseAxisRep(level, '|').value();
    const PiDateRep complete =
        PiDateRepChoice::getDateAxisRep(PiDateSpan(range.start, range.end), {&rep, 1}, {}, language);
    return PiDateGradations::getGradList(range, mapping, complete[0], fit, {language, hasDistinctNames, suffix},
                                         maxGradations);
  }

  std::string texts(const char* level, PiDateGradations::Fit fit = PiDateGradations::UNFIT,
                    PiDate::Language language = PiDate::ENGLISH, bool hasDistinctNames = false) const {
    std::string all;
    for (const std::string& text : list(level, fit, language, hasDistinctNames).texts)
      all += (all.empty() ? "" : ", ") + text;
    return all;
  }

  PbDateFormatMapping mapping;
  PiDateRange range;
  std::string suffix;
  int maxGradations = PiDateGradations::kMaxGradations;
};

}  // namespace

TEST(DateGradations, StandOnMultiplesOfTheStep) {
  EXPECT_EQ(Axis("2004-02-27 10:00:00", "2004-03-03 00:00:00").texts("1 DAY D '.' M"), "28.2, 29.2, 1.3, 2.3, 3.3");
  EXPECT_EQ(Axis("2003-12-31 23:30:30", "2004-01-01 02:00:00").texts("30 MIN H 'h' m"), "0h0, 0h30, 1h0, 1h30, 2h0");
  EXPECT_EQ(Axis("1991-06-15 00:00:00", "1993-01-01 00:00:00").texts("3 MON 3 M ' ' Y"),
            "SEP 1991, DEC 1991, MAR 1992, JUN 1992, SEP 1992, DEC 1992");
  EXPECT_EQ(Axis("1991-06-15 00:00:00", "2010-01-01 00:00:00").texts("5 YEA Y"), "1995, 2000, 2005, 2010");
  EXPECT_EQ(Axis("2004-01-01 00:00:58", "2004-01-01 00:01:04").texts("2 SEC m ':' s"), "0:58, 1:0, 1:2, 1:4");
  EXPECT_EQ(Axis("2004-01-05 00:00:00", "2004-01-07 00:00:00")
                .texts("1 DAY 3 D ' ' 20 D", PiDateGradations::UNFIT, PiDate::FRANCAIS),
            "LUN LUNDI, MAR MARDI, MER MERCREDI");
}

TEST(DateGradations, StandOnTheStartWhenFit) {
  const auto fit = PiDateGradations::FIT;
  EXPECT_EQ(Axis("2004-01-31 06:30:00", "2004-04-30 12:00:00").texts("1 MON D '.' M ' ' H ':' m", fit),
            "31.1 6:30, 29.2 6:30, 29.3 6:30, 29.4 6:30");
  EXPECT_EQ(Axis("2004-01-03 00:00:00", "2004-01-01 00:00:00").texts("1 DAY D", fit), "3, 2, 1");
}

TEST(DateGradations, RunFromStartToEndBackwardsToo) {
  EXPECT_EQ(Axis("2004-01-06 12:00:00", "2004-01-01 00:00:00").texts("2 DAY D"), "6, 4, 2");
}

// The sums of a float step would read 59.99 where a minute begins, and drift by a digit.
TEST(DateGradations, KeepFractionsOfSecondsExact) {
  const std::string texts = Axis("2004-01-01 00:00:00", "2004-01-01 00:02:00").texts("0.7 SEC m ':' s");
  EXPECT_EQ(texts.substr(0, 20), "0:0.0, 0:0.7, 0:1.4,");
  EXPECT_NE(texts.find("0:59.5, 1:0.2, 1:0.9"), std::string::npos) << texts;
  EXPECT_EQ(texts.substr(texts.size() - 14), "1:59.0, 1:59.7") << texts;
  EXPECT_EQ(Axis("2004-01-01 00:00:00.25", "2004-01-01 00:00:03").texts("1 SEC s", PiDateGradations::FIT),
            "0.25, 1.25, 2.25");
  EXPECT_EQ(Axis("2004-01-01 00:00:59.9", "2004-01-01 00:01:00.11").texts("0.05 SEC s"),
            "59.90, 59.95, 0.00, 0.05, 0.10");
}

TEST(DateGradations, OneInTheMiddleWhenNoneFalls) {
  const PiDateGradList list = Axis("2004-01-05 10:00:00", "2004-01-05 11:00:00").list("1 MON 3 M ' ' D");
  ASSERT_EQ(list.texts.size(), 1U);
  EXPECT_EQ(list.texts[0], "JAN 5");
  EXPECT_EQ(list.coords[0], 0.5F);
}

TEST(DateGradations, NamesAreToldApart) {
  const Axis axis("2004-05-01 00:00:00", "2004-08-01 00:00:00");
  EXPECT_EQ(axis.texts("1 MON 3 M", PiDateGradations::UNFIT, PiDate::FRANCAIS, false), "MAI, JUI, JUI, AOU");
  EXPECT_EQ(axis.texts("1 MON 3 M", PiDateGradations::UNFIT, PiDate::FRANCAIS, true), "MAI, JUIN, JUIL, AOU");
  EXPECT_EQ(axis.texts("1 MON 1 M", PiDateGradations::UNFIT, PiDate::ENGLISH, true), "MAY, JUN, JUL, AU");
  EXPECT_EQ(Axis("2004-01-06 00:00:00", "2004-01-08 00:00:00")
                .texts("1 DAY 1 D", PiDateGradations::UNFIT, PiDate::ENGLISH, true),
            "TU, W, TH");
}

TEST(DateGradations, StayWithinLimits) {
  Axis millennia("0001-01-01 00:00:00", "9999-12-31 23:59:59");
  millennia.maxGradations = 1000;
  const PiDateGradList list = millennia.list("1 SEC Y ' ' M ' ' D");
  EXPECT_GT(list.texts.size(), 500U);
  EXPECT_LE(list.texts.size(), 1001U);
  EXPECT_EQ(list.texts.front(), "1 1 1");
  EXPECT_EQ(list.texts.size(), list.coords.size());

  // A step beyond all calendars, and one that no field has a multiple of.
  EXPECT_EQ(millennia.texts("1e38 YEA Y"), "1");
  EXPECT_EQ(millennia.texts("1e38 SEC Y"), "1");
  EXPECT_EQ(Axis("2004-01-01 00:00:00", "2004-12-31 00:00:00").texts("200 DAY D '.' M"), "18.7");

  std::string level = "1 DAY";
  for (int i = 0; i < 40; ++i) level += " D '\xc3\xa9'";
  for (const std::string& text : Axis("2004-01-01 00:00:00", "2004-01-03 00:00:00").list(level.c_str()).texts) {
    EXPECT_EQ(text.size(), 99U);
    EXPECT_EQ(text.back(), '\xa9');  // no half letter at the end
  }
}

// Ten years after 1970 in seconds since then: neighbouring floats are 32 seconds apart.
TEST(DateGradations, CoordinatesThatFloatsDontTellApartComeOnce) {
  Axis axis("1980-01-01 00:00:00", "1980-01-01 00:02:00");
  axis.mapping.setDateMapping("1970-01-01 00:00:00", "1980-01-01 00:02:00", 0, 315532920.0F);
  axis.range.startCoord = axis.mapping.getCoordinateP(axis.range.start);
  axis.range.endCoord = axis.mapping.getCoordinateP(axis.range.end);
  const PiDateGradList list = axis.list("10 SEC m ':' s");
  EXPECT_GE(list.coords.size(), 3U);
  for (size_t i = 1; i < list.coords.size(); ++i) EXPECT_LT(list.coords[i - 1], list.coords[i]);
}
