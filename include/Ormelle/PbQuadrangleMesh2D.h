#ifndef ORMELLE_PBQUADRANGLEMESH2D_H
#define ORMELLE_PBQUADRANGLEMESH2D_H

#include <Ormelle/PbIndexedMesh2D.h>

/// Surface mesh of quadrangles, given by their nodes.
class ORMELLE_API PbQuadrangleMesh2D : public PbIndexedMesh2D {
 public:
  /// An empty mesh. The last argument of every constructor: 1 copies the arrays given, 0 borrows them.
  explicit PbQuadrangleMesh2D(int isDataDuplicate);
  /// `x` and `y` (and `z`, null for a flat mesh) hold one float for each node, `cell_index` four nodes for each cell,
  /// in the order of its perimeter.
  PbQuadrangleMesh2D(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index,
                     int isDataDuplicate);
  PbQuadrangleMesh2D(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                     const int* cell_index, int isDataDuplicate);
  PbQuadrangleMesh2D(const PbQuadrangleMesh2D& other);
  PbQuadrangleMesh2D& operator=(const PbQuadrangleMesh2D& other);
  ~PbQuadrangleMesh2D() override;

  using PbIndexedMesh2D::getGeometry;
  using PbIndexedMesh2D::setGeometry;

  void setGeometry(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index);
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index);

  /// The arrays and counts. Valid until the geometry changes.
  void getGeometry(int& num_nodes, const float*& x, const float*& y, int& num_cells, const int*& cell_index) const;
  void getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                   const int*& cell_index) const;
  /// The same with a table of `num_cells` pointers to the four nodes of each cell, made on the first call.
  void getGeometry(int& num_nodes, const float*& x, const float*& y, int& num_cells,
                   const int* const*& cell_nodes) const;
  void getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                   const int* const*& cell_nodes) const;

  void meshLines(PoMeshLines* rep) const override;
  void meshFilled(PoMeshFilled* rep) const override;
  void meshContouring(PiContouring* contouring, const float* z) const override;
};

#endif
