#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <gtest/gtest.h>

#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

class MeshKitFileTest : public testing::Test {
 protected:
  MeshKitFileTest() : mesh(2, 2, 0, 0, 1, 1, 1) {
    const float values[4] = {0, 1, 2, 3};
    mesh.addValuesSet(0, values, "values");
    mapping.setValues(0, SbColor(0, 0, 0), 4, SbColor(1, 1, 1));
    kit->setMesh(&mesh);
    kit->setDataMapping(&mapping);
    kit->valuesIndex = 0;
    kit->coloringType = PoMesh::COLOR_MAPPING;
    root->addChild(kit.get());
  }
  ~MeshKitFileTest() override { PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS); }

  std::string write(PoBase::NodeWriteFormat format) {
    PoBase::setNodeWriteFormat(format);
    return textOf(root.get());
  }
  static PoMeshFilled* kitIn(const NodePtr<SoSeparator>& scene) {
    return scene ? static_cast<PoMeshFilled*>(scene->getChild(0)) : nullptr;
  }

  PbRegularCartesianGrid2D mesh;
  PbLinearDataMapping mapping;
  NodePtr<PoMeshFilled> kit{new PoMeshFilled};
  NodePtr<SoSeparator> root{new SoSeparator};
};

TEST_F(MeshKitFileTest, FieldsAreWrittenWithoutWhatTheyMake) {
  const std::string text = write(PoBase::WRITE_FIELDS);
  EXPECT_EQ(text.find("QuadMesh"), std::string::npos) << text;
  EXPECT_EQ(text.find("Material"), std::string::npos) << text;
  const NodePtr<SoSeparator> scene = sceneOf(text);
  ASSERT_NE(kitIn(scene), nullptr);
  EXPECT_EQ(kitIn(scene)->valuesIndex.getValue(), 0);
  EXPECT_EQ(kitIn(scene)->coloringType.getValue(), PoMesh::COLOR_MAPPING);
  kitIn(scene)->setMesh(&mesh);
  kitIn(scene)->setDataMapping(&mapping);
  EXPECT_EQ(Soup::of(scene.get()).numColors(), 4);
}

TEST_F(MeshKitFileTest, GeometryIsWrittenWithoutWhatMadeIt) {
  const std::string text = write(PoBase::WRITE_GEOMETRY);
  for (const char* field : {"valuesIndex 0", "coloringType COLOR_MAPPING"})
    EXPECT_EQ(text.find(field), std::string::npos) << text;
  const NodePtr<SoSeparator> scene = sceneOf(text);
  ASSERT_NE(kitIn(scene), nullptr);
  const Soup soup = Soup::of(scene.get());
  EXPECT_EQ(soup.triangles.size(), 2U);
  EXPECT_EQ(soup.numColors(), 4);
  EXPECT_EQ(write(PoBase::WRITE_GEOMETRY), text) << "the flags of the write are gone";
  EXPECT_NE(write(PoBase::WRITE_FIELDS).find("valuesIndex 0"), std::string::npos);

  PbRegularCartesianGrid2D other(4, 4, 0, 0, 1, 1, 1);
  kitIn(scene)->setMesh(&other);
  EXPECT_EQ(Soup::of(scene.get()).triangles.size(), 18U) << "an input has changed";
}

}  // namespace
