#ifndef ORMELLE_PICELLOCTREE_H
#define ORMELLE_PICELLOCTREE_H

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>

#include "quillane/search/PiBoxTree.h"

class PbArrayOfInt;
class PbCell;
class PbMesh;

/// Octree over the cells of one mesh, for the search of the cell that holds a point.
///
/// The box of a cell is widened by as much as the tolerance of the search, and rounding, let the cell accept points
/// beside it, so that the search gives the same answer as asking all cells by rising index. The tree is made for a
/// tolerance and made anew when a larger one is asked for.
class PiCellOctree {
 public:
  /// The cells of a surface also accept points that lie off the surface.
  enum Kind { VOLUME, SURFACE };

  explicit PiCellOctree(Kind kind) : m_kind(kind) {}

  /// Makes the tree ready for searches in `mesh` with this tolerance; does nothing if it is. `coordsKey` stands for all
  /// that the coordinates of the cells depend on beside the geometry id.
  void update(const PbMesh& mesh, float tolerance, const void* coordsKey);

  /// The cell of lowest index that holds the point and isn't in `excluded`, or null. A volume also answers null when
  /// the point is outside the mesh's box scaled by 1.01.
  const PbCell* find(const PbMesh& mesh, const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                     const PbArrayOfInt& excluded) const;

  const PiBoxTree& tree() const { return m_tree; }

 private:
  Kind m_kind;
  bool m_isBuilt = false;
  unsigned int m_geometryId = 0;
  const void* m_coordsKey = nullptr;
  double m_tolerance = 0;
  PiBoxTree::Box m_domain{};
  PiBoxTree m_tree;
};

#endif
