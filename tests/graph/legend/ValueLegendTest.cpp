#include <gtest/gtest.h>

#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNonLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping2.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoLinearValueLegend.h>
#include <Ormelle/PoNonLinearValueLegend1.h>
#include <Ormelle/PoNonLinearValueLegend2.h>
#include <Ormelle/PoNonLinearValueLegend3.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "graph/toolkit/SoAnnoText3.h"
#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

class ValueLegend : public testing::Test {
 protected:
  ValueLegend() { mapping.setValues(0, SbColor(0, 0, 1), 20, SbColor(1, 0.5F, 0)); }

  template <class Legend>
  Legend* add(Legend* legend) {
    root.reset(new SoSeparator);
    root->addChild(legend);
    legend->setDataMapping(&mapping);
    kit = legend;
    return legend;
  }

  std::string texts(const char* part = "valueText") {
    SoGetBoundingBoxAction(SbViewportRegion(100, 100)).apply(root.get());
    SoSearchAction search;
    search.setType(SoAnnoText3::getClassTypeId());
    search.setInterest(SoSearchAction::ALL);
    SoNode* group = kit->getPart(part, FALSE);
    if (!group) return "none";
    search.apply(group);
    std::string all;
    for (int i = 0; i < search.getPaths().getLength(); ++i)
      all += (i > 0 ? ", " : "") +
             std::string(static_cast<SoAnnoText3*>(search.getPaths()[i]->getTail())->string[0].getString());
    return all;
  }

  PbLinearDataMapping mapping;  // before the legend, which it outlives
  PbIsovaluesList isovalues{5, 15, 3};
  NodePtr<PoLinearValueLegend> starter{new PoLinearValueLegend};  // starts the toolkit
  NodePtr<SoSeparator> root{new SoSeparator};
  PoValueLegend* kit = nullptr;
};

bool isNear(const SbColor& a, const SbColor& b, float tolerance = 0.01F) {
  return std::abs(a[0] - b[0]) < tolerance && std::abs(a[1] - b[1]) < tolerance && std::abs(a[2] - b[2]) < tolerance;
}

// What the boxes draw, in the coordinates of the legend.
Soup boxesOf(SoNode* root, PoLegend* legend) {
  SoGetBoundingBoxAction(SbViewportRegion(100, 100)).apply(root);
  return Soup::of(legend->getPart("box", FALSE));
}

// Without margins, texts and ends, the box is the rectangle.
void makeBare(PoAutoValueLegend* legend) {
  legend->valueVisibility = PoLegend::VISIBILITY_OFF;
  for (SoSFFloat* margin : {&legend->marginLeft, &legend->marginRight, &legend->marginBottom, &legend->marginTop})
    *margin = 0;
}

}  // namespace

TEST_F(ValueLegend, ShowsTheValuesOfMappingsAndLists) {
  auto* linear = add(new PoLinearValueLegend);
  EXPECT_EQ(texts(), "0, 3, 6, 9, 12, 15, 18");
  linear->periodValue = 3;
  linear->firstValue = 2;
  EXPECT_EQ(texts(), "3, 12");
  linear->periodValue = 0;
  linear->firstValue = 1;
  linear->lastValue = 2;
  EXPECT_EQ(texts(), "0, 3");
  linear->lastValue = 32767;
  linear->valueDistribution = PoLinearValueLegend::MIN_MAX_VALUES;
  EXPECT_EQ(texts(), "0, 18");
  linear->setIsovaluesList(&isovalues);
  EXPECT_EQ(texts(), "5, 15");
  linear->valueDistribution = PoLinearValueLegend::LINEAR_VALUES;
  EXPECT_EQ(texts(), "5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15");
  linear->valueDistribution = PoLinearValueLegend::ALL_VALUES;
  linear->valueAddStringVisibility = TRUE;
  linear->valueAddString = " m";
  EXPECT_EQ(texts(), "5 m, 10 m, 15 m");

  auto* boxes = add(new PoNonLinearValueLegend1);
  boxes->setIsovaluesList(&isovalues);
  EXPECT_EQ(texts(), "<5, 5 _ 10, 10 _ 15, >15");
  boxes->firstValue = 2;
  EXPECT_EQ(texts(), "<10, 10 _ 15, >15");
  boxes->setIsovaluesList(nullptr);
  boxes->setDataMapping(nullptr);
  EXPECT_EQ(texts(), "");

  auto* single = add(new PoNonLinearValueLegend2);
  single->setIsovaluesList(&isovalues);
  EXPECT_EQ(texts(), "5, 10, 15");
  single->setIsovaluesList(nullptr);
}

TEST_F(ValueLegend, ThresholdsOfTheMappingCutOff) {
  mapping.setMinThreshold(6, SbColor(1, 1, 1));
  mapping.setMaxThreshold(14);
  mapping.enableThresholds(1, 1);
  add(new PoNonLinearValueLegend2);
  EXPECT_EQ(texts(), "UNDEF<, 6, 7, 8, 9, 10, 11, 12, 13, 14, UNDEF>");
  auto* linear = add(new PoLinearValueLegend);
  EXPECT_EQ(texts(), "UNDEF<, 6, 7, 8, 9, 10, 11, 12, 13, 14, UNDEF>");
  linear->lowerUndefString = "too small";
  linear->setIsovaluesList(&isovalues);
  EXPECT_EQ(texts(), "5, 10, 15");  // isovalues are cut off nowhere
  linear->setIsovaluesList(nullptr);
  linear->lowerUpperBoxes = FALSE;
  EXPECT_EQ(texts(), "6, 7, 8, 9, 10, 11, 12, 13, 14");
}

TEST_F(ValueLegend, LargeValuesHaveAMultiplier) {
  mapping.setValues(1e6F, SbColor(0, 0, 1), 1.5e6F, SbColor(1, 0, 0));
  auto* linear = add(new PoLinearValueLegend);
  EXPECT_EQ(texts(), "1.0, 1.1, 1.2, 1.3, 1.4, 1.5");
  EXPECT_EQ(texts("multFactor"), "x 10, 6");
  PbNumericDisplayFormat format(PbNumericDisplayFormat::INTEGER_FORMAT, 0, 0);
  linear->setFormat(&format);
  EXPECT_EQ(texts("multFactor"), "");
  EXPECT_EQ(texts().substr(0, 7), "1000000");
  linear->setFormat(nullptr);
}

TEST_F(ValueLegend, LongBoxesShowTheColoursOfTheMapping) {
  const float levels[] = {2, 5, 6, 10};
  const SbColor colors[] = {SbColor(1, 0, 0), SbColor(0, 1, 0), SbColor(0, 0, 1), SbColor(1, 1, 0), SbColor(0, 0, 0)};
  PbNonLinearDataMapping2 steps, ramp;
  steps.setValues(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL, 4, levels, colors);
  ramp.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 4, levels, colors);
  PbNonLinearDataMapping curved;
  curved.setRGBFunction([](float value) -> const SbColor* {
    static SbColor color;
    color.setValue(0.5F + 0.5F * std::sin(value), 0.5F, 0.5F + 0.5F * std::cos(value));
    return &color;
  });
  mapping.setMinThreshold(4, SbColor(1, 1, 1));
  mapping.enableThresholds(1, 0);
  PbIsovaluesList range(0, 12, 2);  // far beyond the levels
  for (PbDataMapping* each : std::initializer_list<PbDataMapping*>{&mapping, &steps, &ramp, &curved})
    for (const bool isReverted : {false, true})
      for (const auto position : {PoLegend::POS_RIGHT, PoLegend::POS_TOP}) {
        auto* legend = add(new PoNonLinearValueLegend3(SbVec2f(0, 0), SbVec2f(1, 1)));
        if (isReverted) {
          legend->start.setValue(1, 1);
          legend->end.setValue(0, 0);
        }
        makeBare(legend);
        legend->lowerUpperBoxes = FALSE;
        legend->valuePosition = position;
        legend->setDataMapping(each);
        legend->setIsovaluesList(&range);
        const Soup soup = boxesOf(root.get(), kit);
        for (float part = 0.013F; part < 1; part += 0.061F) {
          const float place = isReverted ? 1 - part : part;
          const SbColor shown = position == PoLegend::POS_RIGHT ? soup.colorAt(0.5F, place) : soup.colorAt(place, 0.5F);
          const SbColor wanted = *each->getRGBColor(12 * part);
          EXPECT_TRUE(isNear(shown, wanted, each == &curved ? 0.03F : 0.01F))
              << each->getClassType() << " at " << 12 * part << ": " << shown[0] << " " << shown[1] << " " << shown[2];
        }
        legend->setIsovaluesList(nullptr);
        legend->setDataMapping(nullptr);
      }
}

TEST_F(ValueLegend, SeparateBoxesShowTheColoursOfTheirValues) {
  auto* boxes = add(new PoNonLinearValueLegend1);
  makeBare(boxes);
  boxes->setIsovaluesList(&isovalues);
  const Soup soup = boxesOf(root.get(), kit);
  ASSERT_FALSE(soup.triangles.empty());
  // From below the first value, by the mean step of 10 / 3, to above the last.
  const float first = 5 - 10.0F / 3, last = 15 + 10.0F / 3;
  float low = 1, high = 0, x = 0;
  for (const SoupTriangle& triangle : soup.triangles)
    for (const SoupVertex& vertex : triangle) {
      low = std::min(low, vertex.point[1]);
      high = std::max(high, vertex.point[1]);
      x = (triangle[0].point[0] + triangle[1].point[0] + triangle[2].point[0]) / 3;
    }
  EXPECT_TRUE(isNear(soup.colorAt(x, low + 1e-4F), *mapping.getRGBColor(first)));
  EXPECT_TRUE(isNear(soup.colorAt(x, high - 1e-4F), *mapping.getRGBColor(last)));

  boxes->setIsovaluesList(nullptr);
  auto* single = add(new PoNonLinearValueLegend2);
  single->setIsovaluesList(&isovalues);
  const Soup plain = boxesOf(root.get(), kit);
  ASSERT_EQ(plain.triangles.size(), 6U);
  for (size_t i = 0; i < 6; ++i)
    EXPECT_TRUE(isNear(plain.triangles[i][0].color, *mapping.getRGBColor(5.0F * static_cast<float>(1 + i / 2))));
  single->setIsovaluesList(nullptr);
}

TEST_F(ValueLegend, FollowsItsMappingInTheSameFrame) {
  auto* legend = add(new PoNonLinearValueLegend2);
  legend->setDataMapping(nullptr);
  auto* node = new PoLinearDataMapping;
  root->insertChild(node, 0);
  node->value2 = 10;
  EXPECT_EQ(texts(), "0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10");
  node->value2 = 5;
  EXPECT_EQ(texts(), "0, 1, 2, 3, 4, 5");
  {
    PbLinearDataMapping own;
    own.setValues(0, SbColor(0, 0, 0), 2000, SbColor(1, 1, 1));
    legend->setDataMapping(&own);
    EXPECT_EQ(legend->getDataMapping(), &own);
    EXPECT_EQ(texts().substr(0, 8), "0.0, 0.3");
    own.setValues(0, SbColor(0, 0, 0), 3, SbColor(1, 1, 1));
    EXPECT_EQ(texts().substr(0, 8), "0.0, 0.4");
    NodePtr<PoNonLinearValueLegend2> copied(static_cast<PoNonLinearValueLegend2*>(legend->copy()));
    EXPECT_EQ(copied->getDataMapping(), &own);
  }
  EXPECT_EQ(texts(), "0, 1, 2, 3, 4, 5");  // dead: the state's again
}

// The corners are stretched with the domain; squares stay squares.
TEST_F(ValueLegend, DomainsDontDistort) {
  auto* legend = add(new PoNonLinearValueLegend2(SbVec2f(0, 0), SbVec2f(4, 0.01F)));
  auto* domain = new PoDomain;
  domain->max.setValue(4, 0.01F, 1);
  root->insertChild(domain, 0);
  makeBare(legend);
  legend->setIsovaluesList(&isovalues);
  const SoupTriangle triangle = Soup::of(root.get()).triangles.at(2);  // behind the background
  float width = 0, height = 0;
  for (int i = 0; i < 3; ++i)
    for (int k = 0; k < 3; ++k) {
      width = std::max(width, triangle[i].point[0] - triangle[k].point[0]);
      height = std::max(height, triangle[i].point[1] - triangle[k].point[1]);
    }
  EXPECT_FLOAT_EQ(width, height);
  EXPECT_NEAR(Soup::of(root.get()).box().getMax()[1], 4, 1e-3);
  legend->setIsovaluesList(nullptr);
}

TEST_F(ValueLegend, FilesComeBack) {
  auto* legend = add(new PoLinearValueLegend(SbVec2f(0, 1), SbVec2f(0.3F, 0), PoLinearValueLegend::LINEAR_VALUES));
  legend->titleVisibility = PoLegend::VISIBILITY_ON;
  legend->titleString = "Depth";
  legend->numColumns = 3;
  legend->lowerUndefString = "low";
  texts();
  const std::string written = textOf(root.get());
  const NodePtr<SoSeparator> read = sceneOf(written);
  ASSERT_TRUE(read);
  EXPECT_EQ(textOf(read.get()), written);
  EXPECT_EQ(written.find("FaceSet"), std::string::npos);
  auto* back = static_cast<PoLinearValueLegend*>(read->getChild(0));
  EXPECT_EQ(back->valueDistribution.getValue(), PoLinearValueLegend::LINEAR_VALUES);
  EXPECT_EQ(back->lowerUndefString.getValue(), "low");
}

TEST_F(ValueLegend, BearsAnyInput) {
  const float infinity = std::numeric_limits<float>::infinity(), nan = std::nanf("");
  PbIsovaluesList one(3, 3, 1), many(0, 1, 5000), same(7, 7, 5);
  const std::string longName(300, 'm');
  for (PbIsovaluesList* list : {static_cast<PbIsovaluesList*>(nullptr), &one, &many, &same})
    for (const float odd : {0.0F, -1.0F, nan, infinity, 1e38F})
      for (int kind = 0; kind < 3; ++kind) {
        PoAutoValueLegend* legend = nullptr;
        if (kind == 0) legend = add(new PoLinearValueLegend);
        if (kind == 1) legend = add(new PoNonLinearValueLegend1);
        if (kind == 2) legend = add(new PoNonLinearValueLegend2);
        legend->setIsovaluesList(list);
        legend->boxRatio = odd;
        legend->marginLeft = odd;
        legend->titleFontSize = odd;
        legend->titleVisibility = PoLegend::VISIBILITY_ON;
        legend->titleString = longName.c_str();
        legend->valuePosition = kind == 1 ? 77 : 1;
        legend->numColumns = 65535;
        if (kind == 2) legend->end.setValue(odd, 1);
        mapping.setValues(odd, SbColor(0, 0, 1), 20, SbColor(1, 0, 0));
        EXPECT_TRUE(Soup::of(root.get()).isFinite());
        legend->setIsovaluesList(nullptr);
        legend->setDataMapping(nullptr);
      }
}
