#include "quillane/surface/PiLevelSurf.h"

void finishLevelSurf(bool asStrips, int* indices, std::size_t count, PiLevelSurfOutput& output) {
  output.quadrangles.forEachShared([&](const PiQuadMerge::Quadrangle& quadrangle) {
    const auto& [a, b, c, d] = quadrangle.corners;
    for (const int corner : {a, b, asStrips ? d : c, asStrips ? c : d, -1}) indices[count++] = corner;
    output.cells.push_back(quadrangle.cell);
  });
  output.indices(count);
}
