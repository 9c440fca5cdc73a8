// PoLinearDataMapping colours every kit behind it, up to the end of its separator: two maps, two mappings.

#include <Inventor/nodes/SoTranslation.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoMeshFilled.h>

#include "Atmosphere.h"
#include "ColorBar.h"
#include "Ink.h"

namespace {

SoSeparator* mapOf(PbMesh2D& mesh, int valuesIndex, PoLinearDataMapping* mapping, const gallery::ColorBar& bar,
                   float y) {
  auto* group = new SoSeparator;
  auto* place = new SoTranslation;
  place->translation.setValue(0, y, 0);
  group->addChild(place);
  group->addChild(mapping);
  auto* filled = new PoMeshFilled;  // it takes the mapping from the scene
  filled->setMesh(&mesh);
  filled->valuesIndex = valuesIndex;
  filled->coloringType = PoMesh::COLOR_MAPPING;
  group->addChild(filled);
  group->addChild(bar.node());
  SoSeparator* frame = gallery::inked(SbColor(0.18f, 0.20f, 0.24f), 2.0f);
  auto* limit = new PoMeshLimit;
  limit->setMesh(&mesh);
  frame->addChild(limit);
  group->addChild(frame);
  return group;
}

PoLinearDataMapping* linear(float value1, const SbColor& color1, float value2, const SbColor& color2) {
  auto* mapping = new PoLinearDataMapping;
  mapping->value1 = value1;
  mapping->color1.setValue(color1);
  mapping->value2 = value2;
  mapping->color2.setValue(color2);
  return mapping;
}

}  // namespace

int main() {
  return gallery::run([] {
    const gallery::Atmosphere air;
    PbParalCartesianGrid2D map(air.numLongitudes(), air.numLatitudes(), air.longitudes().data(), air.latitudes().data(),
                               1);
    map.addValuesSet(0, air.map([&](int i, int j) { return air.temperature(0, i, j); }).data(),
                     "at 1000 hPa, in kelvin");
    map.addValuesSet(1, air.map([&](int i, int j) { return air.temperature(9, i, j); }).data(),
                     "at 100 hPa, in kelvin");

    const SbBox2f right(186, -80, 194, 80);
    const gallery::ColorBar nearGround(240, 305, {240, 260, 280, 300}, right);
    const gallery::ColorBar aloft(190, 225, {190, 200, 210, 220}, right);

    SoSeparator* root = gallery::unlit();
    root->ref();
    root->addChild(
        mapOf(map, 0, linear(240, SbColor(0.13f, 0.21f, 0.45f), 305, SbColor(0.99f, 0.83f, 0.45f)), nearGround, 0));
    root->addChild(
        mapOf(map, 1, linear(190, SbColor(0.29f, 0.10f, 0.35f), 225, SbColor(0.62f, 0.86f, 0.74f)), aloft, -190));

    gallery::render(
        root, "10_linear_mapping_node",
        {.title = "January temperature near the ground and at 16 km (K)",
         .caption = "One kit and one mesh twice, below two PoLinearDataMapping nodes: cold poles above, and below "
                    "the cold tropical tropopause.",
         .source = air.data().source(),
         .licence = air.data().licence(),
         .view = SbVec3f(0, 0, -1),
         .isOrthographic = true});
    root->unref();
  });
}
