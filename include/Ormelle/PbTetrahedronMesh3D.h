#ifndef ORMELLE_PBTETRAHEDRONMESH3D_H
#define ORMELLE_PBTETRAHEDRONMESH3D_H

#include <Ormelle/PbIndexedMesh3D.h>

/// Volume mesh of tetrahedra, given by their nodes in the order of PbTetrahedronCell.
class ORMELLE_API PbTetrahedronMesh3D : public PbIndexedMesh3D {
 public:
  /// An empty mesh. The last argument of every constructor: 1 copies the arrays given, 0 borrows them.
  explicit PbTetrahedronMesh3D(int isDataDuplicate);
  /// `x`, `y` and `z` hold one float for each node, `cell_index` four nodes for each cell.
  PbTetrahedronMesh3D(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                      const int* cell_index, int isDataDuplicate);
  PbTetrahedronMesh3D(const PbTetrahedronMesh3D& other);
  PbTetrahedronMesh3D& operator=(const PbTetrahedronMesh3D& other);
  ~PbTetrahedronMesh3D() override;

  using PbIndexedMesh3D::getGeometry;
  using PbIndexedMesh3D::setGeometry;

  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index);

  /// The arrays and counts. Valid until the geometry changes.
  void getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                   const int*& cell_index) const;
  /// The same with a table of `num_cells` pointers to the four nodes of each cell, made on the first call.
  void getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                   const int* const*& cell_nodes) const;

  void meshCrossSection(PoMeshCrossSection* rep) const override;
};

#endif
