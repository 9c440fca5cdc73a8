#ifndef ORMELLE_PILABELBOX_H
#define ORMELLE_PILABELBOX_H

#include <algorithm>
#include <cmath>
#include <utility>

#include <Inventor/SbVec3f.h>

#include "quillane/search/PiRectTree.h"

/// A rectangle of the plane, turned by any angle: the room of a text. Its sides belong to it.
struct PiLabelBox {
  double x = 0, y = 0;    ///< the middle
  double ux = 1, uy = 0;  ///< unit vector along the text; its upright is that turned by a quarter to the left
  double halfWidth = 0, halfHeight = 0;

  PiRect limit() const {
    const double dx = std::abs(ux) * halfWidth + std::abs(uy) * halfHeight;
    const double dy = std::abs(uy) * halfWidth + std::abs(ux) * halfHeight;
    PiRect rect;
    rect.extendBy(x - dx, y - dy);
    rect.extendBy(x + dx, y + dy);
    return rect;
  }

  /// Whether the segment has a point in the box; if so, from which share of its length to which.
  bool clip(const SbVec3f& from, const SbVec3f& to, double& enter, double& leave) const {
    const double fromX = from[0] - x, fromY = from[1] - y;
    const double stepX = double(to[0]) - from[0], stepY = double(to[1]) - from[1];
    enter = 0;
    leave = 1;
    return clipAxis(fromX * ux + fromY * uy, stepX * ux + stepY * uy, halfWidth, enter, leave) &&
           clipAxis(fromY * ux - fromX * uy, stepY * ux - stepX * uy, halfHeight, enter, leave);
  }
  bool touches(const SbVec3f& from, const SbVec3f& to) const {
    double enter, leave;
    return clip(from, to, enter, leave);
  }

  /// Whether the box has a point in the rectangle, if their limits overlap.
  bool touches(const PiRect& rect) const {
    const double dx = rect.minX / 2 + rect.maxX / 2 - x, dy = rect.minY / 2 + rect.maxY / 2 - y;
    const double halfX = rect.width() / 2, halfY = rect.height() / 2;
    return std::abs(dx * ux + dy * uy) <= halfWidth + halfX * std::abs(ux) + halfY * std::abs(uy) &&
           std::abs(dy * ux - dx * uy) <= halfHeight + halfX * std::abs(uy) + halfY * std::abs(ux);
  }

 private:
  // The method of Liang and Barsky for the slab between -half and half.
  static bool clipAxis(double from, double step, double half, double& enter, double& leave) {
    if (step == 0) return std::abs(from) <= half;
    double first = (-half - from) / step, last = (half - from) / step;
    if (first > last) std::swap(first, last);
    enter = std::max(enter, first);
    leave = std::min(leave, last);
    return enter <= leave;
  }
};

/// A box as the region of a search.
struct PiLabelRegion {
  explicit PiLabelRegion(const PiLabelBox& label) : box(label), limit(label.limit()) {}
  bool overlaps(const PiRect& rect) const { return limit.overlaps(rect) && box.touches(rect); }

  PiLabelBox box;
  PiRect limit;
};

#endif
