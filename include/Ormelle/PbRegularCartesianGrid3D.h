#ifndef ORMELLE_PBREGULARCARTESIANGRID3D_H
#define ORMELLE_PBREGULARCARTESIANGRID3D_H

#include <Ormelle/PbGrid3D.h>

class PbVoxelCell;

/// Volume grid with lines parallel to the axes, at equal distances between limits. The first and the last node of an
/// axis lie exactly on its limits.
///
///     PbRegularCartesianGrid3D mesh(11, 11, 21, 0, 0, 0, 1, 1, 2, 1);  // steps of 0.1
class ORMELLE_API PbRegularCartesianGrid3D : public PbGrid3D {
 public:
  /// An empty grid. The last int of every constructor: 1 copies the data sets given, 0 borrows them.
  explicit PbRegularCartesianGrid3D(int isDataDuplicate);
  PbRegularCartesianGrid3D(int num_x, int num_y, int num_z, float x_min, float y_min, float z_min, float x_max,
                           float y_max, float z_max, int isDataDuplicate);
  PbRegularCartesianGrid3D(const PbRegularCartesianGrid3D& other);
  PbRegularCartesianGrid3D& operator=(const PbRegularCartesianGrid3D& other);
  ~PbRegularCartesianGrid3D() override;

  /// Replaces the nodes; see PbGrid3D::setGeometry().
  void setGeometry(int num_x, int num_y, int num_z, float x_min, float y_min, float z_min, float x_max, float y_max,
                   float z_max);
  void getGeometry(int& num_x, int& num_y, int& num_z, float& x_min, float& y_min, float& z_min, float& x_max,
                   float& y_max, float& z_max) const;

  const PbCell* getCell(int cell_index) const override;
  const PbCell* getTopoCell(int cell_index) const override;
  /// The largest step of the axes.
  float getLongestEdgeLength() const override;

  /// By arithmetic. A point exactly on the upper limit of an axis is in the last cell.
  const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  /// Ignores the start cell.
  const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                   const PbCell* adjacent_cell) const override;

  /// Nothing: there are no arrays.
  void setCoordinates(const float* x, const float* y, const float* z) override;

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
  /// Nulls.
  void getXYZGeometry(const float*& x, const float*& y, const float*& z) const override;

 protected:
  void setXYZGeometry(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z) override;
  void updateBoundingBox() const override;

 private:
  struct Axis {
    float min = 0, max = 0, step = 0;
  };
  Axis m_xAxis, m_yAxis, m_zAxis;
  std::unique_ptr<PbVoxelCell> m_voxel;
};

#endif
