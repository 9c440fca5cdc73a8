#include "quillane/contour/PiLabelDraping.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "quillane/contour/PiSurfaceHeights.h"
#include "support/MeshFamily.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// A label at (1, 2) on a level line through a surface, turned by 3-4-5.
PiPlacedLabel labelAt(float z) {
  PiPlacedLabel label;
  label.line = 0;
  label.position.setValue(1, 2, z);
  label.direction.setValue(0.8F, 0.6F, 0);
  label.up.setValue(-0.6F, 0.8F, 0);
  label.box = {1, 2, 0.8, 0.6, 1, 0.5};
  label.placeCorners();
  return label;
}

PiPlacedLabel draped(float z, const std::function<float(float, float)>& surface) {
  PiPlacedLabel label = labelAt(z);
  drapeLabels({&label, 1}, [&](std::span<const SbVec2f> places) {
    std::vector<float> heights;
    for (const SbVec2f& place : places) heights.push_back(surface(place[0], place[1]));
    return heights;
  });
  return label;
}

TEST(LabelDrapingTest, ALabelLiesJustAboveItsSurface) {
  // Level along the label, a slope of 2 across it.
  const auto slope = [](float x, float y) { return 5 + 2 * (-0.6F * (x - 1) + 0.8F * (y - 2)); };
  const PiPlacedLabel label = draped(5, slope);
  EXPECT_EQ(label.direction, SbVec3f(0.8F, 0.6F, 0)) << "along its line, as before";
  for (const SbVec3f& corner : label.corners) {
    EXPECT_GT(corner[2], slope(corner[0], corner[1]));
    EXPECT_LT(corner[2], slope(corner[0], corner[1]) + 0.05F);
  }
  // A ridge through the label lifts it; a needle doesn't take it along to the sky.
  const auto ridge = [](float x, float y) { return 5 - std::abs(-0.6F * (x - 1) + 0.8F * (y - 2)) + 0.3F; };
  EXPECT_NEAR(draped(5, ridge).position[2], 5.33F, 1e-4);
  EXPECT_LT(draped(5, [](float, float) { return 1e30F; }).position[2], 7);
  // Without a surface it stays where it is, but for the little lift.
  const PiPlacedLabel alone = draped(5, [](float, float) { return kNaN; });
  EXPECT_EQ(alone.up, labelAt(5).up);
  EXPECT_NEAR(alone.position[2], 5, 0.05);
}

TEST(LabelDrapingTest, EveryMeshClassKnowsItsHeights) {
  RectangleSpec spec;
  spec.z = [](float x, float y) { return 2 * x - 0.5F * y + 3; };
  std::mt19937 random(1);
  std::uniform_real_distribution<float> x(1, 3), y(-2, 4);
  std::vector<SbVec2f> places = {{1, -2}, {3, 4}, {0.9F, 0}, {2, 4.1F}, {kNaN, 1}, {1e30F, -1e30F}};
  for (int i = 0; i < 200; ++i) places.emplace_back(x(random), y(random));
  for (const MeshKind2D& kind : meshKinds2D()) {
    const auto sample = kind.make(spec, 1);
    std::vector<float> z;
    for (int node = 0; node < sample->getNumNodes(); ++node) z.push_back(sample->getNodeCoord(node)[2]);
    PiSurfaceHeights surface;
    sample->meshContouring(&surface, z.data());
    const std::vector<float> found = surface.at(places);
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (i >= 2 && i < 6)
        EXPECT_TRUE(std::isnan(found[i])) << kind.name << ' ' << i;
      else
        EXPECT_NEAR(found[i], spec.z(places[i][0], places[i][1]), 1e-4) << kind.name << ' ' << i;
    }
    EXPECT_TRUE(surface.at({}).empty());
  }
}

}  // namespace
