#ifndef ORMELLE_PIDRAWNNODES_H
#define ORMELLE_PIDRAWNNODES_H

#include <cstdint>
#include <vector>

#include <Inventor/SbVec3f.h>

#include "quillane/view/PiView2D.h"

/// Which nodes of a mesh can be drawn: those with finite coordinates and, where values are used, with a value that
/// isn't NaN. A cell is drawn if all its nodes are; this way the holes are the same in every colouring.
class PiDrawnNodes {
 public:
  /// Looks at `num` points, and at as many values unless `values` is null, and moves the points that aren't finite to
  /// the origin: nothing drawn refers to them, but what measures coordinates may meet them.
  PiDrawnNodes(SbVec3f* points, const float* values, int num);

  bool areAll() const { return m_isDrawn.empty(); }
  bool has(int node) const {
    return areAll() || (static_cast<std::size_t>(node) < m_isDrawn.size() && m_isDrawn[static_cast<std::size_t>(node)]);
  }
  bool hasAll(const PiCellNodes& cell) const {
    if (areAll()) return true;
    for (int i = 0; i < cell.num; ++i)
      if (!has(cell.node[i])) return false;
    return true;
  }

 private:
  std::vector<std::uint8_t> m_isDrawn;  // empty if all are
};

#endif
