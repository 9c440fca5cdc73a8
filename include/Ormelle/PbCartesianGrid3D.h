#ifndef ORMELLE_PBCARTESIANGRID3D_H
#define ORMELLE_PBCARTESIANGRID3D_H

#include <Ormelle/PbGrid3D.h>

#include <vector>

class PbHexahedronCell;

/// Volume grid with a place of its own for each node: curvilinear grids.
class ORMELLE_API PbCartesianGrid3D : public PbGrid3D {
 public:
  /// An empty grid. The last argument of every constructor: 1 copies the arrays given, 0 borrows them.
  explicit PbCartesianGrid3D(int isDataDuplicate);
  /// Each array holds num_x*num_y*num_z floats, in node order.
  PbCartesianGrid3D(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z,
                    int isDataDuplicate);
  PbCartesianGrid3D(const PbCartesianGrid3D& other);
  PbCartesianGrid3D& operator=(const PbCartesianGrid3D& other);
  ~PbCartesianGrid3D() override;

  /// Dimensions and flat arrays. Valid until the geometry changes.
  void getGeometry(int& num_x, int& num_y, int& num_z, const float*& x, const float*& y, const float*& z) const;
  /// The same as tables of num_x pointers to tables of num_y pointers to num_z floats, made on the first call. Null for
  /// an empty grid.
  void getGeometry(int& num_x, int& num_y, int& num_z, const float* const* const*& x, const float* const* const*& y,
                   const float* const* const*& z) const;

  const PbCell* getCell(int cell_index) const override;
  const PbCell* getTopoCell(int cell_index) const override;
  float getLongestEdgeLength() const override;

  void print(FILE* file) const override;

  void grid3DSkin(PoMeshSkin* rep) const override;
  void meshLevelSurfShapeIndices(PoMesh3D* rep, int set_index, const float* values) const override;
  void meshCrossSection(PoMeshCrossSection* rep) const override;
  void meshCrossContour(PoMeshCrossContour* rep) const override;
  void meshSkeleton(PoMeshSkeleton* rep, const float* values, float* x, float* y, float* z) const override;

  using PbGrid3D::getNodeCoord;
  SbVec3f getNodeCoord(int i, int j, int k) const override;
  void getXYZGeometry(const float*& x, const float*& y, const float*& z) const override;

 protected:
  void setXYZGeometry(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z) override;
  void updateBoundingBox() const override;

  PbMeshArray<float> m_x;
  PbMeshArray<float> m_y;
  PbMeshArray<float> m_z;

 private:
  struct RowTable;

  std::unique_ptr<PbHexahedronCell> m_hexahedron;
  mutable std::unique_ptr<RowTable> m_rows;
};

#endif
