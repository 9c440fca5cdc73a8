#ifndef ORMELLE_POHEXAHEDRONMESH3D_H
#define ORMELLE_POHEXAHEDRONMESH3D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFHexahedronMesh3D.h>

/// Puts a PbHexahedronMesh3D in PoMeshElement: a solid of hexahedra.
class ORMELLE_API PoHexahedronMesh3D : public PoMeshProperty {
  PO_NODE_HEADER(PoHexahedronMesh3D, PoMeshProperty);

 public:
  PoSFHexahedronMesh3D mesh;  ///< empty by default

  PoHexahedronMesh3D();

  PbHexahedronMesh3D* getMesh() const override;

  /// As the function of PbHexahedronMesh3D with this name. It touches the field.
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index);

  void doAction(SoAction* action) override;

 protected:
  ~PoHexahedronMesh3D() override;
  PoSFMesh& getMeshField() override;
};

#endif
