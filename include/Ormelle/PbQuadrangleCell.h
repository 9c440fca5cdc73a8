#ifndef ORMELLE_PBQUADRANGLECELL_H
#define ORMELLE_PBQUADRANGLECELL_H

#include <Ormelle/PbCell.h>

/// A surface cell of four nodes, in the order of its perimeter. It may be warped: inside the cell everything is
/// bilinear.
class ORMELLE_API PbQuadrangleCell : public PbCell {
 public:
  explicit PbQuadrangleCell(const PbMesh* mesh);

  /// The two local nodes of each edge.
  static const int (&c_edgeNodes)[4][2];

  /// Makes this the cell `index` of a mesh. `nodes` are the mesh indices of its nodes: borrowed, so they must live as
  /// long as the cell shows this cell. `x`, `y` and `z` (a null `z` means 0) have one entry a node of the mesh and are
  /// only read now. Returns 1.
  int set(int index, const int* nodes, const float* x, const float* y);
  int set(int index, const int* nodes, const float* x, const float* y, const float* z);
  /// The same for a rectangle whose corner (xmin, ymin) is node 0 and whose corner (xmax, ymin) is node 1.
  int set(int index, const int* nodes, float xmin, float ymin, float xmax, float ymax, const float* z);

  /// By Newton's method in two dimensions. A flat cell (all nodes at one z) doesn't look at the z of the point; any
  /// other cell wants the point nearer to its mean plane than a third of the mean length of its diagonals.
  int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  void getWeight(const SbVec3f& pcoord, float* weights) const override;
  /// The derivatives of the weights at `pcoord`: 4 for u, then 4 for v.
  void getDerivs(const SbVec3f& pcoord, float* derivs) const;
};

#endif
