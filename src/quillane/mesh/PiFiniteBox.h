#ifndef ORMELLE_PIFINITEBOX_H
#define ORMELLE_PIFINITEBOX_H

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>

#include <cmath>

/// A box that grows by points and leaves out those with a non-finite coordinate, so that one bad node doesn't spoil it.
class PiFiniteBox {
 public:
  void add(const SbVec3f& point) {
    if (std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]))
      m_box.extendBy(point);
    else
      m_isWhole = false;
  }
  const SbBox3f& box() const { return m_box; }
  /// Whether no point was left out.
  bool isWhole() const { return m_isWhole; }

 private:
  SbBox3f m_box;
  bool m_isWhole = true;
};

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
