#include <Ormelle/PbIsovaluesList.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <vector>

#include "Listener.h"
#include "graph/frame/PiMemory.h"
#include "support/NodePtr.h"

namespace {

const float kNan = std::nanf("");

struct Contents {
  explicit Contents(const PbIsovaluesList& list) {
    int num;
    const float* levels = list.getIsoList(num, min, max, step, isRegular);
    if (levels) values.assign(levels, levels + num);
  }
  std::vector<float> values;
  float min, max, step;
  int isRegular;
};

using Values = std::vector<float>;

TEST(PbIsovaluesList, RegularListsAscendToTheGreaterEnd) {
  PbIsovaluesList list;
  EXPECT_EQ(Contents(list).values, (Values{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  list.setRegularIsoList(5.0f, 1.0f, 5);
  EXPECT_EQ(Contents(list).values, (Values{1, 2, 3, 4, 5}));
  list.setRegularIsoList(3);
  EXPECT_EQ(Contents(list).values, (Values{1, 3, 5}));
  list.setRegularIsoList(0.0f, 1.0f);
  EXPECT_EQ(Contents(list).values, (Values{0, 0.5f, 1}));
  const float data[] = {7, kNan, -1, HUGE_VALF, 3};
  list.setRegularIsoList(5, data);
  EXPECT_EQ(Contents(list).values, (Values{-1, 3, 7}));
  list.setRegularIsoList(5, data, 2);
  EXPECT_EQ(Contents(list).values, (Values{-1, 7}));
  list.setRegularIsoList(3, 1.0f, 2.0f);
  EXPECT_EQ(Contents(list).values, (Values{1, 3, 5}));
  list.setRegularIsoList(3, 1.0f, -2.0f);
  EXPECT_EQ(Contents(list).values, (Values{-3, -1, 1}));
  EXPECT_EQ(Contents(list).min, -3);
  EXPECT_EQ(Contents(list).max, 1);
  EXPECT_EQ(Contents(list).step, 2);
}

// Sums of a rounded step pass the end or stand still; the list is ascending all the same and ends on the end.
TEST(PbIsovaluesList, RoundingNeverBreaksTheOrderOrTheTop) {
  const struct {
    float min, max;
    int num;
  } cases[] = {{0, 0.1f, 1000}, {0, 1, 100003},         {1e8f, 1e8f + 8, 1000},       {-FLT_MAX, FLT_MAX, 5},
               {0, 1e-44f, 50}, {-FLT_MAX, FLT_MAX, 2}, {FLT_MAX / 2, FLT_MAX, 1001}, {3, 3, 4}};
  for (const auto& c : cases) {
    const Contents contents{PbIsovaluesList(c.min, c.max, c.num)};
    EXPECT_EQ(static_cast<int>(contents.values.size()), c.num);
    EXPECT_EQ(contents.values.front(), c.min);
    EXPECT_EQ(contents.values.back(), c.max);
    EXPECT_TRUE(std::is_sorted(contents.values.begin(), contents.values.end()));
    EXPECT_TRUE(std::isfinite(contents.step));
  }
}

TEST(PbIsovaluesList, ASingleLevelLiesOnTheGreaterEnd) {
  const Contents one{PbIsovaluesList(2, 6, 1)};
  EXPECT_EQ(one.values, Values{6});
  EXPECT_EQ(one.step, 4);
  PbIsovaluesList list(0, 5, 6);
  const float level = 3;
  list.setIrregularIsoList(1, &level);
  EXPECT_EQ(Contents(list).values, Values{3});
  EXPECT_EQ(Contents(list).step, 1);
}

TEST(PbIsovaluesList, IrregularListsAreSortedAndMeasured) {
  PbIsovaluesList list;
  const float even[] = {3, 1, 2};
  list.setIrregularIsoList(3, even);
  EXPECT_EQ(Contents(list).values, (Values{1, 2, 3}));
  EXPECT_EQ(Contents(list).isRegular, 1);
  EXPECT_EQ(Contents(list).step, 1);
  const float uneven[] = {10, kNan, 4, -HUGE_VALF, 1, 4.5f, HUGE_VALF};
  list.setIrregularIsoList(7, uneven);
  EXPECT_EQ(Contents(list).values, (Values{1, 4, 4.5f, 10}));
  EXPECT_EQ(Contents(list).isRegular, 0);
  EXPECT_EQ(Contents(list).step, 0.5f);
  EXPECT_EQ(Contents(list).min, 1);
  EXPECT_EQ(Contents(list).max, 10);
}

TEST(PbIsovaluesList, IgnoresWhatMakesNoList) {
  PbIsovaluesList list(1, 4, 4);
  const PbIsovaluesList before(list);
  NodePtr<Listener> kit(new Listener);
  list.addConnection(kit.get());
  list.setRegularIsoList(0.0f, 1.0f, 0);
  list.setRegularIsoList(0.0f, 1.0f, -3);
  list.setRegularIsoList(2147483647);
  list.setRegularIsoList(kNan, 1.0f, 3);
  list.setRegularIsoList(0.0f, HUGE_VALF, 3);
  list.setRegularIsoList(3, 0.0f, HUGE_VALF);
  list.setRegularIsoList(3, FLT_MAX, FLT_MAX);
  list.setRegularIsoList(1, &kNan, 3);
  list.setRegularIsoList(3, static_cast<const float*>(nullptr), 3);
  list.setIrregularIsoList(0, &kNan);
  list.setIrregularIsoList(-1, &kNan);
  list.setIrregularIsoList(1, &kNan);
  list.setIrregularIsoList(3, nullptr);
  EXPECT_TRUE(list == before);
  EXPECT_TRUE(kit->changes.empty());
  EXPECT_TRUE(PbIsovaluesList(kNan, 0, 5) == PbIsovaluesList());
  kit->react = [&](PbBase*) { EXPECT_TRUE(list == PbIsovaluesList()); };
  list = PbIsovaluesList();
  list.setRegularIsoList(1.0f, 10.0f);
  EXPECT_EQ(kit->changes.size(), 2u);
  list.removeConnection(kit.get());
}

// Against a walk, on, beside and beyond the levels, for lists that were set as regular too.
TEST(PbIsovaluesList, FindsWhatAWalkFinds) {
  std::vector<PbIsovaluesList> lists(3);
  lists[0].setRegularIsoList(0.1f, 0.7f, 7);
  const float irregular[] = {-5, 0, 0, 0.5f, 1e30f};
  lists[1].setIrregularIsoList(5, irregular);
  lists[2].setRegularIsoList(1e8f, 1e8f + 8, 20);
  for (const PbIsovaluesList& list : lists) {
    const Values levels = Contents(list).values;
    Values values{-HUGE_VALF, HUGE_VALF, kNan};
    for (float level : levels)
      for (float value : {level, std::nextafter(level, -HUGE_VALF), std::nextafter(level, HUGE_VALF)})
        values.push_back(value);
    for (float value : values) {
      const auto upper = std::find_if(levels.begin(), levels.end(), [value](float level) { return level >= value; });
      const auto lower = std::find_if(levels.rbegin(), levels.rend(), [value](float level) { return level <= value; });
      EXPECT_EQ(list.getIndex(value), upper - levels.begin()) << value;
      EXPECT_EQ(list.getUpperIsovalue(value), upper != levels.end() ? *upper : 1e20f) << value;
      EXPECT_EQ(list.getLowerIsovalue(value), lower != levels.rend() ? *lower : -1e20f) << value;
    }
  }
}

TEST(PbIsovaluesList, IsEmptyWhenMemoryRunsOut) {
  PbIsovaluesList list;
  PiMemory::Source source = PiMemory::defaultSource();
  source.allocate = [](std::size_t) -> void* { return nullptr; };
  source.post = [](const char*) {};
  const PiMemory::Source previous = PiMemory::setSource(source);
  list.setRegularIsoList(0.0f, 1.0f, 100);
  PiMemory::setSource(previous);
  int num, isRegular;
  float min, max, step;
  EXPECT_EQ(list.getIsoList(num, min, max, step, isRegular), nullptr);
  EXPECT_EQ(num, 0);
  EXPECT_EQ(list.getIndex(0.5f), 0);
  EXPECT_EQ(list.getLowerIsovalue(0.5f), -1e20f);
  EXPECT_EQ(list.getUpperIsovalue(0.5f), 1e20f);
  list.setRegularIsoList(2);
  EXPECT_EQ(Contents(list).values, (Values{0, 1}));
}

TEST(PbIsovaluesList, Prints) {
  const auto printed = [](const PbIsovaluesList& list) {
    ::testing::internal::CaptureStdout();
    list.print();
    return ::testing::internal::GetCapturedStdout();
  };
  PbIsovaluesList list(0, 1, 2);
  EXPECT_EQ(printed(list),
            "\nNumber of isovalues : 2\nMin isovalues : 0.000000, max isovalues : 1.000000\n"
            "Regular isovalues list\nStep : 1.000000\nIsovalues list =>\n0.000000 \n1.000000 \n");
  const float levels[] = {0, 1, 1.5f};
  list.setIrregularIsoList(3, levels);
  EXPECT_EQ(printed(list),
            "\nNumber of isovalues : 3\nMin isovalues : 0.000000, max isovalues : 1.500000\n"
            "Irregular isovalues list\nMin delta between values : 0.500000\n"
            "Isovalues list =>\n0.000000 \n1.000000 \n1.500000 \n");
}

}  // namespace
