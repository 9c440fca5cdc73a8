// Transparency by value: the plain is glass, the mountains are solid, and a map grid shines through.

#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLines.h>

#include "Ink.h"
#include "Terrain.h"

int main() {
  return gallery::run([] {
    gallery::Terrain terrain;
    PbLinearDataMapping colors;
    colors.setValues(300.0f, SbColor(0.20f, 0.55f, 0.75f), 0.85f, 750.0f, SbColor(0.93f, 0.80f, 0.55f), 0.0f);
    colors.enableTransparency(1);

    auto* root = new SoSeparator;
    root->ref();
    SoSeparator* below = gallery::inked(SbColor(0.25f, 0.28f, 0.32f), 2.0f);
    PbRegularCartesianGrid2D map(16, 16, 0, 0, terrain.width(), terrain.depth(), 0);
    auto* lines = new PoMeshLines;
    lines->setMesh(&map);
    below->addChild(lines);
    root->addChild(below);

    auto* filled = new PoMeshFilled;
    filled->setMesh(&terrain.mesh());
    filled->setDataMapping(&colors);
    filled->valuesIndex = 0;
    filled->zValuesIndex = 1;
    filled->coloringType = PoMesh::COLOR_MAPPING;
    filled->creaseAngle = 1.5f;
    root->addChild(filled);

    gallery::render(
        root, "06_terrain_transparency",
        {.title = "Transparent lowland",
         .caption = "A linear mapping gives each height a colour and a transparency; a grid at sea level shows "
                    "through the low ground.",
         .source = terrain.data().source(),
         .licence = terrain.data().licence(),
         .view = SbVec3f(-0.55f, 0.85f, -0.85f),
         .up = SbVec3f(0, 0, 1)});
    root->unref();
  });
}
