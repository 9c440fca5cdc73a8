#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbGrid2D.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PoMeshLines.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <set>

#include "quillane/rep/TestGrid.h"
#include "support/MeshFamily.h"
#include "support/NodePtr.h"
#include "support/Soup.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

class LinesTest : public testing::Test {
 protected:
  Soup draw(PbMesh2D* mesh, int coloring) {
    kit->setMesh(mesh);
    kit->setDataMapping(mapping.get());
    kit->valuesIndex = 0;
    kit->coloringType = coloring;
    return Soup::of(kit.get());
  }
  SoGroup* group() const { return static_cast<SoGroup*>(kit->getPart("groupLines", FALSE)); }

  std::unique_ptr<PbLinearDataMapping> mapping = greyMapping();
  PbIsovaluesList isovalues;
  NodePtr<PoMeshLines> kit{new PoMeshLines};
};

TEST_F(LinesTest, EveryMeshClassShowsEachEdge) {
  for (const MeshKind2D& kind : meshKinds2D()) {
    SCOPED_TRACE(kind.name);
    const auto sample = kind.make(RectangleSpec(), 1);
    const Soup soup = draw(sample.mesh.get(), PoMesh::COLOR_INHERITED);
    // Of indexed meshes each cell shows its edges; cut in two it has a diagonal more.
    const bool isGrid = dynamic_cast<const PbGrid2D*>(sample.mesh.get()) != nullptr;
    if (isGrid) {
      EXPECT_EQ(soup.segments.size(), 5U * 3 + 4 * 4) << "each edge once";
      EXPECT_NEAR(soup.length(), 5 * 6 + 4 * 2, 1e-4);
    }
    std::set<std::array<float, 6>> edges;
    for (const SoupSegment& segment : soup.segments) {
      std::array<SbVec3f, 2> ends = {segment[0].point, segment[1].point};
      if (std::pair(ends[1][0], ends[1][1]) < std::pair(ends[0][0], ends[0][1])) std::swap(ends[0], ends[1]);
      edges.insert({ends[0][0], ends[0][1], ends[0][2], ends[1][0], ends[1][1], ends[1][2]});
    }
    EXPECT_EQ(edges.size(), 5U * 3 + 4 * 4 + 12 * (kind.numParts - 1));
    EXPECT_EQ(isGrid, edges.size() == soup.segments.size());
  }
  const PolarPair pair(true);
  const Soup soup = draw(pair.polar.get(), PoMesh::COLOR_MAPPING);
  const Soup reference = draw(pair.cartesian.get(), PoMesh::COLOR_MAPPING);
  ASSERT_EQ(soup.segments.size(), reference.segments.size());
  EXPECT_NEAR(soup.length(), reference.length(), 1e-4);
  for (std::size_t i = 0; i < soup.segments.size(); ++i)
    EXPECT_EQ(soup.segments[i][0].color, reference.segments[i][0].color);
}

TEST_F(LinesTest, EveryColoringByValuesColorsNodes) {
  const auto mesh = TestGrid::unitCells(4, 3).make();
  kit->setIsovaluesList(&isovalues);
  for (const int coloring : {PoMesh::COLOR_AVERAGE, PoMesh::COLOR_MAPPING, PoMesh::COLOR_CONTOURING}) {
    const Soup soup = draw(mesh.get(), coloring);
    EXPECT_EQ(childTypes(group()), "MaterialBinding Coordinate3 IndexedLineSet");
    EXPECT_NEAR(soup.length(), 4 * 2 + 3 * 3, 1e-5);
    for (const SoupSegment& segment : soup.segments)
      for (const SoupVertex& end : segment) EXPECT_NEAR(end.color[0], greyOf(end.point[0] + 10 * end.point[1]), 1e-6);
  }
  EXPECT_EQ(draw(mesh.get(), PoMesh::COLOR_INHERITED).numColors(), 1);
  EXPECT_EQ(childTypes(group()), "Coordinate3 IndexedLineSet");

  EXPECT_TRUE(draw(mesh.get(), PoMesh::COLOR_TEXTURE_CONTOURING).segments.empty());
  ASSERT_NE(group(), nullptr);
  EXPECT_EQ(group()->getNumChildren(), 0);
}

TEST_F(LinesTest, AnEdgeIsDrawnIfOneOfItsCellsIs) {
  struct Row {
    const char* name;
    int i, j;
    unsigned numEdges;
  };
  // 4 x 4 nodes have 24 edges.
  for (const Row& row : {Row{"corner", 0, 0, 22}, Row{"side", 0, 1, 24 - 4}, Row{"inside", 1, 1, 24 - 8}}) {
    SCOPED_TRACE(row.name);
    TestGrid grid = TestGrid::unitCells(4, 4);
    grid.values[grid.node(row.i, row.j)] = kNaN;
    const auto mesh = grid.make();
    const Soup soup = draw(mesh.get(), PoMesh::COLOR_MAPPING);
    EXPECT_EQ(soup.segments.size(), row.numEdges);
    for (const SoupSegment& segment : soup.segments)
      for (const SoupVertex& end : segment)
        EXPECT_FALSE(end.point == SbVec3f(static_cast<float>(row.i), static_cast<float>(row.j), 0));
    EXPECT_EQ(draw(mesh.get(), PoMesh::COLOR_INHERITED).segments.size(), 24U) << "values aren't used";
  }
}

TEST_F(LinesTest, EdgesToEndsWithoutColorAreLeftOut) {
  const auto mesh = TestGrid::unitCells(4, 2).make();  // nodes i and 10 + i
  mapping->setMaxThreshold(11.5F);
  mapping->enableThresholds(0, 1);
  const Soup soup = draw(mesh.get(), PoMesh::COLOR_MAPPING);
  EXPECT_EQ(soup.segments.size(), 10U - 2 - 2);
  EXPECT_NEAR(soup.box().getMax()[0], 3, 0);
}

TEST_F(LinesTest, GridsWithoutCellsShowTheirOneLine) {
  for (const bool isBroken : {false, true}) {
    TestGrid grid = TestGrid::unitCells(1, 5);
    if (isBroken) grid.y[2] = kNaN;
    const auto mesh = grid.make();
    EXPECT_EQ(draw(mesh.get(), PoMesh::COLOR_MAPPING).segments.size(), isBroken ? 2U : 4U);
  }
  const auto point = TestGrid::unitCells(1, 1).make();
  EXPECT_TRUE(draw(point.get(), PoMesh::COLOR_MAPPING).segments.empty());
  const auto empty = TestGrid().make();
  draw(empty.get(), PoMesh::COLOR_MAPPING);
  EXPECT_EQ(group(), nullptr);
}

}  // namespace
