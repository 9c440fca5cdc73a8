#ifndef ORMELLE_PBPARALCARTESIANGRID3D_H
#define ORMELLE_PBPARALCARTESIANGRID3D_H

#include <Ormelle/PbCartesianGrid3D.h>

class PbVoxelCell;

/// Volume grid whose lines are parallel to the axes, at any distances. Coordinates may rise or fall along an axis.
class ORMELLE_API PbParalCartesianGrid3D : public PbCartesianGrid3D {
 public:
  /// An empty grid. The last argument of every constructor: 1 copies the arrays given, 0 borrows them.
  explicit PbParalCartesianGrid3D(int isDataDuplicate);
  /// `x` holds num_x floats, `y` num_y and `z` num_z.
  PbParalCartesianGrid3D(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z,
                         int isDataDuplicate);
  PbParalCartesianGrid3D(const PbParalCartesianGrid3D& other);
  PbParalCartesianGrid3D& operator=(const PbParalCartesianGrid3D& other);
  ~PbParalCartesianGrid3D() override;

  /// Dimensions and one array for each axis. Valid until the geometry changes.
  void getGeometry(int& num_x, int& num_y, int& num_z, const float*& x, const float*& y, const float*& z) const;

  const PbCell* getCell(int cell_index) const override;
  const PbCell* getTopoCell(int cell_index) const override;
  /// The largest step along an axis.
  float getLongestEdgeLength() const override;

  /// By bisection along the axes. A point exactly at the last coordinate of an axis is in no cell.
  const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  /// Ignores the start cell.
  const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                   const PbCell* adjacent_cell) const override;

  /// 1: sections across the axes are cheap.
  int isCrossSectionOptimal() const override;
  void print(FILE* file) const override;

  void grid3DSkin(PoMeshSkin* rep) const override;
  void meshLevelSurfShapeIndices(PoMesh3D* rep, int set_index, const float* values) const override;
  void meshCrossSection(PoMeshCrossSection* rep) const override;
  void meshCrossContour(PoMeshCrossContour* rep) const override;
  void meshSkeleton(PoMeshSkeleton* rep, const float* values, float* x, float* y, float* z) const override;

  using PbGrid3D::getNodeCoord;
  SbVec3f getNodeCoord(int i, int j, int k) const override;

 protected:
  void setXYZGeometry(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z) override;
  void updateBoundingBox() const override;

 private:
  std::unique_ptr<PbVoxelCell> m_voxel;
};

#endif
