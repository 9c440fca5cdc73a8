#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PoCurve.h>
#include <Ormelle/PoCurve3.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
using Points = std::vector<SbVec2f>;

class CurveTest : public testing::Test {
 protected:
  void set(const Points& points) {
    curve->point.setNum(0);
    curve->point.setValues(0, static_cast<int>(points.size()), points.data());
  }
  SoGroup* part(const char* name) const { return static_cast<SoGroup*>(curve->getPart(name, FALSE)); }
  template <class Node>
  Node* child(const char* name, int fromEnd) const {
    SoGroup* group = part(name);
    return group ? static_cast<Node*>(group->getChild(group->getNumChildren() - fromEnd)) : nullptr;
  }
  std::vector<SbVec3f> pointsOf(const char* name) const {
    const auto* coordinate = child<SoCoordinate3>(name, 2);
    if (!coordinate) return {};
    return {coordinate->point.getValues(0), coordinate->point.getValues(0) + coordinate->point.getNum()};
  }
  std::vector<int> countsOf(const char* name) const {
    const auto* shape = child<SoNonIndexedShape>(name, 1);
    if (!shape) return {};
    const auto* counts = static_cast<const SoMFInt32*>(shape->getField("numVertices"));
    return {counts->getValues(0), counts->getValues(0) + counts->getNum()};
  }
  void draw() { SoGetBoundingBoxAction(SbViewportRegion(100, 100)).apply(curve.get()); }
  Points drawn() {
    draw();
    Points points;
    for (const SbVec3f& point : pointsOf("curvePoint")) {
      EXPECT_EQ(point[2], 0);
      points.emplace_back(point[0], point[1]);
    }
    return points;
  }
  /// The raised lines, by the ends that are on the curve.
  Points raised() {
    draw();
    Points points;
    const std::vector<SbVec3f> ends = pointsOf("raisePoint");
    for (std::size_t i = 0; i < ends.size(); i += 2) {
      EXPECT_EQ(ends[i][0], ends[i + 1][0]);
      EXPECT_EQ(ends[i][1], curve->raiseThreshold.getValue());
      points.emplace_back(ends[i + 1][0], ends[i + 1][1]);
    }
    return points;
  }
  double fillingArea() {
    draw();
    double area = 0;
    const std::vector<SbVec3f> points = pointsOf("curveFilling");
    std::size_t first = 0;
    for (const int num : countsOf("curveFilling")) {
      double twice = 0;
      for (int i = 0; i < num; ++i) {
        const SbVec3f &p = points[first + static_cast<std::size_t>(i)],
                      &q = points[first + static_cast<std::size_t>((i + 1) % num)];
        twice += static_cast<double>(p[0]) * q[1] - static_cast<double>(q[0]) * p[1];
      }
      area += std::fabs(twice) / 2;
      first += static_cast<std::size_t>(num);
    }
    EXPECT_EQ(first, points.size());
    return area;
  }

  NodePtr<PoCurve> curve{new PoCurve};
};

TEST_F(CurveTest, PointsAreJoinedAsTheRepresentationSays) {
  set({{0, 0}, {2, 4}, {4, 0}});
  EXPECT_EQ(drawn(), (Points{{0, 0}, {2, 4}, {4, 0}}));
  const std::vector<std::pair<int, Points>> rows = {
      {PoCurve::CURVE_NONE, {}},
      {PoCurve::CURVE_STAIRS_X, {{0, 0}, {2, 0}, {2, 4}, {4, 4}, {4, 0}}},
      {PoCurve::CURVE_STAIRS_Y, {{0, 0}, {0, 4}, {2, 4}, {2, 0}, {4, 0}}},
      {PoCurve::CURVE_HISTO_X, {{0, 0}, {0, 2}, {2, 2}, {4, 2}, {4, 0}}},
      {PoCurve::CURVE_HISTO_Y, {{0, 0}, {1, 0}, {1, 4}, {3, 4}, {3, 0}, {4, 0}}},
      {PoCurve::CURVE_STAIRS_2X, {{0, 0}, {0, 2}, {1, 2}, {1, 4}, {2, 4}, {2, 2}, {3, 2}, {3, 0}, {4, 0}}},
      {PoCurve::CURVE_STAIRS_2Y, {{0, 0}, {1, 0}, {1, 2}, {2, 2}, {2, 4}, {3, 4}, {3, 2}, {4, 2}, {4, 0}}},
      {99, {{0, 0}, {2, 4}, {4, 0}}}};
  for (const auto& [rep, points] : rows) {
    SCOPED_TRACE(rep);
    curve->curveRep = rep;
    EXPECT_EQ(drawn(), points);
  }
  curve->curveRep = PoCurve::CURVE_SMOOTH;
  const Points smooth = drawn();
  ASSERT_EQ(smooth.size(), 21U);
  EXPECT_EQ(smooth[10], SbVec2f(2, 4));
  EXPECT_GT(smooth[5][1], 2);
  set({{1, 2}});
  EXPECT_EQ(drawn(), (Points{{1, 2}}));
  set({});
  EXPECT_TRUE(drawn().empty());
  EXPECT_EQ(part("curvePoint"), nullptr);
}

TEST_F(CurveTest, WhatIsUndefinedPartsTheCurve) {
  set({{0, 0}, {1, 1}, {2, kNaN}, {3, 1}, {std::numeric_limits<float>::infinity(), 1}, {5, 1}, {6, 2}, {7, 1}});
  curve->isCurveFilled = TRUE;
  curve->markerFilterType = curve->raiseFilterType = PoCurve::ALL_POINTS;
  draw();
  EXPECT_EQ(countsOf("curvePoint"), (std::vector<int>{2, 1, 3}));
  EXPECT_EQ(countsOf("curveFilling").size(), 2U);
  EXPECT_NEAR(fillingArea(), 0.5 + 3, 1e-6);
  EXPECT_EQ(raised().size(), 6U);
  EXPECT_EQ(part("marker")->getNumChildren(), 12);
  EXPECT_TRUE(Soup::of(curve.get()).isFinite());
  for (const int rep : {PoCurve::CURVE_SMOOTH, PoCurve::CURVE_HISTO_X, PoCurve::CURVE_STAIRS_2Y}) {
    curve->curveRep = rep;
    EXPECT_TRUE(Soup::of(curve.get()).isFinite());
    EXPECT_GT(fillingArea(), 0);
  }
}

TEST_F(CurveTest, AFillingIsTheIntegral) {
  curve->isCurveFilled = TRUE;
  std::mt19937 random(7);
  std::uniform_real_distribution<float> step(0.01F, 1), height(-3, 3);
  for (int round = 0; round < 50; ++round) {
    Points points;
    float x = height(random);
    for (int i = 0; i < 2 + round; ++i, x += step(random)) points.emplace_back(x, std::round(4 * height(random)) / 4);
    set(points);
    curve->curveRep = round % 9;
    curve->fillingThreshold = round % 3 ? 0.5F : 10.0F;
    const float threshold = curve->fillingThreshold.getValue();
    draw();
    if (round % 9 == 0) curve->curveRep = PoCurve::CURVE_POLYLINE;
    const Points line = drawn();
    double integral = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
      const double a = line[i - 1][1] - threshold, b = line[i][1] - threshold, width = line[i][0] - line[i - 1][0];
      integral += width * (a * b >= 0 ? std::fabs(a + b) / 2 : (a * a + b * b) / (2 * std::fabs(a - b)));
    }
    // A spline may turn back in y only: x goes on, so the area is that of the integral.
    EXPECT_NEAR(fillingArea(), integral, 1e-4 * (1 + integral)) << round;
    EXPECT_NEAR(Soup::of(part("curveFilling")).area(), integral, 1e-4 * (1 + integral)) << "as drawn, " << round;

    // No polygon has points on both sides.
    const std::vector<SbVec3f> corners = pointsOf("curveFilling");
    std::size_t first = 0;
    for (const int num : countsOf("curveFilling")) {
      bool isAbove = false, isBelow = false;
      for (int i = 0; i < num; ++i) {
        const SbVec3f& corner = corners[first + static_cast<std::size_t>(i)];
        isAbove = isAbove || corner[1] > threshold;
        isBelow = isBelow || corner[1] < threshold;
        EXPECT_TRUE(i == 0 || corner != corners[first + static_cast<std::size_t>(i) - 1]);
      }
      EXPECT_NE(isAbove, isBelow);
      first += static_cast<std::size_t>(num);
    }
  }
}

// The toolkit divides a polygon in quadratic time, and not always rightly.
TEST_F(CurveTest, LongFillingsAreDrawnInTimeAndRight) {
  Points points;
  double integral = 0;
  for (int i = 0; i < 200000; ++i) {
    points.emplace_back(static_cast<float>(i) / 65536, 1.0F + static_cast<float>(i * 7919 % 4));
    if (points.size() > 1) integral += (points.end()[-2][1] + points.back()[1]) / 2.0 / 65536;
  }
  set(points);
  curve->isCurveFilled = TRUE;
  EXPECT_NEAR(Soup::of(curve.get()).area(), integral, 1e-3);
  curve->curveRep = PoCurve::CURVE_STAIRS_2X;
  EXPECT_NEAR(Soup::of(curve.get()).area(), integral, 1e-3);

  // One that turns back stays a polygon.
  set({{0, 1}, {4, 1}, {4, 3}, {2, 3}, {2, 2}, {0, 2}});
  curve->curveRep = PoCurve::CURVE_POLYLINE;
  EXPECT_NEAR(fillingArea(), 2 * 1 + 2 * 2, 1e-5);
}

TEST_F(CurveTest, AFillingIsCutWhereItMeetsTheThreshold) {
  curve->isCurveFilled = TRUE;
  set({{0, 1}, {1, 0}, {2, 0}, {3, -1}, {4, 1}});
  draw();
  EXPECT_EQ(countsOf("curveFilling"), (std::vector<int>{3, 3, 3}));
  EXPECT_EQ(
      pointsOf("curveFilling"),
      (std::vector<SbVec3f>{
          {0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {2, 0, 0}, {3, -1, 0}, {3.5F, 0, 0}, {3.5F, 0, 0}, {4, 1, 0}, {4, 0, 0}}));
  const auto* hints = child<SoShapeHints>("curveFilling", 3);
  EXPECT_EQ(hints->faceType.getValue(), SoShapeHints::UNKNOWN_FACE_TYPE);
  set({{0, 0}, {1, 0}, {2, 0}});
  draw();
  EXPECT_EQ(part("curveFilling"), nullptr) << "all on the threshold";
  set({{0, 3}, {1, 5}, {2, 4}});
  EXPECT_NEAR(fillingArea(), 8.5, 1e-6);
  EXPECT_EQ(countsOf("curveFilling"), std::vector<int>{5}) << "closed along the threshold";
  curve->fillingThreshold = kNaN;
  draw();
  EXPECT_EQ(part("curveFilling"), nullptr);
}

TEST_F(CurveTest, FiltersChoosePlaces) {
  const Points points = {{0, 0}, {1, 10}, {2, 0}, {4, 20}, {5, 20}};
  set(points);
  curve->raiseThreshold = -1;
  EXPECT_TRUE(raised().empty());
  curve->raiseFilterType = PoCurve::ALL_POINTS;
  EXPECT_EQ(raised(), points);
  curve->raiseFilterType = PoCurve::INDEX_PERIOD;
  curve->raiseIndexPeriod = 2;
  EXPECT_EQ(raised(), (Points{points[0], points[2], points[4]}));
  curve->raiseIndexPeriod = -3;
  EXPECT_EQ(raised(), points);
  const int indices[] = {3, -1, 5, 0, 2000000000};
  curve->raiseIndexList.setValues(0, 5, indices);
  curve->raiseFilterType = PoCurve::INDEX_LIST;
  EXPECT_EQ(raised(), (Points{points[3], points[0]}));
  curve->raiseFilterType = PoCurve::X_PERIOD;
  curve->raiseXPeriod = 2.5F;
  EXPECT_EQ(raised(), (Points{{0, 0}, {2.5F, 5}, {5, 20}})) << "both ends";
  for (const float none : {0.0F, -1.0F, kNaN}) {
    curve->raiseXPeriod = none;
    EXPECT_TRUE(raised().empty());
  }
  curve->raiseXPeriod = 1e-30F;
  EXPECT_LE(raised().size(), 1U << 20);
  const float list[] = {3, -1, 0.5F, 6, kNaN, 1, 3};
  curve->raiseXList.setValues(0, 7, list);
  curve->raiseFilterType = PoCurve::X_LIST;
  EXPECT_EQ(raised(), (Points{{0.5F, 5}, {1, 10}, {3, 10}}));
  curve->raiseFilterType = 17;
  EXPECT_TRUE(raised().empty());

  set({{3, 7}});
  curve->raiseFilterType = PoCurve::X_LIST;
  EXPECT_EQ(raised(), (Points{{3, 7}}));
  curve->raiseFilterType = PoCurve::X_PERIOD;
  curve->raiseXPeriod = 2;
  EXPECT_EQ(raised(), (Points{{3, 7}}));

  // One line for each x, also of a curve that folds back and of one that goes straight up.
  set({{0, 0}, {4, 4}, {0, 8}, {0, 9}});
  EXPECT_EQ(raised(), (Points{{0, 0}, {2, 2}, {4, 4}}));
}

TEST_F(CurveTest, MarkersStandOnTheirPlaces) {
  Points points;
  for (int i = 0; i < 1000; ++i)
    points.emplace_back(1000 + 0.1F * static_cast<float>(i), std::sin(static_cast<float>(i)));
  set(points);
  curve->curveRep = PoCurve::CURVE_NONE;
  curve->markerFilterType = PoCurve::INDEX_LIST;
  curve->markerString = "o";
  const auto boxOf = [&](int index) {
    curve->markerIndexList = index;
    const Soup soup = Soup::of(curve.get());
    return soup.box();
  };
  const SbBox3f small = boxOf(0), same = boxOf(999);
  EXPECT_TRUE(small.getCenter().equals(SbVec3f(1000, 0, 0), 1)) << "by default 3 % of 100 units";
  EXPECT_NEAR(same.getCenter()[0] - small.getCenter()[0], 99.9, 1e-3);
  EXPECT_NEAR(small.getMax()[1] - small.getMin()[1], 2, 1);

  // A thousand moves don't add up their rounding.
  curve->markerFilterType = PoCurve::ALL_POINTS;
  draw();
  SbVec3f at(0, 0, 0);
  for (int i = 0; i < 1000; ++i) {
    at += static_cast<SoTranslation*>(part("marker")->getChild(2 * i))->translation.getValue();
    ASSERT_TRUE(
        at.equals(SbVec3f(points[static_cast<std::size_t>(i)][0], points[static_cast<std::size_t>(i)][1], 0), 1e-8F));
  }

  // Text keeps its proportions where the domain stretches the curve; its font decides on its size at once.
  curve->set("markerApp.font", "size 10");
  curve->markerFilterType = PoCurve::INDEX_LIST;
  const SbVec3f plain = boxOf(0).getMax() - boxOf(0).getMin();
  EXPECT_NEAR(plain[1], 10 * (small.getMax() - small.getMin())[1] / 3, 0.2);
  PbDomain domain(1000, -1, 1100, 1, PbDomain::BOX_AS_GIVEN);
  curve->setDomain(&domain);
  const SbVec3f stretched = boxOf(0).getMax() - boxOf(0).getMin();
  EXPECT_NEAR(stretched[0], plain[0], 1e-3);
  EXPECT_NEAR(stretched[1], plain[1], 1e-3);
  static_cast<SoFont*>(curve->getPart("markerApp.font", FALSE))->size = 20;
  EXPECT_NEAR((boxOf(0).getMax() - boxOf(0).getMin())[1], 2 * plain[1], 1e-3);
  curve->markerString = "";
  draw();
  EXPECT_EQ(part("marker"), nullptr);
}

TEST_F(CurveTest, FilesAndCopiesHoldTheInputAndTheStyle) {
  set({{0, 0}, {1, 1}, {2, -1}});
  curve->isCurveFilled = TRUE;
  curve->markerFilterType = PoCurve::ALL_POINTS;
  curve->set("markerApp.font", "size 0.25");
  curve->set("curvePointApp.material", "diffuseColor 1 0 0");
  draw();
  const std::string fields = textOf(curve.get());
  EXPECT_EQ(fields.find("FaceSet"), std::string::npos);
  EXPECT_NE(fields.find("size 0.25"), std::string::npos);
  EXPECT_NE(fields.find("diffuseColor 1 0 0"), std::string::npos);
  const NodePtr<SoSeparator> scene = sceneOf(fields);
  ASSERT_TRUE(scene);
  const Soup soup = Soup::of(curve.get()), read = Soup::of(scene.get());
  EXPECT_EQ(read.triangles.size(), soup.triangles.size());
  EXPECT_NEAR(read.length(), soup.length(), 1e-5);

  PoBase::setNodeWriteFormat(PoBase::WRITE_GEOMETRY);
  const std::string geometry = textOf(curve.get());
  PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
  EXPECT_NE(geometry.find("FaceSet"), std::string::npos);
  EXPECT_NE(geometry.find("size 0.25"), std::string::npos);
  EXPECT_EQ(geometry.find("isCurveFilled TRUE"), std::string::npos);

  const NodePtr<PoCurve> same(new PoCurve(*curve));
  EXPECT_TRUE(same->isCurveFilled.getValue());
  EXPECT_EQ(same->point.getNum(), 3);
  const SbVec2f two[] = {{0, 0}, {1, 1}};
  const NodePtr<PoCurve> other(new PoCurve(2, two, PoCurve::CURVE_STAIRS_X));
  EXPECT_EQ(Soup::of(other.get()).segments.size(), 2U);
  float x, y;
  PoCurve::calculateInterpolation(two[0], SbVec2f(2, 6), 0.5F, y);
  PoCurve::calculateInterpolation2(two[0], SbVec2f(2, 6), 1.5F, x);
  EXPECT_EQ(y, 1.5F);
  EXPECT_EQ(x, 0.5F);
}

TEST_F(CurveTest, CurvesInSpaceAreJoinedLikeTheirViews) {
  const SbVec3f points[] = {{0, 0, 0}, {2, 4, 8}, {4, 0, 2}};
  const NodePtr<PoCurve3> space(new PoCurve3(3, points));
  for (int rep = PoCurve::CURVE_POLYLINE; rep <= PoCurve::CURVE_STAIRS_2Y; ++rep) {
    SCOPED_TRACE(rep);
    space->curveRep = rep;
    const Soup soup = Soup::of(space.get());
    // From above and from the front, as far as the plane curve has no points that are dropped there.
    for (const int axis : {1, 2}) {
      set({});
      for (const SbVec3f& point : points) curve->point.set1Value(curve->point.getNum(), point[0], point[axis]);
      curve->curveRep = rep;
      const Points flat = drawn();
      ASSERT_GE(soup.segments.size() + 1, flat.size());
      std::size_t i = 0;
      for (const SoupSegment& segment : soup.segments) {
        const SbVec2f end(segment[1].point[0], segment[1].point[axis]);
        if ((end - flat[i]).length() < 1e-5F) continue;
        ++i;
        ASSERT_LT(i, flat.size());
        EXPECT_LT((end - flat[i]).length(), 1e-4F);
      }
    }
  }
  space->isMarkerVisible = TRUE;
  space->curveRep = PoCurve::CURVE_NONE;
  EXPECT_TRUE(Soup::of(space.get()).segments.empty());
  EXPECT_NE(space->getPart("marker", FALSE), nullptr);
  space->point.set1Value(1, SbVec3f(kNaN, 0, 0));
  space->curveRep = PoCurve::CURVE_SMOOTH;
  EXPECT_TRUE(Soup::of(space.get()).isFinite());
  const NodePtr<PoCurve3> same(new PoCurve3(*space));
  EXPECT_EQ(same->curveRep.getValue(), PoCurve::CURVE_SMOOTH);
  space->point.setNum(0);
  Soup::of(space.get());
  EXPECT_EQ(space->getPart("curvePoint", FALSE), nullptr);
}

}  // namespace
