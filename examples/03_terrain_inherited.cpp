// Plain relief: the kit brings no colours, so the material and the light of the scene show the form alone.

#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoMeshFilled.h>

#include "Terrain.h"

int main() {
  return gallery::run([] {
    gallery::Terrain terrain;

    auto* root = new SoSeparator;
    root->ref();
    auto* lowSun = new SoDirectionalLight;  // from the north-west, where map readers expect it
    lowSun->direction.setValue(0.62f, -0.62f, -0.48f);
    lowSun->intensity = 0.95f;
    root->addChild(lowSun);
    auto* sky = new SoDirectionalLight;
    sky->direction.setValue(-0.3f, 0.3f, -1.0f);
    sky->intensity = 0.25f;
    root->addChild(sky);
    auto* plaster = new SoMaterial;
    plaster->diffuseColor.setValue(0.86f, 0.84f, 0.80f);
    plaster->ambientColor.setValue(0.25f, 0.26f, 0.30f);
    root->addChild(plaster);

    auto* filled = new PoMeshFilled;
    filled->setMesh(&terrain.mesh());
    filled->zValuesIndex = 1;
    filled->creaseAngle = 1.5f;
    root->addChild(filled);

    gallery::render(root, "03_terrain_inherited",
                    {.title = "Shaded relief of the Jacksboro Fault",
                     .caption = "Seen from above under a low light from the north-west: PoMeshFilled under "
                                "COLOR_INHERITED takes material and light from the scene.",
                     .source = terrain.data().source(),
                     .licence = terrain.data().licence(),
                     .view = SbVec3f(0, 0, -1),
                     .isOrthographic = true});
    root->unref();
  });
}
