#ifndef ORMELLE_PBPYRAMIDCELL_H
#define ORMELLE_PBPYRAMIDCELL_H

#include <Ormelle/PbCell.h>

class PiMarchingTable;

/// A cell of five nodes: the quadrangle 0 1 2 3 and the apex 4.
class ORMELLE_API PbPyramidCell : public PbCell {
 public:
  explicit PbPyramidCell(const PbMesh* mesh);

  /// The two local nodes of each edge.
  static const int (&c_edgeNodes)[8][2];

  /// Makes this the cell `index` of a mesh. `nodes` are the mesh indices of its nodes: borrowed, so they must live as
  /// long as the cell shows this cell. `x`, `y`, `z` have one entry a node of the mesh and are only read now.
  /// Returns 1.
  int set(int index, const int* nodes, const float* x, const float* y, const float* z);

  /// By Newton's method, as for hexahedra. At the apex, where u and v have no meaning, they are 0.5.
  int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  void getWeight(const SbVec3f& pcoord, float* weights) const override;
  /// The derivatives of the weights at `pcoord`: 5 for u, then 5 for v, then 5 for w.
  void getDerivs(const SbVec3f& pcoord, float* derivs) const;
  PiMarchingCase* getMCcase(unsigned char caseId) const override;

  /// Builds the marching table of pyramids, unless it stands already. The library does this at start-up. Returns 1.
  static int init();
  /// Frees the table.
  static void finish();

 private:
  static PiMarchingTable c_MarchingLookup;
};

#endif
