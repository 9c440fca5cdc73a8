#ifndef ORMELLE_PBCARTESIANGRID2D_H
#define ORMELLE_PBCARTESIANGRID2D_H

#include <Ormelle/PbGrid2D.h>

class PbQuadrangleCell;

/// Surface grid with a place of its own for each node: curvilinear grids.
///
///     // A quarter of a ring: 2 by 3 nodes.
///     const float x[] = {1, 0.7F, 0, 2, 1.4F, 0}, y[] = {0, 0.7F, 1, 0, 1.4F, 2};
///     PbCartesianGrid2D mesh(2, 3, x, y, 1);
///     mesh.addValuesSet(0, heat, "Heat");  // six floats
class ORMELLE_API PbCartesianGrid2D : public PbGrid2D {
 public:
  /// An empty grid. The last argument of every constructor: 1 copies the arrays given, 0 borrows them.
  explicit PbCartesianGrid2D(int isDataDuplicate);
  /// `x` and `y` hold num_x*num_y floats, in node order.
  PbCartesianGrid2D(int num_x, int num_y, const float* x, const float* y, int isDataDuplicate);
  PbCartesianGrid2D(int num_x, int num_y, const float* x, const float* y, const float* z, int isDataDuplicate);
  PbCartesianGrid2D(const PbCartesianGrid2D& other);
  PbCartesianGrid2D& operator=(const PbCartesianGrid2D& other);
  ~PbCartesianGrid2D() override;

  void meshLines(PoMeshLines* rep) const override;
  void meshFilled(PoMeshFilled* rep) const override;
  void meshContouring(PiContouring* contouring, const float* z) const override;

  /// Dimensions and flat arrays, num_x*num_y floats each; z is null for a flat grid. Valid until the geometry changes.
  void getGeometry(int& num_x, int& num_y, const float*& x, const float*& y) const;
  void getGeometry(int& num_x, int& num_y, const float*& x, const float*& y, const float*& z) const;
  /// The same as tables of num_x pointers to rows of num_y floats. Null for an empty grid.
  void getGeometry(int& num_x, int& num_y, const float* const*& x, const float* const*& y) const;
  void getGeometry(int& num_x, int& num_y, const float* const*& x, const float* const*& y,
                   const float* const*& z) const;

  const PbCell* getCell(int cell_index) const override;
  const PbCell* getTopoCell(int cell_index) const override;

  void getNodesCoord(const float* z, SoMFVec3f& coords) const override;
  void print(FILE* file) const override;

  using PbGrid2D::getNodeCoord;
  SbVec3f getNodeCoord(int i, int j) const override;
  void getXYGeometry(const float*& x, const float*& y) const override;

 protected:
  void setXYGeometry(int num_x, int num_y, const float* x, const float* y) override;
  void updateBoundingBox() const override;
  const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                            PbArrayOfInt& excluded) const override;

  PbMeshArray<float> m_x;
  PbMeshArray<float> m_y;
  std::unique_ptr<PbQuadrangleCell> m_quadrangle;

 private:
  mutable std::vector<const float*> m_xRows;
  mutable std::vector<const float*> m_yRows;
};

#endif
