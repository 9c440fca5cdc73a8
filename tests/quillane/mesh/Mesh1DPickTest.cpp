// Filters and thresholds on curves.

#include <Ormelle/PbIrregularMesh1D.h>
#include <Ormelle/PbRegularMesh1D.h>
#include <Ormelle/PoCoordinateListFilter.h>
#include <Ormelle/PoIndexListFilter.h>
#include <Ormelle/PoMesh1DFilter.h>
#include <Ormelle/PoPeriodFilter.h>
#include <Ormelle/PoPeriodIndexFilter.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "graph/chart/PiCurveSearch.h"
#include "support/TestChart.h"

namespace {

const float kNaN = std::nanf("");
using Floats = std::vector<float>;

PbIrregularMesh1D meshOf(const Floats& x, const Floats& y) {
  PbIrregularMesh1D mesh(int(x.size()), x.data());
  mesh.addValuesSet(0, y.data(), "y");
  return mesh;
}

/// A filter of an application that doesn't keep to the mesh.
class WildFilter : public PoIndexListFilter {
 public:
  void getIndices(int numNodes, PbArrayOfInt& indices) const override {
    indices.empty();
    for (const int i : {-1, 1, numNodes, 0}) indices.add(i);
  }
};

/// Small whole numbers, so that points meet the coordinates looked for, with gaps.
Floats randomCoordinates(std::mt19937& random, size_t num) {
  Floats values(num);
  for (float& value : values) {
    value = float(random() % 7);
    if (random() % 16 == 0) value = random() % 2 ? kNaN : INFINITY;
  }
  return values;
}

}  // namespace

TEST(CurveFilter, PicksNodesByIndex) {
  CurveAsker asker;
  const PbIrregularMesh1D mesh = meshOf({0, 1, 2, 3, 4, 5, 6}, {9, 8, 7, 6, 5, 4, 3});
  asker.hints->geomInterpretation = PoMesh1DHints::SMOOTH;  // which doesn't matter to nodes
  EXPECT_EQ(asker.filtered(mesh).x, (Floats{0, 1, 2, 3, 4, 5, 6})) << "no filter";

  auto* period = new PoPeriodIndexFilter;
  asker.filter.reset(period);
  period->period = 3;
  EXPECT_EQ(asker.filtered(mesh).x, (Floats{0, 3})) << "two whole periods";
  EXPECT_EQ(asker.filtered(mesh).y, (Floats{9, 6}));
  period->period = 8;
  EXPECT_EQ(asker.filtered(mesh).num(), 0u);

  auto* list = new PoIndexListFilter;
  asker.filter.reset(list);
  const int32_t wanted[] = {5, 7, -1, 0, 5};
  list->index.setValues(0, 5, wanted);
  EXPECT_EQ(asker.filtered(mesh).x, (Floats{5, 0, 5}));
  EXPECT_TRUE(asker.filtered(mesh, true).positions.empty());

  asker.filter.reset(new WildFilter);
  EXPECT_EQ(asker.filtered(mesh).x, (Floats{1, 0}));
}

TEST(CurveFilter, PicksPlacesOnTheDrawnCurve) {
  CurveAsker asker;
  const PbIrregularMesh1D fold = meshOf({0, 4, 2, 6}, {0, 4, 6, 2});
  auto* list = new PoCoordinateListFilter;
  asker.filter.reset(list);
  const float wanted[] = {3, -1, 4, 7, 1};
  list->coord.setValues(0, 5, wanted);
  const TestCurve points = asker.filtered(fold, true);
  EXPECT_EQ(points.x, (Floats{3, 3, 3, 4, 4, 1})) << "three in the fold, and the bend at 4 once";
  EXPECT_EQ(points.y, (Floats{3, 5, 5, 4, 4, 1}));
  EXPECT_EQ(points.positions, (Floats{0.75f, 0.5f, 0.25f, 0, 0.5f, 0.25f}));
  const float root = std::sqrt(0.5f);
  ASSERT_EQ(points.directions.size(), 12u);
  EXPECT_FLOAT_EQ(points.directions[2], -root);
  EXPECT_FLOAT_EQ(points.directions[3], root);

  list->axis = PoMesh1DFilter::Y;
  EXPECT_EQ(asker.filtered(fold).y, (Floats{3, 3, 4, 4, 1}));

  // A stair is level between its nodes: only its risers have a place in y.
  asker.hints->geomInterpretation = PoMesh1DHints::STAIRS_X;
  const TestCurve riser = asker.filtered(meshOf({0, 10}, {0, 8}));
  EXPECT_EQ(riser.x, (Floats{10, 10, 10, 10}));
  EXPECT_EQ(riser.y, (Floats{3, 4, 7, 1}));

  auto* period = new PoPeriodFilter;
  asker.filter.reset(period);
  period->period = 2.5f;
  asker.hints->geomInterpretation = PoMesh1DHints::AS_IS;
  EXPECT_EQ(asker.filtered(meshOf({1, 9}, {0, 16})).x, (Floats{1, 3.5f, 6, 8.5f})) << "from the lowest coordinate on";
}

// The same places as by a test of each segment for each coordinate.
TEST(CurveSearch, FindsWhatAWalkFinds) {
  std::mt19937 random(4);
  for (int round = 0; round < 300; ++round) {
    const Floats x = randomCoordinates(random, random() % 20), y = randomCoordinates(random, x.size());
    const Floats wanted = randomCoordinates(random, random() % 9);
    const bool isAlongX = random() % 2;
    const Floats& along = isAlongX ? x : y;
    std::vector<std::pair<int, float>> expected;
    for (const float v : wanted)
      for (size_t s = 0; s + 1 < x.size(); ++s) {
        const bool isFinite = std::isfinite(x[s] + y[s]) && std::isfinite(x[s + 1] + y[s + 1]);
        if (isFinite && std::isfinite(v) && (v - along[s]) * (v - along[s + 1]) <= 0 && along[s + 1] != v)
          expected.emplace_back(int(s), v);
      }
    const PiCurveSearch search(x, y, isAlongX);
    const std::vector<PiCurvePlace> places = search.find(wanted, 1000);
    ASSERT_EQ(places.size(), expected.size());
    for (size_t p = 0; p < places.size(); ++p) {
      EXPECT_EQ(places[p].segment, expected[p].first);
      EXPECT_EQ(isAlongX ? places[p].x : places[p].y, expected[p].second);
      const auto s = size_t(places[p].segment);
      EXPECT_NEAR(places[p].x, x[s] + places[p].t * (x[s + 1] - x[s]), 1e-5);
      EXPECT_NEAR(places[p].y, y[s] + places[p].t * (y[s + 1] - y[s]), 1e-5);
    }
    EXPECT_EQ(search.find(wanted, 3).size(), std::min<size_t>(3, expected.size()));
  }
}

TEST(CurveThreshold, AddsAPointWhereTheSignChanges) {
  CurveAsker asker;
  std::mt19937 random(9);
  for (int round = 0; round < 200; ++round) {
    const Floats x = randomCoordinates(random, 1 + random() % 15), y = randomCoordinates(random, x.size());
    const PbIrregularMesh1D mesh = meshOf(x, y);
    asker.hints->geomInterpretation = int(random() % 8);
    const int axis = int(random() % 2);
    const float threshold = float(random() % 14) / 2;
    const TestCurve curve = asker.drawn(mesh);
    TestCurve cut = asker.cut(mesh, axis, threshold);
    const auto isFinite = [&](size_t p) { return std::isfinite(curve.x[p]) && std::isfinite(curve.y[p]); };

    size_t numCrossings = 0;
    const Floats& along = axis == 0 ? curve.x : curve.y;
    for (size_t p = 1; p < curve.num(); ++p)
      if (isFinite(p - 1) && isFinite(p)) numCrossings += (along[p - 1] - threshold) * (along[p] - threshold) < 0;
    ASSERT_EQ(cut.added.size(), numCrossings);
    for (const int added : cut.added) {
      const auto p = size_t(added);
      EXPECT_EQ(axis == 0 ? cut.x[p] : cut.y[p], threshold);
      const float cross = (cut.x[p] - cut.x[p - 1]) * (cut.y[p + 1] - cut.y[p - 1]) -
                          (cut.y[p] - cut.y[p - 1]) * (cut.x[p + 1] - cut.x[p - 1]);
      EXPECT_NEAR(cross, 0, 1e-4) << "off the line";
    }
    const auto isSame = [](float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); };
    for (size_t n = 0; n < x.size(); ++n) {
      EXPECT_TRUE(isSame(cut.x[size_t(cut.index[n])], curve.x[size_t(curve.index[n])]));
      EXPECT_TRUE(isSame(cut.y[size_t(cut.index[n])], curve.y[size_t(curve.index[n])]));
    }
    for (auto added = cut.added.rbegin(); added != cut.added.rend(); ++added) {
      cut.x.erase(cut.x.begin() + *added);
      cut.y.erase(cut.y.begin() + *added);
    }
    ASSERT_EQ(cut.num(), curve.num());
    for (size_t p = 0; p < curve.num(); ++p)
      EXPECT_TRUE(isSame(cut.x[p], curve.x[p]) && isSame(cut.y[p], curve.y[p])) << "the curve itself changed, at " << p;
  }
}

TEST(CurveThreshold, ATouchIsNoCrossing) {
  CurveAsker asker;
  const PbIrregularMesh1D mesh = meshOf({0, 1, 2, 3}, {0, 2, 1, 3});
  for (const float extreme : {0.0f, 3.0f, 4.0f, kNaN, INFINITY}) {
    EXPECT_TRUE(asker.cut(mesh, 1, extreme).added.empty()) << extreme;
    EXPECT_EQ(asker.cut(mesh, 1, extreme).num(), 4u) << extreme;
  }
  EXPECT_EQ(asker.cut(mesh, 1, 2).added, std::vector<int>{3}) << "node 1 lies on it, the last segment crosses it";
  // The sign changes however small the numbers are.
  EXPECT_EQ(asker.cut(meshOf({0, 1}, {-1e-30f, 1e-30f}), 1, 0).added, std::vector<int>{1});
}
