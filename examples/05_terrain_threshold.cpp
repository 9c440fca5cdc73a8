// A threshold without a colour cuts the low ground away: what is left is the land above 450 metres.

#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoMeshFilled.h>

#include "Terrain.h"

int main() {
  return gallery::run([] {
    gallery::Terrain terrain;
    PbNonLinearDataMapping2 colors = gallery::Terrain::colors();
    colors.setMinThreshold(450.0f);
    colors.enableThresholds(1, 0);

    auto* root = new SoSeparator;
    root->ref();
    auto* filled = new PoMeshFilled;
    filled->setMesh(&terrain.mesh());
    filled->setDataMapping(&colors);
    filled->valuesIndex = 0;
    filled->zValuesIndex = 1;
    filled->coloringType = PoMesh::COLOR_MAPPING;
    filled->creaseAngle = 1.5f;
    root->addChild(filled);

    gallery::render(
        root, "05_terrain_threshold",
        {.title = "The land above 450 metres",
         .caption = "The data mapping has a lower threshold without a colour, and cells that reach below it are "
                    "left out of the mesh.",
         .source = terrain.data().source(),
         .licence = terrain.data().licence(),
         .view = SbVec3f(-0.4f, 0.8f, -0.9f),
         .up = SbVec3f(0, 0, 1)});
    root->unref();
  });
}
