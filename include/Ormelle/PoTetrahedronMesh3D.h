#ifndef ORMELLE_POTETRAHEDRONMESH3D_H
#define ORMELLE_POTETRAHEDRONMESH3D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFTetrahedronMesh3D.h>

/// Puts a PbTetrahedronMesh3D in PoMeshElement: a solid of tetrahedra.
class ORMELLE_API PoTetrahedronMesh3D : public PoMeshProperty {
  PO_NODE_HEADER(PoTetrahedronMesh3D, PoMeshProperty);

 public:
  PoSFTetrahedronMesh3D mesh;  ///< empty by default

  PoTetrahedronMesh3D();

  PbTetrahedronMesh3D* getMesh() const override;

  /// As the function of PbTetrahedronMesh3D with this name. It touches the field.
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index);

  void doAction(SoAction* action) override;

 protected:
  ~PoTetrahedronMesh3D() override;
  PoSFMesh& getMeshField() override;
};

#endif
