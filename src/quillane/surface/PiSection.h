#ifndef ORMELLE_PISECTION_H
#define ORMELLE_PISECTION_H

#include <cstddef>

#include <Inventor/SbVec3f.h>

#include "quillane/surface/PiGrowBuffer.h"

/// What a plane cuts out of a volume: polygons that face its front, or the line segments round them. Its memory is used
/// again for the next one.
struct PiSection {
  PiGrowBuffer<SbVec3f> points;    ///< each once, shared by all parts round it
  PiGrowBuffer<float> values;      ///< one for each point, if there are values of nodes
  PiGrowBuffer<int> coordIndices;  ///< the points of each part, and -1
  PiGrowBuffer<int> cells;         ///< the cell of each part

  void clear() {
    points.clear();
    values.clear();
    coordIndices.clear();
    cells.clear();
  }
  std::size_t memorySize() const {
    return points.capacity() * sizeof(SbVec3f) + values.capacity() * sizeof(float) +
           (coordIndices.capacity() + cells.capacity()) * sizeof(int);
  }
};

#endif
