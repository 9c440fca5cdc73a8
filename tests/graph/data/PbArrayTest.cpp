#include <cmath>
#include <type_traits>
#include <vector>

#include <Ormelle/PbArrayOfFloat.h>
#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbArrayOfLong.h>
#include <gtest/gtest.h>

#include "graph/frame/PiMemory.h"

namespace {

static_assert(!std::is_convertible_v<PbArrayOfInt, PbArrayOfLong>);
static_assert(std::is_same_v<decltype(std::declval<PbArrayOfLong&>() += 1), PbArrayOfLong&>);

std::vector<float> contents(const PbArrayOfFloat& array) { return {array.get(), array.get() + array.getNum()}; }

TEST(PbArray, CapacityGrowsByTheFewestWholeSteps) {
  PbArrayOfInt array;
  EXPECT_EQ(array.get(), nullptr);
  EXPECT_EQ(array.getNum(), 0);
  EXPECT_EQ(array.getCapacity(), 0);
  EXPECT_EQ(array.add(7), 0);
  EXPECT_EQ(array.getCapacity(), 10);
  array.set(25, 1);
  EXPECT_EQ(array.getCapacity(), 30);
  EXPECT_EQ(array.getNum(), 26);
  EXPECT_EQ(array.get(0), 7);
  array.set(29, 1);
  EXPECT_EQ(array.getCapacity(), 30);
  array.set(-1, 5);
  EXPECT_EQ(array.getNum(), 30);
  array.setCapacity(31, 4);
  EXPECT_EQ(array.getCapacity(), 31);
  array.set(31, 1);
  EXPECT_EQ(array.getCapacity(), 35);

  PbArrayOfInt raised(0, -3);
  EXPECT_EQ(raised.getCapacity(), 1);
  raised.set(3, 0);
  EXPECT_EQ(raised.getCapacity(), 4);
}

// The capacity keeps to its steps however the block behind it grows, and an element costs the same at any length.
TEST(PbArray, AppendingDoesNotMoveTheBlockAtEachStep) {
  PbArrayOfInt array;
  int moves = 0;
  const int* block = nullptr;
  for (int i = 0; i < 300000; ++i) {
    array.add(i);
    if (array.get() != block) ++moves;
    block = array.get();
  }
  EXPECT_EQ(array.getCapacity(), 300000);
  EXPECT_LT(moves, 60);
  for (int i : {0, 9, 10, 299999}) EXPECT_EQ(array[i], i);
}

TEST(PbArray, AppendsPartsOfItself) {
  PbArrayOfFloat array(2, 1);
  const float values[] = {1, 2};
  EXPECT_EQ(array.add(2, values), 1);
  array += array;
  EXPECT_EQ(array.add(2, array.get() + 1), 5);
  EXPECT_EQ(contents(array), (std::vector<float>{1, 2, 1, 2, 2, 1}));
  EXPECT_EQ(array.add(0, values), 5);
  EXPECT_EQ(array.add(3, nullptr), 5);
}

TEST(PbArray, SqueezeGivesBackAllThatIsNotUsed) {
  PbArrayOfInt array(100, 10);
  array.squeeze();
  EXPECT_EQ(array.getCapacity(), 0);
  EXPECT_EQ(array.find(0), -1);
  array += 4;
  array += 5;
  array.squeeze();
  EXPECT_EQ(array.getCapacity(), 2);
  EXPECT_EQ(array.find(5), 1);
  array.empty();
  EXPECT_EQ(array.getCapacity(), 2);
  EXPECT_EQ(array.find(5), -1);
}

TEST(PbArray, CopiesAreDeepAndKeepCapacityAndStep) {
  PbArrayOfInt original(20, 7);
  original.add(3);
  PbArrayOfInt copy(original), assigned(50, 1);
  assigned.add(8);
  assigned = original;
  original[0] = 9;
  for (PbArrayOfInt* array : {&copy, &assigned}) {
    EXPECT_EQ(array->getNum(), 1);
    EXPECT_EQ(array->get(0), 3);
    EXPECT_EQ(array->getCapacity(), 20);
    array->set(20, 0);
    EXPECT_EQ(array->getCapacity(), 27);
  }
  assigned = PbArrayOfInt();
  EXPECT_EQ(assigned.getNum(), 0);
  EXPECT_TRUE(assigned != original);
  EXPECT_TRUE(assigned == PbArrayOfInt());
}

TEST(PbArray, WritingThroughTheReferenceCounts) {
  PbArrayOfInt array(5, 5);
  array[3] = 2;
  EXPECT_EQ(array.getNum(), 4);
  const PbArrayOfInt& constant = array;
  EXPECT_EQ(constant[3], 2);
}

TEST(PbArray, SortsPutWhatIsNoNumberLast) {
  PbArrayOfFloat array;
  for (float value : {3.f, std::nanf(""), -1.f, HUGE_VALF, 3.f, -HUGE_VALF}) array += value;
  array.increasingSort();
  EXPECT_TRUE(std::isnan(array.get(5)));
  array.squeeze();
  EXPECT_EQ(std::vector<float>(array.get(), array.get() + 5), (std::vector<float>{-HUGE_VALF, -1, 3, 3, HUGE_VALF}));
  array.decreasingSort();
  EXPECT_TRUE(std::isnan(array.get(5)));
  EXPECT_EQ(std::vector<float>(array.get(), array.get() + 5), (std::vector<float>{HUGE_VALF, 3, 3, -1, -HUGE_VALF}));
}

TEST(PbArray, IsLeftAsItWasWhenMemoryRunsOut) {
  PbArrayOfInt array(2, 2), other(100, 1);
  array += 1;
  array += 2;
  for (int i = 0; i < 100; ++i) other += i;
  static int s_reports;
  s_reports = 0;
  PiMemory::Source source = PiMemory::defaultSource();
  source.allocate = [](std::size_t) -> void* { return nullptr; };
  source.post = [](const char*) { ++s_reports; };
  const PiMemory::Source previous = PiMemory::setSource(source);
  const PbArrayOfInt before(5, 5);
  EXPECT_EQ(array.add(3), 1);
  EXPECT_EQ(array.add(100, other.get()), 1);
  array.set(1000, 4);
  array += other;
  array.setCapacity(50, 0);
  array = other;
  PiMemory::setSource(previous);

  EXPECT_EQ(s_reports, 7);
  EXPECT_EQ(before.getCapacity(), 0);
  EXPECT_EQ(array.getCapacity(), 2);
  ASSERT_EQ(array.getNum(), 2);
  EXPECT_EQ(array.get(0), 1);
  EXPECT_EQ(array.get(1), 2);
  EXPECT_EQ(array.add(3), 2);
}

}  // namespace
