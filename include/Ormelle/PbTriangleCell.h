#ifndef ORMELLE_PBTRIANGLECELL_H
#define ORMELLE_PBTRIANGLECELL_H

#include <Ormelle/PbCell.h>

/// A surface cell of three nodes.
class ORMELLE_API PbTriangleCell : public PbCell {
 public:
  explicit PbTriangleCell(const PbMesh* mesh);

  /// The two local nodes of each edge.
  static const int (&c_edgeNodes)[3][2];

  /// Makes this the cell `index` of a mesh. `nodes` are the mesh indices of its nodes: borrowed, so they must live as
  /// long as the cell shows this cell. `x`, `y` and `z` (a null `z` means 0) have one entry a node of the mesh and are
  /// only read now. Returns 1.
  int set(int index, const int* nodes, const float* x, const float* y);
  int set(int index, const int* nodes, const float* x, const float* y, const float* z);

  /// 1-u-v must be in the interval, too. A flat cell (all nodes at one z) doesn't look at the z of the point; any other
  /// cell wants the point nearer to its plane than a third of the mean length of its edges.
  int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  void getWeight(const SbVec3f& pcoord, float* weights) const override;
};

#endif
