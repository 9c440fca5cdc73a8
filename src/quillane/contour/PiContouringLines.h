#ifndef ORMELLE_PICONTOURINGLINES_H
#define ORMELLE_PICONTOURINGLINES_H

#include <Inventor/SbVec3f.h>

#include <memory>
#include <span>

#include "quillane/contour/PiContouring.h"

/// A line of equal value.
struct PiIsoline {
  int level;       ///< index of its isovalue in the list, that of the first among equal ones
  float isovalue;  ///< the list's own; the points may lie on one that was moved off the values of nodes
  bool isClosed;   ///< then the last point is the first one again
  std::span<const SbVec3f> points;  ///< at least two, no two neighbours equal
};

/// Finds the isolines of a surface, all levels in one pass.
///
///     PiContouringLines worker;
///     worker.setIsovaluesList(&list);
///     worker.setMesh(grid, heights);
///     for (const PiIsoline& line : worker.extract(values)) draw(line.points);
class PiContouringLines : public PiContouring {
 public:
  PiContouringLines();
  ~PiContouringLines();

  /// The lines for `values`, one for each node of the surface; null has none. A line that isn't closed ends on the
  /// boundary of the surface or of cells that are left out. Lines and points are valid until the next call. Their order
  /// is always the same for the same input: first the open lines, then the closed ones.
  ///
  /// Takes time in proportion to the cells and points, whatever the number of levels. Once its memory is large enough
  /// it allocates none, but for a few words a level where one has to be moved off the values.
  std::span<const PiIsoline> extract(const float* values);

  std::size_t memorySize() const;

 private:
  struct Chains;
  std::unique_ptr<Chains> m_chains;
};

#endif
