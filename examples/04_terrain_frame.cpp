// The mesh as a wire model over a white surface: cell lines coloured by height, the outer limit, and walls that end at
// the lowest height.

#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLimit.h>
#include <Ormelle/PoMeshLines.h>
#include <Ormelle/PoMeshSides.h>

#include "Ink.h"
#include "Terrain.h"

int main() {
  return gallery::run([] {
    gallery::Terrain terrain;
    PbNonLinearDataMapping2 colors = gallery::Terrain::colors();

    // A window of the survey in the mountains.
    constexpr int window = 120;
    constexpr int firstX = 60;
    constexpr int firstY = 60;
    std::vector<float> heights;
    std::vector<float> raised;
    for (int i = firstX; i < firstX + window; ++i) {
      for (int j = firstY; j < firstY + window; ++j) {
        heights.push_back(terrain.heights()[static_cast<std::size_t>(i * terrain.data().dims()[1] + j)]);
        raised.push_back(heights.back() * gallery::Terrain::kExaggeration / 1000);
      }
    }
    const float size = terrain.width() * window / static_cast<float>(terrain.data().dims()[0]);
    PbRegularCartesianGrid2D mesh(window, window, 0, 0, size, size, 0);
    mesh.addValuesSet(0, heights.data(), "height in m");
    mesh.addValuesSet(1, raised.data(), "height in km, exaggerated");

    auto* root = new SoSeparator;
    root->ref();
    root->addChild(new SoPolygonOffset);
    SoSeparator* paper = gallery::inked(SbColor(1, 1, 1), 1.0f);
    auto* surface = new PoMeshFilled;  // hides the lines behind it
    surface->setMesh(&mesh);
    surface->zValuesIndex = 1;
    paper->addChild(surface);
    root->addChild(paper);

    SoSeparator* grid = gallery::inked(SbColor(0, 0, 0), 1.4f);
    auto* lines = new PoMeshLines;
    lines->setMesh(&mesh);
    lines->setDataMapping(&colors);
    lines->valuesIndex = 0;
    lines->zValuesIndex = 1;
    lines->coloringType = PoMesh::COLOR_MAPPING;
    grid->addChild(lines);
    root->addChild(grid);

    SoSeparator* border = gallery::inked(SbColor(0.1f, 0.12f, 0.14f), 3.0f);
    auto* limit = new PoMeshLimit;
    limit->setMesh(&mesh);
    limit->zValuesIndex = 1;
    border->addChild(limit);
    root->addChild(border);

    auto* clay = new SoMaterial;
    clay->diffuseColor.setValue(0.70f, 0.66f, 0.60f);
    root->addChild(clay);
    auto* sides = new PoMeshSides;
    sides->setMesh(&mesh);
    sides->zValuesIndex = 1;
    sides->thresholdType = PoMeshSides::THRESHOLD_ZMIN;
    root->addChild(sides);

    gallery::render(
        root, "04_terrain_frame",
        {.title = "Lines, limit and sides",
         .caption = "A window of the survey as the lines of its cells (PoMeshLines, coloured by height), its "
                    "boundary (PoMeshLimit) and walls down to the lowest height (PoMeshSides).",
         .source = terrain.data().source(),
         .licence = terrain.data().licence(),
         .view = SbVec3f(-0.55f, 0.85f, -0.6f),
         .up = SbVec3f(0, 0, 1)});
    root->unref();
  });
}
