#ifndef ORMELLE_PIGRIDSLICE_H
#define ORMELLE_PIGRIDSLICE_H

#include <cstddef>

#include <Inventor/SbVec3f.h>

#include "quillane/surface/PiGridAxes.h"
#include "quillane/surface/PiGrowBuffer.h"
#include "quillane/surface/PiSectionPlane.h"

/// The section of a grid whose lines are parallel to the axes by a plane across one of them: a grid of points.
///
/// Points stand row by row; the quadrangles between two rows face the front of the plane if their corners run from a
/// point to the next row, on along that, and back.
class PiGridSlice {
 public:
  enum Result {
    OBLIQUE,  ///< the plane isn't across an axis, or the grid has gaps that a whole slice would show: not cut
    OUTSIDE,  ///< the plane passes by the grid
    SLICED
  };

  /// Cuts the grid. `values`, one for each node, may be null. A plane counts as across an axis if no component of its
  /// normal is 0.0001 or more off.
  Result cut(const PbGrid3D& grid, const PiSectionPlane& plane, const float* values);

  int numRows() const { return m_numRows; }
  int numColumns() const { return m_numColumns; }
  std::size_t memorySize() const;

  PiGrowBuffer<SbVec3f> points;
  PiGrowBuffer<float> values;  ///< one for each point, if there are values of nodes
  PiGrowBuffer<int> cells;     ///< of each quadrangle, row by row

 private:
  bool hasGaps(const PbGrid3D& grid, int axis, int interval, const float* nodeValues) const;

  PiGridAxes m_axes;
  int m_numRows = 0, m_numColumns = 0;
};

#endif
