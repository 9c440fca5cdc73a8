#ifndef ORMELLE_PBHEXAHEDRONCELL_H
#define ORMELLE_PBHEXAHEDRONCELL_H

#include <Ormelle/PbCell.h>

class PiMarchingTable;

/// A cell of eight nodes and six facets. Nodes 0 1 2 3 go round one facet, nodes 4 5 6 7 round the opposite one, node 4
/// being joined to node 0. The facets may be warped: inside the cell everything is trilinear.
class ORMELLE_API PbHexahedronCell : public PbCell {
 public:
  explicit PbHexahedronCell(const PbMesh* mesh);

  /// The two local nodes of each edge.
  static const int (&c_edgeNodes)[12][2];

  /// Makes this the cell `index` of a mesh. `nodes` are the mesh indices of its nodes: borrowed, so they must live as
  /// long as the cell shows this cell. `x`, `y`, `z` have one entry a node of the mesh and are only read now.
  /// Returns 1.
  int set(int index, const int* nodes, const float* x, const float* y, const float* z);

  /// By Newton's method: at most 10 steps, ending when no parametric coordinate moves by 0.001.
  int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  void getWeight(const SbVec3f& pcoord, float* weights) const override;
  /// The derivatives of the weights at `pcoord`: 8 for u, then 8 for v, then 8 for w.
  void getDerivs(const SbVec3f& pcoord, float* derivs) const;
  PiMarchingCase* getMCcase(unsigned char caseId) const override;

  /// Builds the marching table that hexahedra and voxels share, and counts a reference on it. The library does this at
  /// start-up. Returns 1.
  static int init();
  /// Gives one reference back; the last one frees the table.
  static void finish();

 private:
  static PiMarchingTable c_MarchingLookup;
  static int c_numInit;
  friend class PbVoxelCell;
};

#endif
