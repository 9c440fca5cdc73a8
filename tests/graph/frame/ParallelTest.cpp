#include <atomic>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include <Ormelle/PoBase.h>

#include "graph/frame/PiParallel.h"

namespace {

class Parallel : public ::testing::TestWithParam<int> {
 protected:
  void SetUp() override { PoBase::setNumThreads(GetParam()); }
  void TearDown() override { PoBase::setNumThreads(0); }
};

TEST_P(Parallel, EveryTaskRunsOnce) {
  for (const int num : {0, 1, 7, 1000}) {
    std::vector<std::atomic<int>> calls(static_cast<std::size_t>(num));
    PiParallel::run(num, [&](int index) { ++calls[static_cast<std::size_t>(index)]; });
    for (const std::atomic<int>& count : calls) EXPECT_EQ(count, 1);
  }
}

TEST_P(Parallel, BlocksCoverTheRangeAndDontDependOnThreads) {
  std::vector<std::size_t> starts(1000, 0);
  PiParallel::forBlocks(1000, 64, [&](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) starts[i] = begin;
  });
  for (std::size_t i = 0; i < starts.size(); ++i) EXPECT_EQ(starts[i], i / 64 * 64);
}

TEST_P(Parallel, AnExceptionReachesTheCaller) {
  EXPECT_THROW(PiParallel::run(100,
                               [](int index) {
                                 if (index == 50) throw std::runtime_error("fifty");
                               }),
               std::runtime_error);
}

INSTANTIATE_TEST_SUITE_P(Threads, Parallel, ::testing::Values(0, 1, 2, 9));

}  // namespace
