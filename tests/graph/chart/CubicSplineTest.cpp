#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <vector>

#include "graph/chart/PiCubicSpline.h"

namespace {

using Points = std::vector<SbVec2f>;

Points splineOf(const Points& points, int subdivision = 10) {
  return PiCubicSpline::subdivide(std::span<const SbVec2f>(points), subdivision);
}

const Points kRising = {{0, 0}, {1, 3}, {1.5f, 2}, {4, 2}, {9, 5}};
const Points kFalling = {{9, 5}, {4, 2}, {1.5f, 2}, {1, 3}, {0, 0}};
const Points kLoop = {{0, 0}, {4, 1}, {4, 5}, {1, 4}, {3, -2}, {3, -2}, {6, 0}};

}  // namespace

TEST(CubicSpline, PassesItsPoints) {
  for (const Points& points : {kRising, kFalling, kLoop, Points{{1, 2}}, Points{{1, 2}, {1, 2}}}) {
    const Points curve = splineOf(points);
    ASSERT_EQ(curve.size(), (points.size() - 1) * 10 + 1);
    for (size_t p = 0; p < points.size(); ++p) EXPECT_EQ(curve[p * 10], points[p]) << p;
  }
  EXPECT_TRUE(splineOf({}).empty());
  EXPECT_EQ(splineOf(kLoop, 1), kLoop);
}

TEST(CubicSpline, IsTheNaturalOne) {
  const Points curve = splineOf({{0, 0}, {1, 1}, {2, 0}}, 2);  // second derivative -3 in the middle
  EXPECT_FLOAT_EQ(curve[1][1], 0.6875f);
  EXPECT_FLOAT_EQ(curve[3][1], 0.6875f);
  for (const SbVec2f& point : splineOf({{0, 1}, {1, 3}, {7, 15}, {8, 17}})) EXPECT_FLOAT_EQ(point[1], 2 * point[0] + 1);
}

// The direction of the curve just before a point is that just behind it.
TEST(CubicSpline, HasNoKinks) {
  constexpr int kFine = 1000;
  for (const Points& points : {kRising, kFalling, kLoop}) {
    const Points curve = splineOf(points, kFine);
    for (size_t p = 1; p + 1 < points.size(); ++p) {
      if (points[p] == points[p + 1]) continue;  // the same place as the next
      const SbVec2f here = points[p];
      size_t former = p * kFine - 1;
      while (curve[former] == here) --former;
      SbVec2f before = here - curve[former], after = curve[p * kFine + 1] - here;
      before.normalize();
      after.normalize();
      EXPECT_GT(before.dot(after), 0.999f) << p;
    }
  }
}

TEST(CubicSpline, OfAFunctionNeverTurnsBack) {
  const Points uneven = {{0, 0}, {1e-6f, 9}, {5, -9}, {5.001f, 9}, {1e6f, 0}};
  const Points curve = splineOf(uneven);
  for (size_t p = 1; p < curve.size(); ++p) EXPECT_GE(curve[p][0], curve[p - 1][0]) << p;
}

TEST(CubicSpline, DoesNotDependOnTheScalesOfTheAxes) {
  Points scaled = kLoop;
  for (SbVec2f& point : scaled) point.setValue(point[0] * 1024, point[1] / 4096);
  const Points curve = splineOf(kLoop), scaledCurve = splineOf(scaled);
  for (size_t p = 0; p < curve.size(); ++p) {
    EXPECT_NEAR(scaledCurve[p][0], curve[p][0] * 1024, 1e-2);
    EXPECT_NEAR(scaledCurve[p][1], curve[p][1] / 4096, 1e-5);
  }
}

TEST(CubicSpline, IsPartedByWhatIsNoNumber) {
  const float nan = std::nanf("");
  Points points = {{nan, 0}, {0, 0}, {1, 1}, {2, 0}, {3, INFINITY}, {4, 1}, {5, nan}};
  const Points curve = splineOf(points);
  const Points piece = splineOf({{0, 0}, {1, 1}, {2, 0}});
  for (size_t p = 0; p < piece.size(); ++p) EXPECT_EQ(curve[p + 10], piece[p]) << p;
  for (size_t p = 0; p < curve.size(); ++p) {
    const bool isOnPiece = (p >= 10 && p <= 30) || p == 50;
    EXPECT_EQ(std::isfinite(curve[p][0]) && std::isfinite(curve[p][1]), isOnPiece) << p;
  }
}

TEST(CubicSpline, StaysFinite) {
  const float least = std::nextafter(0.0f, 1.0f);
  const Points extreme = {{0, -FLT_MAX}, {least, FLT_MAX}, {1, FLT_MAX}, {FLT_MAX, -FLT_MAX}};
  Points folded = extreme;
  folded.push_back({-FLT_MAX, least});
  for (const Points& points : {extreme, folded})
    for (const SbVec2f& point : splineOf(points)) EXPECT_TRUE(std::isfinite(point[0]) && std::isfinite(point[1]));
}

TEST(CubicSpline, InSpaceFollowsItsProjection) {
  std::vector<SbVec3f> points;
  for (const SbVec2f& point : kRising) points.emplace_back(point[0], point[1], -2 * point[1]);
  const std::vector<SbVec3f> curve = PiCubicSpline::subdivide(std::span<const SbVec3f>(points), 10);
  const Points plane = splineOf(kRising);
  ASSERT_EQ(curve.size(), plane.size());
  for (size_t p = 0; p < plane.size(); ++p) {
    EXPECT_EQ(curve[p][1], plane[p][1]);
    EXPECT_NEAR(curve[p][2], -2 * plane[p][1], 1e-5);
  }
}
