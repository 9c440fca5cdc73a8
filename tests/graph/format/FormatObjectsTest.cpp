#include <Ormelle/PbDateFormatMapping.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "graph/format/PiDate.h"

namespace {

std::string show(const PbDateFormatMapping& mapping) {
  SbString date1, date2;
  float coord1, coord2;
  mapping.getDateMapping(date1, date2, coord1, coord2);
  return std::string(date1.getString()) + " " + date2.getString() + " " + std::to_string(coord1) + " " +
         std::to_string(coord2);
}

// Whether `change` announced OBJECT_CHANGE.
template <class Object, class Change>
bool announces(Change change) {
  struct Watched : Object {
    using Object::setChangeType;
  } object;
  object.setChangeType(PbBase::MESH_VALUES_CHANGE);
  change(object);
  return object.getChangeType() == PbBase::OBJECT_CHANGE;
}

}  // namespace

TEST(PbDateFormatMapping, KeepsTheEarlierDateAtTheSmallerCoordinate) {
  EXPECT_EQ(show(PbDateFormatMapping()), "1-01-70 2-01-70 0.000000 1.000000");
  const PbDateFormatMapping mapping("2-03-92", "1-03-92", 7, 3, "dmy");
  EXPECT_EQ(show(mapping), "1-03-92 2-03-92 3.000000 7.000000");
  float coord = 0;
  EXPECT_EQ(mapping.getCoordinate("1-03-92", coord), 1);
  EXPECT_FLOAT_EQ(coord, 3);
  EXPECT_EQ(mapping.getCoordinate("4-03-92", coord), 1);
  EXPECT_FLOAT_EQ(coord, 15);
  EXPECT_EQ(mapping.getCoordinate("4-nonsense", coord), 0);
  EXPECT_FLOAT_EQ(coord, 15);
}

TEST(PbDateFormatMapping, RefusesBadInputWhole) {
  PbDateFormatMapping mapping("1-03-92", "2-03-92", 0, 10, "dmy");
  const std::string before = show(mapping);
  const float nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(mapping.setDateMapping("1-03-93", "2-xx-92", 0, 1), 0);
  EXPECT_EQ(mapping.setDateMapping("1-03-93", "2-03-93", nan, 1), 0);
  EXPECT_EQ(mapping.setFormat("dmx"), 3);
  EXPECT_EQ(show(mapping), before);
  EXPECT_EQ(mapping.getFormat(), SbString("dmy"));
  EXPECT_EQ(show(PbDateFormatMapping("x", "y", 3, 4, "!")), show(PbDateFormatMapping()));
  EXPECT_EQ(show(PbDateFormatMapping(nullptr, nullptr, 3, 4, nullptr)), "  3.000000 4.000000")
      << "an empty format reads nothing, and the dates are the same";
}

TEST(PbDateFormatMapping, ChecksFormats) {
  const struct {
    const char* format;
    int result;
  } rows[] = {{"", 0},   {"dMy", 0}, {"dD", 0},  {"YmdDh'\"", 0}, {"dd", 2},   {"DdD", 3},   {"dyY", 3},
              {"mM", 2}, {"hH", 2},  {"d-m", 2}, {"''", 2},       {"\"\"", 2}, {"y\xC3", 2}, {"mdym", 4}};
  for (const auto& row : rows) EXPECT_EQ(PbDateFormatMapping::checkDateFormat(row.format), row.result) << row.format;
}

TEST(PbDateFormatMapping, WritesDatesThatReadBack) {
  const struct {
    const char *date1, *date2, *format;
  } rows[] = {{"1-01-1900 00:00:00", "31-12-1999 23:59:59", "dmYh'\""},
              {"0001 1 1", "9999 12 31", "Ymd"},
              {"MAI 71", "DICI 72", "My"},
              {"MON 3 71", "SUN 9 80", "Dmy"},
              {"12:30:15.25", "12:30:15.5", "h'\""}};
  for (const auto& row : rows) {
    const PbDateFormatMapping mapping(row.date1, row.date2, -1, 1, row.format);
    SbString date1, date2;
    float coord1, coord2;
    mapping.getDateMapping(date1, date2, coord1, coord2);
    PbDateFormatMapping again;
    EXPECT_EQ(again.setFormat(row.format), 0);
    EXPECT_EQ(again.setDateMapping(date2, date1, coord1, coord2), 1) << date1.getString() << ' ' << date2.getString();
    EXPECT_EQ(show(again), show(mapping));
    float coord;
    EXPECT_EQ(mapping.getCoordinate(row.date2, coord), 1);
    EXPECT_EQ(coord, 1.f) << "the later date stands exactly at its coordinate: " << row.date2;
  }
}

TEST(PbDateFormatMapping, MapsCoordinatesToDatesAndBack) {
  const PbDateFormatMapping mapping("1-01-1992", "31-12-1992", 0, 365, "dmY");
  for (float coord = -400; coord <= 800; coord += 0.37f)
    EXPECT_NEAR(mapping.getCoordinateP(mapping.getDateP(coord)), coord, 1e-4f * (1 + std::abs(coord)));
  const PiDate date = mapping.getDateP(59.5f);
  EXPECT_EQ(date.getDateString("dmYh'"), "29-02-1992 12:00");
}

TEST(PbDateFormatMapping, StandsStillWithoutALine) {
  const PbDateFormatMapping sameDate("1-01-92", "1-01-92", 2, 5, "dmy");
  const PbDateFormatMapping sameCoordinate("1-01-92", "3-01-92", 2, 2, "dmy");
  float coord = 0;
  EXPECT_EQ(sameDate.getCoordinate("8-01-92", coord), 1);
  EXPECT_EQ(coord, 2.f);
  EXPECT_EQ(sameDate.getDateP(4).getDateString("dmy"), "1-01-92");
  EXPECT_EQ(sameCoordinate.getDateP(9).getDateString("dmy"), "1-01-92");
  EXPECT_TRUE(std::isfinite(sameCoordinate.getCoordinateP(PiDate())));
  const PbDateFormatMapping wide("1-01-92", "3-01-92", -3e38f, 3e38f, "dmy");
  EXPECT_TRUE(std::isfinite(wide.getCoordinateP(wide.getDateP(1e38f))));
}

TEST(FormatObjects, CopyAndAssignAllMembers) {
  PbMiscTextAttr text;
  text.setFontName("Sans");
  text.setLineLength('|', 12);
  text.enableProfile(1);
  text.enablePredefinedProfile(0);
  text.enableOutlining(0);
  PbMiscTextAttr assigned;
  assigned = text;
  for (const PbMiscTextAttr& copy : {PbMiscTextAttr(text), assigned}) {
    char endLineChar = 0;
    int length = 0;
    copy.getLineLength(endLineChar, length);
    EXPECT_EQ(copy.getFontName(), SbString("Sans"));
    EXPECT_EQ(endLineChar, '|');
    EXPECT_EQ(length, 12);
    EXPECT_EQ(copy.isProfileEnabled(), 1);
    EXPECT_EQ(copy.isPredefinedProfileEnabled(), 0);
    EXPECT_EQ(copy.isOutliningEnabled(), 0);
  }

  const PbNumericDisplayFormat number(PbNumericDisplayFormat::FLOAT_FORMAT, 3, 2);
  PbNumericDisplayFormat assignedNumber;
  assignedNumber = number;
  PbNumericDisplayFormat::FormatType type;
  int tenPower, numDecimal;
  assignedNumber.getFormat(type, tenPower, numDecimal);
  EXPECT_EQ(type, PbNumericDisplayFormat::FLOAT_FORMAT);
  EXPECT_EQ(tenPower, 3);
  EXPECT_EQ(numDecimal, 2);

  const PbDateFormatMapping dates("1-03-92 12", "2-03-92 13", 0, 10, "dmyh");
  PbDateFormatMapping assignedDates;
  assignedDates = dates;
  EXPECT_EQ(show(assignedDates), show(dates));
  EXPECT_EQ(show(PbDateFormatMapping(dates)), show(dates));
  const PbDateFormatMapping& self = assignedDates;
  assignedDates = self;
  assignedDates.setFormat(self.getFormat());
  EXPECT_EQ(show(assignedDates), show(dates));
  text.setFontName(text.getFontName());
  EXPECT_EQ(text.getFontName(), SbString("Sans"));
}

TEST(FormatObjects, SettersAnnounceWhatTheyChange) {
  using Text = PbMiscTextAttr;
  EXPECT_TRUE(announces<Text>([](Text& t) { t.setFontName("Sans"); }));
  EXPECT_TRUE(announces<Text>([](Text& t) { t.setLineLength(' ', 3); }));
  EXPECT_TRUE(announces<Text>([](Text& t) { t.enableProfile(1); }));
  EXPECT_TRUE(announces<Text>([](Text& t) { t.enablePredefinedProfile(0); }));
  EXPECT_TRUE(announces<Text>([](Text& t) { t.enableOutlining(0); }));
  using Number = PbNumericDisplayFormat;
  EXPECT_TRUE(announces<Number>([](Number& n) { n.setFormat(Number::FLOAT_FORMAT, 0, 1); }));
  using Dates = PbDateFormatMapping;
  EXPECT_TRUE(announces<Dates>([](Dates& d) { d.setFormat("mdy"); }));
  EXPECT_FALSE(announces<Dates>([](Dates& d) { d.setFormat("??"); }));
  EXPECT_TRUE(announces<Dates>([](Dates& d) { d.setDateMapping("1-1-80", "1-1-90", 0, 1); }));
  EXPECT_FALSE(announces<Dates>([](Dates& d) { d.setDateMapping("1-1-80", "tomorrow", 0, 1); }));
}
