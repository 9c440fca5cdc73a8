#ifndef ORMELLE_PBVOXELCELL_H
#define ORMELLE_PBVOXELCELL_H

#include <Ormelle/PbCell.h>

/// A hexahedron whose edges are parallel to the axes: u runs along x, v along y and w along z. It is given by two
/// opposite corners, and its nodes, edges, facets and marching cases are numbered as those of `PbHexahedronCell`.
class ORMELLE_API PbVoxelCell : public PbCell {
 public:
  explicit PbVoxelCell(const PbMesh* mesh);

  /// The two local nodes of each edge.
  static const int (&c_edgeNodes)[12][2];

  /// Makes this the cell `index` of a mesh. `nodes` are the mesh indices of its nodes: borrowed, so they must live as
  /// long as the cell shows this cell. (xmin, ymin, zmin) is node 0 and (xmax, ymax, zmax) node 6; a minimum above its
  /// maximum serves a grid whose coordinates fall. Returns 1.
  int set(int index, const int* nodes, float xmin, float ymin, float zmin, float xmax, float ymax, float zmax);

  float getVolume() const override;
  /// Direct, without iteration.
  int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  void getWeight(const SbVec3f& pcoord, float* weights) const override;
  using PbCell::getValue;
  SbVec3f getValue(const SbVec3f& pcoord, const SbVec3f* values) const override;
  float getValue(const SbVec3f& pcoord, const float* values) const override;
  PiMarchingCase* getMCcase(unsigned char caseId) const override;

 private:
  SbVec3f m_origin{0.0f, 0.0f, 0.0f};
  SbVec3f m_size{0.0f, 0.0f, 0.0f};
};

#endif
