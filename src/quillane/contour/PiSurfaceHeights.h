#ifndef ORMELLE_PISURFACEHEIGHTS_H
#define ORMELLE_PISURFACEHEIGHTS_H

#include <Inventor/SbVec2f.h>

#include <span>
#include <vector>

#include "quillane/contour/PiContouring.h"

/// Tells how high a surface lies at places of the plane.
///
///     PiSurfaceHeights surface;
///     surface.setMesh(grid, heights);
///     std::vector<float> found = surface.at(places);
class PiSurfaceHeights : public PiContouring {
 public:
  PiSurfaceHeights() = default;
  ~PiSurfaceHeights() = default;

  /// The height at each place, linear within triangles, of which a quadrangle is two; the greatest where cells lie over
  /// each other, and NaN where there is none. One walk over the cells answers for all places.
  std::vector<float> at(std::span<const SbVec2f> places) const;
};

#endif
