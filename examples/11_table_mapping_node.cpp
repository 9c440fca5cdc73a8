// PoNonLinearDataMapping2 as a table of classes: one constant colour between two levels, one colour a cell.

#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoNonLinearDataMapping2.h>

#include "ColorBar.h"
#include "Ink.h"
#include "Ocean.h"

int main() {
  return gallery::run([] {
    const gallery::Ocean ocean;
    constexpr int depth400m = 12;
    const std::vector<float> longitudes = ocean.longitudes();
    const std::vector<float> latitudes = ocean.latitudes();
    const std::vector<float> oxygen = ocean.layer(depth400m);
    PbParalCartesianGrid2D map(static_cast<int>(longitudes.size()), static_cast<int>(latitudes.size()),
                               longitudes.data(), latitudes.data(), 0);
    map.addValuesSet(0, oxygen.data(), "oxygen saturation in percent");

    SoSeparator* root = gallery::unlit();
    root->ref();
    auto* classes = new PoNonLinearDataMapping2;
    classes->type = PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL;
    const float levels[] = {5, 20, 40, 60, 80};
    const SbColor colors[] = {{0.19f, 0.07f, 0.23f}, {0.45f, 0.17f, 0.44f}, {0.79f, 0.31f, 0.40f},
                              {0.97f, 0.60f, 0.38f}, {0.99f, 0.87f, 0.60f}, {0.48f, 0.78f, 0.72f}};
    classes->value.setValues(0, 5, levels);
    classes->color.setValues(0, 6, colors);
    root->addChild(classes);
    auto* filled = new PoMeshFilled;
    filled->setMesh(&map);
    filled->valuesIndex = 0;
    filled->coloringType = PoMesh::COLOR_AVERAGE;
    root->addChild(filled);

    const gallery::ColorBar bar(-10, 100, {5, 20, 40, 60, 80}, SbBox2f(186, -80, 193, 80));
    root->addChild(bar.node());

    gallery::render(
        root, "11_table_mapping_node",
        {.title = "Oxygen saturation 400 m below the surface, in classes (percent)",
         .caption = "PoNonLinearDataMapping2 of the type NON_LINEAR_PER_LEVEL gives each cell the colour of its "
                    "class; the darkest waters hold hardly any oxygen.",
         .source = ocean.data().source(),
         .licence = ocean.data().licence(),
         .view = SbVec3f(0, 0, -1),
         .isOrthographic = true,
         .width = 1800,
         .height = 1000});
    root->unref();
  });
}
