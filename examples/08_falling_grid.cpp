// A parallel grid whose y coordinates fall: an ocean section from the surface downwards. Land has no values and stays
// open.

#include <Inventor/nodes/SoDepthBuffer.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLimit.h>

#include "ColorBar.h"
#include "Ink.h"
#include "Ocean.h"

int main() {
  return gallery::run([] {
    const gallery::Ocean ocean;
    constexpr int latitude = 39;  // 11.5 degrees south

    // The root of the depth gives the upper layers, where most happens, the room that they need.
    std::vector<float> heights;
    for (const float depth : ocean.depths()) heights.push_back(-2.2f * std::sqrt(depth));
    const std::vector<float> longitudes = ocean.longitudes();
    const std::vector<float> oxygen = ocean.section(latitude);
    PbParalCartesianGrid2D section(static_cast<int>(longitudes.size()), static_cast<int>(heights.size()),
                                   longitudes.data(), heights.data(), 0);
    section.addValuesSet(0, oxygen.data(), "oxygen saturation in percent");
    PbNonLinearDataMapping2 colors = gallery::Ocean::colors();

    SoSeparator* root = gallery::unlit();
    root->ref();
    root->addChild(new SoPolygonOffset);
    SoSeparator* land = gallery::inked(SbColor(0.86f, 0.85f, 0.83f), 1.0f);
    auto* ground = new PoMeshFilled;  // without values it draws every cell
    ground->setMesh(&section);
    land->addChild(ground);
    root->addChild(land);
    auto* above = new SoDepthBuffer;  // what follows covers it
    above->function = SoDepthBuffer::LEQUAL;
    root->addChild(above);
    auto* filled = new PoMeshFilled;
    filled->setMesh(&section);
    filled->setDataMapping(&colors);
    filled->valuesIndex = 0;
    filled->coloringType = PoMesh::COLOR_MAPPING;
    root->addChild(filled);
    SoSeparator* frame = gallery::inked(SbColor(0.3f, 0.3f, 0.34f), 2.0f);
    auto* limit = new PoMeshLimit;
    limit->setMesh(&section);
    frame->addChild(limit);
    root->addChild(frame);

    const gallery::ColorBar bar(0, 112, {0, 20, 40, 60, 80, 100}, SbBox2f(186, -155, 193, -8), &colors);
    root->addChild(bar.node());

    gallery::render(
        root, "08_falling_grid",
        {.title = "Oxygen saturation in the ocean along 11.5 degrees south (percent)",
         .caption = "PbParalCartesianGrid2D with falling y: from the surface to 5500 m, by the root of the depth. "
                    "Cells that touch land, which has no values, stay open on the grey ground.",
         .source = ocean.data().source(),
         .licence = ocean.data().licence(),
         .view = SbVec3f(0, 0, -1),
         .isOrthographic = true,
         .width = 1800,
         .height = 1000});
    root->unref();
  });
}
