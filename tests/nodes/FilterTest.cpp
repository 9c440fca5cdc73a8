#include <Ormelle/PbArrayOfFloat.h>
#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PoCoordinateListFilter.h>
#include <Ormelle/PoIndexListFilter.h>
#include <Ormelle/PoIntervalCellFilter.h>
#include <Ormelle/PoPeriodFilter.h>
#include <Ormelle/PoPeriodIndexFilter.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <vector>

#include "NodesTest.h"

namespace {

std::vector<int> indicesOf(const PoMesh1DFilter& filter, int numNodes) {
  PbArrayOfInt indices;
  indices.add(-7);
  filter.getIndices(numNodes, indices);
  return {indices.get(), indices.get() + indices.getNum()};
}

std::vector<float> coordinatesOf(const PoMesh1DFilter& filter, float min, float max) {
  PbArrayOfFloat coordinates;
  coordinates.add(-7);
  filter.getCoordinates(min, max, coordinates);
  return {coordinates.get(), coordinates.get() + coordinates.getNum()};
}

}  // namespace

TEST(CellFilter, TheTwoSettingsPartTheNumbersWithTheEndsOutside) {
  NodePtr<PoIntervalCellFilter> filter(new PoIntervalCellFilter);
  filter->min = 1;
  filter->max = 2;
  for (const float value : {-INFINITY, 0.0f, 1.0f, 1.5f, 2.0f, 3.0f, INFINITY}) {
    filter->in = TRUE;
    EXPECT_EQ(filter->acceptCell(0, value), value == 1.5f) << value;
    filter->in = FALSE;
    EXPECT_EQ(filter->acceptCell(0, value), value != 1.5f) << value;
  }
  EXPECT_FALSE(filter->acceptCell(0, NAN));
  filter->in = TRUE;
  EXPECT_FALSE(filter->acceptCell(0, NAN));
}

TEST(Mesh1DFilter, IndexFiltersStayInsideTheMesh) {
  NodePtr<PoPeriodIndexFilter> period(new PoPeriodIndexFilter);
  period->period = 3;
  EXPECT_EQ(indicesOf(*period, 10), (std::vector<int>{0, 3, 6}));  // 10 / 3 of them
  EXPECT_EQ(indicesOf(*period, 2), std::vector<int>());
  EXPECT_EQ(indicesOf(*period, 0), std::vector<int>());
  for (const int bad : {0, -1, INT_MIN}) {
    period->period = bad;
    EXPECT_EQ(indicesOf(*period, 3), (std::vector<int>{0, 1, 2})) << bad;
  }
  period->period = INT_MAX;
  EXPECT_EQ(indicesOf(*period, INT_MAX), std::vector<int>{0});

  NodePtr<PoIndexListFilter> list(new PoIndexListFilter);
  const int32_t wanted[] = {4, -1, 0, 5, 4, INT_MAX};
  list->index.setValues(0, 6, wanted);
  EXPECT_EQ(indicesOf(*list, 5), (std::vector<int>{4, 0, 4}));
}

TEST(Mesh1DFilter, PlacesLieWithinTheCurve) {
  NodePtr<PoPeriodFilter> period(new PoPeriodFilter);
  period->period = 0.1f;
  const std::vector<float> tenths = coordinatesOf(*period, 1, 2);
  ASSERT_GE(tenths.size(), 10u);
  EXPECT_EQ(tenths[0], 1);
  EXPECT_FLOAT_EQ(tenths[9], 1.9f);
  period->axis = PoMesh1DFilter::Y;
  EXPECT_EQ(period->getAxis(), PoMesh1DFilter::Y);
  period->axis.setValue(12);
  EXPECT_EQ(period->getAxis(), PoMesh1DFilter::Y);
  period->period = INFINITY;
  EXPECT_EQ(coordinatesOf(*period, 1, 2), std::vector<float>{1});
  for (const float bad : {0.0f, -1.0f, NAN}) {
    period->period = bad;
    EXPECT_TRUE(coordinatesOf(*period, 1, 2).empty()) << bad;
  }
  period->period = 1;
  EXPECT_TRUE(coordinatesOf(*period, 2, 1).empty());
  EXPECT_TRUE(coordinatesOf(*period, NAN, 1).empty());
  EXPECT_TRUE(coordinatesOf(*period, 0, INFINITY).empty());
  period->period = 1e-40f;
  EXPECT_EQ(coordinatesOf(*period, 1, 2).size(), 1u);
  EXPECT_EQ(coordinatesOf(*period, 0, 1).size(), 1u << 20);

  NodePtr<PoCoordinateListFilter> list(new PoCoordinateListFilter);
  const float wanted[] = {2, 0.5f, NAN, 1, 2.5f};
  list->coord.setValues(0, 5, wanted);
  EXPECT_EQ(coordinatesOf(*list, 1, 2), (std::vector<float>{2, 1}));
}
