#ifndef ORMELLE_PICELLLOCATOR_H
#define ORMELLE_PICELLLOCATOR_H

#include <Inventor/SbVec3f.h>

#include <memory>

#include "quillane/cell/PiPlainCell.h"

class PbMesh;
class PiCellSearch;

/// Finds the cells of a mesh that hold points, for several threads at once: nothing in it changes after construction,
/// and nothing of the mesh that its const operations fill on demand is used. Every mesh class serves, surfaces and
/// volumes, also those of an application.
///
/// It borrows from the mesh and is good until the mesh changes its geometry or dies. It takes the mesh's own index of
/// cells where there is one, so it is cheap to make anew for each rebuild.
class PiCellLocator {
 public:
  /// For searches with `tolerance` (see PbMesh::findContainingCell). Builds the mesh's index of cells if it isn't there
  /// yet, so only one thread at a time may make locators of one mesh.
  explicit PiCellLocator(const PbMesh& mesh, float tolerance = 0);

  /// Makes `cell` the cell `index` of the mesh. False, and `cell` holds no cell, if there is none of that index.
  bool read(int index, PiPlainCell& cell) const;

  /// Finds the cell that PbMesh::findContainingCell finds: of several that hold the point mostly the one of lowest
  /// index. False if there is none; `cell` is then as it was.
  bool find(const SbVec3f& point, PiPlainCell& cell, SbVec3f& pcoord) const;

  /// The same, starting at `cell`: it is tried first, then those round it, then all others. Fast when the point moved
  /// little since that cell was found. A `cell` without a cell does no harm.
  bool findFrom(const SbVec3f& point, PiPlainCell& cell, SbVec3f& pcoord) const;

  /// findFrom() by index, -1 for no cell: the index of the cell found or -1.
  int locate(const SbVec3f& point, int startCell, SbVec3f& pcoord) const;

 private:
  std::shared_ptr<const PiCellSearch> m_search;
  float m_tolerance;
};

#endif
