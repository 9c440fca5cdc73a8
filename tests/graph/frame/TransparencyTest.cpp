// Parts that can hardly be seen are left out of generated shapes.

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PoBase.h>
#include <gtest/gtest.h>

#include <vector>

#include "support/NodePtr.h"

namespace {

using Indices = std::vector<int>;

Indices indicesOf(const SoMFInt32& field) { return Indices(field.getValues(0), field.getValues(0) + field.getNum()); }

/// One shape in a group, coloured by a material with these transparencies.
class TransparencyTest : public ::testing::Test {
 protected:
  TransparencyTest()
      : material(newNode<SoMaterial>()), binding(newNode<SoMaterialBinding>()), group(newNode<SoSeparator>()) {}
  template <class Node>
  static NodePtr<Node> newNode() {
    PoBase::init();
    NodePtr<Node> node(new Node);
    PoBase::finish();
    return node;
  }

  void setTransparencies(const std::vector<float>& values) {
    material->transparency.setValues(0, static_cast<int>(values.size()), values.data());
    material->diffuseColor.setNum(static_cast<int>(values.size()));
  }
  template <class Shape>
  Shape* add(const Indices& indices) {
    auto* shape = new Shape;
    shape->coordIndex.setValues(0, static_cast<int>(indices.size()), indices.data());
    group->addChild(shape);
    return shape;
  }
  template <class Shape>
  Shape* run(SoMaterialBinding::Binding how) {
    binding->value = how;
    SoShape* shape = PoBase::deleteTransparencyParts(&mapping, material.get(), binding.get(), group.get());
    if (!shape || !shape->isOfType(Shape::getClassTypeId())) return nullptr;
    EXPECT_EQ(group->getChild(0), shape);
    return static_cast<Shape*>(shape);
  }

  PbLinearDataMapping mapping;  // deletes from 0.95
  NodePtr<SoMaterial> material;
  NodePtr<SoMaterialBinding> binding;
  NodePtr<SoSeparator> group;
};

TEST_F(TransparencyTest, FacesGoByTheirOwnValue) {
  add<SoIndexedFaceSet>({0, 1, 2, -1, 3, 4, 5, 6, -1, 7, 8, 9});  // the last face isn't closed
  setTransparencies({0.5f, 0.95f, 0});
  const auto* left = run<SoIndexedFaceSet>(SoMaterialBinding::PER_FACE);
  ASSERT_NE(left, nullptr);
  EXPECT_EQ(indicesOf(left->coordIndex), Indices({0, 1, 2, -1, 7, 8, 9, -1}));
  EXPECT_EQ(indicesOf(left->materialIndex), Indices({0, 2}));
  EXPECT_EQ(binding->value.getValue(), SoMaterialBinding::PER_FACE_INDEXED);
  EXPECT_EQ(material->transparency.getNum(), 3) << "half transparent parts are left";
}

TEST_F(TransparencyTest, VerticesBreakFacesIntoRuns) {
  add<SoIndexedFaceSet>({0, 1, 2, 3, 4, 5, 6, 7, -1, 3, 0, 1, -1});
  setTransparencies({0, 0, 0, 1, 0, 0, 0, 0});
  const auto* left = run<SoIndexedFaceSet>(SoMaterialBinding::PER_VERTEX_INDEXED);
  ASSERT_NE(left, nullptr);
  EXPECT_EQ(indicesOf(left->coordIndex), Indices({0, 1, 2, -1, 4, 5, 6, 7, -1}));
  EXPECT_EQ(material->transparency.getNum(), 0) << "what is left is opaque";
}

TEST_F(TransparencyTest, QuadMeshBecomesStripsOfItsKeptCells) {
  auto* mesh = new SoQuadMesh;
  mesh->verticesPerRow = 3;
  mesh->verticesPerColumn = 3;
  group->addChild(mesh);
  setTransparencies({0, 1, 0, 0});  // of the 4 cells
  const auto* left = run<SoIndexedTriangleStripSet>(SoMaterialBinding::PER_FACE);
  ASSERT_NE(left, nullptr);
  EXPECT_EQ(indicesOf(left->coordIndex), Indices({0, 3, 1, 4, -1, 3, 6, 4, 7, -1, 4, 7, 5, 8, -1}));
  EXPECT_EQ(indicesOf(left->materialIndex), Indices({0, 2, 3}));
  EXPECT_EQ(binding->value.getValue(), SoMaterialBinding::PER_PART_INDEXED);
}

TEST_F(TransparencyTest, QuadMeshCellsWithThreeKeptCornersBecomeTriangles) {
  auto* mesh = new SoQuadMesh;
  mesh->verticesPerRow = 3;
  mesh->verticesPerColumn = 2;
  group->addChild(mesh);
  setTransparencies({1, 0, 0, 0, 0, 0});
  const auto* left = run<SoIndexedTriangleStripSet>(SoMaterialBinding::PER_VERTEX_INDEXED);
  ASSERT_NE(left, nullptr);
  EXPECT_EQ(indicesOf(left->coordIndex), Indices({3, 1, 4, -1, 1, 4, 2, 5, -1}));
}

TEST_F(TransparencyTest, LinesKeepTheirKeptSegments) {
  add<SoIndexedLineSet>({0, 1, 2, 3, -1, 4, 5, -1});
  setTransparencies({0.2f, 1, 0.2f, 0.2f});
  const auto* left = run<SoIndexedLineSet>(SoMaterialBinding::PER_PART);
  ASSERT_NE(left, nullptr);
  EXPECT_EQ(indicesOf(left->coordIndex), Indices({0, 1, -1, 2, 3, -1, 4, 5, -1}));
  EXPECT_EQ(indicesOf(left->materialIndex), Indices({0, 2, 3}));
}

TEST_F(TransparencyTest, EverythingMayGo) {
  add<SoIndexedTriangleStripSet>({0, 1, 2, 3, -1});
  setTransparencies({1, 1, 1, 1});
  const auto* left = run<SoIndexedTriangleStripSet>(SoMaterialBinding::PER_VERTEX_INDEXED);
  ASSERT_NE(left, nullptr);
  EXPECT_EQ(left->coordIndex.getNum(), 0);
}

TEST_F(TransparencyTest, NothingToDo) {
  add<SoIndexedFaceSet>({0, 1, 2, -1});
  setTransparencies({1, 1, 1});
  EXPECT_EQ(run<SoShape>(SoMaterialBinding::OVERALL), nullptr);
  mapping.setTransparencyValueDeletedParts(1.5f);
  EXPECT_EQ(run<SoShape>(SoMaterialBinding::PER_VERTEX_INDEXED), nullptr);
  mapping.setTransparencyValueDeletedParts(1.0f);
  EXPECT_NE(run<SoShape>(SoMaterialBinding::PER_VERTEX_INDEXED), nullptr);
  material->transparency.setNum(1);
  EXPECT_EQ(run<SoShape>(SoMaterialBinding::PER_VERTEX_INDEXED), nullptr) << "fewer transparencies than colours";
  EXPECT_EQ(PoBase::deleteTransparencyParts(nullptr, material.get(), binding.get(), group.get()), nullptr);
  EXPECT_EQ(PoBase::deleteTransparencyParts(&mapping, nullptr, binding.get(), group.get()), nullptr);
}

}  // namespace
