#ifndef ORMELLE_PIFINITEBOX_H
#define ORMELLE_PIFINITEBOX_H

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>

#include <cmath>

#include "quillane/view/PiView2D.h"

/// A box that grows by points and leaves out those with a non-finite coordinate, so that one bad node doesn't spoil it.
class PiFiniteBox {
 public:
  void add(const SbVec3f& point) {
    if (std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2])) m_box.extendBy(point);
  }
  const SbBox3f& box() const { return m_box; }

 private:
  SbBox3f m_box;
};

template <PiView2D View>
SbBox3f boxOfNodes(const View& view) {
  PiFiniteBox box;
  view.forEachNode([&](int node, const SbVec2f& xy) { box.add(SbVec3f(xy[0], xy[1], view.z(node))); });
  return box.box();
}

/// The finite limits of an array. Low is above high when there is none.
struct PiFiniteRange {
  PiFiniteRange(const float* values, int num) {
    for (int i = 0; i < num; ++i) {
      if (!std::isfinite(values[i])) continue;
      if (!(low <= values[i])) low = values[i];
      if (!(high >= values[i])) high = values[i];
    }
  }
  bool isEmpty() const { return low > high; }

  float low = HUGE_VALF;
  float high = -HUGE_VALF;
};

#endif
