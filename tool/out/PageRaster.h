#ifndef ORMELLE_TOOL_OUT_PAGERASTER_H
#define ORMELLE_TOOL_OUT_PAGERASTER_H

#include <vector>

#include "out/PageScene.h"

namespace tool {

/// A bitmap and where it lies on the page.
struct PlacedBitmap {
  Bitmap bitmap;
  PagePoint corner;
  double pixel = 1.0;  ///< the size of its pixels in pixels of the page
};

/// Draws triangles as pixels, the nearest before the others, with colours and textures between their corners.
///
/// Softened edges come from several samples a pixel. With `isSpread`, pixels beyond the edges repeat those at the
/// edges, for pictures that will be cut out along a sharp outline.
PlacedBitmap rasterised(const std::vector<const PageBatch*>& batches, int width, int height, bool isSpread);

/// Which depth the nearest opaque triangle has, for each place on the page.
class DepthMap {
 public:
  DepthMap(const std::vector<const PageBatch*>& batches, int width, int height);

  /// Whether nothing opaque stands in front of a vertex, with some tolerance for what it lies on.
  bool isVisible(const PageVertex& vertex) const;

 private:
  int m_columns = 0;
  int m_rows = 0;
  double m_scale = 1.0;
  std::vector<float> m_depths;
  double m_tolerance = 0.0;
};

}  // namespace tool

#endif
