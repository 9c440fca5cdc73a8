// One colour a cell, on a grid coarse enough to see the cells, with their edges drawn above them.

#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLines.h>

#include "Ink.h"
#include "Terrain.h"

int main() {
  return gallery::run([] {
    gallery::Terrain terrain;
    PbNonLinearDataMapping2 colors = gallery::Terrain::colors();

    // Every eighth node of the survey.
    constexpr int step = 8;
    const int numX = (terrain.data().dims()[0] - 1) / step + 1;
    const int numY = (terrain.data().dims()[1] - 1) / step + 1;
    std::vector<float> heights;
    std::vector<float> raised;
    for (int i = 0; i < numX; ++i) {
      for (int j = 0; j < numY; ++j) {
        heights.push_back(terrain.heights()[static_cast<std::size_t>(i * step * terrain.data().dims()[1] + j * step)]);
        raised.push_back(heights.back() * gallery::Terrain::kExaggeration / 1000);
      }
    }
    PbRegularCartesianGrid2D coarse(numX, numY, 0, 0, terrain.width(), terrain.depth(), raised.data(), 0);
    coarse.addValuesSet(0, heights.data(), "height in m");

    auto* root = new SoSeparator;
    root->ref();
    root->addChild(new SoPolygonOffset);
    auto* filled = new PoMeshFilled;
    filled->setMesh(&coarse);
    filled->setDataMapping(&colors);
    filled->valuesIndex = 0;
    filled->coloringType = PoMesh::COLOR_AVERAGE;
    root->addChild(filled);

    SoSeparator* edges = gallery::inked(SbColor(0.16f, 0.18f, 0.16f), 1.2f);
    auto* lines = new PoMeshLines;
    lines->setMesh(&coarse);
    edges->addChild(lines);
    root->addChild(edges);

    gallery::render(root, "02_terrain_average",
                    {.title = "One colour a cell",
                     .caption = "Each cell takes the colour of the mean of its four heights: PoMeshFilled under "
                                "COLOR_AVERAGE, with PoMeshLines above it.",
                     .source = terrain.data().source(),
                     .licence = terrain.data().licence(),
                     .view = SbVec3f(-0.55f, 0.85f, -0.75f),
                     .up = SbVec3f(0, 0, 1)});
    root->unref();
  });
}
