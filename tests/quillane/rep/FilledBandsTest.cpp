#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PoMeshFilled.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "quillane/rep/TestGrid.h"
#include "support/MeshFamily.h"
#include "support/NodePtr.h"
#include "support/Soup.h"

namespace {

/// A kit that shows its mesh in bands of isovalues 55, 60, ... 80.
class FilledBandsTest : public testing::Test {
 protected:
  FilledBandsTest() {
    isovalues.setRegularIsoList(55.0F, 80.0F, 6);
    kit->setDataMapping(mapping.get());
    kit->setIsovaluesList(&isovalues);
    kit->valuesIndex = 0;
    kit->coloringType = PoMesh::COLOR_CONTOURING;
  }
  Soup draw(PbMesh2D* mesh) {
    kit->setMesh(mesh);
    return Soup::of(kit.get());
  }
  float greyOfBand(float value) const { return std::max(0.0F, greyOf(isovalues.getLowerIsovalue(value))); }
  SoGroup* group() const { return static_cast<SoGroup*>(kit->getPart("groupFilled", FALSE)); }
  SoMaterial* material() const { return static_cast<SoMaterial*>(kit->getPart("appearance.material", FALSE)); }

  std::unique_ptr<PbLinearDataMapping> mapping = greyMapping();
  PbIsovaluesList isovalues;
  NodePtr<PoMeshFilled> kit{new PoMeshFilled};
};

/// The rectangle [1, 3] x [-2, 4] with values 50 + 10 x + y.
MeshSample<PbMesh2D> slope(const MeshKind2D& kind, const RectangleSpec& spec = RectangleSpec()) {
  MeshSample<PbMesh2D> sample = kind.make(spec, 1);
  std::vector<float> values;
  for (int node = 0; node < sample->getNumNodes(); ++node) {
    const SbVec3f point = sample->getNodeCoord(node);
    values.push_back(50 + 10 * point[0] + point[1]);
  }
  sample->addValuesSet(0, values.data(), "values");
  return sample;
}

TEST_F(FilledBandsTest, EveryMeshClassShowsTheColourOfTheIsovalueBelow) {
  for (const MeshKind2D& kind : meshKinds2D()) {
    for (const bool isRaised : {false, true}) {
      SCOPED_TRACE(kind.name + (isRaised ? " raised" : " flat"));
      RectangleSpec spec;
      if (isRaised) spec.z = [](float x, float y) { return 2 * x + y; };
      auto sample = slope(kind, spec);
      const Soup soup = draw(sample.mesh.get());
      EXPECT_NEAR(soup.area(), 12 * (isRaised ? std::sqrt(6.0) : 1), 1e-4);
      EXPECT_EQ(soup.numColors(), 6);
      for (float x = 1.06F; x < 3; x += 0.17F)
        for (float y = -1.97F; y < 4; y += 0.23F) {
          const float value = 50 + 10 * x + y;
          // Isovalues that are equal to values of nodes are cut a little above.
          if (value - isovalues.getLowerIsovalue(value) < 0.05F) continue;
          EXPECT_NEAR(soup.colorAt(x, y)[0], greyOfBand(value), 1e-5) << x << " " << y;
        }
    }
  }
}

TEST_F(FilledBandsTest, APolarGridIsThatOfItsNodes) {
  const PolarPair pair(true);
  isovalues.setRegularIsoList(1.0F, 60.0F, 23);
  const Soup polar = draw(pair.polar.get()), cartesian = draw(pair.cartesian.get());
  ASSERT_EQ(polar.triangles.size(), cartesian.triangles.size());
  ASSERT_GT(polar.numColors(), 3);
  for (std::size_t t = 0; t < polar.triangles.size(); ++t)
    for (std::size_t corner = 0; corner < 3; ++corner) {
      EXPECT_NEAR((polar.triangles[t][corner].point - cartesian.triangles[t][corner].point).length(), 0, 1e-5);
      EXPECT_EQ(polar.triangles[t][corner].color, cartesian.triangles[t][corner].color);
    }
}

TEST_F(FilledBandsTest, NodesStandInTheirOrderWithAColourForEachPolygon) {
  auto sample = slope(meshKinds2D()[0]);
  kit->useOverallNormal = TRUE;
  const Soup soup = draw(sample.mesh.get());
  EXPECT_EQ(childTypes(group()), "NormalBinding Normal ShapeHints MaterialBinding Coordinate3 IndexedFaceSet");
  const auto* shape = static_cast<SoIndexedFaceSet*>(group()->getChild(5));
  int numPolygons = 0;
  for (int i = 0; i < shape->coordIndex.getNum(); ++i) numPolygons += shape->coordIndex[i] < 0;
  EXPECT_GT(numPolygons, sample->getNumCells());
  EXPECT_EQ(material()->diffuseColor.getNum(), numPolygons);
  EXPECT_EQ(static_cast<SoMaterialBinding*>(group()->getChild(3))->value.getValue(), SoMaterialBinding::PER_FACE);
  EXPECT_GT(kit->getMemorySize(), 0U);
}

TEST_F(FilledBandsTest, WhatHasNoColourIsLeftOutAndItsBandsDoNotRiseToIt) {
  // Heights are the values, so that a wall would show.
  const auto mesh = TestGrid::unitCells(7, 2).make();  // nodes i and 10 + i
  kit->zValuesIndex = 0;
  isovalues.setRegularIsoList(0.0F, 20.0F, 41);
  mapping->setMaxThreshold(14);
  for (const bool isTransparent : {false, true}) {
    mapping->enableTransparency(isTransparent);
    mapping->enableThresholds(0, 1);
    const Soup soup = draw(mesh.get());
    EXPECT_LE(soup.box().getMax()[2], 13);
    EXPECT_NEAR(soup.box().getMax()[0], 4, 1e-6) << "half of the cell whose fourth node is 14";
    EXPECT_NE(soup.triangleAt(3.4F, 0.3F), nullptr);
    EXPECT_EQ(soup.triangleAt(3.8F, 0.9F), nullptr);
    mapping->enableThresholds(0, 0);
    EXPECT_EQ(draw(mesh.get()).box().getMax()[2], 16);
  }
}

TEST_F(FilledBandsTest, TransparenciesAreThoseOfTheBands) {
  auto sample = slope(meshKinds2D()[0]);
  mapping->setValues(0, SbColor(0, 0, 0), 0, 100, SbColor(1, 1, 1), 0.5F);
  mapping->enableTransparency(1);
  const Soup soup = draw(sample.mesh.get());
  for (const float x : {1.1F, 1.9F, 2.7F}) {
    const SoupTriangle* triangle = soup.triangleAt(x, 0.1F);
    ASSERT_NE(triangle, nullptr);
    EXPECT_NEAR(triangle->front().transparency, greyOfBand(50 + 10 * x + 0.1F) / 2, 1e-5);
  }
}

TEST_F(FilledBandsTest, FollowsItsIsovaluesAndColouring) {
  auto sample = slope(meshKinds2D()[5]);
  EXPECT_EQ(draw(sample.mesh.get()).numColors(), 6);
  isovalues.setRegularIsoList(70.0F, 75.0F, 2);
  EXPECT_EQ(Soup::of(kit.get()).numColors(), 3);
  kit->coloringType = PoMesh::COLOR_INHERITED;
  EXPECT_EQ(Soup::of(kit.get()).numColors(), 1);
  EXPECT_EQ(material(), nullptr);
  kit->coloringType = PoMesh::COLOR_CONTOURING;
  const Soup again = Soup::of(kit.get());
  EXPECT_EQ(again.numColors(), 3);
  EXPECT_NEAR(again.area(), 12, 1e-4);
  // Values above all isovalues, and no isovalues at all.
  isovalues.setRegularIsoList(1.0F, 2.0F, 2);
  EXPECT_EQ(Soup::of(kit.get()).numColors(), 1);
}

TEST_F(FilledBandsTest, DegenerateMeshesDoNoHarm) {
  const float greatest = std::numeric_limits<float>::max(), infinity = std::numeric_limits<float>::infinity();
  for (const float factor : {0.0F, 1e-45F, 1e30F, greatest, infinity, std::nanf("")})
    for (const bool areValues : {false, true}) {
      TestGrid grid = TestGrid::unitCells(4, 4);
      for (float& number : areValues ? grid.values : grid.x) number *= factor;
      const auto mesh = grid.make();
      const Soup soup = draw(mesh.get());
      for (const SoupTriangle& triangle : soup.triangles)
        for (const SoupVertex& vertex : triangle)
          for (int c = 0; c < 3; ++c) EXPECT_TRUE(std::isfinite(vertex.point[c]));
    }
}

}  // namespace
