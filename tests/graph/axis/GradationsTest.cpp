#include <Ormelle/PoLinearAxis.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>
#include <vector>

#include "graph/axis/PiGradations.h"
#include "graph/axis/PiLinearGradations.h"
#include "graph/axis/PiLogGradations.h"

namespace {

using Floats = std::vector<float>;

float stepFor(float delta, float step = 0) {
  PoLinearAxis::getLinGradStep(delta, step);
  return step;
}

struct First {
  float first;
  int num;
};

First firstOf(PoLinearAxis::GradFit fit, float start, float end, float step) {
  First result;
  PoLinearAxis::getLinGradFirstGrad(fit, start, end, step, result.first, result.num);
  return result;
}

double uniform(std::mt19937& random, double low, double high) {
  return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}

/// Ends of an axis, from 10^-30 to 10^30 long, near 0 or far from it.
PiGradations::Range randomRange(std::mt19937& random) {
  const double length = std::pow(10.0, uniform(random, -30, 30));
  const double offset = random() % 3 == 0 ? length * std::pow(10.0, uniform(random, 0, 8)) : length;
  const double from = uniform(random, -1, 1) * offset;
  const auto a = static_cast<float>(from), b = static_cast<float>(from + length);
  return random() % 2 ? PiGradations::Range{a, b} : PiGradations::Range{b, a};
}

struct Splitted {
  Floats main, sub;
  std::vector<int> indices;
};

Splitted split(PiGradations::Split how, PiGradations::Range range, float step, const Floats& coords) {
  Splitted result;
  PiGradations::split(how, range, step, coords, result.main, result.indices, result.sub);
  return result;
}

constexpr PoAxis::TickSubDef kPeriod = PoAxis::PERIOD_MAIN_TICK, kNumber = PoAxis::NUM_SUB_TICK;

}  // namespace

TEST(LinearStep, FollowsTheLadder) {
  EXPECT_EQ(stepFor(10), 1);
  EXPECT_EQ(stepFor(100), 20);
  EXPECT_EQ(stepFor(-7, 0.5F), -0.5F);
  EXPECT_EQ(stepFor(7, -0.5F), 0.5F);
  EXPECT_EQ(stepFor(0, 3), 3);
  EXPECT_EQ(stepFor(NAN, 3), 3);
  EXPECT_EQ(stepFor(INFINITY), 0);
  const struct {
    float delta, step;
  } rows[] = {{49, 5}, {50, 10}, {39, 4},  {40, 5},      {29, 3},        {30, 4},   {19, 2},
              {20, 3}, {11, 2},  {99, 10}, {4.9F, 0.5F}, {0.49F, 0.05F}, {1, 0.2F}, {0.6F, 0.1F}};
  for (const auto& row : rows) EXPECT_FLOAT_EQ(stepFor(row.delta), row.step) << row.delta;
}

TEST(LinearStep, GivesFourToElevenRoundGradationsOnAnySpan) {
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    const auto delta = static_cast<float>((i % 2 ? 1 : -1) * std::pow(10.0, uniform(random, -37, 38)));
    const float step = stepFor(delta);
    const double ratio = static_cast<double>(delta) / step;
    ASSERT_GE(ratio, 4.89) << delta;
    ASSERT_LE(ratio, 10.01) << delta;
    const double digits = std::abs(step) / std::pow(10.0, std::floor(std::log10(std::abs(step) * 1.000001)));
    ASSERT_NEAR(digits, std::round(digits), 1e-5) << delta;
    ASSERT_LE(digits, 5.1) << delta;
  }
  EXPECT_GT(stepFor(1e-45F), 0) << "the smallest float";
}

TEST(LinearGradations, StartAtTheFirstMultipleOrAtTheStart) {
  const struct {
    PoLinearAxis::GradFit fit;
    float start, end, step, first;
    int num;
  } rows[] = {
      {PoLinearAxis::GRAD_UNFIT, 0.3F, 2.7F, 0.5F, 0.5F, 5},
      {PoLinearAxis::GRAD_FIT, 0.3F, 2.7F, 0.5F, 0.3F, 5},
      {PoLinearAxis::GRAD_UNFIT, -2.7F, 2.7F, 1, -2, 5},
      {PoLinearAxis::GRAD_UNFIT, 2.7F, 0.3F, -0.5F, 2.5F, 5},
      {PoLinearAxis::GRAD_UNFIT, -2.2F, -3.7F, -0.5F, -2.5F, 3},
      {PoLinearAxis::GRAD_FIT, 3, 0, -1, 3, 4},
      {PoLinearAxis::GRAD_UNFIT, 0, 1, 0.1F, 0, 11},
      {PoLinearAxis::GRAD_UNFIT, 0.7F, 1.3F, 0.1F, 0.7F, 7},
      {PoLinearAxis::GRAD_UNFIT, 4, 4, 1, 4, 0},
      {PoLinearAxis::GRAD_UNFIT, 0, 5, -1, 0, 0},
      {PoLinearAxis::GRAD_UNFIT, 0, 5, 0, 0, 0},
      {PoLinearAxis::GRAD_UNFIT, 0.2F, 0.8F, 1, 1, 0},
      {PoLinearAxis::GRAD_UNFIT, 0, NAN, 1, 0, 0},
  };
  for (const auto& row : rows) {
    const First found = firstOf(row.fit, row.start, row.end, row.step);
    EXPECT_EQ(found.num, row.num) << row.start << " to " << row.end << " by " << row.step;
    if (row.num == 0) continue;
    EXPECT_FLOAT_EQ(found.first, row.first) << row.start << " to " << row.end << " by " << row.step;
  }
  EXPECT_GT(firstOf(PoLinearAxis::GRAD_UNFIT, 0, 1e30F, 1e-3F).num, 1000000) << "counted, not walked";
  float step = 0, first;
  int num;
  PoLinearAxis::getLinGrads(PoLinearAxis::GRAD_UNFIT, 3, 24, step, first, num);
  EXPECT_EQ(step, 3);
  EXPECT_EQ(first, 3);
  EXPECT_EQ(num, 8);
}

TEST(LinearGradations, StayInTheRangeAndRiseOrFallSteadily) {
  std::mt19937 random(2);
  for (int i = 0; i < 20000; ++i) {
    const PiGradations::Range range = randomRange(random);
    const bool isOnMultiples = i % 2 == 0;
    Floats values;
    const PiLinearGradations plain = PiLinearGradations::make(isOnMultiples, range.start, range.end, 0);
    plain.values(range.end, values);
    for (const float value : values) {
      ASSERT_LE(std::min(range.start, range.end), value);
      ASSERT_LE(value, std::max(range.start, range.end));
      const double multiple = static_cast<double>(value) / plain.step;
      const double resolution = 1e-3 + std::abs(multiple) * 1.3e-7;
      if (!isOnMultiples) continue;
      ASSERT_NEAR(multiple, std::round(multiple), resolution) << range.start << ' ' << range.end;
    }
    if (range.start == range.end) continue;
    const PiLinearGradations resolved = PiLinearGradations::makeResolved(isOnMultiples, range.start, range.end);
    Floats distinct;
    resolved.values(range.end, distinct);
    ASSERT_GE(distinct.size(), 2U) << range.start << ' ' << range.end;
    for (size_t k = 1; k < distinct.size(); ++k)
      ASSERT_TRUE(range.start < range.end ? distinct[k] > distinct[k - 1] : distinct[k] < distinct[k - 1]);
    if (values.size() < 2 || std::adjacent_find(values.begin(), values.end()) != values.end()) continue;
    ASSERT_EQ(values, distinct) << "nothing to resolve";
  }
}

TEST(LinearGradations, OfATinyStepStayFewMultiplesOfIt) {
  const PiLinearGradations grads = PiLinearGradations::make(true, 0, 1000, 0.001F);
  EXPECT_LE(grads.num, PiGradations::MAX_GRADATIONS);
  EXPECT_GT(grads.num, PiGradations::MAX_GRADATIONS / 3);
  EXPECT_NEAR(grads.step / 0.001F, std::round(grads.step / 0.001F), 1e-3);
}

TEST(Margins, ShortenTheRangeAndCollapseItAtItsEnd) {
  const auto range = [](float start, float end, PoAxis::MarginType type, float a, float b) {
    const PiGradations::Range r = PiGradations::withoutMargins(start, end, type, a, b);
    return std::pair(r.start, r.end);
  };
  EXPECT_EQ(range(0, 10, PoAxis::FIXED_MARGIN, 1, 2), std::pair(1.F, 8.F));
  EXPECT_EQ(range(0, 10, PoAxis::FIXED_MARGIN, -1, -2), std::pair(1.F, 8.F));
  EXPECT_EQ(range(0, 10, PoAxis::REL_MARGIN, 0.1F, 0.2F), std::pair(1.F, 8.F));
  EXPECT_EQ(range(10, 0, PoAxis::REL_MARGIN, 0.1F, 0.2F), std::pair(9.F, 2.F));
  EXPECT_EQ(range(0, 10, PoAxis::REL_MARGIN, 0.7F, 0.6F), std::pair(4.F, 4.F));
  EXPECT_EQ(range(10, 0, PoAxis::FIXED_MARGIN, 20, 3), std::pair(3.F, 3.F));
}

TEST(GradationSplit, ByPeriod) {
  const Floats coords = {0, 1, 2, 3, 4, 5, 6, 7};
  const PiGradations::Range range{0, 7};
  EXPECT_EQ(split({kPeriod, 1, 1, 1}, range, 1, coords).main, coords);
  EXPECT_TRUE(split({kPeriod, 1, 1, 1}, range, 1, coords).sub.empty());
  const Splitted third = split({kPeriod, 3, 2, 2}, range, 1, coords);
  EXPECT_EQ(third.main, (Floats{1, 4}));
  EXPECT_EQ(third.indices, (std::vector{1, 4}));
  EXPECT_EQ(third.sub, (Floats{0, 2, 3, 5, 6, 7}));
  EXPECT_EQ(split({kPeriod, 0, 3, 1}, range, 1, coords).sub, (Floats{0, 1})) << "a period of 0 acts as 1";
  EXPECT_EQ(split({kPeriod, 1, 9, 1}, range, 1, coords).sub, coords) << "no main gradation is left";
  EXPECT_EQ(split({kPeriod, 1, 0, 0}, range, 1, coords).main, coords);
  EXPECT_TRUE(split({kPeriod, 2, 1, 1}, range, 1, {}).main.empty());
}

TEST(GradationSplit, ByNumberOfSubTicks) {
  const Floats coords = {2, 4, 6, 8};
  EXPECT_EQ(split({kNumber, 1, 1, 1}, {0.5F, 9}, 2, coords).sub, (Floats{1, 3, 5, 7, 9}));
  EXPECT_EQ(split({kNumber, 3, 2, 2}, {3, 7}, 2, coords).sub, (Floats{3, 3.5F, 4.5F, 5, 5.5F, 6.5F, 7}));
  EXPECT_EQ(split({kNumber, 3, 2, 2}, {3, 7}, 2, coords).main, (Floats{4, 6}));
  EXPECT_TRUE(split({kNumber, 0, 1, 1}, {0, 9}, 2, coords).sub.empty());
  EXPECT_EQ(split({kNumber, 1, 1, 1}, {9, 0.5F}, -2, {8, 6, 4, 2}).sub, (Floats{9, 7, 5, 3, 1}));
  // One main gradation inside: half the spacing, without a sub-tick beside it.
  EXPECT_EQ(split({kNumber, 1, 1, 1}, {0.5F, 3.5F}, 2, {2}).sub, (Floats{0.5F, 1, 1.5F, 2.5F, 3, 3.5F}));
  EXPECT_TRUE(split({kNumber, 1, 1, 1}, {0.5F, 3.5F}, 0, {2}).sub.empty());
  // Numbers that would never end.
  EXPECT_LE(split({kNumber, 65535, 1, 1}, {-1e30F, 1e30F}, 1, {0, 1}).sub.size(), 2U * PiGradations::MAX_GRADATIONS);
  EXPECT_LE(split({kNumber, 65535, 1, 1}, {1e9F, 1.0001e9F}, 64, {1e9F, 1e9F + 64}).sub.size(), 70000U);
}

TEST(LogGradations, ArePowersAndTheDigitsBetween) {
  Floats powers;
  PiLogGradations::powers(0, 3, powers);
  EXPECT_EQ(powers, (Floats{0, 1, 2, 3}));
  std::vector<PiLogGradation> digits;
  PiLogGradations::digits(0, 3, PiGradations::decadeDigits(4), digits);
  ASSERT_EQ(digits.size(), 12U);
  for (const PiLogGradation& digit : digits)
    EXPECT_NEAR(std::pow(10.0, digit.coord), digit.value * std::pow(10.0, digit.exponent), 1e-3);

  PiLogGradations::powers(1.2F, 1.8F, powers);
  EXPECT_TRUE(powers.empty());
  PiLogGradations::digits(1.2F, 1.8F, PiGradations::decadeDigits(0), digits);
  std::vector<int> found;
  for (const PiLogGradation& digit : digits) found.push_back(static_cast<int>(digit.value));
  EXPECT_EQ(found, (std::vector{2, 3, 4, 5, 6}));

  // A list of the application: in any order, with what is no digit inside a decade.
  const int list[] = {5, 0, 2, 1, 300, 5};
  PiLogGradations::digits(-1, 1, list, digits);
  EXPECT_EQ(digits.size(), 4U);
  EXPECT_TRUE(std::is_sorted(digits.begin(), digits.end(), [](auto& a, auto& b) { return a.coord < b.coord; }));

  for (const float huge : {1e9F, 3e38F}) {
    PiLogGradations::powers(-huge, huge, powers);
    PiLogGradations::digits(-huge, huge, list, digits);
    EXPECT_LE(powers.size() + digits.size(), 2U * PiGradations::MAX_GRADATIONS);
  }
  PiLogGradations::powers(-40000, 40000, powers);
  EXPECT_GT(powers.size(), 1000U);
  EXPECT_LE(powers.size(), 10001U);
  EXPECT_EQ(PiLogGradations::firstMultiple(powers) * (powers[1] - powers[0]), powers[0]);
}

TEST(LogGradations, BetweenDigitsStandWhereTheirValuesAre) {
  std::mt19937 random(3);
  std::vector<PiLogGradation> values;
  for (int i = 0; i < 5000; ++i) {
    const auto low = static_cast<float>(uniform(random, -12, 12));
    const auto high = static_cast<float>(low + std::pow(10.0, uniform(random, -4, -1)));
    PiLogGradations::between(low, high, values);
    for (const PiLogGradation& value : values) {
      ASSERT_GE(value.coord, low);
      ASSERT_LE(value.coord, high);
      ASSERT_NEAR(value.exponent + std::log10(static_cast<double>(value.value)), value.coord, 2e-6);
    }
    Floats powers;
    PiLogGradations::powers(low, high, powers);
    ASSERT_GE(values.size() + powers.size(), 2U) << low << ' ' << high;
  }
}

TEST(LogGradations, LeastDistanceIsThatOfTheMergedLists) {
  const Floats powers = {0, 1};
  const PiLogGradation digits[] = {{0.30103F, 2, 0}, {0.95424F, 9, 0}};
  EXPECT_EQ(PiLogGradations::leastDistance(powers, {}), 1);
  EXPECT_FLOAT_EQ(PiLogGradations::leastDistance(powers, digits), 1 - 0.95424F);
  EXPECT_FLOAT_EQ(PiLogGradations::leastDistance({}, digits), 0.95424F - 0.30103F);
  EXPECT_EQ(PiLogGradations::leastDistance({}, {digits, 1}), 2);
}

TEST(DecadeDigits, ThinOutWithTheNumberOfDecades) {
  const struct {
    int decades;
    size_t count;
  } rows[] = {{0, 8}, {2, 8}, {3, 4}, {4, 4}, {5, 3}, {8, 3}, {9, 2}, {16, 2}, {17, 1}, {32, 1}, {33, 0}, {1000, 0}};
  for (const auto& row : rows) EXPECT_EQ(PiGradations::decadeDigits(row.decades).size(), row.count) << row.decades;
}
