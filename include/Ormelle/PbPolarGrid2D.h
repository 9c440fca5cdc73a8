#ifndef ORMELLE_PBPOLARGRID2D_H
#define ORMELLE_PBPOLARGRID2D_H

#include <Ormelle/PbGrid2D.h>

/// Surface grid of radii and angles: node (i, j) lies at (r[i] cos t[j], r[i] sin t[j]), angles in radians.
///
/// It has no cell objects: getCell() is null, no cell is found for a point, and the area, which is the sum over the
/// cells, is 0.
class ORMELLE_API PbPolarGrid2D : public PbGrid2D {
 public:
  /// An empty grid. The last argument of every constructor: 1 copies the arrays given, 0 borrows them.
  explicit PbPolarGrid2D(int isDataDuplicate);
  /// `radius` holds num_r floats, `angle` num_t, and `z` num_r*num_t.
  PbPolarGrid2D(int num_r, int num_t, const float* radius, const float* angle, int isDataDuplicate);
  PbPolarGrid2D(int num_r, int num_t, const float* radius, const float* angle, const float* z, int isDataDuplicate);
  PbPolarGrid2D(const PbPolarGrid2D& other);
  PbPolarGrid2D& operator=(const PbPolarGrid2D& other);
  ~PbPolarGrid2D() override;

  void meshLines(PoMeshLines* rep) const override;
  void meshFilled(PoMeshFilled* rep) const override;
  void meshContouring(PiContouring* contouring, const float* z) const override;

  /// Dimensions and arrays: num_r and num_t floats, and num_r*num_t for z, which is null for a flat grid.
  void getGeometry(int& num_r, int& num_t, const float*& radius, const float*& angle) const;
  void getGeometry(int& num_r, int& num_t, const float*& radius, const float*& angle, const float*& z) const;
  /// The same with z as a table of num_r pointers to rows of num_t floats, null for a flat grid.
  void getGeometry(int& num_r, int& num_t, const float*& radius, const float*& angle, const float* const*& z) const;

  /// Null.
  const PbCell* getCell(int cell_index) const override;

  void getNodesCoord(const float* z, SoMFVec3f& coords) const override;
  void print(FILE* file) const override;

  using PbGrid2D::getNodeCoord;
  SbVec3f getNodeCoord(int i, int j) const override;
  /// Radii and angles.
  void getXYGeometry(const float*& radius, const float*& angle) const override;

 protected:
  void setXYGeometry(int num_r, int num_t, const float* radius, const float* angle) override;
  void updateBoundingBox() const override;

 private:
  PbMeshArray<float> m_radius;
  PbMeshArray<float> m_angle;
};

#endif
