#include <Inventor/nodes/SoCoordinate3.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "quillane/contour/CutSurface.h"
#include "quillane/contour/PiContouringLines.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

double flatLength(const PiIsoline& line) {
  double length = 0;
  for (std::size_t p = 1; p < line.points.size(); ++p)
    length += std::hypot(double(line.points[p][0]) - line.points[p - 1][0],
                         double(line.points[p][1]) - line.points[p - 1][1]);
  return length;
}

double flatLength(std::span<const PiIsoline> lines) {
  double length = 0;
  for (const PiIsoline& line : lines) length += flatLength(line);
  return length;
}

class IsolinesTest : public testing::Test {
 protected:
  IsolinesTest() { list.setRegularIsoList(-9.0F, 9.0F, 10); }

  std::span<const PiIsoline> extract(const CutSurface& surface) {
    worker.setIsovaluesList(&list);
    surface.setOn(worker);
    return worker.extract(surface.values.data());
  }
  /// All that must hold of the lines of any surface.
  void check(const CutSurface& surface) {
    SCOPED_TRACE(surface.name);
    const std::vector<float> levels = levelsFor(list, surface.values);
    const EdgeValues values(surface, levels);
    const std::span<const PiIsoline> lines = extract(surface);
    std::set<Segment> segments;
    std::size_t numSegments = 0;
    for (const PiIsoline& line : lines) {
      ASSERT_GE(line.points.size(), 2U);
      int num, isRegular;
      float min, max, step;
      EXPECT_EQ(line.isovalue, list.getIsoList(num, min, max, step, isRegular)[line.level]);
      for (const SbVec3f& point : line.points)
        EXPECT_NEAR(values.at(point), levels[std::size_t(line.level)], 2e-4) << "point " << point[0] << " " << point[1];
      for (std::size_t p = 1; p < line.points.size(); ++p, ++numSegments)
        segments.insert(segmentOf(line.points[p - 1], line.points[p]));
      EXPECT_EQ(line.isClosed, line.points.front() == line.points.back());
      if (!line.isClosed) {
        EXPECT_TRUE(values.isOnBorder(line.points.front()));
        EXPECT_TRUE(values.isOnBorder(line.points.back()));
      }
    }
    EXPECT_EQ(segments.size(), numSegments) << "a piece of a line comes twice";
    const double length = lengthOfIsolines(surface, levels);
    EXPECT_NEAR(flatLength(lines), length, 1e-5 * length);
  }

  PbIsovaluesList list;
  PiContouringLines worker;
};

TEST_F(IsolinesTest, OfEveryMeshClassLieOnTheirLevelsAndAreWhole) {
  for (unsigned seed = 1; seed <= 3; ++seed)
    for (const Field& field : {smoothField(seed), noiseField(seed), steppedField(seed)})
      for (const CutSurface& surface : surfacesOfAllClasses(field)) check(surface);
}

TEST_F(IsolinesTest, GoRoundASingleNodeWhereverItStands) {
  RectangleSpec spec;
  spec.numX = 4;
  spec.numY = 50;
  CutSurface surface = rectangleOf(meshKinds2D()[0], spec, [](float, float) { return -8.5F; });
  for (float& value : surface.values) {
    value = 0.5F;
    check(surface);
    value = -8.5F;
  }
}

TEST_F(IsolinesTest, OfManyLevelsInACellAreWhole) {
  list.setRegularIsoList(-9.7F, 9.6F, 80);
  for (const CutSurface& surface : surfacesOfAllClasses(noiseField(7))) check(surface);
}

TEST_F(IsolinesTest, OfAnIrregularListCarryItsIsovalues) {
  const float isovalues[] = {-7, -6.999F, -6.998F, 0.25F, 0.25F, 4, 1e30F};
  list.setIrregularIsoList(7, isovalues);
  for (const CutSurface& surface : surfacesOfAllClasses(smoothField(9))) {
    SCOPED_TRACE(surface.name);
    std::set<int> levels;
    for (const PiIsoline& line : extract(surface)) levels.insert(line.level);
    std::set<int> expected;
    const auto [min, max] = std::minmax_element(surface.values.begin(), surface.values.end());
    for (const int level : {0, 1, 2, 3, 5, 6})
      if (*min < isovalues[level] && isovalues[level] < *max) expected.insert(level);
    EXPECT_EQ(levels, expected) << "of two equal isovalues the first has the lines";
    // Equal isovalues are cut once.
    std::vector<float> distinct = levelsFor(list, surface.values);
    distinct.erase(distinct.begin() + 4);
    const double length = lengthOfIsolines(surface, distinct);
    EXPECT_NEAR(flatLength(extract(surface)), length, 1e-5 * length);
  }
}

TEST_F(IsolinesTest, EndAtTheBorderOfWhatIsUndefined) {
  for (CutSurface surface : surfacesOfAllClasses(smoothField(4))) {
    for (const std::size_t node : {40U, 41U, 77U, 190U}) surface.values[node] = kNaN;
    check(surface);
  }
  RectangleSpec spec;
  spec.numX = spec.numY = 12;
  for (const float broken : {kNaN, kInfinity, -kInfinity}) {
    spec.z = [broken](float x, float y) { return std::hypot(x - 2, y - 1) < 0.7F ? broken : 0.0F; };
    for (const MeshKind2D& kind : meshKinds2D()) check(rectangleOf(kind, spec, smoothField(5)));
  }
}

TEST_F(IsolinesTest, OfASaddleJoinTheNearestPointsWhereverTheCellBegins) {
  // Low values at two opposite corners of the unit square. Level 0 cuts its sides at these distances from them.
  const struct {
    double low1, low2;
    bool isRoundLow;
  } saddles[] = {{0.25, 0.25, true}, {0.75, 0.75, false}, {0.125, 0.875, true}, {0.75, 0.5, false}, {0.5, 0.75, false}};
  list.setRegularIsoList(0.0F, 0.0F, 1);
  for (const auto& saddle : saddles)
    for (int turn = 0; turn < 4; ++turn) {
      const auto valueAt = [](double distance) { return float(-distance / (1 - distance)); };
      const float x[] = {0, 1, 1, 0}, y[] = {0, 0, 1, 1};
      const float values[] = {1, valueAt(saddle.low1), 1, valueAt(saddle.low2)};
      std::vector<int> corners;
      for (int c = 0; c < 4; ++c) corners.push_back((c + turn) % 4);
      worker.initGeometry();
      worker.addElems(corners);
      worker.setPoints(4, x, y, nullptr);
      worker.setIsovaluesList(&list);
      const auto lines = worker.extract(values);
      ASSERT_EQ(lines.size(), 2U);
      EXPECT_NEAR(flatLength(lines),
                  saddle.isRoundLow ? std::sqrt(2) * (saddle.low1 + saddle.low2)
                                    : 2 * std::hypot(1 - saddle.low1, 1 - saddle.low2),
                  1e-6);
    }
}

TEST_F(IsolinesTest, OfLoopsAreClosedAndOfOneValueThereAreNone) {
  const float x[] = {0, 1, 2, 0, 1, 2, 0, 1, 2}, y[] = {0, 0, 0, 1, 1, 1, 2, 2, 2};
  float values[] = {1, 1, 1, 1, 5, 1, 1, 1, 1};
  list.setRegularIsoList(1.0F, 5.0F, 5);
  worker.setIsovaluesList(&list);
  worker.setGeometryGrid(3, 3);
  worker.setPoints(9, x, y, nullptr);
  const auto lines = worker.extract(values);
  ASSERT_EQ(lines.size(), 5U) << "the least isovalue moves up, the greatest down";
  for (const PiIsoline& line : lines) {
    EXPECT_TRUE(line.isClosed);
    EXPECT_EQ(line.points.size(), 5U);
  }
  values[4] = 1;
  EXPECT_TRUE(worker.extract(values).empty());
  EXPECT_TRUE(worker.extract(nullptr).empty());
  worker.setIsovaluesList(nullptr);
  EXPECT_TRUE(worker.extract(values).empty());
}

TEST_F(IsolinesTest, OfASurfaceThatBranchesAreAllThere) {
  // Five triangles on the edge between nodes 0 and 1, like pages of a book, and one that is no triangle.
  std::vector<SbVec3f> points = {SbVec3f(0, 0, 0), SbVec3f(0, 0, 2)};
  std::vector<float> values = {0, 2};
  worker.initGeometry();
  worker.addElems({0, 1, 0});
  for (int page = 0; page < 5; ++page) {
    points.emplace_back(std::cos(float(page)), std::sin(float(page)), 0.0F);
    values.push_back(0);
    worker.addElems({0, 1, page + 2});
  }
  worker.addElems({0, 1, 99});
  worker.addElems({0, -7, 1});
  worker.setPoints(points);
  list.setRegularIsoList(1.0F, 1.0F, 1);
  worker.setIsovaluesList(&list);
  EXPECT_NEAR(flatLength(worker.extract(values.data())), 5 * 0.5, 1e-6);
}

TEST_F(IsolinesTest, AreFiniteForValuesAndPointsAtTheEndsOfFloats) {
  const float greatest = std::numeric_limits<float>::max(), least = std::numeric_limits<float>::denorm_min();
  const float candidates[] = {0, 1, -1, greatest, -greatest, kInfinity, -kInfinity, least, -least, 1e30F};
  list.setRegularIsoList(-1e30F, 1e30F, 7);
  worker.setIsovaluesList(&list);
  for (const float extent : {1.0F, greatest, least}) {
    const float x[] = {-extent, extent, extent, -extent}, y[] = {-extent, -extent, extent, extent};
    for (const float a : candidates)
      for (const float b : candidates)
        for (const float c : candidates) {
          const float values[] = {a, b, c, 0.5F};
          worker.setGeometryGrid(2, 2);
          worker.setPoints(4, x, y, nullptr);
          for (const PiIsoline& line : worker.extract(values))
            for (const SbVec3f& point : line.points)
              ASSERT_TRUE(std::fabs(point[0]) <= extent && std::fabs(point[1]) <= extent && point[2] == 0);
        }
  }
}

}  // namespace
