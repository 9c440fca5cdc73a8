// Fillings must be lit from either side, and stay behind the line that bounds them.

#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoCurve.h>
#include <Ormelle/PoCurveFilling.h>
#include <Ormelle/PoCurveLine.h>
#include <Ormelle/PoRegularMesh1D.h>
#include <Ormelle/PoRibbon.h>
#include <Ormelle/PoTube.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

#include "graph/toolkit/offscreen/PiOffscreen.h"
#include "support/NodePtr.h"

namespace {

/// How bright the middle of the picture is, a little off the centre, with a light from where the viewer is; 255 is the
/// background.
int brightnessOf(SoNode* kit, const SbVec3f& direction) {
  NodePtr<SoSeparator> root(new SoSeparator);
  auto* light = new SoDirectionalLight;
  light->direction = direction;
  root->addChild(light);
  root->addChild(kit);
  PiOffscreen offscreen(60, 60);
  PiViewpoint viewpoint;
  viewpoint.direction = direction;
  offscreen.setViewpoint(viewpoint);
  EXPECT_TRUE(offscreen.draw(root.get())) << offscreen.error();
  return offscreen.picture().width ? offscreen.picture().pixel(33, 32)[0] : 0;
}

TEST(CurveLightTest, FillingsAreLitFromBothSides) {
  PoBase::init();
  for (const bool isAbove : {true, false}) {
    for (const bool isMirrored : {false, true}) {
      const float s = isAbove ? 1.0F : -1.0F, m = isMirrored ? -1.0F : 1.0F;
      const SbVec2f points[] = {{0, s}, {m, s}, {2 * m, s}};
      for (const int rep : {PoCurve::CURVE_POLYLINE, PoCurve::CURVE_HISTO_X}) {
        const NodePtr<PoCurve> curve(new PoCurve(3, points, static_cast<PoCurve::CurveRep>(rep)));
        curve->isCurveFilled = TRUE;
        for (const float side : {-1.0F, 1.0F}) {
          const int brightness = brightnessOf(curve.get(), SbVec3f(0, 0, side));
          EXPECT_GT(brightness, 180) << isAbove << isMirrored << rep << side;
          EXPECT_LT(brightness, 250) << isAbove << isMirrored << rep << side;
        }
      }
      const NodePtr<SoSeparator> chart(new SoSeparator);
      auto* mesh = new PoRegularMesh1D;
      mesh->setGeometry(3, 0, 2 * m);
      const std::vector<float> values = {s, s, s};
      mesh->addValuesSet(0, values.data(), "y");
      chart->addChild(mesh);
      chart->addChild(new PoCurveFilling);
      for (const float side : {-1.0F, 1.0F}) {
        const int brightness = brightnessOf(chart.get(), SbVec3f(0, 0, side));
        EXPECT_GT(brightness, 180) << isAbove << isMirrored << side;
        EXPECT_LT(brightness, 250) << isAbove << isMirrored << side;
      }
    }
  }
}

TEST(CurveLightTest, LinesAreInFrontOfFillings) {
  PoBase::init();
  std::vector<SbVec2f> points;
  for (int i = 0; i <= 40; ++i)
    points.emplace_back(static_cast<float>(i), 20 + 10 * std::sin(static_cast<float>(i) / 3));
  const NodePtr<SoSeparator> root(new SoSeparator);
  auto* model = new SoLightModel;
  model->model = SoLightModel::BASE_COLOR;
  root->addChild(model);
  auto* curve = new PoCurve(41, points.data());
  root->addChild(curve);
  curve->set("curvePointApp.material", "diffuseColor 1 0 0");
  curve->set("curvePointApp.drawStyle", "lineWidth 3");
  curve->set("curveFillingApp.material", "diffuseColor 0 0 1");
  const auto numRed = [&](bool isFilled, const SbVec3f& direction) {
    curve->isCurveFilled = isFilled;
    curve->fillingThreshold = 20;
    PiOffscreen offscreen(200, 200);
    PiViewpoint viewpoint;
    viewpoint.direction = direction;
    offscreen.setViewpoint(viewpoint);
    EXPECT_TRUE(offscreen.draw(root.get())) << offscreen.error();
    int num = 0;
    for (int y = 0; y < 200; ++y)
      for (int x = 0; x < 200; ++x) {
        const uint8_t* pixel = offscreen.picture().pixel(x, y);
        num += pixel[0] > 200 && pixel[2] < 50;
      }
    return num;
  };
  for (const SbVec3f& direction : {SbVec3f(0, 0, -1), SbVec3f(0.4F, 0.3F, -1)})
    EXPECT_GT(numRed(true, direction), 0.98 * numRed(false, direction));
}

}  // namespace
