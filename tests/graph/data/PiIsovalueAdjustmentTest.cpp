#include "graph/data/PiIsovalueAdjustment.h"

#include <Ormelle/PbIsovaluesList.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <random>

namespace {

const float kNan = std::nanf("");
using Values = std::vector<float>;

float adjusted(const Values& values, float iso) {
  PiIsovalueAdjustment adjustment;
  const float before = iso;
  const int answer = adjustment.adjustIsoval(static_cast<int>(values.size()), values.data(), iso);
  EXPECT_EQ(answer, adjustment.isAdjusted());
  EXPECT_EQ(answer, iso != before && !std::isnan(iso));
  return iso;
}

TEST(PiIsovalueAdjustment, MovesAHundredthOfTheWayToTheNearestValue) {
  EXPECT_EQ(adjusted({1, 2}, 1), 1.01f);
  EXPECT_EQ(adjusted({1, 2}, 2), 1.99f);
  EXPECT_EQ(adjusted({1, 1, 0.5f, 9}, 1), 1.005f);  // up, although the nearest value is below
  EXPECT_EQ(adjusted({1, 2}, 1.5f), 1.5f);
  EXPECT_EQ(adjusted({1, 1, 1}, 1), 1);
  EXPECT_EQ(adjusted({}, 1), 1);
  EXPECT_EQ(adjusted({1, kNan, kNan}, 1), 1);
  EXPECT_EQ(adjusted({1, HUGE_VALF, 2, -HUGE_VALF}, 1), 1.01f);
  EXPECT_TRUE(std::isnan(adjusted({1, kNan}, kNan)));
}

TEST(PiIsovalueAdjustment, TakesABiggerPartOfTheWayWhereAFloatNeedsIt) {
  const float next = 1 + 8 * FLT_EPSILON;
  const float iso = adjusted({1, next}, 1);
  EXPECT_GT(iso, 1);
  EXPECT_LT(iso, next);
}

// Always ends off every value, within the floats, whatever the values are.
TEST(PiIsovalueAdjustment, EndsOffTheValuesHoweverTheyLie) {
  Values consecutive, alternating;
  float value = 1;
  for (int i = 0; i < 20000; ++i) {
    consecutive.push_back(value);
    if (i % 2) alternating.push_back(value);
    value = std::nextafter(value, 2.0f);
  }
  const Values cases[] = {{0, 1e-45f},
                          {0, -1e-45f, 1e-45f, 3e-45f},
                          {FLT_MAX, std::nextafter(FLT_MAX, 0.0f)},
                          {-FLT_MAX, std::nextafter(-FLT_MAX, 0.0f), FLT_MAX},
                          {FLT_MAX, 0},
                          {FLT_MAX, -FLT_MAX, HUGE_VALF},
                          {1, 1 - FLT_EPSILON / 2, 5},  // half a step below is lost above
                          {1e30f, 1},
                          {1e10f, 1e10f + 1024, kNan},
                          {0.0f, -0.0f, 1},
                          consecutive,
                          alternating};
  for (const Values& values : cases)
    for (float iso : {values.front(), values[1], values.back()}) {
      if (!std::isfinite(iso)) continue;
      const float moved = adjusted(values, iso);
      EXPECT_TRUE(std::isfinite(moved));
      EXPECT_NE(moved, iso);
      EXPECT_EQ(std::count(values.begin(), values.end(), moved), 0) << iso;
    }
}

// Where values lie on every other float, each level takes a free one beside it and none is carried off.
TEST(PiIsovalueAdjustment, StaysInItsPlaceAmongDenseValues) {
  Values dense;
  float value = 1;
  for (int i = 0; i < 40000; ++i) {
    if (i % 2 == 0 || (i > 20000 && i < 30000)) dense.push_back(value);
    value = std::nextafter(value, 2.0f);
  }
  std::shuffle(dense.begin(), dense.end(), std::mt19937(3));
  PbIsovaluesList list;
  Values levels;
  for (int i = 0; i < 40000; i += 800) levels.push_back(1 + i * FLT_EPSILON);
  list.setIrregularIsoList(static_cast<int>(levels.size()), levels.data());
  PiIsovalueAdjustment adjustment;
  EXPECT_EQ(adjustment.adjustIsovalList(list, static_cast<int>(dense.size()), dense.data()), 1);
  std::sort(dense.begin(), dense.end());
  for (std::size_t i = 0; i < levels.size(); ++i) {
    const float moved = adjustment.getIsovalues()[i];
    EXPECT_FALSE(std::binary_search(dense.begin(), dense.end(), moved));
    const bool isInBlock = i * 800 >= 20000 && i * 800 < 30000;
    EXPECT_LE(std::fabs(moved - levels[i]), (isInBlock ? 10064 : 64) * FLT_EPSILON) << i;
  }
}

TEST(PiIsovalueAdjustment, TakesThreeListsAsOne) {
  PiIsovalueAdjustment adjustment;
  const Values first{5, 6, 7}, second{1, 1.5f}, third{8};
  float iso = 1;
  EXPECT_EQ(adjustment.adjustIsovalMultiple(3, first.data(), 2, second.data(), 1, third.data(), iso), 1);
  EXPECT_EQ(iso, 1.005f);
  iso = 8;
  EXPECT_EQ(adjustment.adjustIsovalMultiple(3, first.data(), 2, second.data(), 1, third.data(), iso), 1);
  EXPECT_EQ(iso, 7.99f);
  // As many equal values as the first list is long.
  const Values pair{2, 3}, equal{4, 4};
  iso = 4;
  EXPECT_EQ(adjustment.adjustIsovalMultiple(2, pair.data(), 2, equal.data(), 0, nullptr, iso), 0);
  EXPECT_EQ(iso, 4);
  EXPECT_FALSE(adjustment.isAdjusted());
}

TEST(PiIsovalueAdjustment, LeavesTheListAloneAndKeepsTheOrder) {
  const float levels[] = {1, 1, 1.005f, 1.5f, 2, 9};
  PbIsovaluesList list;
  list.setIrregularIsoList(6, levels);
  const PbIsovaluesList before(list);
  const Values values{1, 2, 3, 2};
  PiIsovalueAdjustment adjustment;
  EXPECT_EQ(adjustment.adjustIsovalList(list, 4, values.data()), 1);
  EXPECT_TRUE(list == before);
  const auto moved = adjustment.getIsovalues();
  EXPECT_EQ(Values(moved.begin(), moved.end()), (Values{1.005f, 1.01f, 1.01f, 1.5f, 2.01f, 9}));

  const Values free{0.5f, 3};
  EXPECT_EQ(adjustment.adjustIsovalList(list, 2, free.data()), 0);
  EXPECT_FALSE(adjustment.isAdjusted());
  EXPECT_TRUE(std::equal(levels, levels + 6, adjustment.getIsovalues().begin()));
}

// The one pass over the values gives what adjusting level by level gives.
TEST(PiIsovalueAdjustment, AListIsAdjustedAsItsLevelsAre) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    std::uniform_int_distribution<int> grid(-20, 20), size(0, 12), special(0, 15);
    const auto draw = [&](int n) {
      Values values(n);
      for (float& value : values) {
        const int kind = special(random);
        value = kind == 0 ? kNan : kind == 1 ? HUGE_VALF : kind == 2 ? FLT_MAX : grid(random) * 0.5f;
      }
      return values;
    };
    const Values v1 = draw(size(random)), v2 = draw(size(random)), v3 = draw(size(random));
    const Values levels = draw(1 + size(random));
    PbIsovaluesList list;
    list.setIrregularIsoList(static_cast<int>(levels.size()), levels.data());
    int num, isRegular;
    float min, max, step;
    const float* sorted = list.getIsoList(num, min, max, step, isRegular);
    Values expected(sorted, sorted + num);
    PiIsovalueAdjustment single, whole;
    int isAnyMoved = 0;
    const auto count = [](const Values& values) { return static_cast<int>(values.size()); };
    for (float& iso : expected)
      isAnyMoved |= single.adjustIsovalMultiple(count(v1), v1.data(), count(v2), v2.data(), count(v3), v3.data(), iso);
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(whole.adjustIsovalList(list, count(v1), v1.data(), count(v2), v2.data(), count(v3), v3.data()),
              isAnyMoved);
    EXPECT_EQ(Values(whole.getIsovalues().begin(), whole.getIsovalues().end()), expected);
  }
}

}  // namespace
