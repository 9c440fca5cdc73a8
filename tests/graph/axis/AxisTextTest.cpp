#include "graph/axis/PiAxisText.h"

#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoOrmelle.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "graph/axis/PiAxisLayout.h"
#include "graph/axis/PiGradFormat.h"
#include "graph/axis/PiGradLegibility.h"
#include "graph/axis/PiGradStrings.h"
#include "graph/axis/PiLogText.h"
#include "graph/format/PiTextMetrics.h"

namespace {

constexpr PoAxis::TextPath kPaths[] = {PoAxis::PATH_RIGHT, PoAxis::PATH_LEFT, PoAxis::PATH_UP, PoAxis::PATH_DOWN};

class AxisText : public testing::Test {
 protected:
  AxisText() { PoOrmelle::init(); }
  ~AxisText() override { PoOrmelle::finish(); }

  PiTextBox box(PoAxis::TextPath path, PiTextAlignment alignment, const PiTextRun& run) {
    return PiAxisText("defaultFont", attributes, path, alignment).measure(run);
  }

  PbMiscTextAttr attributes;
};

PiTextBox boxOf(float width, float height) { return {-width / 2, width / 2, -height, 0}; }

std::string logText(bool isPower, PoAxis::LogGradType type, const PiLogGradation& gradation) {
  char text[PiGradStrings::SLOT_SIZE], exponent[PiGradStrings::SLOT_SIZE];
  PiLogText::write(isPower, type, gradation, text, exponent);
  return *exponent ? std::string(text) + "^" + exponent : text;
}

}  // namespace

TEST_F(AxisText, StandsOnItsSideOfTheAxisAndCentredOnItsGradation) {
  const float slack = 0.15F;  // bearings and descenders
  for (const PoAxis::TextPath path : kPaths) {
    PiTextRun power("10");
    power.addExponent("12");
    for (const PiTextRun& run : {PiTextRun("1500"), PiTextRun("-0.25 m"), power}) {
      const PiTextBox above = box(path, PiTextAlignment::beside(path, true), run);
      EXPECT_GT(above.ymin, -slack - PiAxisText::EXPONENT_RAISED) << path;
      EXPECT_GT(above.ymax, 0.5F) << path;
      const PiTextBox below = box(path, PiTextAlignment::beside(path, false), run);
      EXPECT_LT(below.ymax, slack + PiAxisText::EXPONENT_RAISED) << path;
      EXPECT_LT(below.ymin, -0.5F) << path;
      for (const PiTextBox& placed : {above, below})
        EXPECT_NEAR((placed.xmin + placed.xmax) / 2, 0, slack + PiAxisText::EXPONENT_RAISED / 2) << path;
    }
    // Along the axis a text is long, across it it is high.
    const PiTextBox wide = box(path, PiTextAlignment::beside(path, true), PiTextRun("100000"));
    EXPECT_EQ(wide.xmax - wide.xmin > wide.ymax - wide.ymin, !PiAxisText::isVertical(path));
  }
}

TEST_F(AxisText, BeyondTheEndReachesOutwards) {
  for (const PoAxis::TextPath path : kPaths) {
    PiTextRun run("x 10");
    run.addExponent("3");
    const PiTextBox increasing = box(path, PiTextAlignment::beyond(path, true), run);
    EXPECT_GT(increasing.xmin, -0.15F - PiAxisText::EXPONENT_RAISED) << path;
    EXPECT_GT(increasing.xmax, 0.5F) << path;
    const PiTextBox decreasing = box(path, PiTextAlignment::beyond(path, false), run);
    EXPECT_LT(decreasing.xmax, 0.15F + PiAxisText::EXPONENT_RAISED) << path;
    EXPECT_LT(decreasing.xmin, -0.5F) << path;
  }
}

TEST_F(AxisText, RunIsAsLongAsItsPieces) {
  PiAxisText text("defaultFont", attributes, PoAxis::PATH_RIGHT, PiTextAlignment::beside(PoAxis::PATH_RIGHT, true));
  PiTextRun run("10");
  run.addExponent("7");
  run.add("");
  run.add(" km");
  ASSERT_EQ(run.num, 3);
  const float length =
      text.measureLength("10") + text.measureLength("7") * PiAxisText::EXPONENT_SCALE + text.measureLength(" km");
  const PiTextBox all = text.measure(run);
  EXPECT_NEAR(all.xmax - all.xmin, length, 0.1F);
  EXPECT_GT(all.ymax, text.measure(PiTextRun("10")).ymax + 0.2F) << "the exponent is raised";
  EXPECT_TRUE(text.measure(PiTextRun("")).isEmpty());
  EXPECT_EQ(PiAxisText::countLetters("M\xC3\xA4rz"), 4);
}

TEST_F(AxisText, MeasuredOnceIsNotMeasuredAgain) {
  int measured = 0;
  PiTextMetrics metrics;
  const auto measure = [&] {
    ++measured;
    return SbBox3f(0, 0, 0, 1, 1, 0);
  };
  for (int i = 0; i < 3; ++i) metrics.get(0, "a font", "text", measure);
  metrics.get(0, "a font", "other", measure);
  metrics.get(0, "another", "text", measure);
  metrics.get(1, "a font", "text", measure);
  EXPECT_EQ(measured, 4);
  for (size_t i = 0; i < 3 * PiTextMetrics::MAX_LINES; ++i) metrics.get(0, "a font", std::to_string(i), measure);
  metrics.get(0, "a font", "text", measure);
  EXPECT_EQ(measured, 5 + static_cast<int>(3 * PiTextMetrics::MAX_LINES)) << "the store is bounded";
}

TEST(GradSize, ShrinksToTheRoomOfAGradation) {
  using PiAxisLayout::fitGradSize;
  EXPECT_FLOAT_EQ(fitGradSize(PoAxis::PATH_RIGHT, 2, 4, 1, 1), 0.04F);
  EXPECT_FLOAT_EQ(fitGradSize(PoAxis::PATH_RIGHT, 5, 4, 0.1F, 1), 0.08F / 5);
  EXPECT_FLOAT_EQ(fitGradSize(PoAxis::PATH_LEFT, 5, 4, -0.1F, 1), 0.08F / 5);
  EXPECT_FLOAT_EQ(fitGradSize(PoAxis::PATH_UP, 99, 2, 0.1F, 1), 0.04F) << "0.04 x 1.65 fits into 0.08";
  EXPECT_FLOAT_EQ(fitGradSize(PoAxis::PATH_DOWN, 99, 4, 0.1F, 1), 0.02F);
  EXPECT_FLOAT_EQ(fitGradSize(PoAxis::PATH_RIGHT, 2, 4, 100, 50), 2.F) << "in reference lengths";
}

TEST(TickLengths, DependOnTheNumberOfGradations) {
  const struct {
    int num;
    float length;
  } rows[] = {{0, 0.025F}, {11, 0.025F}, {12, 0.016F}, {24, 0.016F}, {25, 0.012F}};
  for (const auto& row : rows) {
    PiAxisAttributes a;
    PiAxisLayout::resolveTickLengths(a, row.num);
    EXPECT_EQ(a.tickMainLength, row.length);
    EXPECT_EQ(a.tickSubLength, row.length / 2);
  }
  PiAxisAttributes given;
  given.tickMainLength = 0.1F;
  given.tickSubLength = 0.07F;
  PiAxisLayout::resolveTickLengths(given, 30);
  EXPECT_EQ(given.tickMainLength, 0.1F);
  EXPECT_EQ(given.tickSubLength, 0.07F);
}

// --- the last pass --------------------------------------------------------------------------------------------------

TEST(Legibility, LeavesWhatReadsWellAndMendsTheRest) {
  std::mt19937 random(4);
  const auto uniform = [&](double low, double high) {
    return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
  };
  for (int i = 0; i < 20000; ++i) {
    const int num = 1 + static_cast<int>(random() % 60);
    const bool isFalling = random() % 2;
    std::vector<float> coords;
    std::vector<PiTextBox> boxes;
    double coord = uniform(-100, 100);
    for (int k = 0; k < num; ++k) {
      coords.push_back(static_cast<float>(isFalling ? -coord : coord));
      boxes.push_back(boxOf(static_cast<float>(uniform(0.3, 8)), static_cast<float>(uniform(0.5, 3))));
      coord += uniform(0.01, 1);
    }
    PiGradLegibility::Line line;
    line.coords = coords;
    line.boxes = boxes;
    line.along = static_cast<float>(std::pow(10.0, uniform(-1, 2)));
    line.largest = PiAxisLayout::AUTO_GRAD_SIZE * line.along;
    line.size = line.largest * static_cast<float>(uniform(0, 1));
    line.firstMultiple = static_cast<long>(random() % 30) - 15;
    const PiGradLegibility::Choice all{line.size, 1, 0, false};
    const bool wasWell = !PiGradLegibility::overlap(line, all) && line.size >= PiGradLegibility::MIN_SIZE * line.along;

    const PiGradLegibility::Choice choice = PiGradLegibility::choose(line);
    ASSERT_FALSE(PiGradLegibility::overlap(line, choice));
    ASSERT_GT(choice.size, 0);
    ASSERT_LE(choice.size, line.largest);
    std::vector<int> chosen;
    for (int k = choice.next(-1, num); k < num; k = choice.next(k, num)) chosen.push_back(k);
    if (wasWell) {
      ASSERT_EQ(choice.size, line.size);
      ASSERT_EQ(chosen.size(), static_cast<size_t>(num));
    }
    ASSERT_GE(chosen.size(), static_cast<size_t>(std::min(2, num)));
    for (const int k : chosen) ASSERT_TRUE(choice.isEnds || (line.firstMultiple + k) % choice.period == 0);
    for (const int k : chosen)
      ASSERT_LE(boxes[static_cast<size_t>(k)].ymax - boxes[static_cast<size_t>(k)].ymin * choice.size,
                PiGradLegibility::MAX_DISTANCE * line.along * 1.001);
  }
}

TEST(Legibility, LeavesOutTextsOfAGivenSizeButKeepsTheSize) {
  std::vector<float> coords;
  std::vector<PiTextBox> boxes;
  for (int i = 0; i <= 20; ++i) {
    coords.push_back(static_cast<float>(i) * 0.05F);
    boxes.push_back(boxOf(3, 1));
  }
  PiGradLegibility::Line line;
  line.coords = coords;
  line.boxes = boxes;
  line.size = line.largest = 0.05F;
  line.isSizeFixed = true;
  const PiGradLegibility::Choice choice = PiGradLegibility::choose(line);
  EXPECT_EQ(choice.size, 0.05F);
  EXPECT_EQ(choice.period, 5) << "texts are 0.15 wide";
  line.isThinned = false;
  EXPECT_EQ(PiGradLegibility::choose(line).period, 1);
}

TEST(GradFormat, AddsDecimalsUntilNeighboursDiffer) {
  const auto texts = [](const std::vector<float>& values) {
    PiGradStrings strings;
    char** slots = strings.alloc(static_cast<int>(values.size()));
    PiNumericFormat format;
    const float step = values.size() > 1 ? values[1] - values[0] : 0;
    format.setFormat(nullptr, values.front(), values.back() + step, step, static_cast<int>(values.size()));
    PiGradFormat::write(format, values, slots);
    PiGradFormat::addDecimals(format, values, slots);
    std::vector<std::string> all;
    for (size_t i = 0; i < values.size(); ++i) all.emplace_back(slots[i]);
    return all;
  };
  EXPECT_EQ(texts({0, 0.25F, 0.5F}), (std::vector<std::string>{"0.00", "0.25", "0.50"})) << "nothing to do";
  EXPECT_EQ(texts({1000000, 1000001}), (std::vector<std::string>{"1.000000", "1.000001"}));
  EXPECT_EQ(texts({1.7e9F, 1.7e9F + 128}), (std::vector<std::string>{"1.70000000", "1.70000013"}));
  EXPECT_EQ(texts({5, 5}), (std::vector<std::string>{"5", "5"})) << "equal values can't be told apart";
}

// --- logarithmic texts ----------------------------------------------------------------------------------------------

TEST(LogText, WritesPowersAndDigits) {
  const PiLogGradation hundredth{-2, 1, -2}, threeHundred{2.477F, 3, 2}, between{5.1F, 1.25F, 5, 2};
  EXPECT_EQ(logText(true, PoAxis::LOG_GRAD_DECIMAL, hundredth), "0.01");
  EXPECT_EQ(logText(true, PoAxis::LOG_GRAD_DECIMAL, {0, 1, 0}), "1");
  EXPECT_EQ(logText(true, PoAxis::LOG_GRAD_DECIMAL, {6, 1, 6}), "1000000");
  EXPECT_EQ(logText(true, PoAxis::LOG_GRAD_TEN_POWER, hundredth), "10^-2");
  EXPECT_EQ(logText(false, PoAxis::LOG_GRAD_DECIMAL, threeHundred), "300");
  EXPECT_EQ(logText(false, PoAxis::LOG_GRAD_DIGIT, threeHundred), "3");
  EXPECT_EQ(logText(false, PoAxis::LOG_GRAD_TEN_POWER, threeHundred), "3.10^2");
  EXPECT_EQ(logText(false, PoAxis::LOG_GRAD_DECIMAL, {-3.5F, 7, -3}), "0.007");
  EXPECT_EQ(logText(false, PoAxis::LOG_GRAD_DECIMAL, between), "125000");
  EXPECT_EQ(logText(false, PoAxis::LOG_GRAD_DECIMAL, {1.1F, 1.25F, 1, 2}), "12.5");
  EXPECT_EQ(logText(false, PoAxis::LOG_GRAD_DECIMAL, {-1.1F, 1.25F, -1, 2}), "0.125");
  EXPECT_EQ(logText(false, PoAxis::LOG_GRAD_TEN_POWER, between), "1.25 x 10^5");
  for (const int exponent : {-5000, -91, 91, 5000, 16000000})
    EXPECT_LT(logText(false, PoAxis::LOG_GRAD_DECIMAL, {0, 9, exponent}).size(), 99U) << exponent;
}

TEST(LogText, ChoosesAutomaticRepresentations) {
  using Log = PoLogAxis;
  const auto choose = [](Log::TenPowGradRep power, Log::DecadeRep digit, std::vector<float> powers,
                         std::vector<int> exponents) {
    std::vector<PiLogGradation> digits;
    for (const int exponent : exponents) digits.push_back({static_cast<float>(exponent) + 0.3F, 2, exponent});
    return PiLogText::choose(power, digit, powers, digits);
  };
  EXPECT_EQ(choose(Log::TEN_POWER_AUTO, Log::DECADE_NONE, {-4, 4}, {}).powerRep, Log::TEN_POWER_DECIMAL);
  EXPECT_EQ(choose(Log::TEN_POWER_AUTO, Log::DECADE_NONE, {-5, 4}, {}).powerRep, Log::TEN_POWER_POW10);
  EXPECT_EQ(choose(Log::TEN_POWER_AUTO, Log::DECADE_NONE, {}, {3}).powerRep, Log::TEN_POWER_DECIMAL);
  EXPECT_EQ(choose(Log::TEN_POWER_AUTO, Log::DECADE_NONE, {}, {4}).powerRep, Log::TEN_POWER_POW10);
  EXPECT_EQ(choose(Log::TEN_POWER_POW10, Log::DECADE_AUTO, {0, 1, 2}, {0, 1}).digitRep, Log::DECADE_DECIMAL);
  EXPECT_EQ(choose(Log::TEN_POWER_POW10, Log::DECADE_AUTO, {0, 1, 2, 3}, {0, 1}).digitRep, Log::DECADE_DIGIT);
  EXPECT_EQ(choose(Log::TEN_POWER_POW10, Log::DECADE_AUTO, {4}, {3, 4}).digitRep, Log::DECADE_DIGIT);
  EXPECT_EQ(choose(Log::TEN_POWER_DECIMAL, Log::DECADE_AS_TEN_POWER, {4}, {3}).digitType(), PoAxis::LOG_GRAD_DECIMAL);
}

TEST(LogText, ShrinksInStepsButNeverToNothing) {
  EXPECT_FLOAT_EQ(PiLogText::fitSize(1, 1, 1), 0.04F);
  EXPECT_NEAR(PiLogText::fitSize(10, 0.3F, 1), 0.03F, 1e-6);
  EXPECT_NEAR(PiLogText::fitSize(10, 0.3F - 1e-4F, 1), 0.03F - 0.00125F, 1e-6);
  for (float room = 1; room > 1e-20F; room *= 0.3F) {
    const float size = PiLogText::fitSize(7, room, 1);
    EXPECT_GT(size, 0);
    EXPECT_LE(size * 7, room * 1.0001F);
  }
}

// --- texts of gradations --------------------------------------------------------------------------------------------

TEST(GradStrings, GrowAndCutAtWholeLetters) {
  PiGradStrings strings;
  EXPECT_EQ(strings.alloc(0), strings.alloc(-5));
  char** slots = strings.alloc(3);
  EXPECT_EQ(strings.alloc(6), slots) << "twice what was asked for first";
  slots = strings.alloc(1000);
  for (int i = 0; i < 1000; ++i) std::strcpy(slots[i], std::string(99, 'x').c_str());
  EXPECT_STREQ(slots[999], std::string(99, 'x').c_str());
  std::strcpy(slots[0], std::string(98, 'x').c_str());
  PiGradStrings::append(slots[0], "\xC3\xA4");
  EXPECT_EQ(std::strlen(slots[0]), 98U) << "half a letter is none";
  PiGradStrings::append(slots[0], "yz");
  EXPECT_EQ(std::strlen(slots[0]), 99U);
  PiGradStrings::append(slots[0], nullptr);
}
