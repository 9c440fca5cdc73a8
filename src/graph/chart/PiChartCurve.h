#ifndef ORMELLE_PICHARTCURVE_H
#define ORMELLE_PICHARTCURVE_H

#include <Inventor/SbVec2f.h>
#include <Inventor/nodes/SoMaterial.h>

#include <cstddef>
#include <vector>

#include "graph/toolkit/PiNodeRef.h"

class PbMesh1D;
class PoChart;
class SoState;

/// The curve of a one-dimensional mesh as a chart draws it: points, colours, and where it is interrupted.
struct PiChartCurve {
  std::vector<SbVec2f> points;
  std::vector<int> nodePoints;     ///< for each node of the mesh its point
  PiNodeRef<SoMaterial> material;  ///< with an entry for each point; null where colours are inherited
  bool isPerPart = false;          ///< a segment has the entry of its start throughout
  std::vector<char> gaps;          ///< not 0 for each segment that isn't drawn; empty if all are

  /// Empty without a mesh or its values. A segment is a gap if an end of it isn't finite, or has no colour or one so
  /// transparent that the data mapping wants it left out.
  static PiChartCurve make(const PbMesh1D* mesh, const PoChart& chart, SoState* state);
  /// The same with points added where the curve passes a threshold on axis x (0) or y.
  static PiChartCurve makeCut(const PbMesh1D* mesh, const PoChart& chart, SoState* state, int axis, float threshold);

  /// Calls `use(first, last)` with the ends of each longest chain of segments that are drawn, as indices of points.
  template <class Use>
  void forEachRun(Use&& use) const {
    for (std::size_t first = 0; first + 1 < points.size();) {
      std::size_t last = first;
      while (last + 1 < points.size() && !(gaps.empty() ? 0 : gaps[last])) ++last;
      if (last > first) use(first, last);
      first = last > first ? last : first + 1;
    }
  }
};

#endif
