#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbIrregularMesh1D.h>
#include <Ormelle/PbRegularMesh1D.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "support/TestChart.h"

namespace {

const float kNaN = std::nanf("");
constexpr int kNumInterpretations = 8;

/// Nodes (x, y) with the y values in set 0.
struct Nodes {
  std::vector<float> x, y;

  int num() const { return static_cast<int>(x.size()); }
  PbIrregularMesh1D mesh() const {
    PbIrregularMesh1D mesh(num(), x.data());
    mesh.addValuesSet(0, y.data(), "y");
    return mesh;
  }
  Nodes swapped() const { return {y, x}; }
};

const Nodes kWave = {{-1, 0, 0.5f, 2, 3, 7}, {1, 3, -2, -1, 5, 4}};
const Nodes kFlatThenUp = {{0, 1, 2, 3}, {2, 2, 2, 5}};
const Nodes kRepeated = {{0, 0, 1, 1, 1, 2}, {1, 1, 3, 3, 2, 2}};
const Nodes kLoop = {{0, 2, 2, 0, -1, 1}, {0, 0, 2, 2, 1, -3}};

bool isSmoothOrStraight(int interpretation) {
  return interpretation == PoMesh1DHints::AS_IS || interpretation == PoMesh1DHints::SMOOTH;
}
bool isHisto(int interpretation) {
  return interpretation == PoMesh1DHints::HISTO_X || interpretation == PoMesh1DHints::HISTO_Y;
}

double areaBelow(const TestCurve& curve) {
  double area = 0;
  for (size_t p = 1; p < curve.num(); ++p)
    area += (double(curve.x[p]) - curve.x[p - 1]) * (double(curve.y[p]) + curve.y[p - 1]) / 2;
  return area;
}

class Curves : public ::testing::TestWithParam<int> {
 protected:
  Curves() { asker.hints->geomInterpretation = GetParam(); }
  CurveAsker asker;
};

}  // namespace

TEST_P(Curves, GoThroughTheNodesInOrder) {
  for (const Nodes& nodes : {kWave, kFlatThenUp, kRepeated, kLoop}) {
    const TestCurve curve = asker.drawn(nodes.mesh());
    ASSERT_EQ(curve.y.size(), curve.num());
    ASSERT_EQ(curve.index.size(), nodes.x.size());
    EXPECT_EQ(curve.index.front(), 0);
    EXPECT_EQ(curve.index.back(), int(curve.num()) - 1);
    EXPECT_TRUE(std::is_sorted(curve.index.begin(), curve.index.end()));
    for (size_t n = 0; n < nodes.x.size(); ++n) {
      const bool isInner = n > 0 && n + 1 < nodes.x.size();
      if (isHisto(GetParam()) && isInner) continue;
      EXPECT_EQ(curve.x[size_t(curve.index[n])], nodes.x[n]);
      EXPECT_EQ(curve.y[size_t(curve.index[n])], nodes.y[n]);
    }
    const bool isUpright = std::adjacent_find(nodes.x.begin(), nodes.x.end()) != nodes.x.end();
    if (std::is_sorted(nodes.x.begin(), nodes.x.end()) && !(isUpright && GetParam() == PoMesh1DHints::SMOOTH)) {
      EXPECT_TRUE(std::is_sorted(curve.x.begin(), curve.x.end()));
    }
    for (size_t p = 1; p < curve.num() && !isSmoothOrStraight(GetParam()); ++p) {
      EXPECT_NE(curve.y[p] == curve.y[p - 1], curve.x[p] == curve.x[p - 1]) << "a step and no repeated point, at " << p;
    }
  }
}

TEST_P(Curves, HaveThePointsOfTheirInterpretation) {
  const int n = kWave.num();
  const size_t num[] = {size_t(n),     size_t(10 * (n - 1) + 1), size_t(2 * n - 1), size_t(2 * n - 1), size_t(2 * n),
                        size_t(2 * n), size_t(4 * n - 3),        size_t(4 * n - 3)};
  EXPECT_EQ(asker.drawn(kWave.mesh()).num(), num[GetParam()]);
  EXPECT_TRUE(asker.drawn(kWave.mesh(), 0).index.empty());

  const TestCurve one = asker.drawn(Nodes{{3}, {4}}.mesh());
  EXPECT_EQ(one.x, std::vector<float>{3});
  EXPECT_EQ(one.y, std::vector<float>{4});
  EXPECT_EQ(one.index, std::vector<int>{0});
}

TEST_P(Curves, SurviveWhatIsNoNumber) {
  for (const float bad : {kNaN, INFINITY, -INFINITY})
    for (const bool isInX : {false, true}) {
      Nodes nodes = kWave;
      (isInX ? nodes.x : nodes.y)[2] = bad;
      const PbIrregularMesh1D mesh = nodes.mesh();
      const TestCurve curve = asker.drawn(mesh);
      for (const size_t n : {size_t(0), size_t(5)}) {
        EXPECT_EQ(curve.x[size_t(curve.index[n])], nodes.x[n]);
        EXPECT_EQ(curve.y[size_t(curve.index[n])], nodes.y[n]);
      }
      const size_t gap = size_t(curve.index[2]);
      EXPECT_FALSE(std::isfinite(curve.x[gap]) && std::isfinite(curve.y[gap]));
      for (size_t p = size_t(curve.index[4]); p < curve.num(); ++p)
        EXPECT_TRUE(std::isfinite(curve.x[p]) && std::isfinite(curve.y[p])) << "beyond the gap, at " << p;

      for (const int axis : {0, 1}) {
        const TestCurve cut = asker.cut(mesh, axis, 0.25f);
        for (const int added : cut.added)
          for (size_t p = size_t(added) - 1; p <= size_t(added) + 1; ++p)
            EXPECT_TRUE(std::isfinite(cut.x[p]) && std::isfinite(cut.y[p]));
      }
    }
  Nodes nothing = {{kNaN, kNaN, 1}, {1, 2, kNaN}};
  EXPECT_GE(asker.drawn(nothing.mesh()).num(), 3u);
  EXPECT_TRUE(asker.cut(nothing.mesh(), 0, 1).added.empty());

  const Nodes huge = {{-FLT_MAX, -FLT_MAX / 2, FLT_MAX, FLT_MAX}, {FLT_MAX, FLT_MAX, FLT_MAX, -FLT_MAX}};
  for (const Nodes& nodes : {huge, huge.swapped()}) {
    const TestCurve curve = asker.drawn(nodes.mesh());
    for (size_t p = 0; p < curve.num(); ++p) EXPECT_TRUE(std::isfinite(curve.x[p]) && std::isfinite(curve.y[p])) << p;
  }
}

INSTANTIATE_TEST_SUITE_P(All, Curves, ::testing::Range(0, kNumInterpretations));

// The areas tell which coordinate goes first, and where the middle is.
TEST(CurveShape, StepsEncloseTheAreaOfTheirKind) {
  CurveAsker asker;
  const PbIrregularMesh1D mesh = kWave.mesh();
  double straight = 0, left = 0, right = 0;
  for (size_t n = 1; n < kWave.x.size(); ++n) {
    const double dx = double(kWave.x[n]) - kWave.x[n - 1];
    straight += dx * (double(kWave.y[n]) + kWave.y[n - 1]) / 2;
    left += dx * kWave.y[n - 1];
    right += dx * kWave.y[n];
  }
  const double areas[] = {straight, 0, left, right, straight, straight, (straight + right) / 2, (straight + left) / 2};
  for (int i = 0; i < kNumInterpretations; ++i) {
    if (i == PoMesh1DHints::SMOOTH) continue;
    asker.hints->geomInterpretation = i;
    EXPECT_NEAR(areaBelow(asker.drawn(mesh)), areas[i], 1e-5) << i;
  }
}

TEST(CurveShape, SwappingTheAxesSwapsTheInterpretations) {
  CurveAsker asker;
  for (int i = PoMesh1DHints::STAIRS_X; i < kNumInterpretations; i += 2) {
    asker.hints->geomInterpretation = i;
    const TestCurve alongX = asker.drawn(kLoop.mesh());
    asker.hints->geomInterpretation = i + 1;
    const TestCurve alongY = asker.drawn(kLoop.swapped().mesh());
    // The doubled stairs start the other way: 2X goes along y first.
    EXPECT_EQ(alongX.x, alongY.y) << i;
    EXPECT_EQ(alongX.y, alongY.x) << i;
  }
  asker.hints->geomInterpretation = PoMesh1DHints::HISTO_X;
  const TestCurve means = asker.drawn(Nodes{{0, 1, 2}, {0, 2, 0}}.mesh());
  EXPECT_EQ(*std::max_element(means.y.begin(), means.y.end()), 1) << "levels are those of the middles";
  EXPECT_EQ(means.num(), 5u) << "both steps are on one level, where they meet in one point";
}

TEST(Mesh1D, WithoutInputThereIsNoCurve) {
  CurveAsker asker;
  const PbRegularMesh1D empty, fresh(3, 0, 1);
  for (const PbMesh1D* mesh : {static_cast<const PbMesh1D*>(&empty), static_cast<const PbMesh1D*>(&fresh)}) {
    EXPECT_EQ(asker.drawn(*mesh).num(), 0u);
    EXPECT_EQ(asker.filtered(*mesh).num(), 0u);
    EXPECT_EQ(asker.cut(*mesh, 1, 0).num(), 0u);
  }
  PbIrregularMesh1D mesh = kWave.mesh();
  asker.chart->yValuesIndex = 7;
  EXPECT_EQ(asker.drawn(mesh).num(), 0u);
  asker.chart->yValuesIndex = 0;
  const float cellValue = 0;
  mesh.addValuesSet(0, &cellValue, PbMesh::PER_CELL, "too few");
  EXPECT_EQ(asker.drawn(mesh).num(), 0u);

  mesh = kWave.mesh();
  int num, *index;
  float *x, *y;
  SoMaterial* material;
  mesh.getXYGeometry(nullptr, nullptr, num, x, y, material, 1, index);
  EXPECT_TRUE(num == 0 && !x && !y && !material && !index);
  mesh.getXYGeometry(asker.chart.get(), nullptr, num, x, y, material, 0, index);
  EXPECT_EQ(num, kWave.num());
  delete[] x;
  delete[] y;
}

TEST(Mesh1D, RegularNodesLieBetweenTheirLimits) {
  for (const auto& [begin, end] : {std::pair(0.1f, 0.7f), {5.0f, -3.0f}, {-FLT_MAX, FLT_MAX}, {1e30f, 1.0f}}) {
    const PbRegularMesh1D mesh(50, begin, end);
    EXPECT_EQ(mesh.getXCoord(0), begin);
    EXPECT_EQ(mesh.getXCoord(49), end);
    for (int n = 1; n < 50; ++n) EXPECT_EQ(mesh.getXCoord(n) > mesh.getXCoord(n - 1), end > begin) << n;
    EXPECT_EQ(mesh.getBoundingBox().getMin()[0], std::min(begin, end));
    EXPECT_EQ(mesh.getBoundingBox().getMax()[0], std::max(begin, end));
  }
  EXPECT_EQ(PbRegularMesh1D(1, 4, 9).getXCoord(0), 4);
  EXPECT_EQ(PbRegularMesh1D(3, 4, 9).getXCoord(1), 6.5f);
  EXPECT_TRUE(PbRegularMesh1D(-3, 4, 9).isEmpty());
}

TEST(Mesh1D, KeepsACopyOfItsNodes) {
  std::vector<float> x = {3, -1, kNaN, 2};
  PbIrregularMesh1D mesh(4, x.data());
  x.assign(4, 0);
  EXPECT_EQ(mesh.getXCoord(1), -1);
  EXPECT_EQ(mesh.getXCoord(-1), 0);
  EXPECT_EQ(mesh.getXCoord(4), 0);
  EXPECT_EQ(mesh.getNodeCoord(3), SbVec3f(2, 0, 0));
  EXPECT_EQ(mesh.getBoundingBox().getMin()[0], -1);
  EXPECT_EQ(mesh.getBoundingBox().getMax()[0], 3);

  const float values[] = {1, 2, 3, 4};
  mesh.addValuesSet(2, values, "v");
  PbIrregularMesh1D copy(mesh), assigned;
  assigned = mesh;
  const unsigned int id = mesh.getGeometryId();
  mesh.setGeometry(2, values);
  EXPECT_NE(mesh.getGeometryId(), id);
  EXPECT_EQ(mesh.getNumValuesSet(), 0) << "a set for four nodes";
  for (const PbIrregularMesh1D* other : {&copy, &assigned}) {
    EXPECT_EQ(other->getNumNodes(), 4);
    EXPECT_EQ(other->getXCoord(1), -1);
    EXPECT_EQ(other->getValuesSet(2)[3], 4);
    EXPECT_EQ(other->getGeometryId(), id);
  }
  mesh.setGeometry(5, nullptr);
  EXPECT_TRUE(mesh.isEmpty());
  EXPECT_TRUE(mesh.getBoundingBox().isEmpty());
}

TEST(Mesh1D, HasNoCells) {
  const PbRegularMesh1D mesh(4, 0, 1);
  PbArrayOfInt cells;
  cells.add(1);
  mesh.getNodeOwnerCellsInd(1, cells);
  EXPECT_EQ(cells.getNum(), 0);
  cells.add(1);
  mesh.getAdjacentCellsIndByFacet(0, cells);
  EXPECT_EQ(cells.getNum(), 0);
  int cell;
  EXPECT_TRUE(mesh.getSmallestCellBox(cell).isEmpty());
  SbVec3f pcoord;
  EXPECT_EQ(mesh.findContainingCell(SbVec3f(0.5f, 0, 0), 1, pcoord), nullptr);
  EXPECT_EQ(mesh.getCell(0), nullptr);
}
