#ifndef ORMELLE_PBWEDGECELL_H
#define ORMELLE_PBWEDGECELL_H

#include <Ormelle/PbCell.h>

class PiMarchingTable;

/// A cell of six nodes: the triangles 0 1 2 and 3 4 5, node 3 being joined to node 0, and three quadrangles between
/// them.
class ORMELLE_API PbWedgeCell : public PbCell {
 public:
  explicit PbWedgeCell(const PbMesh* mesh);

  /// The two local nodes of each edge.
  static const int (&c_edgeNodes)[9][2];

  /// Makes this the cell `index` of a mesh. `nodes` are the mesh indices of its nodes: borrowed, so they must live as
  /// long as the cell shows this cell. `x`, `y`, `z` have one entry a node of the mesh and are only read now.
  /// Returns 1.
  int set(int index, const int* nodes, const float* x, const float* y, const float* z);

  /// By Newton's method, as for hexahedra; 1-u-v must be in the interval, too.
  int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  void getWeight(const SbVec3f& pcoord, float* weights) const override;
  /// The derivatives of the weights at `pcoord`: 6 for u, then 6 for v, then 6 for w.
  void getDerivs(const SbVec3f& pcoord, float* derivs) const;
  PiMarchingCase* getMCcase(unsigned char caseId) const override;

  /// Builds the marching table of wedges, unless it stands already. The library does this at start-up. Returns 1.
  static int init();
  /// Frees the table.
  static void finish();

 private:
  static PiMarchingTable c_MarchingLookup;
};

#endif
