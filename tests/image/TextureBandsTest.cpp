// Bands by texture must look like bands: sharp, where the values are, and the same from frame to frame.

#include <Inventor/SoDB.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbNonLinearDataMapping2.h>
#include <Ormelle/PbPolarGrid2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <set>

#include "graph/toolkit/offscreen/PiOffscreen.h"
#include "support/MeshFamily.h"
#include "support/NodePtr.h"

namespace {

constexpr int kSize = 200;
// One below the levels, then one from each level on.
const SbColor kColors[] = {{0, 0, 0.6F}, {0, 0.6F, 1}, {0, 1, 0.4F}, {0.6F, 1, 0}, {1, 0.4F, 0}, {0.6F, 0, 0}};

using Field = std::function<float(float, float)>;

/// A square from (-1, -1) to (1, 1), seen so that it fills the picture, with bands of `field` by texture.
class TextureBandsTest : public testing::Test {
 protected:
  TextureBandsTest() {
    root->addChild(model);
    root->addChild(kit.get());
    model->model = SoLightModel::BASE_COLOR;
    kit->setDataMapping(&mapping);
    kit->setIsovaluesList(&isovalues);
    kit->valuesIndex = 0;
    kit->coloringType = PoMesh::COLOR_TEXTURE_CONTOURING;
    viewpoint.isOrthographic = true;
    viewpoint.margin = 0;
    setLevels({0.1F, 0.2F, 0.3F, 0.4F, 0.5F});
  }

  void setLevels(const std::vector<float>& levels, const float* transparencies = nullptr) {
    isovalues.setIrregularIsoList(static_cast<int>(levels.size()), levels.data());
    // A colour is asked for at the lower level of its band, and the table gives the first level to what is below it.
    std::vector<float> below;
    for (const float level : levels) below.push_back(level - 0.001F);
    mapping.setValues(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL, static_cast<int>(below.size()), below.data(),
                      kColors, transparencies);
  }
  void setMesh(const Field& field, int numNodes = 21, std::size_t kind = 0) {
    RectangleSpec spec;
    spec.numX = spec.numY = numNodes;
    spec.xMin = spec.yMin = -1;
    spec.xMax = spec.yMax = 1;
    sample = meshKinds2D()[kind].make(spec, 1);
    std::vector<float> values;
    for (int node = 0; node < sample->getNumNodes(); ++node) {
      const SbVec3f point = sample->getNodeCoord(node);
      values.push_back(field(point[0], point[1]));
    }
    sample->addValuesSet(0, values.data(), "values");
    kit->setMesh(sample.mesh.get());
  }
  const PiPicture& draw() {
    offscreen.setViewpoint(viewpoint);
    EXPECT_TRUE(offscreen.draw(root.get())) << offscreen.error();
    return offscreen.picture();
  }
  static float coordOf(int pixel) { return 2 * (static_cast<float>(pixel) + 0.5F) / kSize - 1; }
  /// The band whose colour a pixel has: 0 is that below all levels; -1 if it is none.
  static int bandOf(const uint8_t* pixel) {
    for (int band = 0; band < 6; ++band) {
      bool isSame = true;
      // The texture cuts the last bit off.
      for (int i = 0; i < 3; ++i) isSame = isSame && std::abs(pixel[i] - 255 * kColors[band][i]) <= 1;
      if (isSame) return band;
    }
    return -1;
  }
  int numPixelsOutsideBands() {
    const PiPicture& picture = draw();
    int num = 0;
    for (int y = 0; y < kSize; ++y)
      for (int x = 0; x < kSize; ++x) num += bandOf(picture.pixel(x, y)) < 0;
    return num;
  }
  /// How many pixels have not the band of `field` at their centre, nor that of any place within `distance` pixels.
  int numWrongPixels(const Field& field, float distance) {
    const PiPicture& picture = draw();
    int num = 0;
    for (int y = 0; y < kSize; ++y) {
      for (int x = 0; x < kSize; ++x) {
        const int band = bandOf(picture.pixel(x, y));
        bool isRight = false;
        for (const float dx : {0.0F, -distance, distance})
          for (const float dy : {0.0F, -distance, distance}) {
            const float value = field(coordOf(x) + dx * 2 / kSize, -coordOf(y) + dy * 2 / kSize);
            int numLevels, isRegular;
            float min, max, step;
            const float* levels = isovalues.getIsoList(numLevels, min, max, step, isRegular);
            isRight = isRight || band == std::upper_bound(levels, levels + numLevels, value) - levels;
          }
        num += !isRight;
      }
    }
    return num;
  }

  NodePtr<PoMeshFilled> kit{new PoMeshFilled};  // first, since it starts the toolkit
  NodePtr<SoSeparator> root{new SoSeparator};
  SoLightModel* model = new SoLightModel;
  PbNonLinearDataMapping2 mapping;
  PbIsovaluesList isovalues;
  MeshSample<PbMesh2D> sample;
  PiViewpoint viewpoint;
  PiOffscreen offscreen{kSize, kSize};
};

TEST_F(TextureBandsTest, StandWhereTheValuesAreOnEveryMesh) {
  const Field field = [](float x, float y) { return 0.3F + 0.25F * x - 0.13F * y; };
  for (std::size_t kind = 0; kind < meshKinds2D().size(); ++kind) {
    SCOPED_TRACE(meshKinds2D()[kind].name);
    setMesh(field, 21, kind);
    isovalues.setRegularIsoList(0.1F, 0.5F, 5);
    EXPECT_EQ(numWrongPixels(field, 0.2F), 0);
  }
}

TEST_F(TextureBandsTest, OfAnIrregularListAreOffByLessThanACell) {
  const Field field = [](float x, float y) { return 0.35F + 0.33F * x - 0.13F * y; };
  const std::vector<float> levels = {0.02F, 0.05F, 0.1F, 0.2F, 0.5F};
  for (const int numCells : {10, 100}) {
    setMesh(field, numCells + 1);
    setLevels(levels);
    EXPECT_EQ(numWrongPixels(field, kSize / static_cast<float>(numCells)), 0);
    EXPECT_EQ(numPixelsOutsideBands(), 0);
  }
}

TEST_F(TextureBandsTest, AreSharpUnlessTheyAreToBeSmooth) {
  setMesh([](float x, float y) { return 0.3F + 0.3F * std::sin(4 * x) * std::cos(3 * y); }, 41);
  EXPECT_EQ(numPixelsOutsideBands(), 0);
  kit->smoothTextureContouring = TRUE;
  EXPECT_GT(numPixelsOutsideBands(), kSize * kSize / 2);
  kit->smoothTextureContouring = FALSE;
  EXPECT_EQ(numPixelsOutsideBands(), 0);
}

// What lies on a level belongs to the band above it, all of it, also where perspective rounds every pixel differently.
TEST_F(TextureBandsTest, AreaOnALevelHasOneColor) {
  viewpoint.isOrthographic = false;
  for (const SbVec3f& direction : {SbVec3f(0, 0, -1), SbVec3f(0.3F, 1, -0.1F), SbVec3f(-1, 0.2F, -0.3F)}) {
    viewpoint.direction = direction;
    viewpoint.up = SbVec3f(0, 0, 1);
    if (direction[2] == -1) viewpoint.up = SbVec3f(0, 1, 0);
    for (const bool isRegular : {true, false}) {
      setLevels(isRegular ? std::vector<float>{0.1F, 0.2F, 0.3F, 0.4F, 0.5F}
                          : std::vector<float>{0.1F, 0.3F, 0.37F, 0.4F, 0.9F});
      if (isRegular) isovalues.setRegularIsoList(0.1F, 0.5F, 5);
      int num, regular;
      float min, max, step;
      const std::vector<float> levels(isovalues.getIsoList(num, min, max, step, regular),
                                      isovalues.getIsoList(num, min, max, step, regular) + 5);
      for (int level = 0; level < 5; ++level) {
        setMesh([&](float, float) { return levels[static_cast<std::size_t>(level)]; }, 4);
        const PiPicture& picture = draw();
        std::set<int> bands;
        for (int y = 0; y < kSize; ++y)
          for (int x = 0; x < kSize; ++x)
            if (picture.pixel(x, y)[0] + picture.pixel(x, y)[1] + picture.pixel(x, y)[2] != 3 * 255)
              bands.insert(bandOf(picture.pixel(x, y)));
        EXPECT_EQ(bands, std::set<int>{level + 1});
      }
    }
  }
}

// A band without a colour is a hole through which one sees what stands behind, whichever of the two is drawn first.
TEST_F(TextureBandsTest, BandsWithoutColorAreHoles) {
  setMesh([](float x, float) { return 0.3F + 0.25F * x; });
  mapping.setMinThreshold(0.25F);
  for (const bool isTransparent : {false, true}) {
    mapping.enableTransparency(isTransparent);
    mapping.enableThresholds(1, 0);
    auto* behind = new SoSeparator;
    auto* translation = new SoTranslation;
    translation->translation.setValue(0, 0, -3);
    auto* color = new SoBaseColor;
    color->rgb.setValue(1, 0, 1);
    auto* cube = new SoCube;
    for (SoNode* node : std::initializer_list<SoNode*>{translation, color, cube}) behind->addChild(node);
    for (const int place : {1, 2}) {
      SCOPED_TRACE(testing::Message() << isTransparent << place);
      root->insertChild(behind, place);
      const PiPicture& picture = draw();
      EXPECT_EQ(picture.pixel(20, 100)[0], 255);
      EXPECT_EQ(picture.pixel(20, 100)[1], 0);
      EXPECT_EQ(picture.pixel(20, 100)[2], 255);
      EXPECT_EQ(bandOf(picture.pixel(115, 100)), 3);
      EXPECT_EQ(bandOf(picture.pixel(195, 100)), 5);
      behind->ref();
      root->removeChild(behind);
      behind->unrefNoDelete();
    }
    behind->ref();
    behind->unref();
  }
}

TEST_F(TextureBandsTest, ShowTheTransparencyOfTheMapping) {
  setMesh([](float x, float) { return 0.3F + 0.25F * x; });
  const float transparencies[] = {0, 0, 0.5F, 0, 0.75F, 0};
  setLevels({0.1F, 0.2F, 0.3F, 0.4F, 0.5F}, transparencies);
  mapping.enableTransparency(1);
  const PiPicture& picture = draw();
  EXPECT_NEAR(picture.pixel(80, 100)[0], 128, 3) << "half of white";
  EXPECT_EQ(bandOf(picture.pixel(115, 100)), 3);
  EXPECT_NEAR(picture.pixel(160, 100)[2], 191, 3) << "three quarters of white";
}

TEST_F(TextureBandsTest, FarAndInfiniteValuesBelongToTheEnds) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  for (const float far : {1e3F, 1e9F, 3e38F, kInfinity}) {
    for (const bool isRegular : {true, false}) {
      setLevels({0.1F, 0.2F, 0.3F, 0.37F, 0.5F});
      if (isRegular) isovalues.setRegularIsoList(0.1F, 0.5F, 5);
      SCOPED_TRACE(far);
      setMesh([far](float x, float) { return x < -0.5F ? -far : x > 0.5F ? far : 0.35F; }, 9);
      const PiPicture& picture = draw();
      EXPECT_EQ(bandOf(picture.pixel(10, 100)), 0);
      EXPECT_EQ(bandOf(picture.pixel(100, 100)), 3);
      EXPECT_EQ(bandOf(picture.pixel(190, 100)), 5);
    }
  }
}

TEST_F(TextureBandsTest, AnyNumberOfLevelsWillDo) {
  setMesh([](float x, float) { return 0.3F + 0.25F * x; });
  setLevels({0.3F});
  const PiPicture& picture = draw();
  EXPECT_EQ(bandOf(picture.pixel(95, 100)), 0);
  EXPECT_EQ(bandOf(picture.pixel(105, 100)), 1);

  // As good as continuous.
  isovalues.setRegularIsoList(0.0F, 1.0F, 100000);
  mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 2, std::vector<float>{0, 1}.data(),
                    std::vector<SbColor>{SbColor(0, 0, 0), SbColor(1, 1, 1)}.data());
  draw();
  for (int x = 0; x < kSize; x += 7) EXPECT_NEAR(picture.pixel(x, 100)[0], 255 * (0.3F + 0.25F * coordOf(x)), 2);
}

TEST_F(TextureBandsTest, PolarGridsHaveThemToo) {
  std::vector<float> radii = {0.5F, 0.75F, 1}, angles, values;
  for (int i = 0; i <= 60; ++i) angles.push_back(static_cast<float>(i * M_PI / 30));
  for (const float radius : radii) values.insert(values.end(), angles.size(), 0.8F * radius - 0.25F);
  PbPolarGrid2D ring(3, 61, radii.data(), angles.data(), 1);
  ring.addValuesSet(0, values.data(), "values");
  kit->setMesh(&ring);
  const PiPicture& picture = draw();
  EXPECT_EQ(bandOf(picture.pixel(100, 100)), -1);
  EXPECT_EQ(bandOf(picture.pixel(165, 100)), 2) << "0.27";
  EXPECT_EQ(bandOf(picture.pixel(100, 10)), 4) << "0.47";
}

/// The share of pixels in which two pictures differ.
double shareOfDifferences(const PiPicture& a, const PiPicture& b) {
  int num = 0;
  for (int y = 0; y < a.height; ++y)
    for (int x = 0; x < a.width; ++x) {
      bool isSame = true;
      for (int i = 0; i < 3; ++i) isSame = isSame && std::abs(a.pixel(x, y)[i] - b.pixel(x, y)[i]) <= 2;
      num += !isSame;
    }
  return num / static_cast<double>(a.width * a.height);
}

// Cells cut into bands are another way to the same picture, but for the curvature of a field within a cell.
TEST_F(TextureBandsTest, LookLikeBandsByGeometry) {
  const Field field = [](float x, float y) {
    return 0.3F + 0.2F * std::sin(5 * x + 1) * std::cos(4 * y) + 0.15F * std::sin(7 * y - 3 * x);
  };
  for (std::size_t kind = 0; kind < meshKinds2D().size(); ++kind) {
    for (const bool isRegular : {true, false}) {
      SCOPED_TRACE(meshKinds2D()[kind].name + (isRegular ? " regular" : ""));
      setMesh(field, 101, kind);
      setLevels(isRegular ? std::vector<float>{0.1F, 0.2F, 0.3F, 0.4F, 0.5F}
                          : std::vector<float>{0.05F, 0.1F, 0.2F, 0.25F, 0.45F});
      kit->coloringType = PoMesh::COLOR_TEXTURE_CONTOURING;
      const PiPicture byTexture = draw();
      kit->coloringType = PoMesh::COLOR_CONTOURING;
      const double share = shareOfDifferences(byTexture, draw());
      // On an irregular list the edges are off by a part of a cell, which is two pixels wide.
      EXPECT_LT(share, isRegular ? 0.002 : 0.035);
    }
  }
}

}  // namespace
