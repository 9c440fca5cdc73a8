#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoMeshLimit.h>
#include <Ormelle/PoMeshSides.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "quillane/rep/TestGrid.h"
#include "support/NodePtr.h"
#include "support/Soup.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

SoGroup* partOf(SoBaseKit* kit, const char* name) { return static_cast<SoGroup*>(kit->getPart(name, FALSE)); }

TEST(LimitTest, IsTheClosedOutline) {
  NodePtr<PoMeshLimit> kit(new PoMeshLimit);
  const auto mesh = TestGrid::unitCells(5, 4).make();
  kit->setMesh(mesh.get());
  const Soup soup = Soup::of(kit.get());
  EXPECT_EQ(childTypes(partOf(kit.get(), "groupLimit")), "Coordinate3 LineSet");
  EXPECT_EQ(soup.segments.size(), 14U);
  EXPECT_NEAR(soup.length(), 14, 1e-5);
  EXPECT_EQ(soup.segments.front()[0].point, soup.segments.back()[1].point);
}

TEST(LimitTest, FollowsTheHeightsAndLeavesTheMeshAsItWas) {
  NodePtr<PoMeshLimit> kit(new PoMeshLimit);
  TestGrid grid = TestGrid::unitCells(3, 3);
  grid.z.assign(9, 1.0F);
  const auto mesh = grid.make();  // values are x + 10 y
  kit->setMesh(mesh.get());
  kit->zValuesIndex = 0;
  for (const SoupSegment& segment : Soup::of(kit.get()).segments)
    for (const SoupVertex& end : segment) EXPECT_EQ(end.point[2], end.point[0] + 10 * end.point[1]);
  EXPECT_EQ(mesh->getZcoord()[4], 1);
  kit->zValuesIndex = 5;
  EXPECT_EQ(Soup::of(kit.get()).segments[0][0].point[2], 1) << "no such set";
}

TEST(BoundaryTest, SegmentsToBrokenNodesAreLeftOut) {
  struct Row {
    const char* name;
    std::vector<int> broken;
    unsigned numSegments;
  };
  // 4 x 4 nodes have 12 boundary segments; node 5 is inside, nodes 0 and 3 are the first corners of the contour.
  for (const Row& row :
       {Row{"none", {}, 12}, Row{"inside", {5}, 12}, Row{"first", {0}, 10}, Row{"neighbours", {1, 2}, 9},
        Row{"corners", {0, 3, 12, 15}, 4}, Row{"all", {0, 1, 2, 3, 4, 7, 8, 11, 12, 13, 14, 15}, 0}}) {
    SCOPED_TRACE(row.name);
    TestGrid grid = TestGrid::unitCells(4, 4);
    grid.z.assign(16, 2.0F);
    for (const int node : row.broken) grid.z[static_cast<std::size_t>(node)] = kNaN;
    const auto mesh = grid.make();
    NodePtr<PoMeshLimit> limit(new PoMeshLimit);
    limit->setMesh(mesh.get());
    const Soup lines = Soup::of(limit.get());
    EXPECT_EQ(lines.segments.size(), row.numSegments);
    EXPECT_TRUE(lines.isFinite());

    NodePtr<PoMeshSides> sides(new PoMeshSides);
    sides->setMesh(mesh.get());
    const Soup walls = Soup::of(sides.get());
    EXPECT_NEAR(walls.area(), 2.0 * row.numSegments, 1e-5);
    EXPECT_TRUE(walls.isFinite());
  }
}

TEST(SidesTest, WallsReachTheLevelThatIsAsked) {
  NodePtr<PoMeshSides> kit(new PoMeshSides);
  const auto mesh = TestGrid::unitCells(3, 3).make();  // values from 0 to 22
  kit->setMesh(mesh.get());
  kit->thresholdValue = -3;
  struct Row {
    int zValuesIndex;
    PoMeshSides::ThresholdType type;
    float low, high;
  };
  for (const Row& row : {Row{0, PoMeshSides::THRESHOLD_ZMIN, 0, 22}, Row{0, PoMeshSides::THRESHOLD_ZMAX, 0, 22},
                         Row{0, PoMeshSides::THRESHOLD_VALUE, -3, 22}, Row{7, PoMeshSides::THRESHOLD_ZMIN, -3, 0},
                         Row{-1, PoMeshSides::THRESHOLD_ZMAX, -3, 0}}) {
    SCOPED_TRACE(testing::Message() << row.zValuesIndex << " " << row.type);
    kit->zValuesIndex = static_cast<short>(row.zValuesIndex);
    kit->thresholdType = row.type;
    const Soup soup = Soup::of(kit.get());
    EXPECT_EQ(soup.box().getMin(), SbVec3f(0, 0, row.low));
    EXPECT_EQ(soup.box().getMax(), SbVec3f(2, 2, row.high));
    // 8 unit segments; the mean height over each side of the walls is that over the contour, 11.
    const double mean = row.zValuesIndex == 0 ? 11 : 0;
    const double level = row.type == PoMeshSides::THRESHOLD_ZMAX && row.zValuesIndex == 0 ? row.high : row.low;
    EXPECT_NEAR(soup.area(), 8 * std::abs(mean - level), 1e-4);
  }
}

TEST(SidesTest, NormalsPointOutwards) {
  PbRegularCartesianGrid2D mesh(4, 3, -1, -1, 1, 1, 1);
  for (const bool isBroken : {false, true}) {
    SCOPED_TRACE(isBroken);
    std::vector<float> heights(12, 1.0F);
    if (isBroken) heights[4] = kNaN;  // a node of the side at y = 1, so that two pieces are left
    mesh.addValuesSet(0, heights.data(), "heights");
    NodePtr<PoMeshSides> kit(new PoMeshSides);
    kit->setMesh(&mesh);
    kit->zValuesIndex = 0;
    kit->thresholdType = PoMeshSides::THRESHOLD_VALUE;
    const Soup soup = Soup::of(kit.get());
    const SoGroup* group = partOf(kit.get(), "groupSides");
    EXPECT_EQ(childTypes(group).substr(0, 31), "ShapeHints NormalBinding Normal");
    EXPECT_GT(soup.triangles.size(), 10U);
    for (const SoupTriangle& triangle : soup.triangles) {
      SbVec3f middle = (triangle[0].point + triangle[1].point + triangle[2].point) / 3;
      const SbVec3f outwards(std::abs(middle[0]) > 0.99F ? middle[0] : 0, std::abs(middle[1]) > 0.99F ? middle[1] : 0,
                             0);
      EXPECT_GT(triangle[0].normal.dot(outwards), 0.9F) << middle[0] << " " << middle[1];
      // The corners run clockwise about the normal, as the hints say.
      const SbVec3f face = (triangle[1].point - triangle[0].point).cross(triangle[2].point - triangle[0].point);
      EXPECT_LT(face.dot(outwards), 0);
    }
  }
}

TEST(SidesTest, MeshesWithoutBoundaryClearThePart) {
  NodePtr<PoMeshSides> sides(new PoMeshSides);
  NodePtr<PoMeshLimit> limit(new PoMeshLimit);
  for (const auto& [numX, numY] : {std::pair(0, 0), std::pair(1, 1), std::pair(1, 4)}) {
    const auto mesh = TestGrid::unitCells(numX, numY).make();
    sides->setMesh(mesh.get());
    limit->setMesh(mesh.get());
    EXPECT_TRUE(Soup::of(sides.get()).triangles.empty());
    EXPECT_TRUE(Soup::of(limit.get()).segments.empty());
    EXPECT_EQ(partOf(sides.get(), "groupSides"), nullptr);
    EXPECT_EQ(partOf(limit.get(), "groupLimit"), nullptr);
    sides->setMesh(nullptr);
    limit->setMesh(nullptr);
  }
}

}  // namespace
