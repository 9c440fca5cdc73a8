// Real terrain, raised by its heights and coloured by them node by node, with walls down to sea level.

#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshSides.h>

#include "Terrain.h"

int main() {
  return gallery::run([] {
    gallery::Terrain terrain;
    PbNonLinearDataMapping2 colors = gallery::Terrain::colors();

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

    auto* earth = new SoMaterial;
    earth->diffuseColor.setValue(0.62f, 0.54f, 0.45f);
    root->addChild(earth);
    auto* sides = new PoMeshSides;
    sides->setMesh(&terrain.mesh());
    sides->zValuesIndex = 1;
    sides->thresholdType = PoMeshSides::THRESHOLD_VALUE;
    sides->thresholdValue = 0.0f;
    root->addChild(sides);

    gallery::render(
        root, "01_terrain_mapping",
        {.title = "Jacksboro Fault, Tennessee and Kentucky",
         .caption = "Elevation drawn four times too large and coloured by height, with its sides down to sea "
                    "level: PoMeshFilled under COLOR_MAPPING, and PoMeshSides.",
         .source = terrain.data().source(),
         .licence = terrain.data().licence(),
         .view = SbVec3f(-0.55f, 0.85f, -0.75f),
         .up = SbVec3f(0, 0, 1)});
    root->unref();
  });
}
