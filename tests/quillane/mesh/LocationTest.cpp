#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "quillane/mesh/CellWalk.h"
#include "quillane/search/PiAxisSearch.h"
#include "quillane/search/PiBoxTree.h"

// Searches by index against asking every cell in turn.

TEST(Location, FindsInSurfacesWhatAWalkFinds) {
  for (const float dent : {0.0F, 0.3F, 0.9F}) {
    const Nodes nodes = warpedNodes(14, 9, 1, dent, 3);
    PbCartesianGrid2D flat(14, 9, nodes.x.data(), nodes.y.data(), 0);
    expectSameAsWalk(flat, SbVec3f(-1, -1, -1), SbVec3f(14, 9, 1), false);
    std::vector<float> steep;
    for (std::size_t n = 0; n < nodes.z.size(); ++n) steep.push_back(2 * nodes.z[n] + nodes.x[n]);
    for (const std::vector<float>& z : {nodes.z, steep}) {
      PbCartesianGrid2D raised(14, 9, nodes.x.data(), nodes.y.data(), z.data(), 0);
      expectSameAsWalk(raised, SbVec3f(-1, -1, -2), SbVec3f(14, 9, 14), false);
    }
  }
}

TEST(Location, FindsInAVerticalSurfaceWhatAWalkFinds) {
  const Nodes nodes = warpedNodes(12, 1, 8, 0.3F, 4);
  PbCartesianGrid2D wall(12, 8, nodes.x.data(), nodes.y.data(), nodes.z.data(), 0);
  expectSameAsWalk(wall, SbVec3f(-1, -1, -1), SbVec3f(12, 1, 8), false);
}

TEST(Location, AFlatCellDoesntLookAtZ) {
  const Nodes nodes = warpedNodes(5, 5, 1, 0.2F, 6);
  const std::vector<float> level(25, 7.0F);
  for (const float* z : {static_cast<const float*>(nullptr), level.data()}) {
    PbCartesianGrid2D mesh(5, 5, nodes.x.data(), nodes.y.data(), z, 1);
    for (const float height : {-1e6F, 0.0F, 7.0F, 1e6F})
      EXPECT_EQ(search(mesh, SbVec3f(2.3F, 2.3F, height), 0), walk(mesh, SbVec3f(2.3F, 2.3F, height), 0));
    EXPECT_GE(search(mesh, SbVec3f(2.3F, 2.3F, 99), 0), 0);
  }
}

TEST(Location, FindsInVolumesWhatAWalkFinds) {
  for (const float dent : {0.0F, 0.2F, 0.6F}) {
    const Nodes nodes = warpedNodes(9, 10, 8, dent, 3);
    PbCartesianGrid3D mesh(9, 10, 8, nodes.x.data(), nodes.y.data(), nodes.z.data(), 0);
    expectSameAsWalk(mesh, SbVec3f(0, 0, 0), SbVec3f(8, 9, 7), true);
  }
}

TEST(Location, FindsInThinCellsFarFromTheOriginWhatAWalkFinds) {
  Nodes nodes = warpedNodes(9, 9, 9, 0.2F, 3);
  for (std::size_t n = 0; n < nodes.x.size(); ++n) {
    nodes.x[n] = 4e5F + 100 * nodes.x[n];
    nodes.y[n] = std::exp(nodes.y[n]);
    nodes.z[n] *= 1e-4F;
  }
  PbCartesianGrid3D mesh(9, 9, 9, nodes.x.data(), nodes.y.data(), nodes.z.data(), 0);
  expectSameAsWalk(mesh, mesh.getBoundingBox().getMin(), mesh.getBoundingBox().getMax(), true);
}

TEST(Location, LeavesOutCellsThatAreNotFinite) {
  Nodes nodes = warpedNodes(6, 6, 6, 0.2F, 3);
  nodes.x[0] = std::nanf("");
  nodes.y[100] = HUGE_VALF;
  PbCartesianGrid3D mesh(6, 6, 6, nodes.x.data(), nodes.y.data(), nodes.z.data(), 0);
  expectSameAsWalk(mesh, SbVec3f(0, 0, 0), SbVec3f(5, 5, 5), true);
  EXPECT_LT(mesh.getBoundingBox().getMax()[1], 6);
  EXPECT_NEAR(mesh.getVolume(), 116, 10) << "of 125 cells one and eight are lost";
  int index;
  EXPECT_GT(mesh.getSmallestCellBox(index).getVolume(), 0);
  EXPECT_LT(mesh.getBiggestCellBox(index).getVolume(), 10);
}

TEST(Location, AnswersNullBesideTheMesh) {
  const Nodes nodes = warpedNodes(3, 3, 3, 0, 1);
  PbCartesianGrid3D mesh(3, 3, 3, nodes.x.data(), nodes.y.data(), nodes.z.data(), 1);
  EXPECT_EQ(search(mesh, SbVec3f(2.005F, 1, 1), 0.01F), 4) << "a little beyond the last cell, within its tolerance";
  EXPECT_EQ(search(mesh, SbVec3f(2.02F, 1, 1), 0.1F), -1) << "more than a hundredth beside the box";
  EXPECT_EQ(search(PbCartesianGrid3D(1), SbVec3f(0, 0, 0), 0), -1);
  const PbCartesianGrid3D plane(3, 3, 1, nodes.x.data(), nodes.y.data(), nodes.z.data(), 1);
  EXPECT_EQ(search(plane, SbVec3f(0, 0, 0), 0), -1);
}

TEST(Location, FollowsTheGeometry) {
  Nodes nodes = warpedNodes(4, 4, 4, 0, 1);
  PbCartesianGrid3D mesh(4, 4, 4, nodes.x.data(), nodes.y.data(), nodes.z.data(), 1);
  EXPECT_EQ(search(mesh, SbVec3f(0.5F, 0.5F, 0.5F), 0), 0);
  for (float& x : nodes.x) x += 10;
  mesh.setCoordinates(nodes.x.data(), nodes.y.data(), nodes.z.data());
  EXPECT_EQ(search(mesh, SbVec3f(0.5F, 0.5F, 0.5F), 0), -1);
  EXPECT_EQ(search(mesh, SbVec3f(10.5F, 0.5F, 0.5F), 0), 0);

  nodes = warpedNodes(4, 4, 1, 0, 1);
  PbCartesianGrid2D surface(4, 4, nodes.x.data(), nodes.y.data(), 1);
  std::vector<float> z;
  for (int n = 0; n < 16; ++n) z.push_back(float(n * n));
  surface.addValuesSet(0, z.data(), "z");
  const SbVec3f point(0.5F, 0.5F, 1e4F);
  for (const int set : {0, -1, 0}) {
    surface.pushZCoord(set);
    EXPECT_EQ(search(surface, point, 0), set < 0 ? 0 : -1) << "only the flat surface doesn't look at z";
    surface.popZCoord();
  }
  const PbCartesianGrid2D copy = surface;
  EXPECT_EQ(search(copy, point, 0), walk(copy, point, 0));
}

TEST(Location, StartsFromAGivenCell) {
  const Nodes nodes = warpedNodes(9, 9, 9, 0.2F, 3);
  const PbCartesianGrid3D mesh(9, 9, 9, nodes.x.data(), nodes.y.data(), nodes.z.data(), 0);
  SbVec3f pcoord, expected;
  // A path through cells, with jumps.
  const PbCell* cell = nullptr;
  for (int step = 0; step < 2000; ++step) {
    const float t = 0.01F * float(step) + float(step % 500 == 0);
    const SbVec3f point(4 + 4.4F * std::sin(t), 4 + 4.4F * std::sin(1.3F * t), 4 + 3.9F * std::cos(1.7F * t));
    const int wanted = walk(mesh, point, 0);
    const int start = cell ? cell->getIndex() : -1;
    cell = mesh.findContainingCell(point, 0, pcoord, cell ? mesh.getCell(start) : nullptr);
    ASSERT_EQ(cell != nullptr, wanted >= 0) << step;
    if (!cell) continue;
    EXPECT_TRUE(mesh.getCell(cell->getIndex())->locatePoint(point, 0, expected));
    EXPECT_EQ(pcoord, expected);
  }
}

TEST(Location, ParallelAndRegularAxesMeetTheirLimits) {
  const float rising[] = {0, 1, 3, 7}, falling[] = {7, 3, 1, 0};
  const struct {
    float c;
    int rising, falling;
  } cases[] = {{-0.1F, -1, -1}, {0, 0, 3},           {0.5F, 0, 2},        {1, 1, 2},
               {6.9F, 2, 0},    {7, 3, 0},           {7.1F, -1, -1},      {std::nanf(""), -1, -1},
               {2, 1, 1},       {HUGE_VALF, -1, -1}, {-HUGE_VALF, -1, -1}};
  for (const auto& row : cases) {
    EXPECT_EQ(findAxisInterval(rising, 4, row.c), row.rising) << row.c;
    EXPECT_EQ(findAxisInterval(falling, 4, row.c), row.falling) << row.c;
  }
  EXPECT_EQ(findAxisInterval(rising, 1, 0), -1);

  const PbParalCartesianGrid2D parallel(4, 4, rising, falling, 1);
  EXPECT_EQ(search(parallel, SbVec3f(3, 1, 0), 0), parallel.getCellIndex(2, 2));
  EXPECT_EQ(search(parallel, SbVec3f(7, 1, 0), 0), -1);
  // Steps that no float holds: each node and the middle of each step is found, the upper limit in the last cell.
  for (const auto& [min, max] : {std::pair(0.1F, 0.7F), std::pair(-3e7F, 1.1e7F), std::pair(2.0F, -5.1F)}) {
    const PbRegularCartesianGrid2D regular(778, 2, min, 0, max, 1, 1);
    for (int i = 0; i < 778; ++i) {
      const float x = regular.getNodeCoord(i, 0)[0];
      const int found = search(regular, SbVec3f(x, 1, 0), 0);
      EXPECT_TRUE(found == std::min(i, 776) || found == i - 1) << i;
      for (const float beside : {std::nextafter(x, -HUGE_VALF), std::nextafter(x, HUGE_VALF)})
        EXPECT_EQ(search(regular, SbVec3f(beside, 0.5F, 0), 0) >= 0, (beside - min) * (beside - max) <= 0) << i;
      if (i == 777) continue;
      EXPECT_EQ(search(regular, SbVec3f((x + regular.getNodeCoord(i + 1, 0)[0]) / 2, 0.5F, 0), 0), i) << min;
    }
    EXPECT_EQ(search(regular, SbVec3f(max, 1, 0), 0), 776);
  }
  const PbRegularCartesianGrid2D degenerate(3, 3, 1, 1, 1, 1, 1);
  EXPECT_EQ(search(degenerate, SbVec3f(2, 2, 0), 1), -1);
}

TEST(BoxTree, ListsEveryBoxThatHoldsAPoint) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> place(-0.2, 1.2), size(0, 1);
  const double inf = std::numeric_limits<double>::infinity();
  const struct {
    const char* name;
    double size[3];
  } kinds[] = {{"cubes", {0.05, 0.05, 0.05}},
               {"needles", {1.5, 0.01, 0.01}},
               {"plates", {2, 2, 1e-3}},
               {"points", {0, 0, 0}},
               {"giants", {3, 3, 3}},
               {"columns", {0.05, 0.05, inf}},
               {"mixed with large", {-0.05, -0.05, -0.05}}};
  for (const auto& kind : kinds) {
    const int num = 5000;
    std::vector<PiBoxTree::Box> boxes(num);
    for (int n = 0; n < num; ++n)
      for (int a = 0; a < 3; ++a) {
        double half = size(random) * std::fabs(kind.size[a]) / 2;
        if (kind.size[a] < 0 && n % 50 == 0) half = 0.5;
        const double middle = place(random);
        boxes[n].min[a] = middle - half;
        boxes[n].max[a] = middle + half;
      }
    PiBoxTree tree;
    const auto boxOf = [&](int n, PiBoxTree::Box& box) {
      box = boxes[n];
      return n % 7 != 3;
    };
    tree.build({{0, 0, 0}, {1, 1, 1}}, num, boxOf);
    EXPECT_LE(tree.numEntries(), 12U * num) << kind.name;
    for (int p = 0; p < 300; ++p) {
      float point[3];
      for (float& c : point) c = float(place(random));
      std::vector<int> expected, found;
      for (int n = 0; n < num; ++n) {
        bool isInside = n % 7 != 3;
        for (int a = 0; a < 3; ++a) isInside = isInside && point[a] >= boxes[n].min[a] && point[a] <= boxes[n].max[a];
        if (isInside) expected.push_back(n);
      }
      int last = -1, numAsked = 0;
      EXPECT_EQ(tree.findFirst(point,
                               [&](int n) {
                                 EXPECT_GT(n, last) << "by rising number";
                                 last = n;
                                 ++numAsked;
                                 if (std::binary_search(expected.begin(), expected.end(), n)) found.push_back(n);
                                 return false;
                               }),
                -1);
      EXPECT_EQ(found, expected) << kind.name;
      if (!expected.empty()) {
        EXPECT_EQ(tree.findFirst(point, [&](int n) { return n == expected.back(); }), expected.back());
      }
    }
  }
}

TEST(BoxTree, HoldsNothingOrEqualBoxes) {
  PiBoxTree tree;
  const float point[3] = {0, 0, 0};
  EXPECT_EQ(tree.findFirst(point, [](int) { return true; }), -1);
  const auto equal = [](int, PiBoxTree::Box& box) {
    box = {{0, 0, 0}, {0, 0, 0}};
    return true;
  };
  tree.build({{0, 0, 0}, {0, 0, 0}}, 0, equal);
  EXPECT_EQ(tree.findFirst(point, [](int) { return true; }), -1);
  for (const double extent : {0.0, 1.0, 1e300}) {
    tree.build({{0, 0, 0}, {extent, extent, extent}}, 10000, equal);
    EXPECT_EQ(tree.findFirst(point, [](int n) { return n == 9999; }), 9999);
    EXPECT_LT(tree.numNodes(), 1000U);
  }
}
