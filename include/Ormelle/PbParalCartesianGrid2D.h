#ifndef ORMELLE_PBPARALCARTESIANGRID2D_H
#define ORMELLE_PBPARALCARTESIANGRID2D_H

#include <Ormelle/PbCartesianGrid2D.h>

class PbPixelCell;

/// Surface grid whose lines are parallel to the axes, at any distances. Coordinates may rise or fall along an axis.
///
///     const float x[] = {0, 1, 10}, y[] = {0, 5};
///     PbParalCartesianGrid2D mesh(3, 2, x, y, 1);
class ORMELLE_API PbParalCartesianGrid2D : public PbCartesianGrid2D {
 public:
  /// An empty grid. The last argument of every constructor: 1 copies the arrays given, 0 borrows them.
  explicit PbParalCartesianGrid2D(int isDataDuplicate);
  /// `x` holds num_x floats, `y` num_y, and `z` num_x*num_y.
  PbParalCartesianGrid2D(int num_x, int num_y, const float* x, const float* y, int isDataDuplicate);
  PbParalCartesianGrid2D(int num_x, int num_y, const float* x, const float* y, const float* z, int isDataDuplicate);
  PbParalCartesianGrid2D(const PbParalCartesianGrid2D& other);
  PbParalCartesianGrid2D& operator=(const PbParalCartesianGrid2D& other);
  ~PbParalCartesianGrid2D() override;

  void meshLines(PoMeshLines* rep) const override;
  void meshFilled(PoMeshFilled* rep) const override;
  void meshContouring(PiContouring* contouring, const float* z) const override;

  /// Dimensions and arrays: num_x and num_y floats, and num_x*num_y for z, which is null for a flat grid.
  void getGeometry(int& num_x, int& num_y, const float*& x, const float*& y) const;
  void getGeometry(int& num_x, int& num_y, const float*& x, const float*& y, const float*& z) const;
  /// The same with z as a table of num_x pointers to rows of num_y floats, null for a flat grid.
  void getGeometry(int& num_x, int& num_y, const float*& x, const float*& y, const float* const*& z) const;

  const PbCell* getCell(int cell_index) const override;
  const PbCell* getTopoCell(int cell_index) const override;
  float getArea() const override;

  /// By bisection along the axes. A point exactly at the last coordinate of an axis is in no cell.
  const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  /// Ignores the start cell.
  const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                   const PbCell* adjacent_cell) const override;

  /// 1.
  int hasSidesNormals() const override;
  void getSidesNormals(SbVec3f*& normals, const PbArrayOfInt& sizes) const override;

  void getNodesCoord(const float* z, SoMFVec3f& coords) const override;
  void print(FILE* file) const override;

  using PbGrid2D::getNodeCoord;
  SbVec3f getNodeCoord(int i, int j) const override;

 protected:
  void setXYGeometry(int num_x, int num_y, const float* x, const float* y) override;
  void updateBoundingBox() const override;

 private:
  std::unique_ptr<PbPixelCell> m_pixel;
};

#endif
