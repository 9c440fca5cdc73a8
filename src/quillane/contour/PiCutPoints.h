#ifndef ORMELLE_PICUTPOINTS_H
#define ORMELLE_PICUTPOINTS_H

#include <Inventor/SbVec3f.h>

#include "quillane/contour/PiContourLevels.h"
#include "quillane/surface/PiGrowBuffer.h"

/// One end of an edge.
struct PiEdgeEnd {
  int node;
  int band;
  float value;
  SbVec3f point;
};

/// The points where levels cut edges. Those of one edge stand together, by rising level.
class PiCutPoints {
 public:
  void clear() {
    m_points.clear();
    m_nodes.clear();
    m_levels.clear();
  }
  /// Cuts the edge between two nodes in different bands and returns the index of its first point.
  int cutEdge(const PiEdgeEnd& end1, const PiEdgeEnd& end2, const PiContourLevels& levels) {
    return end1.band < end2.band ? cut(end1, end2, levels) : cut(end2, end1, levels);
  }

  int num() const { return static_cast<int>(m_points.size()); }
  const SbVec3f& point(int index) const { return m_points[static_cast<std::size_t>(index)]; }
  const SbVec3f* points() const { return m_points.data(); }
  /// The node that a cut point falls on as far as floats can tell, or -1.
  int node(int index) const { return m_nodes[static_cast<std::size_t>(index)]; }
  int level(int index) const { return m_levels[static_cast<std::size_t>(index)]; }

  std::size_t memorySize() const {
    return m_points.capacity() * sizeof(SbVec3f) + (m_nodes.capacity() + m_levels.capacity()) * sizeof(int);
  }

 private:
  int cut(const PiEdgeEnd& low, const PiEdgeEnd& high, const PiContourLevels& levels);

  PiGrowBuffer<SbVec3f> m_points;
  PiGrowBuffer<int> m_nodes;
  PiGrowBuffer<int> m_levels;
};

#endif
