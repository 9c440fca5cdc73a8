#include "quillane/emit/PiTextureContouring.h"

#include <Inventor/nodes/SoComplexity.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoTextureCoordinate2.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbNonLinearDataMapping.h>
#include <Ormelle/PoMeshFilled.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "quillane/rep/TestGrid.h"
#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

std::vector<int> texelsOf(const SoTexture2* texture, int& numComponents) {
  SbVec2s size;
  const unsigned char* bytes = texture->image.getValue(size, numComponents);
  EXPECT_EQ(size[1], 1);
  return std::vector<int>(bytes, bytes + size[0] * numComponents);
}

class TextureContouringTest : public testing::Test {
 protected:
  TextureContouringTest() { PoBase::init(); }

  PbIsovaluesList isovalues;
  std::unique_ptr<PbLinearDataMapping> mapping = greyMapping();
  PiTextureContouring bands;
};

TEST_F(TextureContouringTest, ATexelIsABand) {
  bands.buildTexture();
  EXPECT_EQ(bands.getTexture(), nullptr) << "without list and mapping";
  bands.setDataMapping(mapping.get());
  bands.buildTexture();
  EXPECT_EQ(bands.getTexture(), nullptr) << "without list";

  isovalues.setRegularIsoList(20.0F, 60.0F, 3);
  bands.setIsovaluesList(&isovalues);
  bands.buildTexture();
  int numComponents;
  // 255 times 0.2, 0.4 and 0.6, cut off.
  EXPECT_EQ(texelsOf(bands.getTexture(), numComponents),
            (std::vector<int>{0, 0, 0, 51, 51, 51, 102, 102, 102, 153, 153, 153}));
  EXPECT_EQ(numComponents, 3);

  const NodePtr<SoTexture2> before(bands.getTexture());
  isovalues.setRegularIsoList(20.0F, 80.0F, 4);
  bands.setIsovaluesList(&isovalues);
  mapping->setValues(0, SbColor(0, 0, 0), 0.75F, 100, SbColor(1, 1, 1), 0.25F);
  mapping->enableTransparency(1);
  bands.buildTexture();
  EXPECT_NE(bands.getTexture(), before.get());
  const std::vector<int> texels = texelsOf(bands.getTexture(), numComponents);
  EXPECT_EQ(numComponents, 4);
  ASSERT_EQ(texels.size(), 8U * 4);
  EXPECT_EQ(texels[4 * 2 + 3], static_cast<int>(255 * (1 - 0.55F)));
  EXPECT_EQ(texels[4 * 4], 204);
  EXPECT_EQ(texels[4 * 7], 204) << "the last band goes on";
}

TEST_F(TextureContouringTest, CoordinatesAreLinearInBands) {
  isovalues.setRegularIsoList(20.0F, 60.0F, 3);
  bands.setIsovaluesList(&isovalues);
  for (const float value : {-20.0F, 20.0F, 33.0F, 60.0F, 100.0F})
    EXPECT_FLOAT_EQ(bands.getTextureCoord(value), 0.25F + (value - 20) / 80);

  const float levels[] = {1, 2, 10, 11};
  isovalues.setIrregularIsoList(4, levels);
  bands.setIsovaluesList(&isovalues);
  for (int i = 0; i < 4; ++i) EXPECT_FLOAT_EQ(bands.getTextureCoord(levels[i]), static_cast<float>(i + 1) / 8);
  EXPECT_FLOAT_EQ(bands.getTextureCoord(4), 2.25F / 8);
  EXPECT_FLOAT_EQ(bands.getTextureCoord(-9), -2.0F / 8) << "ten units below, of which ten are three bands";
  EXPECT_FLOAT_EQ(bands.getTextureCoord(21), 7.0F / 8);
  SbVec2f coords[2];
  const float values[] = {2, 4};
  bands.getTextureCoords(2, values, coords);
  EXPECT_EQ(coords[0], SbVec2f(0.25F, 0));
  EXPECT_EQ(coords[1], SbVec2f(2.25F / 8, 0));
}

TEST_F(TextureContouringTest, WhatIsDrawnIsFiniteAndInItsBand) {
  const float max = std::numeric_limits<float>::max(), infinity = std::numeric_limits<float>::infinity();
  const std::vector<std::vector<float>> lists = {{5},
                                                 {0},
                                                 {3, 3, 3},
                                                 {1, 2, 2, 10},
                                                 {-max, max},
                                                 {-max, 0, max},
                                                 {1e-45F, 2e-45F},
                                                 {1, std::nextafter(1.0F, 2.0F)}};
  const NodePtr<SoTextureCoordinate2> node(new SoTextureCoordinate2);
  for (const std::vector<float>& levels : lists) {
    for (const bool isRegular : {true, false}) {
      SCOPED_TRACE(testing::Message() << levels.size() << " from " << levels[0] << (isRegular ? " regular" : ""));
      isovalues.setIrregularIsoList(static_cast<int>(levels.size()), levels.data());
      if (isRegular) isovalues.setRegularIsoList(levels.front(), levels.back(), static_cast<int>(levels.size()));
      bands.setIsovaluesList(&isovalues);
      int numLevels, regular;
      float least, greatest, step;
      const float* made = isovalues.getIsoList(numLevels, least, greatest, step, regular);
      std::vector<float> values = {-infinity, -max, -1, 0, 1e-40F, 1, 1.5F, 2, 3, 7, max, infinity};
      values.insert(values.end(), made, made + numLevels);
      values.push_back(kNaN);
      bands.fill(*node, static_cast<int>(values.size()), values.data());
      int size = 1;
      while (size < numLevels + 1) size *= 2;
      for (std::size_t i = 0; i < values.size(); ++i) {
        const float coord = node->point[static_cast<int>(i)][0];
        EXPECT_TRUE(std::isfinite(coord));
        if (std::isnan(values[i])) continue;
        // The same as by comparing, but that bands without a height count as one.
        const auto bandOf = [&](float texel) {
          return static_cast<int>(std::clamp(texel, 0.0F, static_cast<float>(numLevels)));
        };
        const int band = bandOf(coord * static_cast<float>(size));
        const double rounding = 1e-6 * (static_cast<double>(greatest) - least) + 1e-37;
        EXPECT_TRUE(band == 0 || made[band - 1] <= values[i] + rounding) << values[i] << " in " << band;
        EXPECT_TRUE(band == numLevels || values[i] <= made[band] + rounding) << values[i] << " in " << band;
      }
    }
  }
}

// What has no colour isn't there to be picked either.
TEST_F(TextureContouringTest, CellsInBandsWithoutColorAreLeftOut) {
  NodePtr<PoMeshFilled> kit(new PoMeshFilled);
  const auto mesh = TestGrid::unitCells(21, 2).make();  // x + 10 y
  kit->setMesh(mesh.get());
  kit->setDataMapping(mapping.get());
  const float levels[] = {5, 15, 20, 25};
  isovalues.setIrregularIsoList(4, levels);
  kit->setIsovaluesList(&isovalues);
  kit->valuesIndex = 0;
  kit->coloringType = PoMesh::COLOR_TEXTURE_CONTOURING;
  EXPECT_NEAR(Soup::of(kit.get()).area(), 20, 1e-5);
  // No colour for the bands below 5 and from 25 on: of the first cells all have a node at 10, of the last ones at 20.
  mapping->setMinThreshold(4.5F);
  mapping->setMaxThreshold(24.5F);
  mapping->enableThresholds(1, 1);
  EXPECT_NEAR(Soup::of(kit.get()).area(), 20, 1e-5);
  mapping->setMinThreshold(16);
  EXPECT_NEAR(Soup::of(kit.get()).area(), 11, 1e-5) << "cells that reach 20: those from x = 9 on";
  mapping->setMinThreshold(-1);
  mapping->enableTransparency(1);
  mapping->setValues(0, SbColor(0, 0, 0), 1, 100, SbColor(1, 1, 1), 1);
  EXPECT_TRUE(Soup::of(kit.get()).triangles.empty());
  mapping->setTransparencyValueDeletedParts(2);  // announces nothing
  kit->touchKit();
  EXPECT_NEAR(Soup::of(kit.get()).area(), 20, 1e-5);
}

TEST_F(TextureContouringTest, AKitShowsTheTextureOnWhite) {
  NodePtr<PoMeshFilled> kit(new PoMeshFilled);
  const auto mesh = TestGrid::unitCells(3, 3).make();
  kit->setMesh(mesh.get());
  kit->setDataMapping(mapping.get());
  kit->setIsovaluesList(&isovalues);
  kit->valuesIndex = 0;
  kit->coloringType = PoMesh::COLOR_TEXTURE_CONTOURING;
  const auto qualityOf = [&] {
    return static_cast<SoComplexity*>(kit->getPart("appearance.complexity", FALSE))->textureQuality.getValue();
  };
  Soup::of(kit.get());
  auto* group = static_cast<SoGroup*>(kit->getPart("groupFilled", FALSE));
  EXPECT_EQ(childTypes(group), "ShapeHints TextureCoordinateBinding TextureCoordinate2 Coordinate3 QuadMesh");
  EXPECT_EQ(static_cast<SoTextureCoordinate2*>(group->getChild(2))->point.getNum(), 9);
  const auto* material = static_cast<SoMaterial*>(kit->getPart("appearance.material", FALSE));
  ASSERT_NE(material, nullptr);
  EXPECT_EQ(material->diffuseColor[0], SbColor(1, 1, 1));
  EXPECT_EQ(qualityOf(), 0.1F);
  kit->smoothTextureContouring = TRUE;
  Soup::of(kit.get());
  EXPECT_EQ(qualityOf(), 1.0F);

  // A file holds all of it, and gives it back.
  PoBase::setNodeWriteFormat(PoBase::WRITE_GEOMETRY);
  const std::string text = textOf(kit.get());
  PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
  for (const char* part : {"Texture2 {", "TextureCoordinate2 {", "wrapS CLAMP", "diffuseColor 1 1 1"})
    EXPECT_NE(text.find(part), std::string::npos) << part;
  EXPECT_TRUE(sceneOf(text));

  isovalues.setRegularIsoList(0.0F, 20.0F, 21);
  Soup::of(kit.get());
  SbVec2s size;
  int numComponents;
  static_cast<SoTexture2*>(kit->getPart("appearance.texture2", FALSE))->image.getValue(size, numComponents);
  EXPECT_EQ(size, SbVec2s(32, 1));

  kit->coloringType = PoMesh::COLOR_MAPPING;
  Soup::of(kit.get());
  EXPECT_EQ(kit->getPart("appearance.texture2", FALSE), nullptr);
  EXPECT_EQ(qualityOf(), 0.5F);
  kit->coloringType = PoMesh::COLOR_TEXTURE_CONTOURING;
  kit->setIsovaluesList(nullptr);
  EXPECT_EQ(Soup::of(kit.get()).numColors(), 9) << "no isovalues: mapped";
  EXPECT_EQ(kit->getPart("appearance.texture2", FALSE), nullptr);
}

}  // namespace
