// Drawing must leave the scene as it was, and one drawer must serve for many scenes.

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoOrmelle.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "graph/toolkit/offscreen/PiOffscreen.h"
#include "support/NodePtr.h"

namespace {

NodePtr<SoSeparator> read(const char* text) {
  PoOrmelle::init();
  SoInput in;
  in.setBuffer(text, std::strlen(text));
  return NodePtr<SoSeparator>(SoDB::readAll(&in));
}

TEST(OffscreenTest, LeavesTheSceneAsItWas) {
  const NodePtr<SoSeparator> scene = read(
      "#Inventor V2.1 ascii\nSeparator { PerspectiveCamera { position 0 0 50 nearDistance 1 farDistance 2 } Cube {} "
      "Switch { whichChild 1 Sphere {} OrthographicCamera {} } }");
  auto* camera = static_cast<SoPerspectiveCamera*>(scene->getChild(0));
  auto* group = static_cast<SoGroup*>(scene->getChild(2));
  SoNode* second = group->getChild(1);
  PiOffscreen offscreen(40, 30);
  for (int round = 0; round < 3; ++round) {
    // First with a camera of its own, then with those of the scene.
    offscreen.setViewpoint(round == 1 ? std::nullopt : std::optional<PiViewpoint>(PiViewpoint()));
    offscreen.setSamples(1 + round);
    ASSERT_TRUE(offscreen.draw(scene.get())) << offscreen.error();
    EXPECT_EQ(scene->getNumChildren(), 3);
    EXPECT_EQ(scene->getChild(0), camera);
    EXPECT_EQ(group->getChild(1), second);
    EXPECT_EQ(camera->nearDistance.getValue(), 1.0f);
    EXPECT_EQ(camera->farDistance.getValue(), 2.0f);
    EXPECT_EQ(camera->getRefCount(), 1);
    EXPECT_EQ(scene->getRefCount(), 1);
  }
}

TEST(OffscreenTest, SeesChangesAndOtherScenes) {
  const NodePtr<SoSeparator> scene =
      read("#Inventor V2.1 ascii\nLightModel { model BASE_COLOR } Material { diffuseColor 1 0 0 } Cube {}");
  const NodePtr<SoSeparator> other = read("#Inventor V2.1 ascii\nSeparator { }");
  auto* material = static_cast<SoMaterial*>(scene->getChild(1));
  PiOffscreen offscreen(20, 20);
  // Often enough for the toolkit to cache what it draws.
  for (int round = 0; round < 8; ++round) {
    material->diffuseColor.setValue(round % 2 ? 1.0f : 0.0f, 0.0f, 0.0f);
    ASSERT_TRUE(offscreen.draw(scene.get()));
    EXPECT_EQ(offscreen.picture().pixel(10, 10)[0], round % 2 ? 255 : 0);
  }
  ASSERT_TRUE(offscreen.draw(other.get()));
  EXPECT_EQ(offscreen.picture().pixel(10, 10)[1], 255);

  // Two drawers at a time, each with its own context.
  PiOffscreen second(30, 30);
  ASSERT_TRUE(second.draw(scene.get()));
  ASSERT_TRUE(offscreen.draw(scene.get()));
  EXPECT_EQ(second.picture().pixel(15, 15)[0], 255);
  EXPECT_EQ(offscreen.picture().pixel(10, 10)[0], 255);
}

// Whatever is drawn, bitmap text too, a picture in tiles is the picture in one piece.
TEST(OffscreenTest, DrawsLargePicturesInTiles) {
  const NodePtr<SoSeparator> scene = read(
      "#Inventor V2.1 ascii\nSeparator { renderCaching ON PerspectiveCamera { position 0 0 5 } DirectionalLight {} "
      "Separator { Material "
      "{ "
      "diffuseColor 0.2 0.5 0.9 } Sphere {} } BaseColor { rgb 0 0 0 } Font { size 12 } Separator { Translation { "
      "translation -0.9 0.05 1 } Text2 { string \"across the tiles\" } } DrawStyle { lineWidth 3 } Coordinate3 { point "
      "[ "
      "-1.5 -1 0, 1.5 1 0 ] } LineSet {} }");
  for (const int samples : {1, 4}) {
    for (const float opacity : {1.0f, 0.0f}) {
      PiOffscreen whole(120, 90);  // tiles of whole pixels: 40 by 30
      PiOffscreen tiled(120, 90, 40);
      for (PiOffscreen* offscreen : {&whole, &tiled}) {
        offscreen->setSamples(samples);
        offscreen->setBackground(SbColor(1, 1, 1), opacity);
        ASSERT_TRUE(offscreen->draw(scene.get())) << offscreen->error();
      }
      ASSERT_EQ(whole.picture().rgba.size(), tiled.picture().rgba.size());
      int different = 0;
      for (size_t i = 0; i < whole.picture().rgba.size(); ++i)
        if (std::abs(whole.picture().rgba[i] - tiled.picture().rgba[i]) > 8) ++different;
      EXPECT_LT(different, 60) << samples << " samples, opacity " << opacity;  // of 43200: rounding at edges
    }
  }
  PiOffscreen odd(101, 67, 50);
  ASSERT_TRUE(odd.draw(scene.get()));
  EXPECT_EQ(odd.picture().width, 101);
  EXPECT_EQ(odd.picture().height, 67);
}

TEST(OffscreenTest, TellsWhatItCannotDrawAndKeepsQuiet) {
  int messages = 0;
  PoOrmelle::init();
  SoDebugError::setHandlerCallback([](const SoError*, void* count) { ++*static_cast<int*>(count); }, &messages);
  const NodePtr<SoSeparator> scene = read("#Inventor V2.1 ascii\nCube {}");
  for (const int size : {0, -5, 1000000}) {
    PiOffscreen offscreen(size, 10);
    EXPECT_FALSE(offscreen.draw(scene.get()));
    EXPECT_NE(offscreen.error(), "");
    EXPECT_TRUE(offscreen.picture().rgba.empty());
  }
  PiOffscreen offscreen(10, 10);
  EXPECT_TRUE(offscreen.draw(scene.get())) << offscreen.error();
  EXPECT_EQ(offscreen.error(), "");
  EXPECT_EQ(messages, 0) << "the toolkit's remark on a new context got through";
  SoDebugError::setHandlerCallback(nullptr, nullptr);
}

TEST(OffscreenTest, SoftensLinesOnDemand) {
  const NodePtr<SoSeparator> scene = read(
      "#Inventor V2.1 ascii\nOrthographicCamera { position 0 0 5 height 2 } LightModel { model BASE_COLOR } Material { "
      "diffuseColor 0 0 0 } Coordinate3 { point [ -1 -0.9 0, 1 0.7 0 ] } LineSet {}");
  const auto shades = [&scene](bool isSmooth) {
    PiOffscreen offscreen(40, 40);
    offscreen.setLineSmoothing(isSmooth);
    EXPECT_TRUE(offscreen.draw(scene.get()));
    bool seen[256] = {};
    for (std::size_t i = 0; i < offscreen.picture().rgba.size(); i += 4) seen[offscreen.picture().rgba[i]] = true;
    return std::count(seen, seen + 256, true);
  };
  EXPECT_EQ(shades(false), 2);
  EXPECT_GT(shades(true), 5);
}

}  // namespace
