// PoNonLinearDataMapping asks a function of the application for the colour of each value.

#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoNonLinearDataMapping.h>

#include "Atmosphere.h"
#include "ColorBar.h"
#include "Ink.h"

namespace {

/// Hue, lightness and saturation of a wind speed in metres a second: calm is pale, and the jet streams are dark.
const float* colorOfSpeed(float speed) {
  static float hls[3];
  const float part = std::fmin(speed / 70.0f, 1.0f);
  hls[0] = 0.58f + 0.36f * part;
  hls[1] = 0.95f - 0.62f * part;
  hls[2] = 0.45f + 0.25f * part;
  return hls;
}

}  // namespace

int main() {
  return gallery::run([] {
    const gallery::Atmosphere air;
    constexpr int level200 = 7;
    PbParalCartesianGrid2D map(air.numLongitudes(), air.numLatitudes(), air.longitudes().data(), air.latitudes().data(),
                               1);
    map.addValuesSet(0, air.map([&](int i, int j) { return air.speed(level200, i, j); }).data(), "speed in m/s");

    SoSeparator* root = gallery::unlit();
    root->ref();
    auto* mapping = new PoNonLinearDataMapping;
    mapping->setHLSFunction(&colorOfSpeed);
    root->addChild(mapping);
    auto* filled = new PoMeshFilled;
    filled->setMesh(&map);
    filled->valuesIndex = 0;
    filled->coloringType = PoMesh::COLOR_MAPPING;
    root->addChild(filled);

    const gallery::ColorBar bar(0, 70, {0, 10, 20, 30, 40, 50, 60, 70}, SbBox2f(186, -80, 193, 80));
    root->addChild(bar.node());

    gallery::render(
        root, "12_function_mapping_node",
        {.title = "The jet streams of January: wind speed at 200 hPa (m/s)",
         .caption = "The node PoNonLinearDataMapping takes colours from a function of the application, here in "
                    "hue, lightness and saturation.",
         .source = air.data().source(),
         .licence = air.data().licence(),
         .view = SbVec3f(0, 0, -1),
         .isOrthographic = true,
         .width = 1800,
         .height = 1000});
    root->unref();
  });
}
