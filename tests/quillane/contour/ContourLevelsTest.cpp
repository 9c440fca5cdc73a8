#include <Ormelle/PbIsovaluesList.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "quillane/contour/PiContourLevels.h"
#include "quillane/contour/PiEdgeTable.h"

namespace {

TEST(ContourLevels, BandsCountTheLevelsBelowAValue) {
  const float infinity = std::numeric_limits<float>::infinity(), greatest = std::numeric_limits<float>::max();
  std::mt19937 random(3);
  std::uniform_real_distribution<float> uniform(-11, 11);
  std::vector<float> values = {infinity, -infinity, greatest, -greatest, 0, -0.0F, 1e-40F, std::nanf("")};
  for (int i = 0; i < 2000; ++i) values.push_back(uniform(random));

  std::vector<std::vector<float>> lists = {{0.5F},
                                           {-greatest, 1, greatest},
                                           {1, std::nextafter(1.0F, 2.0F), 5, 5, 5.0001F, 9},
                                           {-1e30F, -0.3F, 0.2F, 0.21F, 1e30F}};
  for (const int num : {2, 10, 50, 70000}) {
    lists.emplace_back();
    for (int i = 0; i < num; ++i) lists.back().push_back(-10 + 20 * (float(i) + 0.3F) / float(num));
  }
  for (const std::vector<float>& isovalues : lists) {
    PbIsovaluesList list;
    list.setIrregularIsoList(int(isovalues.size()), isovalues.data());
    PiContourLevels levels;
    PiGrowBuffer<int> bands;
    levels.findBands(&list, values.data(), int(values.size()), bands);
    for (std::size_t v = 0; v < values.size(); ++v) {
      int num = 0;
      for (int k = 0; k < levels.num(); ++k) num += levels.level(k) < values[v];
      ASSERT_EQ(bands[v], std::isnan(values[v]) ? PiContourLevels::kUndefinedBand : num) << values[v];
    }
  }
}

TEST(EdgeTable, PairsTheCellsOfAnEdgeAndForgetsAtOnce) {
  PiEdgeTable table;
  for (int round = 0; round < 3; ++round) {
    table.clear();
    for (int use = 0; use < 5; ++use)
      for (int edge = 0; edge < 5000; ++edge) {
        int& stored = use % 2 ? table.use(edge + 1, edge / 7) : table.use(edge / 7, edge + 1);
        EXPECT_EQ(stored, use % 2 ? edge + use - 1 : -1) << "every other cell starts afresh";
        stored = edge + use;
      }
  }
}

}  // namespace
