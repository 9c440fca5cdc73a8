#ifndef ORMELLE_PICELLSEARCH_H
#define ORMELLE_PICELLSEARCH_H

#include <Inventor/SbVec3f.h>

#include <memory>

#include "quillane/cell/PiPlainCell.h"
#include "quillane/search/PiBoxTree.h"

class PbMesh;

/// The cells of one mesh, ready to be searched by any number of threads. It borrows the arrays of the mesh.
///
/// Regular and rectilinear grids are searched by their axes; all other cells by a PiBoxTree over their boxes. The box
/// of a cell is widened by as much as the tolerance of the search, and rounding, let the cell accept points beside it,
/// so that the search gives the same answer as asking all cells by rising index.
class PiCellSearch {
 public:
  /// Of any mesh, for searches up to a tolerance.
  static std::unique_ptr<const PiCellSearch> make(const PbMesh& mesh, float tolerance);
  /// That of the mesh, which keeps it until its coordinates change. It is made if there is none, or none that serves
  /// the tolerance.
  static const std::shared_ptr<const PiCellSearch>& of(const PbMesh& mesh, float tolerance);

  virtual ~PiCellSearch();
  PiCellSearch(const PiCellSearch&) = delete;
  PiCellSearch& operator=(const PiCellSearch&) = delete;

  /// Makes `cell` the cell `index`. False, and `cell` holds no cell, if there is none of that index.
  virtual bool read(int index, PiPlainCell& cell) const = 0;

  /// Finds the cell of lowest index that holds the point. False if there is none, or in a volume if the point is
  /// outside the mesh's box scaled by 1.01; `cell` is then as it was.
  virtual bool find(const SbVec3f& point, float tolerance, PiPlainCell& cell, SbVec3f& pcoord) const = 0;

  /// Null if the mesh is searched by its axes.
  virtual const PiBoxTree* tree() const { return nullptr; }

 protected:
  PiCellSearch() = default;

 private:
  double m_tolerance = 0;  // the largest it serves
};

#endif
