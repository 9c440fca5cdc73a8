#ifndef ORMELLE_PBPIXELCELL_H
#define ORMELLE_PBPIXELCELL_H

#include <Ormelle/PbCell.h>

/// A rectangle at z = 0 whose sides are parallel to the axes: u runs along x and v along y. Its nodes are numbered as
/// those of `PbQuadrangleCell`.
class ORMELLE_API PbPixelCell : public PbCell {
 public:
  explicit PbPixelCell(const PbMesh* mesh);

  /// The two local nodes of each edge.
  static const int (&c_edgeNodes)[4][2];

  /// Makes this the cell `index` of a mesh. `nodes` are the mesh indices of its nodes: borrowed, so they must live as
  /// long as the cell shows this cell. (xmin, ymin) is node 0 and (xmax, ymax) node 2; a minimum above its maximum
  /// serves a grid whose coordinates fall. Returns 1.
  int set(int index, const int* nodes, float xmin, float ymin, float xmax, float ymax);

  float getArea() const override;
  /// Direct, without iteration; the z of the point isn't looked at.
  int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  void getWeight(const SbVec3f& pcoord, float* weights) const override;
  using PbCell::getValue;
  SbVec3f getValue(const SbVec3f& pcoord, const SbVec3f* values) const override;
  float getValue(const SbVec3f& pcoord, const float* values) const override;

 private:
  SbVec3f m_origin{0.0f, 0.0f, 0.0f};
  SbVec3f m_size{0.0f, 0.0f, 0.0f};
};

#endif
