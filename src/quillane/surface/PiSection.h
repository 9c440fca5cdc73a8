#ifndef ORMELLE_PISECTION_H
#define ORMELLE_PISECTION_H

#include <cmath>
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
  /// Appends the point at the fraction `t` of the way between two nodes, and unless `nodeValues` is null its value.
  void addInterpolated(const SbVec3f& from, const SbVec3f& to, const float* nodeValues, int fromNode, int toNode,
                       float t) {
    SbVec3f point = from + t * (to - from);
    for (int axis = 0; axis < 3; ++axis)
      // Ends that are further apart than the largest float.
      if (!std::isfinite(point[axis])) point[axis] = (1 - t) * from[axis] + t * to[axis];
    points.push_back(point);
    if (!nodeValues) return;
    const float a = nodeValues[fromNode], b = nodeValues[toNode];
    // An end that isn't reached doesn't count, be it infinite.
    values.push_back(t == 0 ? a : a + t * (b - a));
  }
  std::size_t memorySize() const {
    return points.capacity() * sizeof(SbVec3f) + values.capacity() * sizeof(float) +
           (coordIndices.capacity() + cells.capacity()) * sizeof(int);
  }
};

#endif
