#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PoMultipleHistogram.h>
#include <Ormelle/PoOrmelle.h>
#include <Ormelle/PoSingleHistogram.h>

#include "graph/chart/PiHistogramBars.h"
#include "support/NodePtr.h"
#include "support/PartTexts.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

const float kNan = std::numeric_limits<float>::quiet_NaN();

TEST(HistogramBars, WidthsFollowTheSpace) {
  PiHistogramBars::Axis axis;
  axis.space = 0;
  EXPECT_FLOAT_EQ(PiHistogramBars::widthOf(0.5f, axis), 0.5f);
  axis.space = 0.2f;
  EXPECT_FLOAT_EQ(PiHistogramBars::widthOf(-0.5f, axis), -0.4f);
  axis.isFixedSpace = true;
  EXPECT_FLOAT_EQ(PiHistogramBars::widthOf(0.5f, axis), 0.3f);
  axis.space = 2;
  EXPECT_FLOAT_EQ(PiHistogramBars::widthOf(0.5f, axis), 0);
  axis.space = -1;
  EXPECT_FLOAT_EQ(PiHistogramBars::widthOf(0.5f, axis), 0.5f);
}

TEST(HistogramBars, TablesAreGroupedBothWays) {
  const float values[] = {1, 2, 3, 4, 5, 6};
  PiHistogramBars::Axis axis;
  axis.end = 6;
  axis.space = 0;
  PiHistogramBars::Table table;
  table.values = values;
  table.numValues = 6;
  table.numRows = 2;
  PiHistogramBars bars;
  bars.compute(table, axis);
  for (int i = 0; i < 6; ++i) EXPECT_FLOAT_EQ(bars.bars()[static_cast<std::size_t>(i)].low, static_cast<float>(i));
  EXPECT_EQ(bars.sumOf(0), 6);

  table.isGroupedByRow = false;
  bars.compute(table, axis);
  const float lows[] = {0, 2, 4, 1, 3, 5};
  for (int i = 0; i < 6; ++i) EXPECT_FLOAT_EQ(bars.bars()[static_cast<std::size_t>(i)].low, lows[i]);
  EXPECT_EQ(bars.numGroups(), 3);
  EXPECT_EQ(bars.sumOf(2), 9);
}

TEST(HistogramBars, StacksGrowFromTheAxisBothWays) {
  const float values[] = {1, -2, 3, kNan, -4, 5};
  PiHistogramBars::Axis axis;
  axis.base = 10;
  PiHistogramBars::Table table;
  table.values = values;
  table.numValues = 6;
  table.representation = PiHistogramBars::ACCUMULATED;
  PiHistogramBars bars;
  bars.compute(table, axis);
  const float feet[] = {10, 10, 11, 14, 8, 14};
  const float tops[] = {11, 8, 14, 14, 4, 19};
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_FLOAT_EQ(bars.bars()[i].foot, feet[i]) << i;
    EXPECT_FLOAT_EQ(bars.bars()[i].top, tops[i]) << i;
  }
  EXPECT_FALSE(bars.bars()[3].isDefined);

  table.representation = PiHistogramBars::PERCENTAGE;
  table.percentageHeight = 9;
  bars.compute(table, axis);
  EXPECT_FLOAT_EQ(bars.bars()[0].top, 11);
  EXPECT_FLOAT_EQ(bars.bars()[1].top, 11);
  EXPECT_FLOAT_EQ(bars.bars()[5].top, 19);
  const float none[] = {0, -1};
  table.values = none;
  table.numValues = 2;
  bars.compute(table, axis);
  EXPECT_FLOAT_EQ(bars.bars()[1].top, 10);
}

class Histogram : public ::testing::Test {
 protected:
  void SetUp() override { PoOrmelle::init(); }
  void TearDown() override { PoOrmelle::finish(); }

  template <std::size_t N>
  static void setValues(SoMFFloat& field, const float (&values)[N]) {
    field.setValues(0, N, values);
    field.setNum(N);
  }
};

TEST_F(Histogram, BarsStandOnTheirAxisInBothDirections) {
  NodePtr<PoSingleHistogram> kit(new PoSingleHistogram);
  setValues(kit->value, {2, -1, 0, 4});
  kit->start.setValue(1, 10);
  kit->end = 5;
  kit->barSpaceValue = 0;
  kit->valueVisibility = PoAxis::VISIBILITY_OFF;
  Soup soup = Soup::of(kit.get());
  EXPECT_NEAR(soup.area(), 7, 1e-5);
  EXPECT_TRUE(soup.triangleAt(1.5f, 11.9f));
  EXPECT_TRUE(soup.triangleAt(2.5f, 9.1f));
  EXPECT_FALSE(soup.triangleAt(2.5f, 10.1f));
  EXPECT_TRUE(soup.triangleAt(4.5f, 13.9f));

  SoRayPickAction pick(SbViewportRegion(100, 100));
  pick.setRay(SbVec3f(4.5f, 13, 5), SbVec3f(0, 0, -1));
  pick.apply(kit.get());
  int number = -1;
  EXPECT_EQ(kit->getPickedBarNumber(pick.getPickedPoint(), number), 1);
  EXPECT_EQ(number, 3);

  kit->type = PoHistogram::Y;
  kit->end = 6;
  soup = Soup::of(kit.get());
  EXPECT_NEAR(soup.area(), 7, 1e-5);
  EXPECT_TRUE(soup.triangleAt(2.9f, 9.5f));
  EXPECT_TRUE(soup.triangleAt(4.9f, 6.5f));
}

TEST_F(Histogram, TextsSayValuesAndNames) {
  NodePtr<PoMultipleHistogram> kit(new PoMultipleHistogram);
  setValues(kit->value, {1, 1, 1, 3, 0, 3});
  kit->numRows = 2;
  kit->barHeight = 1;
  kit->representation = PoMultipleHistogram::PERCENTAGE;
  const char* rows[] = {"first", "second"};
  const char* columns[] = {"a", "b", "c"};
  kit->rowName.setValues(0, 2, rows);
  kit->columnName.setValues(0, 3, columns);
  Soup::of(kit.get());
  EXPECT_EQ(textsIn(*kit, "nameText"), (std::vector<std::string>{"first", "second"}));
  // The bar of 0 percent has no room for a text.
  EXPECT_EQ(textsIn(*kit, "valueText"), (std::vector<std::string>{"34%", "33%", "33%", "50%", "50%"}));
  kit->representation = PoMultipleHistogram::ACCUMULATED;
  kit->sumFontSize = 0.03f;
  Soup::of(kit.get());
  EXPECT_EQ(textsIn(*kit, "sumText"), (std::vector<std::string>{"3", "6"}));
  kit->histogPath = PoMultipleHistogram::COLUMN_ROW;
  Soup::of(kit.get());
  EXPECT_EQ(textsIn(*kit, "nameText"), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(textsIn(*kit, "sumText"), (std::vector<std::string>{"4", "1", "4"}));
}

TEST_F(Histogram, ColoursComeFromTheListOrTheMapping) {
  NodePtr<PoSingleHistogram> kit(new PoSingleHistogram);
  setValues(kit->value, {1, 2, 4});
  kit->end = 3;
  kit->color.set1Value(0, SbColor(1, 0, 0));
  kit->color.set1Value(1, SbColor(0, 0, 1));
  kit->valueVisibility = PoAxis::VISIBILITY_OFF;
  Soup soup = Soup::of(kit.get());
  EXPECT_TRUE(soup.colorAt(0.5f, 0.5f).equals(SbColor(1, 0, 0), 1e-4f));
  EXPECT_TRUE(soup.colorAt(1.5f, 0.5f).equals(SbColor(0, 0, 1), 1e-4f));
  EXPECT_TRUE(soup.colorAt(2.5f, 0.5f).equals(SbColor(1, 0, 0), 1e-4f));

  PbLinearDataMapping mapping;
  mapping.setValues(0, SbColor(0, 0, 0), 4, SbColor(1, 1, 1));
  kit->setDataMapping(&mapping);
  kit->coloring = PoHistogram::DATA_MAPPING;
  soup = Soup::of(kit.get());
  EXPECT_TRUE(soup.colorAt(1.5f, 0.5f).equals(SbColor(0.5f, 0.5f, 0.5f), 1e-3f));
}

TEST_F(Histogram, BadInputIsDrawnSensibly) {
  NodePtr<PoMultipleHistogram> kit(new PoMultipleHistogram);
  EXPECT_EQ(Soup::of(kit.get()).area(), 0);
  EXPECT_EQ(kit->getPart("bar", FALSE), nullptr);
  setValues(kit->value, {kNan, std::numeric_limits<float>::infinity(), 1, -1});
  for (const int rows : {-3, 0, 1, 2, 3, 1000000}) {
    kit->numRows = rows;
    for (int shape = -1; shape < 4; ++shape) {
      kit->representation = shape;
      kit->barHeight = shape == 2 ? kNan : 1;
      EXPECT_TRUE(Soup::of(kit.get()).isFinite()) << rows << ' ' << shape;
    }
  }
  kit->end = kNan;
  kit->barSpaceValue = kNan;
  EXPECT_TRUE(Soup::of(kit.get()).isFinite());
  NodePtr<PoSingleHistogram> many(new PoSingleHistogram);
  many->value.setNum(10000);
  float* values = many->value.startEditing();
  for (int i = 0; i < 10000; ++i) values[i] = static_cast<float>(i % 7);
  many->value.finishEditing();
  many->name.set1Value(0, std::string(10000, 'x').c_str());
  many->valueVisibility = PoAxis::VISIBILITY_OFF;
  EXPECT_TRUE(Soup::of(many.get()).isFinite());
}

TEST_F(Histogram, WritesFieldsAndReadsThemBack) {
  NodePtr<PoMultipleHistogram> kit(new PoMultipleHistogram);
  setValues(kit->value, {3, 1});
  kit->representation = PoMultipleHistogram::ACCUMULATED;
  kit->valuePosition = PoHistogram::POS_TOP_IN;
  Soup::of(kit.get());
  const std::string text = textOf(kit.get());
  EXPECT_EQ(text.find("FaceSet"), std::string::npos) << text;
  EXPECT_EQ(text.find("Transform {"), std::string::npos) << text;
  const NodePtr<SoSeparator> scene = sceneOf(text);
  ASSERT_TRUE(scene);
  EXPECT_EQ(textOf(scene->getChild(0)), text);
}

}  // namespace
