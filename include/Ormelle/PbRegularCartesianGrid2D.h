#ifndef ORMELLE_PBREGULARCARTESIANGRID2D_H
#define ORMELLE_PBREGULARCARTESIANGRID2D_H

#include <Ormelle/PbGrid2D.h>

class PbPixelCell;
class PbQuadrangleCell;

/// Surface grid with lines parallel to the axes, at equal distances between limits. The first and the last node of an
/// axis lie exactly on its limits.
///
///     PbRegularCartesianGrid2D mesh(11, 21, 0, 0, 1, 2, 1);  // steps of 0.1
class ORMELLE_API PbRegularCartesianGrid2D : public PbGrid2D {
 public:
  /// An empty grid. The last int of every constructor: 1 copies the arrays given (z and data sets), 0 borrows them.
  explicit PbRegularCartesianGrid2D(int isDataDuplicate);
  /// `z` holds num_x*num_y floats.
  PbRegularCartesianGrid2D(int num_x, int num_y, float x_min, float y_min, float x_max, float y_max,
                           int isDataDuplicate);
  PbRegularCartesianGrid2D(int num_x, int num_y, float x_min, float y_min, float x_max, float y_max, const float* z,
                           int isDataDuplicate);
  /// A flat grid without data sets between the limits of another.
  PbRegularCartesianGrid2D(int num_x, int num_y, const PbRegularCartesianGrid2D& other);
  PbRegularCartesianGrid2D(const PbRegularCartesianGrid2D& other);
  PbRegularCartesianGrid2D& operator=(const PbRegularCartesianGrid2D& other);
  ~PbRegularCartesianGrid2D() override;

  void meshLines(PoMeshLines* rep) const override;
  void meshFilled(PoMeshFilled* rep) const override;
  void meshContouring(PiContouring* contouring, const float* z) const override;

  /// Replaces the nodes; see PbGrid2D::setGeometry().
  void setGeometry(int num_x, int num_y, float x_min, float y_min, float x_max, float y_max);
  void setGeometry(int num_x, int num_y, float x_min, float y_min, float x_max, float y_max, const float* z);
  void getGeometry(int& num_x, int& num_y, float& x_min, float& y_min, float& x_max, float& y_max) const;
  /// `z` gets num_x*num_y floats, or null for a flat grid.
  void getGeometry(int& num_x, int& num_y, float& x_min, float& y_min, float& x_max, float& y_max,
                   const float*& z) const;

  const PbCell* getCell(int cell_index) const override;
  const PbCell* getTopoCell(int cell_index) const override;
  float getArea() const override;

  /// By arithmetic. A point exactly on the upper limit of an axis is in the last cell.
  const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  /// Ignores the start cell.
  const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                   const PbCell* adjacent_cell) const override;

  /// 1.
  int hasSidesNormals() const override;
  void getSidesNormals(SbVec3f*& normals, const PbArrayOfInt& sizes) const override;

  /// Replaces z alone; there are no arrays of x and y.
  void setCoordinates(const float* x, const float* y, const float* z) override;

  void getNodesCoord(const float* z, SoMFVec3f& coords) const override;
  void print(FILE* file) const override;

  using PbGrid2D::getNodeCoord;
  SbVec3f getNodeCoord(int i, int j) const override;
  /// Nulls.
  void getXYGeometry(const float*& x, const float*& y) const override;

 protected:
  void setXYGeometry(int num_x, int num_y, const float* x, const float* y) override;
  void updateBoundingBox() const override;

 private:
  float m_xMin = 0, m_xMax = 0, m_xStep = 0;
  float m_yMin = 0, m_yMax = 0, m_yStep = 0;
  std::unique_ptr<PbPixelCell> m_pixel;
  std::unique_ptr<PbQuadrangleCell> m_quadrangle;
};

#endif
