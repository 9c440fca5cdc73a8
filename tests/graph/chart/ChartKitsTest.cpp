// The kits that draw a one-dimensional mesh: line, filling, ribbon and tube.

#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbIrregularMesh1D.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PoCircularProfile.h>
#include <Ormelle/PoCurveFilling.h>
#include <Ormelle/PoCurveLine.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoIrregularMesh1D.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoMesh1DHints.h>
#include <Ormelle/PoProfileCoordinate2.h>
#include <Ormelle/PoRibbon.h>
#include <Ormelle/PoSquareProfile.h>
#include <Ormelle/PoTube.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

class ChartKitsTest : public testing::Test {
 protected:
  ChartKitsTest() {
    PoBase::init();
    scene.reset(new SoSeparator);
    setNodes({0, 1, 2, 4}, {1, 3, 1, 5});
    scene->addChild(mesh);
    scene->addChild(hints);
    scene->addChild(mapping);
    mapping->value1 = 0;
    mapping->value2 = 10;
    mapping->color1 = SbColor(0, 0, 0);
    mapping->color2 = SbColor(1, 1, 1);
  }

  void setNodes(const std::vector<float>& x, const std::vector<float>& y) {
    mesh->setGeometry(static_cast<int>(x.size()), x.data());
    mesh->addValuesSet(0, y.data(), "y");
  }
  void setValues(int index, const std::vector<float>& values) { mesh->addValuesSet(index, values.data(), "more"); }
  template <class Kit>
  Kit* show() {
    auto* kit = new Kit;
    if (scene->getNumChildren() > 3) scene->removeChild(scene->getNumChildren() - 1);
    scene->addChild(kit);
    return kit;
  }
  Soup draw() {
    Soup soup = Soup::of(scene.get());
    EXPECT_TRUE(soup.isFinite());
    return soup;
  }

  NodePtr<SoSeparator> scene;
  PoIrregularMesh1D* mesh = new PoIrregularMesh1D;
  PoMesh1DHints* hints = new PoMesh1DHints;
  PoLinearDataMapping* mapping = new PoLinearDataMapping;
};

/// The volume that triangles enclose, by the divergence theorem.
double volumeOf(const Soup& soup) {
  double sixfold = 0;
  for (const SoupTriangle& t : soup.triangles) sixfold += t[0].point.dot(t[1].point.cross(t[2].point));
  return sixfold / 6;
}

TEST_F(ChartKitsTest, ALineHasTheColorsOfItsNodes) {
  auto* line = show<PoCurveLine>();
  Soup soup = draw();
  ASSERT_EQ(soup.segments.size(), 3U);
  EXPECT_NEAR(soup.length(), 2 * std::sqrt(5.0) + std::sqrt(20.0), 1e-5);
  EXPECT_EQ(soup.numColors(), 1);
  line->colorBinding = PoChart::PER_VERTEX;
  soup = draw();
  for (const SoupSegment& segment : soup.segments)
    for (const SoupVertex& end : segment) EXPECT_NEAR(end.color[0], end.point[1] / 10, 1e-6);
  line->colorBinding = PoChart::PER_PART;
  hints->geomInterpretation = PoMesh1DHints::STAIRS_X;
  soup = draw();
  ASSERT_EQ(soup.segments.size(), 6U);
  for (const SoupSegment& segment : soup.segments) {
    EXPECT_EQ(segment[0].color, segment[1].color);
    EXPECT_NEAR(segment[0].color[0], segment[0].point[1] / 10, 1e-6);
  }
}

TEST_F(ChartKitsTest, GapsAreTheSameInAllKits) {
  setNodes({0, 1, 2, 3, 4, 5, 6}, {1, 2, kNaN, 2, 1, 9, 8});
  setValues(1, {1, 2, 3, 4, 5, 6, 7});
  const std::function<PoChart*()> kits[] = {[&] { return show<PoCurveLine>(); }, [&] { return show<PoCurveFilling>(); },
                                            [&] { return show<PoRibbon>(); }, [&] { return show<PoTube>(); },
                                            [&] {
                                              auto* line = show<PoCurveLine>();
                                              line->thicknessIndex = 1;
                                              line->thicknessFactor = 0.01F;
                                              return line;
                                            }};
  mapping->maxThreshold = 8.5F;
  mapping->maxThresholdEnabled = TRUE;
  for (const auto& make : kits) {
    PoChart* kit = make();
    SCOPED_TRACE(kit->getTypeId().getName().getString());
    for (const int binding : {PoChart::INHERITED, PoChart::PER_VERTEX, PoChart::PER_PART}) {
      kit->colorBinding = binding;
      const Soup soup = draw();
      std::vector<bool> isCovered(6);
      for (const SoupSegment& segment : soup.segments)
        for (std::size_t part = 0; part < 6; ++part)
          if (std::fabs((segment[0].point[0] + segment[1].point[0]) / 2 - static_cast<float>(part) - 0.5F) < 0.2F)
            isCovered[part] = true;
      for (const SoupTriangle& t : soup.triangles)
        for (std::size_t part = 0; part < 6; ++part)
          if (std::fabs((t[0].point[0] + t[1].point[0] + t[2].point[0]) / 3 - static_cast<float>(part) - 0.5F) < 0.4F)
            isCovered[part] = true;
      // 9 has no colour: gone are the parts that would show it.
      const bool isUpTo9 = binding != PoChart::PER_VERTEX, isFrom9 = binding == PoChart::INHERITED;
      EXPECT_EQ(isCovered, (std::vector<bool>{true, false, false, true, isUpTo9, isFrom9})) << binding;
      for (const SoupTriangle& t : soup.triangles) EXPECT_EQ(t[0].transparency, 0);
    }
  }
}

TEST_F(ChartKitsTest, ALineIsAsThickAsItsValues) {
  auto* line = show<PoCurveLine>();
  setNodes({0, 10, 20}, {0, 0, 0});
  setValues(2, {1, 3, 2});
  line->thicknessIndex = 2;
  line->thicknessFactor = 0.5F;
  EXPECT_NEAR(draw().area(), 0.5 * (20 + 25), 1e-4);
  line->thicknessBinding = PoCurveLine::PER_PART_THICKNESS;
  EXPECT_NEAR(draw().area(), 0.5 * (10 + 30), 1e-4);
  setValues(2, {1, -3, 2});
  EXPECT_NEAR(draw().area(), 0.5 * 10, 1e-4);
  setValues(2, {kNaN, 3, 2});
  EXPECT_NEAR(draw().area(), 0.5 * 30, 1e-4);
  line->thicknessBinding = PoCurveLine::PER_VERTEX_THICKNESS;
  EXPECT_NEAR(draw().area(), 0.5 * 25, 1e-4);

  // Bends of stairs are mitred: as long as the middle line, whichever way it turns.
  line->thicknessBinding = PoCurveLine::PER_PART_THICKNESS;
  setNodes({0, 10, 20}, {0, 10, 10});
  setValues(2, {2, 2, 2});
  hints->geomInterpretation = PoMesh1DHints::STAIRS_X;
  const Soup stairs = draw();
  EXPECT_NEAR(stairs.area(), 30, 1e-3);
  for (const SoupTriangle& t : stairs.triangles)
    EXPECT_GT((t[1].point - t[0].point).cross(t[2].point - t[0].point)[2], 0) << "its front is in front";
  hints->geomInterpretation = PoMesh1DHints::SMOOTH;
  draw();

  // Where a domain stretches the curve, the strip is as wide along y as along x.
  hints->geomInterpretation = PoMesh1DHints::STAIRS_X;
  line->thicknessFactor = 0.1F;
  auto* domain = new PoDomain;
  domain->min.setValue(0, 0, 0);
  domain->max.setValue(20, 2, 20);
  scene->insertChild(domain, 0);
  const SbBox3f box = draw().box();
  EXPECT_NEAR(box.getMin()[1], -0.1, 1e-4);
  EXPECT_NEAR(box.getMax()[1], 100.1, 1e-2);
  const Soup soup = draw();
  for (const SoupTriangle& t : soup.triangles)
    for (const SoupVertex& v : t) EXPECT_LT(std::fabs(v.point[0] - 10) > 5 ? 10 : std::fabs(v.point[0] - 10), 10.1F);
}

TEST_F(ChartKitsTest, AFillingIsTheIntegralOnEitherSide) {
  auto* filling = show<PoCurveFilling>();
  filling->threshold = 2;
  // 1 3 1 5 over 0 1 2 4: below 0.25 + 0.25 + 0.25 (to 2.5 of 4: half a unit by 1), above the rest.
  EXPECT_NEAR(draw().area(), 0.25 + 0.25 + 0.25 + 0.25 + 0.25 + 2.25, 1e-5);
  filling->side = PoCurveFilling::BELOW_THRESHOLD;
  EXPECT_NEAR(draw().area(), 0.75, 1e-5);
  EXPECT_LE(draw().box().getMax()[1], 2);
  filling->side = PoCurveFilling::ABOVE_THRESHOLD;
  EXPECT_NEAR(draw().area(), 2.75, 1e-5);
  EXPECT_GE(draw().box().getMin()[1], 2);
  filling->colorBinding = PoChart::PER_VERTEX;
  for (const SoupTriangle& t : draw().triangles)
    for (const SoupVertex& v : t) EXPECT_TRUE(v.point[1] == 2 || std::fabs(v.color[0] - v.point[1] / 10) < 1e-6F);
  filling->side = PoCurveFilling::BOTH_SIDES;
  for (int interpretation = PoMesh1DHints::AS_IS; interpretation <= PoMesh1DHints::STAIRS_2Y; ++interpretation) {
    hints->geomInterpretation = interpretation;
    for (const int binding : {PoChart::INHERITED, PoChart::PER_VERTEX, PoChart::PER_PART}) {
      filling->colorBinding = binding;
      EXPECT_GT(draw().area(), 1);
    }
  }
  hints->geomInterpretation = PoMesh1DHints::AS_IS;
  filling->orientation = PoCurveFilling::FILL_TO_X;
  filling->threshold = -1;
  EXPECT_NEAR(draw().area(), (2 * 1.5) + (2 * 2.5) + (4 * 4), 1e-4);
  filling->threshold = kNaN;
  EXPECT_TRUE(draw().triangles.empty());
}

TEST_F(ChartKitsTest, ARibbonAndATubeFollowTheCurve) {
  setNodes({0, 1, 2, 4}, {1, 2, 1, 3});  // no bend is so sharp that it's cut short
  const double length = 4 * std::sqrt(2.0);
  auto* ribbon = show<PoRibbon>();
  ribbon->width = 0.5F;
  ribbon->colorBinding = PoChart::PER_VERTEX;
  Soup soup = draw();
  EXPECT_NEAR(soup.area(), 0.5 * length, 1e-4);
  EXPECT_NEAR(soup.box().getMax()[2], 0.25, 1e-6);
  for (const SoupTriangle& t : soup.triangles)
    for (const SoupVertex& v : t) EXPECT_NEAR(v.color[0], v.point[1] / 10, 1e-6);
  ribbon->width = -1;
  EXPECT_TRUE(draw().triangles.empty());

  auto* tube = show<PoTube>();
  tube->radius = 0.1F;
  const double circle = 3 * 0.01;  // of twelve corners
  EXPECT_NEAR(volumeOf(draw()), circle * length, 1e-4) << "closed, and its outside is outside";
  auto* square = new PoSquareProfile;
  square->width = 0.2F;
  square->height = 0.4F;
  scene->insertChild(square, 0);
  soup = draw();
  EXPECT_NEAR(volumeOf(soup), 0.08 * length, 1e-4);
  EXPECT_NEAR(soup.box().getMax()[2], 0.2, 1e-6);
  for (int interpretation = PoMesh1DHints::AS_IS; interpretation <= PoMesh1DHints::STAIRS_2Y; ++interpretation) {
    hints->geomInterpretation = interpretation;
    for (const int binding : {PoChart::INHERITED, PoChart::PER_VERTEX, PoChart::PER_PART}) {
      tube->colorBinding = binding;
      EXPECT_GT(volumeOf(draw()), 0.3);
    }
  }
  hints->geomInterpretation = PoMesh1DHints::STAIRS_Y;
  EXPECT_NEAR(volumeOf(draw()), 0.08 * (4 + 1 + 1 + 2), 1e-3);
  hints->geomInterpretation = PoMesh1DHints::AS_IS;

  auto* corners = new PoProfileCoordinate2;
  const SbVec2f clockwise[] = {{0, 0}, {0, 0.1F}, {0.1F, 0}};
  corners->point.setValues(0, 3, clockwise);
  scene->replaceChild(square, corners);
  EXPECT_GT(volumeOf(draw()), 0.004 * length);
  corners->point.setNum(2);
  EXPECT_TRUE(draw().triangles.empty());
  auto* round = new PoCircularProfile;
  round->radius = kNaN;
  scene->replaceChild(corners, round);
  EXPECT_TRUE(draw().triangles.empty());
}

TEST_F(ChartKitsTest, CurvesThatStandStillOrTurnBackDoNoHarm) {
  setValues(1, {1, 1, 1, 1});
  const std::vector<std::vector<float>> heights = {
      {2, 2, 2, 2}, {kNaN, kNaN, kNaN, kNaN}, {1e38F, -1e38F, 1e38F, 0}, {1, 3, 1, 3}};
  for (const std::vector<float>& x : {std::vector<float>{0, 0, 0, 0}, {0, 1, 0, 1}, {0, 1, 1, 1}}) {
    for (const std::vector<float>& y : heights) {
      setNodes(x, y);
      setValues(1, {1, 1, 1, 1});
      show<PoCurveLine>()->thicknessIndex = 1;
      draw();
      show<PoCurveFilling>()->threshold = 2;
      draw();
      show<PoRibbon>();
      draw();
      show<PoTube>();
      draw();
    }
  }
  for (const int num : {0, 1}) {
    mesh->setGeometry(num, std::vector<float>{1}.data());
    setValues(0, {1});
    show<PoCurveLine>();
    draw();
    show<PoTube>();
    EXPECT_TRUE(draw().triangles.empty());
  }
}

TEST_F(ChartKitsTest, AChartFollowsItsMeshAndItsUpdateMethod) {
  auto* line = show<PoCurveLine>();
  draw();
  line->setUpdateMethod(PoBase::UPDATE_IMMEDIATE);
  line->colorBinding = PoChart::PER_VERTEX;
  EXPECT_EQ(draw().segments.size(), 3U) << "nothing to see outside a traversal, all the more in the next";
  EXPECT_EQ(draw().numColors(), 3);
  setNodes({0, 1}, {1, 1});
  EXPECT_EQ(draw().segments.size(), 1U);

  const std::string text = textOf(scene.get());
  EXPECT_EQ(text.find("LineSet"), std::string::npos);
  const NodePtr<SoSeparator> read = sceneOf(text);
  ASSERT_TRUE(read);
  EXPECT_EQ(Soup::of(read.get()).segments.size(), 1U);
  const NodePtr<SoNode> copy(scene->copy());
  EXPECT_EQ(Soup::of(copy.get()).segments.size(), 1U);
}

}  // namespace
