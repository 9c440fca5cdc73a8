#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Ormelle/PbTriangleMesh2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLimit.h>
#include <Ormelle/PoMeshLines.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "quillane/rep/TestGrid.h"
#include "support/NodePtr.h"
#include "support/Soup.h"

// What the kits make of meshes whose cells differ.

namespace {

// A square; a triangle the other way round; cells of seven nodes, of a node that doesn't exist and of one without a
// place; a triangle above.
struct OddMesh {
  std::vector<float> x = {0, 1, 1, 0, 2, 0.5F, std::nanf("")}, y = {0, 0, 1, 1, 0, 2, 9};
  std::vector<int> nodes = {0, 1, 2, 3, 1, 2, 4, 0, 1, 2, 3, 4, 5, 6, 0, 1, 7, 1, 4, 6, 3, 2, 5};
  std::vector<int> sizes = {4, 3, 7, 3, 3, 3};
  std::vector<float> values = {10, 20, 30, 40, 70, 80, 0};
  PbIndexedMesh2D mesh{7, x.data(), y.data(), 6, nodes.data(), sizes.data(), 1};

  OddMesh() { mesh.addValuesSet(0, values.data(), "values"); }
};

class IndexedKitTest : public testing::Test {
 protected:
  template <class Kit>
  Soup draw(NodePtr<Kit>& kit, PbMesh2D& mesh, int coloring) {
    kit->setMesh(&mesh);
    kit->setDataMapping(mapping.get());
    kit->valuesIndex = 0;
    kit->coloringType = coloring;
    return Soup::of(kit.get());
  }
  template <class Node>
  Node* child(int index) {
    auto* group = static_cast<SoGroup*>(filled->getPart("groupFilled", FALSE));
    return dynamic_cast<Node*>(group->getChild(index));
  }

  std::unique_ptr<PbLinearDataMapping> mapping = greyMapping();
  OddMesh odd;
  NodePtr<PoMeshFilled> filled{new PoMeshFilled};
  NodePtr<PoMeshLines> lines{new PoMeshLines};
};

double turnOf(const SoupTriangle& triangle) {
  const SbVec3f a = triangle[1].point - triangle[0].point, b = triangle[2].point - triangle[0].point;
  return double(a[0]) * b[1] - double(a[1]) * b[0];
}

}  // namespace

TEST_F(IndexedKitTest, OnlyCellsWithAnObjectAreDrawn) {
  for (const int coloring : {PoMesh::COLOR_INHERITED, PoMesh::COLOR_AVERAGE, PoMesh::COLOR_MAPPING}) {
    const Soup soup = draw(filled, odd.mesh, coloring);
    EXPECT_NEAR(soup.area(), 2, 1e-6);
    EXPECT_TRUE(soup.isFinite());
  }
  EXPECT_EQ(draw(lines, odd.mesh, PoMesh::COLOR_INHERITED).segments.size(), 4U + 3 + 3);
  EXPECT_EQ(draw(lines, odd.mesh, PoMesh::COLOR_MAPPING).segments.size(), 4U + 3 + 3);
  NodePtr<PoMeshLimit> limit{new PoMeshLimit};
  limit->setMesh(&odd.mesh);
  EXPECT_TRUE(Soup::of(limit.get()).isFinite());
}

TEST_F(IndexedKitTest, AverageColorsAreOfTheCellsOwnNodes) {
  const Soup soup = draw(filled, odd.mesh, PoMesh::COLOR_AVERAGE);
  EXPECT_NEAR(soup.colorAt(0.4F, 0.3F)[0], greyOf(25), 1e-6);
  EXPECT_NEAR(soup.colorAt(1.3F, 0.2F)[0], greyOf(40), 1e-6);
  EXPECT_NEAR(soup.colorAt(0.5F, 1.2F)[0], greyOf(50), 1e-6);
  auto* binding = child<SoMaterialBinding>(1);
  ASSERT_NE(binding, nullptr);
  EXPECT_EQ(binding->value.getValue(), int(SoMaterialBinding::PER_PART));
}

TEST_F(IndexedKitTest, CellsOfAKnownOrientationRunCounterClockwise) {
  int numClockwise = 0;
  for (const SoupTriangle& triangle : draw(filled, odd.mesh, PoMesh::COLOR_INHERITED).triangles)
    numClockwise += turnOf(triangle) < 0;
  EXPECT_EQ(numClockwise, 1);
  odd.mesh.setElemOrientation(PbIndexedMesh2D::ORIENTATION_COUNTERCLOCKWISE);
  const Soup soup = draw(filled, odd.mesh, PoMesh::COLOR_AVERAGE);
  ASSERT_EQ(soup.triangles.size(), 4U);
  for (const SoupTriangle& triangle : soup.triangles) EXPECT_GT(turnOf(triangle), 0);
  EXPECT_NEAR(soup.colorAt(1.3F, 0.2F)[0], greyOf(40), 1e-6);
  auto* faces = child<SoIndexedFaceSet>(3);
  ASSERT_NE(faces, nullptr);
  const std::int32_t* indices = faces->coordIndex.getValues(0);
  EXPECT_EQ(std::vector<int>(indices, indices + faces->coordIndex.getNum()),
            (std::vector<int>{0, 1, 2, 3, -1, 1, 4, 2, -1, 3, 2, 5, -1}));
}

TEST_F(IndexedKitTest, FollowNewCellsAndCoordinates) {
  EXPECT_NEAR(draw(filled, odd.mesh, PoMesh::COLOR_INHERITED).area(), 2, 1e-6);
  for (float& x : odd.x) x *= 3;
  odd.mesh.setVertices(odd.x.data(), odd.y.data());
  EXPECT_NEAR(Soup::of(filled.get()).area(), 6, 1e-5);
  odd.mesh.setGeometry(7, odd.x.data(), odd.y.data(), 1, odd.nodes.data(), odd.sizes.data());
  EXPECT_NEAR(Soup::of(filled.get()).area(), 3, 1e-5);
  odd.mesh.setGeometry(7, odd.x.data(), odd.y.data(), 0, nullptr, nullptr);
  EXPECT_TRUE(Soup::of(filled.get()).triangles.empty());
}
