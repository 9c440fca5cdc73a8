#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoMeshSkeleton.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <map>
#include <vector>

#include "support/MeshFamily.h"
#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

class LowerHalf : public PoCellFilter {
 public:
  explicit LowerHalf(const PbMesh3D& mesh) : m_mesh(mesh) {}
  int acceptCell(int cell, float) const override {
    const SbBox3f box = const_cast<PbCell*>(m_mesh.getCell(cell))->getBoundingBox();
    return (box.getMin()[2] + box.getMax()[2]) / 2 < 2.5F;
  }

 private:
  const PbMesh3D& m_mesh;
};

/// The length of the lines at each place along an axis that they are all across.
std::map<float, double> lengthsAcross(const Soup& soup, int axis) {
  std::map<float, double> lengths;
  for (const SoupSegment& segment : soup.segments)
    if (segment[0].point[axis] == segment[1].point[axis]) lengths[segment[0].point[axis]] += lengthOf(segment);
  return lengths;
}

class SkeletonTest : public testing::TestWithParam<MeshKind3D> {
 protected:
  SkeletonTest() {
    mapping.setValues(0, SbColor(0, 0, 0), 100, SbColor(1, 1, 1));
    root->addChild(kit.get());
  }
  /// Shows a box of odd numbers of nodes, so that no plane meets one.
  MeshSample<PbMesh3D> show() {
    BoxSpec spec;
    spec.numX = 6, spec.numY = 8, spec.numZ = 5;
    auto sample = GetParam().make(spec, 1);
    std::vector<float> values;
    for (int node = 0; node < sample->getNumNodes(); ++node) {
      const SbVec3f point = sample->getNodeCoord(node);
      values.push_back(30 + 10 * point[0] + 2 * point[1] + 3 * point[2]);
    }
    sample->addValuesSet(0, values.data(), "nodes");
    kit->setMesh(sample.mesh.get());
    kit->setDataMapping(&mapping);
    kit->valuesIndex = 0;
    return sample;
  }
  Soup draw() { return Soup::of(root.get()); }
  SoGroup* group(const char* part) const { return static_cast<SoGroup*>(kit->getPart(part, FALSE)); }

  PbLinearDataMapping mapping;
  NodePtr<PoMeshSkeleton> kit{new PoMeshSkeleton};
  NodePtr<SoSeparator> root{new SoSeparator};
};

TEST_P(SkeletonTest, CutsTheBoxInTheMiddlesOfEqualSlices) {
  const auto sample = show();
  kit->numYContour = 2;
  kit->numZContour = 1;
  const std::map<float, double> expected[3] = {
      {{1 + 1.0F / 3, 22}, {2, 22}, {3 - 1.0F / 3, 22}}, {{-0.5F, 14}, {2.5F, 14}}, {{2.5F, 16}}};
  for (const int coloring : {PoMesh::COLOR_INHERITED, PoMesh::COLOR_AVERAGE, PoMesh::COLOR_MAPPING,
                             PoMesh::COLOR_CONTOURING, PoMesh::COLOR_TEXTURE_CONTOURING}) {
    kit->coloringType = coloring;
    const Soup soup = draw();
    double whole = 0;
    for (int axis = 0; axis < 3; ++axis)
      for (const auto& [place, length] : expected[axis]) {
        whole += length;
        double drawn = 0;
        for (const auto& [at, sum] : lengthsAcross(soup, axis))
          if (std::abs(at - place) < 1e-5F) drawn += sum;
        EXPECT_NEAR(drawn, length, 1e-3) << "axis " << axis << " at " << place;
      }
    EXPECT_NEAR(soup.length(), whole, 1e-3) << "and nothing else";
    if (coloring == PoMesh::COLOR_INHERITED || coloring == PoMesh::COLOR_TEXTURE_CONTOURING) continue;
    for (const SoupSegment& segment : soup.segments)
      for (const SoupVertex& vertex : segment)
        EXPECT_NEAR(vertex.color[0], (30 + 10 * vertex.point[0] + 2 * vertex.point[1] + 3 * vertex.point[2]) / 100,
                    1e-4);
  }
  EXPECT_EQ(group("skeletonXContourGroup")->getNumChildren(), 3);
}

TEST_P(SkeletonTest, DrawsAsManyPlanesAsAreAskedFor) {
  const auto sample = show();
  for (const int num : {0, -4, INT_MIN}) {
    kit->numXContour = num;
    draw();
    ASSERT_NE(group("skeletonXContourGroup"), nullptr);
    EXPECT_EQ(group("skeletonXContourGroup")->getNumChildren(), 0);
    EXPECT_EQ(group("skeletonYContourGroup")->getNumChildren(), 3);
  }
  kit->numXContour = INT_MAX;
  draw();
  EXPECT_LE(group("skeletonXContourGroup")->getNumChildren(), 1000);
  kit->setMesh(nullptr);
  draw();
  for (const char* part : {"skeletonXContourGroup", "skeletonZContourGroup", "skeletonMaterialBinding"})
    EXPECT_EQ(kit->getPart(part, FALSE), nullptr);
}

TEST_P(SkeletonTest, FollowsTheFilterOfTheState) {
  const auto sample = show();
  const NodePtr<LowerHalf> filter(new LowerHalf(*sample.mesh));
  root->insertChild(filter.get(), 0);
  kit->numXContour = 1;
  kit->numYContour = kit->numZContour = 0;
  EXPECT_NEAR(draw().length(), GetParam().numParts == 1 ? 2 * (6 + 2.5) : draw().length(), 1e-3);
  EXPECT_LT(draw().length(), 20);
  root->removeChild(filter.get());
  EXPECT_NEAR(draw().length(), 22, 1e-3);
}

TEST_P(SkeletonTest, IsReadBackAsItWasWritten) {
  const auto sample = show();
  kit->numZContour = 7;
  draw();
  const std::string text = textOf(root.get());
  EXPECT_EQ(text.find("IndexedLineSet"), std::string::npos);
  const NodePtr<SoSeparator> read = sceneOf(text);
  ASSERT_TRUE(read);
  EXPECT_EQ(textOf(read.get()), text);
}

INSTANTIATE_TEST_SUITE_P(Meshes, SkeletonTest, testing::ValuesIn(meshKinds3D()), MeshKindName());

}  // namespace
