#ifndef ORMELLE_TOOL_OUT_PAGEPAINTER_H
#define ORMELLE_TOOL_OUT_PAGEPAINTER_H

#include "out/PageScene.h"

namespace tool {

/// What a vector picture holds otherwise than a reader may expect.
struct PaintReport {
  std::size_t bitmaps = 0;          ///< areas drawn as pixels, for their shades or their number
  std::size_t sortedTriangles = 0;  ///< triangles in space that are drawn from far to near
};

/// Paints what a page shows, the far before the near. Things of one depth come in the order of the scene, as OpenGL
/// draws them. Where depths overlap, triangles are sorted one by one and lines cut where something hides them; areas
/// with shades or of very many triangles become bitmaps, over which lines and texts stand as such.
PaintReport paint(const std::vector<PageBatch>& batches, int width, int height, Canvas& canvas);

}  // namespace tool

#endif
