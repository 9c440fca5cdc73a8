#include <Inventor/SbColor.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PoMeshFilled.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "quillane/rep/TestGrid.h"
#include "support/MeshFamily.h"
#include "support/NodePtr.h"
#include "support/Soup.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr PoMesh::ColoringType kColorings[] = {PoMesh::COLOR_INHERITED, PoMesh::COLOR_AVERAGE, PoMesh::COLOR_MAPPING,
                                               PoMesh::COLOR_CONTOURING, PoMesh::COLOR_TEXTURE_CONTOURING};

class FilledTest : public testing::Test {
 protected:
  /// Shows `mesh` by its set 0.
  Soup draw(PbMesh2D* mesh, int coloring) {
    kit->setMesh(mesh);
    kit->setDataMapping(mapping.get());
    kit->valuesIndex = 0;
    kit->coloringType = coloring;
    return Soup::of(kit.get());
  }
  SoGroup* group() const { return static_cast<SoGroup*>(kit->getPart("groupFilled", FALSE)); }
  SoMaterial* material() const { return static_cast<SoMaterial*>(kit->getPart("appearance.material", FALSE)); }

  std::unique_ptr<PbLinearDataMapping> mapping = greyMapping();
  PbIsovaluesList isovalues;
  NodePtr<PoMeshFilled> kit{new PoMeshFilled};
};

TEST_F(FilledTest, EveryMeshClassShowsTheSameRectangle) {
  for (const MeshKind2D& kind : meshKinds2D()) {
    for (const bool isRaised : {false, true}) {
      SCOPED_TRACE(kind.name + (isRaised ? " raised" : " flat"));
      RectangleSpec spec;
      if (isRaised) spec.z = [](float x, float y) { return 2 * x + y; };
      auto sample = kind.make(spec, 1);
      std::vector<float> values;
      for (int node = 0; node < sample->getNumNodes(); ++node) {
        const SbVec3f point = sample->getNodeCoord(node);
        values.push_back(50 + 10 * point[0] + point[1]);
      }
      sample->addValuesSet(0, values.data(), "values");
      for (const int coloring : kColorings) {
        const Soup soup = draw(sample.mesh.get(), coloring);
        EXPECT_NEAR(soup.area(), 12 * (isRaised ? std::sqrt(6.0) : 1), 1e-4);
        EXPECT_EQ(soup.box().getMin(), sample.mesh->PbMesh::getBoundingBox().getMin());
        EXPECT_EQ(soup.box().getMax(), sample.mesh->PbMesh::getBoundingBox().getMax());
      }
      const Soup mapped = draw(sample.mesh.get(), PoMesh::COLOR_MAPPING);
      for (float x = 1.1F; x < 3; x += 0.3F)
        for (float y = -1.9F; y < 4; y += 0.7F) EXPECT_NEAR(mapped.colorAt(x, y)[0], greyOf(50 + 10 * x + y), 1e-5);
    }
  }
}

TEST_F(FilledTest, APolarGridIsThatOfItsNodes) {
  for (const bool isRaised : {false, true}) {
    const PolarPair pair(isRaised);
    for (const int coloring : kColorings) {
      const Soup soup = draw(pair.polar.get(), coloring);
      const Soup reference = draw(pair.cartesian.get(), coloring);
      ASSERT_EQ(soup.triangles.size(), 2U * 15);
      ASSERT_EQ(reference.triangles.size(), 2U * 15);
      for (std::size_t t = 0; t < soup.triangles.size(); ++t) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
          EXPECT_TRUE(soup.triangles[t][corner].point.equals(reference.triangles[t][corner].point, 1e-10F));
          EXPECT_EQ(soup.triangles[t][corner].color, reference.triangles[t][corner].color);
        }
      }
    }
  }
}

TEST_F(FilledTest, ColorsFollowTheValues) {
  const TestGrid grid = TestGrid::unitCells(5, 4);
  const auto mesh = grid.make();
  const Soup mapped = draw(mesh.get(), PoMesh::COLOR_MAPPING);
  const Soup averaged = draw(mesh.get(), PoMesh::COLOR_AVERAGE);
  EXPECT_NEAR(mapped.area(), 12, 1e-5);
  EXPECT_NEAR(averaged.area(), 12, 1e-5);
  for (float x = 0.3F; x < 4; x += 0.47F) {
    for (float y = 0.2F; y < 3; y += 0.55F) {
      EXPECT_NEAR(mapped.colorAt(x, y)[0], greyOf(x + 10 * y), 1e-5);
      EXPECT_NEAR(averaged.colorAt(x, y)[0], greyOf(std::floor(x) + 0.5F + 10 * (std::floor(y) + 0.5F)), 1e-5);
    }
  }
  EXPECT_EQ(averaged.numColors(), grid.numCells());
  EXPECT_EQ(draw(mesh.get(), PoMesh::COLOR_INHERITED).numColors(), 1);
}

TEST_F(FilledTest, ChildrenStandInTheirOrder) {
  TestGrid grid = TestGrid::unitCells(3, 3);
  const auto mesh = grid.make();
  draw(mesh.get(), PoMesh::COLOR_INHERITED);
  EXPECT_EQ(childTypes(group()), "ShapeHints Coordinate3 QuadMesh");
  EXPECT_EQ(material(), nullptr);
  draw(mesh.get(), PoMesh::COLOR_MAPPING);
  EXPECT_EQ(childTypes(group()), "ShapeHints MaterialBinding Coordinate3 QuadMesh");
  EXPECT_EQ(material()->diffuseColor.getNum(), 9);
  kit->useOverallNormal = TRUE;
  draw(mesh.get(), PoMesh::COLOR_AVERAGE);
  EXPECT_EQ(childTypes(group()), "NormalBinding Normal ShapeHints MaterialBinding Coordinate3 QuadMesh");
  EXPECT_EQ(material()->diffuseColor.getNum(), 4);
  EXPECT_EQ(material()->transparency.getNum(), 1) << "transparency is off";

  grid.z.assign(9, 1.0F);
  const auto raised = grid.make();
  draw(raised.get(), PoMesh::COLOR_AVERAGE);
  EXPECT_EQ(childTypes(group()), "ShapeHints MaterialBinding Coordinate3 QuadMesh") << "it has heights";
}

// The side of the overall normal and the order of the corners must agree with the hints, or the light falls wrong.
TEST_F(FilledTest, OverallNormalIsThatOfTheFacesByTheHints) {
  for (const bool isMirrored : {false, true}) {
    TestGrid grid = TestGrid::unitCells(3, 3);
    for (float& x : grid.x) x = isMirrored ? -4 * x : 4 * x;
    const auto mesh = grid.make();
    kit->useOverallNormal = TRUE;
    const Soup soup = draw(mesh.get(), PoMesh::COLOR_INHERITED);
    const auto* normal = static_cast<SoNormal*>(group()->getChild(1));
    const auto* hints = static_cast<SoShapeHints*>(group()->getChild(2));
    ASSERT_EQ(normal->vector.getNum(), 1);
    EXPECT_NEAR(normal->vector[0].length(), 1, 1e-6);
    const auto& corner = soup.triangles[0];
    SbVec3f face = (corner[1].point - corner[0].point).cross(corner[2].point - corner[0].point);
    if (hints->vertexOrdering.getValue() == SoShapeHints::CLOCKWISE) face = -face;
    EXPECT_GT(face.dot(normal->vector[0]), 0);
  }
}

TEST_F(FilledTest, ValuesWithoutAColorAreLeftOut) {
  const auto mesh = TestGrid::unitCells(5, 4).make();  // means of cells: 5.5 + i + 10 j
  mapping->setMinThreshold(7);
  mapping->setMaxThreshold(25);
  mapping->enableThresholds(1, 1);
  for (const bool isTransparent : {false, true}) {
    SCOPED_TRACE(isTransparent);
    mapping->enableTransparency(isTransparent);
    // Only the four cells between y = 1 and 2 have all their nodes in range; by their means cells (2, 0), (3, 0) are
    // too.
    const Soup averaged = draw(mesh.get(), PoMesh::COLOR_AVERAGE);
    EXPECT_NEAR(averaged.area(), isTransparent ? 4 : 6, 1e-5);
    EXPECT_NEAR(averaged.colorAt(1.5F, 1.5F)[0], greyOf(16.5F), 1e-5);
    EXPECT_EQ(averaged.triangleAt(3.5F, 0.5F) == nullptr, isTransparent);
    if (!isTransparent) {
      EXPECT_NEAR(averaged.colorAt(3.5F, 0.5F)[0], greyOf(8.5F), 1e-5);
    }
    EXPECT_EQ(material()->transparency.getNum(), 0) << "what is left is opaque";
    const Soup mapped = draw(mesh.get(), PoMesh::COLOR_MAPPING);
    EXPECT_NEAR(mapped.area(), 4, 1e-5);
    EXPECT_NEAR(mapped.colorAt(2.5F, 1.25F)[0], greyOf(15), 1e-5);
  }
  mapping->enableThresholds(0, 0);
  EXPECT_NEAR(draw(mesh.get(), PoMesh::COLOR_AVERAGE).area(), 12, 1e-5);
}

TEST_F(FilledTest, ACellThatTouchesAThresholdTakesItsColorAndTransparency) {
  const auto mesh = TestGrid::unitCells(4, 2).make();  // nodes i and 10 + i, means of cells 5.5 + i
  mapping->setMaxThreshold(13, SbColor(1, 0, 0), 0.5F);
  mapping->enableThresholds(0, 1);
  mapping->enableTransparency(1);
  const Soup soup = draw(mesh.get(), PoMesh::COLOR_AVERAGE);
  EXPECT_EQ(soup.colorAt(2.5F, 0.5F), SbColor(1, 0, 0)) << "node (3, 1) is 13 exactly";
  EXPECT_EQ(soup.triangleAt(2.5F, 0.5F)->front().transparency, 0.5F);
  EXPECT_NEAR(soup.colorAt(1.5F, 0.5F)[0], greyOf(6.5F), 1e-5);
  EXPECT_EQ(soup.triangleAt(1.5F, 0.5F)->front().transparency, 0);

  mapping->enableTransparency(0);
  EXPECT_NEAR(draw(mesh.get(), PoMesh::COLOR_AVERAGE).colorAt(2.5F, 0.5F)[0], greyOf(7.5F), 1e-5);
}

TEST_F(FilledTest, HolesAreTheSameInEveryColoring) {
  kit->setIsovaluesList(&isovalues);
  struct Row {
    const char* name;
    std::vector<float> TestGrid::*broken;
    float with;
    bool isHoleWithoutValues;
  };
  const Row rows[] = {{"value", &TestGrid::values, kNaN, false},
                      {"x", &TestGrid::x, kNaN, true},
                      {"y", &TestGrid::y, -kInfinity, true},
                      {"z", &TestGrid::z, kInfinity, true}};
  for (const Row& row : rows) {
    TestGrid grid = TestGrid::unitCells(6, 5);
    grid.z.assign(grid.x.size(), 2.0F);
    (grid.*row.broken)[grid.node(2, 2)] = row.with;
    (grid.*row.broken)[grid.node(5, 4)] = row.with;
    const auto mesh = grid.make();
    for (const int coloring : kColorings) {
      SCOPED_TRACE(std::string(row.name) + " " + std::to_string(coloring));
      const Soup soup = draw(mesh.get(), coloring);
      const bool hasHoles = row.isHoleWithoutValues || coloring != PoMesh::COLOR_INHERITED;
      EXPECT_NEAR(soup.area(), hasHoles ? 20 - 4 - 1 : 20, 1e-5);
      EXPECT_EQ(soup.triangleAt(1.5F, 1.5F) == nullptr, hasHoles);
      EXPECT_EQ(soup.triangleAt(4.5F, 3.5F) == nullptr, hasHoles);
      EXPECT_NE(soup.triangleAt(0.5F, 1.5F), nullptr);
      EXPECT_TRUE(soup.isFinite());
      SoGetBoundingBoxAction box(SbViewportRegion(100, 100));
      box.apply(kit.get());
      EXPECT_EQ(box.getBoundingBox().getMin(), soup.box().getMin());
      EXPECT_EQ(box.getBoundingBox().getMax(), soup.box().getMax());
      if (coloring == PoMesh::COLOR_AVERAGE) {
        EXPECT_NEAR(soup.colorAt(3.5F, 3.5F)[0], greyOf(38.5F), 1e-5) << "colours stay with their cells";
      }
    }
  }
}

TEST_F(FilledTest, HeightsComeFromTheSetThatIsAsked) {
  TestGrid grid = TestGrid::unitCells(3, 3);
  grid.z.assign(9, 5.0F);
  const auto mesh = grid.make();
  const std::vector<float> heights(9, 7.0F), cells(4, 9.0F);
  mesh->addValuesSet(3, heights.data(), "heights");
  mesh->addValuesSet(4, cells.data(), PbMesh::PER_CELL, "cells");
  const auto heightDrawn = [&](int zValuesIndex) {
    kit->zValuesIndex = static_cast<short>(zValuesIndex);
    return draw(mesh.get(), PoMesh::COLOR_INHERITED).triangles.at(0)[0].point[2];
  };
  EXPECT_EQ(heightDrawn(-1), 5);
  EXPECT_EQ(heightDrawn(3), 7);
  EXPECT_EQ(heightDrawn(4), 5) << "bound to cells";
  EXPECT_EQ(heightDrawn(99), 5) << "not there";
}

TEST_F(FilledTest, WithoutUsableValuesTheMaterialIsInherited) {
  const auto mesh = TestGrid::unitCells(3, 3).make();
  const std::vector<float> cells(4, 9.0F);
  mesh->addValuesSet(1, cells.data(), PbMesh::PER_CELL, "cells");
  EXPECT_EQ(draw(mesh.get(), PoMesh::COLOR_CONTOURING).numColors(), 9) << "no isovalues: mapped";

  kit->valuesIndex = 1;
  EXPECT_EQ(Soup::of(kit.get()).numColors(), 1) << "bound to cells";
  kit->valuesIndex = 7;
  EXPECT_EQ(Soup::of(kit.get()).numColors(), 1) << "not there";
  kit->valuesIndex = -1;
  EXPECT_EQ(Soup::of(kit.get()).numColors(), 1) << "none asked";
  kit->valuesIndex = 0;
  kit->setDataMapping(nullptr);
  EXPECT_EQ(Soup::of(kit.get()).numColors(), 1) << "no mapping";
  EXPECT_EQ(material(), nullptr);
}

// A borrowing mesh keeps its sets when its nodes become more than their values.
TEST_F(FilledTest, SetsThatAreTooShortAreNotRead) {
  const std::vector<float> values = {1, 2, 3, 4};
  const TestGrid large = TestGrid::unitCells(40, 40);
  PbCartesianGrid2D mesh(2, 2, large.x.data(), large.y.data(), 0);
  mesh.addValuesSet(0, values.data(), "values");
  mesh.setGeometry(40, 40, large.x.data(), large.y.data());
  kit->zValuesIndex = 0;
  const Soup soup = draw(&mesh, PoMesh::COLOR_MAPPING);
  EXPECT_EQ(soup.numColors(), 1);
  EXPECT_NEAR(soup.area(), 39 * 39, 1e-3);
}

TEST_F(FilledTest, DegenerateMeshesDrawNothingAndDoNoHarm) {
  struct Row {
    int numX, numY;
    float coordinate;
  };
  for (const Row& row : {Row{0, 0, 0}, Row{1, 1, 1}, Row{1, 5, 1}, Row{5, 1, 1}, Row{3, 3, 0}, Row{3, 3, kNaN},
                         Row{3, 3, 1e-45F}, Row{2, 2, 3e38F}}) {
    SCOPED_TRACE(testing::Message() << row.numX << " x " << row.numY << " times " << row.coordinate);
    TestGrid grid = TestGrid::unitCells(row.numX, row.numY);
    for (float& x : grid.x) x *= row.coordinate;
    const auto mesh = grid.make();
    for (const int coloring : kColorings) {
      kit->useOverallNormal = coloring % 2;
      const Soup soup = draw(mesh.get(), coloring);
      EXPECT_EQ(soup.triangles.empty(), row.numX < 2 || row.numY < 2 || std::isnan(row.coordinate));
      for (const SoupTriangle& triangle : soup.triangles)
        for (const SoupVertex& vertex : triangle)
          EXPECT_TRUE(std::isfinite(vertex.point.length()) || row.coordinate > 2);
      SoGetBoundingBoxAction box(SbViewportRegion(100, 100));
      box.apply(kit.get());
      SoRayPickAction pick(SbViewportRegion(100, 100));
      pick.setRay(SbVec3f(0.5F, 0.5F, 10), SbVec3f(0, 0, -1));
      pick.apply(kit.get());
    }
  }
}

}  // namespace
