#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoBase.h>
#include <Ormelle/PoMesh2DVec.h>
#include <Ormelle/PoMesh3DVec.h>
#include <Ormelle/PoMesh3DVecCrossSection.h>
#include <Ormelle/PoMesh3DVecGridCrossSection.h>
#include <Ormelle/PoOrmelle.h>

#include "quillane/vector/PiGlyphEmitter.h"
#include "quillane/vector/PiGlyphShape.h"
#include "quillane/vector/PiVectorField.h"
#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

std::vector<int> indicesOf(const PiVectorField& field) {
  std::vector<int> indices;
  for (const PiVectorField::Vector& vector : field.vectors()) indices.push_back(vector.index);
  return indices;
}

TEST(VectorField, SkippedVectorsCountForTheDensity) {
  PiVectorField field;
  const auto indices = [&](const PiVectorField::Selection& selection) {
    field.start(selection);
    for (int i = 0; i < 10; ++i) field.add(SbVec3f(0, 0, 0), SbVec3f(static_cast<float>(i), 0, 0));
    return indicesOf(field);
  };
  PiVectorField::Selection selection;
  selection.density = 3;
  EXPECT_EQ(indices(selection), (std::vector<int>{0, 3, 6, 9}));
  selection.hasMin = true;
  selection.minLength = 3;  // the bound is inside
  EXPECT_EQ(indices(selection), (std::vector<int>{3, 6, 9}));
  selection.hasMax = true;
  selection.maxLength = 6;
  EXPECT_EQ(indices(selection), (std::vector<int>{3, 6}));
  selection.density = -5;
  EXPECT_EQ(indices(selection), (std::vector<int>{3, 4, 5, 6}));
}

TEST(VectorField, WhatIsNotFiniteIsLeftOut) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  PiVectorField field;
  field.start({});
  field.add(SbVec3f(0, 0, 0), SbVec3f(nan, 0, 0));
  field.add(SbVec3f(0, nan, 0), SbVec3f(1, 0, 0));
  field.add(SbVec3f(0, 0, 0), SbVec3f(3e38f, 3e38f, 0));
  field.add(SbVec3f(0, 0, 0), SbVec3f(0, 0, 0));
  EXPECT_EQ(indicesOf(field), (std::vector<int>{3}));

  PiVectorField::Selection constant;
  constant.isConstantLength = true;
  constant.lengthFactor = 2;
  field.start(constant);
  field.add(SbVec3f(0, 0, 0), SbVec3f(0, 0, 0));
  field.add(SbVec3f(0, 0, 0), SbVec3f(0, 0, 7));
  EXPECT_EQ(field.vectors()[0].along.length(), 0);
  EXPECT_FLOAT_EQ(field.vectors()[1].along.length(), 2);
  EXPECT_FLOAT_EQ(field.vectors()[1].module, 7);
}

/// Six times the volume inside of closed shapes whose faces run clockwise.
double enclosed(const PiGlyphShape& shape) {
  double sum = 0;
  std::vector<int> face;
  for (const int index : shape.indices) {
    if (index >= 0) {
      face.push_back(index);
      continue;
    }
    for (std::size_t i = 1; i + 1 < face.size(); ++i) {
      const SbVec3f& a = shape.points[static_cast<std::size_t>(face[0])];
      const SbVec3f& b = shape.points[static_cast<std::size_t>(face[i])];
      const SbVec3f& c = shape.points[static_cast<std::size_t>(face[i + 1])];
      sum -= a.dot(b.cross(c));
    }
    face.clear();
  }
  return sum;
}

TEST(GlyphShape, SolidsFaceOutwards) {
  const double pi = 3.14159265;
  EXPECT_NEAR(enclosed(PiGlyphShape::cone(64, 1, false)) / 6, pi / 3, 0.01);
  EXPECT_NEAR(enclosed(PiGlyphShape::cone(64, 1, true)) / 6, pi / 3, 0.01);
  EXPECT_NEAR(enclosed(PiGlyphShape::coarseCone(64, 1, false)) / 6, pi / 3, 0.01);
  EXPECT_NEAR(enclosed(PiGlyphShape::sphere(64)) / 6, pi * 4 / 3, 0.02);
  for (const PiGlyphShape& shape :
       {PiGlyphShape::cone(7, 0.5f, true), PiGlyphShape::sphere(5), PiGlyphShape::cylinder(3)}) {
    EXPECT_EQ(shape.normals.size(), shape.points.size());
    for (const SbVec3f& normal : shape.normals) EXPECT_NEAR(normal.length(), 1, 1e-6);
  }
}

class VectorKit : public ::testing::Test {
 protected:
  void SetUp() override { PoOrmelle::init(); }
  void TearDown() override {
    PoBase::setNumThreads(0);
    PoOrmelle::finish();
  }
};

TEST_F(VectorKit, LinesRunFromNodesAlongTheirVectors) {
  PbRegularCartesianGrid2D grid(3, 3, 0, 0, 2, 2, 1);
  std::vector<SbVec3f> vectors(9, SbVec3f(0.5f, 0, 0));
  vectors[4].setValue(0, 0, 0.25f);
  grid.addVecsSet(0, vectors.data(), "v");
  NodePtr<PoMesh2DVec> kit(new PoMesh2DVec);
  kit->setMesh(&grid);
  EXPECT_EQ(Soup::of(kit.get()).segments.size(), 0u) << "no set is named";
  kit->vecsIndex = 0;
  kit->endArrowShape = PoVectorGlyphs::NO_SHAPE;
  kit->bodyLengthFactor = 2;
  Soup soup = Soup::of(kit.get());
  EXPECT_EQ(soup.segments.size(), 9u);
  EXPECT_NEAR(soup.length(), 8 * 1 + 0.5, 1e-5);
  // Until it is set, the length is that of the spacing for the longest vector.
  kit->bodyLengthFactor.setDefault(TRUE);
  kit->bodyLengthFactor.touch();
  kit->bodyLengthFactor.setDefault(TRUE);
  kit->rebuild();
  const double spacing = std::sqrt(4.0 / 9);
  EXPECT_NEAR(Soup::of(kit.get()).length(), spacing * 8 + spacing / 2, 1e-4);
  kit->bodyLengthFactor = 0;
  EXPECT_EQ(Soup::of(kit.get()).segments.size(), 0u);
  ASSERT_NE(kit->getPart("bodyGroup", FALSE), nullptr);
}

TEST_F(VectorKit, ColoursAreThoseOfModuleOrValue) {
  PbRegularCartesianGrid2D grid(2, 2, 0, 0, 1, 1, 1);
  const SbVec3f vectors[] = {SbVec3f(1, 0, 0), SbVec3f(2, 0, 0), SbVec3f(3, 0, 0), SbVec3f(4, 0, 0)};
  const float values[] = {4, 0, 0, 0};
  grid.addVecsSet(0, vectors, "v");
  grid.addValuesSet(0, values, "s");
  PbLinearDataMapping mapping;
  mapping.setValues(0, SbColor(0, 0, 0), 4, SbColor(1, 0, 0));
  NodePtr<PoMesh2DVec> kit(new PoMesh2DVec);
  kit->setMesh(&grid);
  kit->setDataMapping(&mapping);
  kit->vecsIndex = 0;
  kit->valuesIndex = 0;
  kit->endArrowShape = PoVectorGlyphs::TRIANGLE;
  kit->bodyColoringType = PoVectorGlyphs::MODULE_MAPPING_COLOR;
  kit->endArrowColoringType = PoVectorGlyphs::SCALAR_MAPPING_COLOR;
  Soup soup = Soup::of(kit.get());
  ASSERT_EQ(soup.segments.size(), 4u);
  ASSERT_EQ(soup.triangles.size(), 4u);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_NEAR(soup.segments[i][0].color[0], static_cast<float>(i + 1) / 4, 1e-3);
    EXPECT_NEAR(soup.triangles[i][0].color[0], values[i] / 4, 1e-3);
  }
  // Without a mapping colours are inherited.
  kit->setDataMapping(nullptr);
  soup = Soup::of(kit.get());
  EXPECT_EQ(soup.segments.size(), 4u);
  EXPECT_EQ(soup.numColors(), 1);
}

TEST_F(VectorKit, EveryShapeIsFiniteAndTheSameForAnyNumberOfThreads) {
  PbRegularCartesianGrid3D grid(12, 12, 12, 0, 0, 0, 1, 1, 1, 1);
  std::vector<SbVec3f> vectors(1728);
  for (std::size_t i = 0; i < vectors.size(); ++i)
    vectors[i].setValue(std::sin(static_cast<float>(i)), std::cos(static_cast<float>(3 * i)),
                        static_cast<float>(i % 5) - 2);
  vectors[7].setValue(0, 0, 0);
  vectors[8].setValue(0, 0, 1);
  grid.addVecsSet(0, vectors.data(), "v");
  NodePtr<PoMesh3DVec> kit(new PoMesh3DVec);
  kit->setMesh(&grid);
  kit->vecsIndex = 0;
  kit->bodyShape = PoVectorGlyphs::CYLINDER;
  for (const int shape : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}) {
    kit->startArrowShape = shape;
    kit->endArrowShape = shape;
    PoBase::setNumThreads(1);
    const Soup one = Soup::of(kit.get());
    EXPECT_TRUE(one.isFinite()) << shape;
    PoBase::setNumThreads(3);
    kit->rebuild();
    const Soup three = Soup::of(kit.get());
    ASSERT_EQ(one.triangles.size(), three.triangles.size());
    for (std::size_t i = 0; i < one.triangles.size(); i += 97)
      for (int k = 0; k < 3; ++k)
        ASSERT_EQ(one.triangles[i][static_cast<std::size_t>(k)].point,
                  three.triangles[i][static_cast<std::size_t>(k)].point);
  }
}

/// A linear field is interpolated without error, wherever a plane or a grid takes it.
TEST_F(VectorKit, SectionsTakeVectorsFromThePlane) {
  PbRegularCartesianGrid3D grid(9, 9, 9, 0, 0, 0, 4, 4, 4, 1);
  std::vector<SbVec3f> vectors;
  std::vector<float> values;
  for (int i = 0; i < 729; ++i) {
    const SbVec3f p = grid.getNodeCoord(i);
    vectors.push_back(SbVec3f(p[1], -p[0], 2));
    values.push_back(p[0]);
  }
  grid.addVecsSet(0, vectors.data(), "v");
  grid.addValuesSet(0, values.data(), "s");
  PbLinearDataMapping mapping;
  mapping.setValues(0, SbColor(0, 0, 0), 4, SbColor(1, 0, 0));
  const SbVec3f normal(0.6f, 0, 0.8f);
  for (const bool isGrid : {false, true}) {
    NodePtr<PoMesh3DVecCrossSection> kit(isGrid ? new PoMesh3DVecGridCrossSection : new PoMesh3DVecCrossSection);
    kit->setMesh(&grid);
    kit->setDataMapping(&mapping);
    kit->vecsIndex = 0;
    kit->valuesIndex = 0;
    kit->bodyLengthFactor = 0.5f;
    kit->bodyColoringType = PoVectorGlyphs::SCALAR_MAPPING_COLOR;
    kit->endArrowShape = PoVectorGlyphs::NO_SHAPE;
    kit->plane = SbPlane(normal, 2.03f);
    for (const int projection : {0, 1, 2}) {
      kit->projectionType = projection;
      const Soup soup = Soup::of(kit.get());
      EXPECT_GE(soup.segments.size(), 25u);
      for (const SoupSegment& segment : soup.segments) {
        const SbVec3f from = segment[0].point;
        SbVec3f expected = SbVec3f(from[1], -from[0], 2) * 0.5f;
        if (projection == 1) expected -= normal * expected.dot(normal);
        if (projection == 2) expected = normal * expected.dot(normal);
        EXPECT_NEAR(from.dot(normal), 2.03f, 1e-4);
        EXPECT_LT((segment[1].point - from - expected).length(), 1e-4);
        EXPECT_NEAR(segment[0].color[0], from[0] / 4, 2e-3);
      }
    }
    kit->plane = SbPlane(normal, 99);
    EXPECT_EQ(Soup::of(kit.get()).segments.size(), 0u);
  }
}

TEST_F(VectorKit, WritesFieldsAndReadsThemBack) {
  NodePtr<PoMesh3DVec> kit(new PoMesh3DVec);
  kit->endArrowShape = PoVectorGlyphs::INDIRECT_CONE;
  kit->startArrowShape = PoVectorGlyphs::SPHERE;
  kit->bodyLengthFactor = 3;
  const std::string text = textOf(kit.get());
  EXPECT_NE(text.find("INDIRECT_CONE"), std::string::npos) << text;
  EXPECT_NE(text.find("SPHERE"), std::string::npos);
  const NodePtr<SoSeparator> scene = sceneOf(text);
  ASSERT_TRUE(scene);
  EXPECT_EQ(textOf(scene->getChild(0)), text);
  EXPECT_EQ(static_cast<PoMesh3DVec*>(scene->getChild(0))->startArrowShape.getValue(), PoVectorGlyphs::SPHERE);
}

}  // namespace
