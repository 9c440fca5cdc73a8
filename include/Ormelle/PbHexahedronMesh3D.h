#ifndef ORMELLE_PBHEXAHEDRONMESH3D_H
#define ORMELLE_PBHEXAHEDRONMESH3D_H

#include <Ormelle/PbIndexedMesh3D.h>

/// Volume mesh of hexahedra, given by their nodes in the order of PbHexahedronCell.
class ORMELLE_API PbHexahedronMesh3D : public PbIndexedMesh3D {
 public:
  /// An empty mesh. The last argument of every constructor: 1 copies the arrays given, 0 borrows them.
  explicit PbHexahedronMesh3D(int isDataDuplicate);
  /// `x`, `y` and `z` hold one float for each node, `cell_index` eight nodes for each cell.
  PbHexahedronMesh3D(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                     const int* cell_index, int isDataDuplicate);
  PbHexahedronMesh3D(const PbHexahedronMesh3D& other);
  PbHexahedronMesh3D& operator=(const PbHexahedronMesh3D& other);
  ~PbHexahedronMesh3D() override;

  using PbIndexedMesh3D::getGeometry;
  using PbIndexedMesh3D::setGeometry;

  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index);

  /// The arrays and counts. Valid until the geometry changes.
  void getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                   const int*& cell_index) const;
  /// The same with a table of `num_cells` pointers to the eight nodes of each cell, made on the first call.
  void getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                   const int* const*& cell_nodes) const;

  void meshCrossSection(PoMeshCrossSection* rep) const override;
};

#endif
