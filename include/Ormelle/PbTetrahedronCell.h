#ifndef ORMELLE_PBTETRAHEDRONCELL_H
#define ORMELLE_PBTETRAHEDRONCELL_H

#include <Ormelle/PbCell.h>

class PiMarchingTable;

/// A cell of four nodes and four triangular facets. Points are located directly, without iteration, and the inverse
/// that this takes is computed once for each `set`, at the first point.
class ORMELLE_API PbTetrahedronCell : public PbCell {
 public:
  explicit PbTetrahedronCell(const PbMesh* mesh);

  /// The two local nodes of each edge.
  static const int (&c_edgeNodes)[6][2];

  /// Makes this the cell `index` of a mesh. `nodes` are the mesh indices of its nodes: borrowed, so they must live as
  /// long as the cell shows this cell. `x`, `y`, `z` have one entry a node of the mesh and are only read now.
  /// Returns 1.
  int set(int index, const int* nodes, const float* x, const float* y, const float* z);

  /// The fourth barycentric coordinate 1-u-v-w must be in the interval, too.
  int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  void getWeight(const SbVec3f& pcoord, float* weights) const override;
  PiMarchingCase* getMCcase(unsigned char caseId) const override;

  /// Builds the marching table of tetrahedra, unless it stands already. The library does this at start-up. Returns 1.
  static int init();
  /// Frees the table.
  static void finish();

 private:
  static PiMarchingTable c_MarchingLookup;
};

#endif
