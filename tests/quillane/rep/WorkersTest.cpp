#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PoMesh2D.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>

#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiMeshScratch.h"
#include "quillane/rep/TestGrid.h"
#include "support/NodePtr.h"

/// A kit whose rebuild is what the test says.
class ProbeKit : public PoMesh2D {
  PO_KIT_HEADER(ProbeKit, PoMesh2D);

 public:
  ProbeKit() {
    PO_KIT_CONSTRUCTOR(ProbeKit);
    PO_KIT_CONSTRUCTED(ProbeKit);
    beginWatching();
  }
  void rebuild() override {
    preRebuild();
    PiRebuildScope scope;
    NodePtr<SoGroup> group(new SoGroup);
    nodes().group = group.get();
    if (work) work(nodes());
    clearZelNodes();
    postRebuild();
  }

  std::function<void(PiMeshNodes&)> work;

 protected:
  ~ProbeKit() override = default;
};

PO_KIT_SOURCE(ProbeKit)

namespace {

class WorkersTest : public testing::Test {
 protected:
  WorkersTest() {
    PoBase::init();
    ProbeKit::initClass();
    kit.reset(new ProbeKit);
  }
  ~WorkersTest() override {
    kit.reset();
    ProbeKit::exitClass();
    PoBase::finish();
  }
  NodePtr<ProbeKit> kit;
};

TEST_F(WorkersTest, MapColorFillsAMaterialFromGivenOrCollectedValues) {
  auto mapping = greyMapping();
  mapping->setMinThreshold(0);
  mapping->enableThresholds(1, 0);
  kit->setDataMapping(mapping.get());
  kit->work = [this](PiMeshNodes& nodes) {
    kit->mapColor(0, nullptr, 1);
    EXPECT_EQ(nodes.material, nullptr) << "no values at all";
    for (int i = 0; i < 1200; ++i) PoMesh::push_back_value(static_cast<float>(i % 100));
    kit->mapColor(0, nullptr, 1);
    NodePtr<SoMaterial> material(nodes.material);
    ASSERT_TRUE(material);
    ASSERT_EQ(material->diffuseColor.getNum(), 1200);
    EXPECT_NEAR(material->diffuseColor[1150][0], 0.5, 1e-6) << "the collection grew and kept its values";
    ASSERT_EQ(material->transparency.getNum(), 1200) << "some values have no colour";
    EXPECT_EQ(material->transparency[1100], 1);
    EXPECT_EQ(material->transparency[1150], 0);

    const float value = 20;
    kit->mapColor(1, &value, 0);
    EXPECT_EQ(nodes.material, material.get());
    EXPECT_EQ(material->diffuseColor.getNum(), 1);
  };
  kit->rebuild();
  kit->work = [](PiMeshNodes&) { EXPECT_EQ(PiMeshScratch::numValues(), 0) << "each rebuild starts anew"; };
  kit->rebuild();
}

TEST_F(WorkersTest, NormalsAreOfFirstThreePointsAndUnitLength) {
  kit->work = [this](PiMeshNodes& nodes) {
    NodePtr<SoCoordinate3> points(new SoCoordinate3);
    const float coordinates[][3] = {{0, 0, 0}, {2, 0, 0}, {2, 3, 0}, {0, 0, 5}};
    points->point.setValues(0, 4, coordinates);
    NodePtr<SoIndexedFaceSet> faces(new SoIndexedFaceSet);
    const int32_t indices[] = {0, 1, 2, -1, 0, 1, 3, 2, -1, 0, 1, -1, 0, 0, 0, -1, 7, 8, 9, -1};
    faces->coordIndex.setValues(0, 20, indices);
    nodes.group->addChild(points.get());
    kit->computeNormal(faces.get(), points.get());
    EXPECT_EQ(childTypes(nodes.group), "NormalBinding Normal Coordinate3");
    EXPECT_EQ(nodes.normalBinding->value.getValue(), SoNormalBinding::PER_FACE);
    ASSERT_EQ(nodes.normal->vector.getNum(), 5);
    // (first - second) x (third - first)
    EXPECT_EQ(nodes.normal->vector[0], SbVec3f(0, 0, -1));
    EXPECT_EQ(nodes.normal->vector[1], SbVec3f(0, 1, 0));
    for (int i = 2; i < 5; ++i) EXPECT_EQ(nodes.normal->vector[i], SbVec3f(0, 0, 1)) << "no plane";
  };
  kit->rebuild();
}

TEST_F(WorkersTest, IndicesHandedOverOutliveTheKit) {
  NodePtr<SoIndexedFaceSet> faces(new SoIndexedFaceSet);
  const std::size_t before = kit->getMemorySize();
  for (int i = 0; i < 1000; ++i) kit->push_back_coord_index(i);
  EXPECT_GE(kit->getMemorySize(), before + 4000);
  kit->update_coord_index(faces.get());
  kit->push_back_coord_index(77);
  ASSERT_EQ(faces->coordIndex.getNum(), 1000);
  EXPECT_EQ(faces->coordIndex[0], 0);
  kit.reset();
  EXPECT_EQ(faces->coordIndex[999], 999);
  faces->coordIndex.set1Value(5000, 3);
  EXPECT_EQ(faces->coordIndex[999], 999);
  faces->coordIndex.setNum(3);
}

TEST_F(WorkersTest, TheVectorBufferOnlyGrows) {
  SbVec3f* first = kit->newSbVec3f(10);
  first[9].setValue(1, 2, 3);
  EXPECT_EQ(kit->newSbVec3f(5), first);
  EXPECT_EQ(kit->newSbVec3f(0), nullptr);
  SbVec3f* larger = kit->newSbVec3f(100000);
  larger[99999].setValue(1, 2, 3);
  EXPECT_EQ(kit->getMemorySize(), 100000U * 12);
}

TEST_F(WorkersTest, CoordinatesComeFromTheMesh) {
  const TestGrid grid = TestGrid::unitCells(3, 2);
  const auto mesh = grid.make();
  kit->setMesh(mesh.get());
  kit->work = [&](PiMeshNodes& nodes) {
    kit->makeSoCoordinate3(grid.values.data());
    NodePtr<SoCoordinate3> made(nodes.coordinate);
    ASSERT_EQ(made->point.getNum(), 6);
    EXPECT_EQ(made->point[3], SbVec3f(1, 1, 11));
    kit->makeSoCoordinate3(nullptr);
    NodePtr<SoCoordinate3> flat(nodes.coordinate);
    EXPECT_EQ(flat->point[3], SbVec3f(1, 1, 0));
  };
  kit->rebuild();
}

TEST_F(WorkersTest, IsovaluesAreMovedOffTheValuesAndTheListStays) {
  PbIsovaluesList list(1, 3, 3);
  kit->setIsovaluesList(&list);
  kit->work = [&](PiMeshNodes&) {
    const float values[] = {1, 2.5F}, more[] = {4};
    EXPECT_EQ(kit->adjustIsovalList(2, values, 1, more, 0, nullptr), 1);
    int num = 0;
    const float* adjusted = kit->getAdjustedIsovalues(num);
    ASSERT_EQ(num, 3);
    EXPECT_FLOAT_EQ(adjusted[0], 1.015F);
    EXPECT_EQ(adjusted[1], 2);
  };
  kit->rebuild();
  EXPECT_EQ(list.getLowerIsovalue(1.01F), 1);
}

TEST_F(WorkersTest, CreaseAngleStartsFromTheEnvironment) {
  struct Row {
    const char* text;
    float angle;
  };
  for (const Row& row :
       {Row{"0.5", 0.5F}, Row{" +1.25rad", 1.25F}, Row{"", 0}, Row{"flat", 0}, Row{"nan", 0}, Row{"-1e99", 0}}) {
    setenv("ZEL_QUILLANE_CREASE_ANGLE", row.text, 1);
    EXPECT_EQ(NodePtr<ProbeKit>(new ProbeKit)->creaseAngle.getValue(), row.angle) << row.text;
  }
  unsetenv("ZEL_QUILLANE_CREASE_ANGLE");
  EXPECT_EQ(NodePtr<ProbeKit>(new ProbeKit)->creaseAngle.getValue(), 0);
}

}  // namespace
