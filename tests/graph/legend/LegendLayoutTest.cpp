#include "graph/legend/PiLegendLayout.h"

#include <gtest/gtest.h>

#include <vector>

using namespace PiLegendLayout;

TEST(LegendLayout, MarginsThatLeaveNothingAreNone) {
  const struct {
    Margins margins;
    float x, y, width, height;
  } rows[] = {
      {{PoLegend::REL_MARGIN, 0.1F, 0.2F, 0.25F, 0}, 11, 21, 7, 3},
      {{PoLegend::REL_MARGIN, 0.6F, 0.5F, 0.25F, 0.25F}, 10, 21, 10, 2},
      {{PoLegend::REL_MARGIN, 0.1F, 0.1F, 0.1F, -1}, 10.2F, 20.2F, 9.6F, 3.6F},
      {{PoLegend::FIXED_MARGIN, 1, 2, 1, 2}, 11, 21, 7, 1},
      {{PoLegend::FIXED_MARGIN, 1, 2, 2, 2}, 11, 20, 7, 4},
  };
  for (const auto& row : rows) {
    const Frame inner = withoutMargins(row.margins, {SbVec2f(10, 20), 10, 4});
    EXPECT_FLOAT_EQ(inner.origin[0], row.x);
    EXPECT_FLOAT_EQ(inner.origin[1], row.y);
    EXPECT_FLOAT_EQ(inner.width, row.width);
    EXPECT_FLOAT_EQ(inner.height, row.height);
  }
}

TEST(LegendLayout, TitlesTakeNoMoreThanHalf) {
  const SbVec2f extent(20, 1);
  EXPECT_EQ(fitTitle(PoLegend::POS_TOP, 100, 10, extent, 2), 2);
  EXPECT_FLOAT_EQ(fitTitle(PoLegend::POS_TOP, 10, 10, extent, 2), 0.475F);  // 95 % of the width
  EXPECT_FLOAT_EQ(fitTitle(PoLegend::POS_BOTTOM, 100, 1, extent, 2), 0.5F);
  EXPECT_FLOAT_EQ(fitTitle(PoLegend::POS_LEFT, 10, 100, extent, 2), 0.25F);
  EXPECT_EQ(fitTitle(PoLegend::POS_RIGHT, 10, 10, extent, 0), 0);
}

TEST(LegendLayout, CellsFillRowsOrColumnsWithinTheLimits) {
  const Plimit limits{2, 12, 1, 5};
  for (const auto position : {PoLegend::POS_BOTTOM, PoLegend::POS_TOP, PoLegend::POS_RIGHT, PoLegend::POS_LEFT})
    for (const bool isFromTop : {false, true})
      for (const auto increment : {PoLegend::VERTICAL_INCREMENT, PoLegend::HORIZONTAL_INCREMENT}) {
        SCOPED_TRACE(testing::Message() << position << isFromTop << increment);
        Grid grid;
        grid.numBoxes = 5;
        grid.numRows = 3;
        grid.numColumns = 2;
        grid.valuePosition = position;
        grid.increment = increment;
        grid.isFromTop = isFromTop;
        grid.columnWidths = {2, 3};
        grid.fit(10, 4);
        EXPECT_GT(grid.size, 0);
        std::vector<Grid::Cell> cells(5);
        int count = 0;
        grid.forEachCell(limits, [&](const Grid::Cell& cell) {
          cells[static_cast<size_t>(cell.box)] = cell;
          ++count;
          for (int corner = 0; corner < 2; ++corner) {
            const SbVec2f point = cell.origin + SbVec2f(grid.boxWidth, grid.boxHeight) * (grid.size * corner);
            EXPECT_TRUE(point[0] > limits.xmin - 1e-4 && point[0] < limits.xmax + 1e-4) << point[0];
            EXPECT_TRUE(point[1] > limits.ymin - 1e-4 && point[1] < limits.ymax + 1e-4) << point[1];
          }
        });
        EXPECT_EQ(count, 5);
        const bool isByRow = increment == PoLegend::HORIZONTAL_INCREMENT;
        // The second box is beside the first, or in the next row, which is above or below.
        if (isByRow) {
          EXPECT_GT(cells[1].origin[0], cells[0].origin[0]);
          EXPECT_FLOAT_EQ(cells[1].origin[1], cells[0].origin[1]);
          EXPECT_FLOAT_EQ(cells[2].origin[0], cells[0].origin[0]);
        } else {
          EXPECT_FLOAT_EQ(cells[1].origin[0], cells[0].origin[0]);
          EXPECT_EQ(cells[1].origin[1] < cells[0].origin[1], isFromTop);
          EXPECT_GT(cells[3].origin[0], cells[0].origin[0]);
        }
      }
}

TEST(LegendLayout, TextsOfOneBoxKeepApartAndWithin) {
  for (const bool hasEnds : {false, true})
    for (const float extent : {1.3F, 8.0F})
      for (const float reserve : {0.0F, 2.09F}) {
        OneBox one;
        one.hasEnds = hasEnds;
        one.endLength = 0.25F;
        one.reserve = reserve;
        one.maxSize = 1;
        if (hasEnds) one.texts.push_back({-1, extent});
        for (const float place : {0.0F, 0.2F, 0.25F, 1.0F}) one.texts.push_back({place, extent});
        one.fit(10);
        EXPECT_GT(one.size, 0.01F);
        EXPECT_GE(one.lowerStart, 0);
        EXPECT_LE(one.upperEnd, 10 - reserve * one.size + 1e-3F);
        float former = 0;
        for (const OneBox::Text& text : one.texts) {
          const float half = text.extent * one.size / 2, middle = one.placeOf(text);
          EXPECT_GE(middle - half, former - 1e-3F);
          former = middle + half;
        }
        EXPECT_LE(former, 10 - reserve * one.size + 1e-2F);
      }
  OneBox single;
  single.isSingle = true;
  single.maxSize = 100;
  single.texts = {{0.5F, 1.3F}};
  single.fit(10);
  EXPECT_FLOAT_EQ(single.placeOf(single.texts[0]), 5);
  EXPECT_FLOAT_EQ(single.start, 5);
}
