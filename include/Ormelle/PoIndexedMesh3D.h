#ifndef ORMELLE_POINDEXEDMESH3D_H
#define ORMELLE_POINDEXEDMESH3D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFIndexedMesh3D.h>

/// Puts a PbIndexedMesh3D in PoMeshElement: a solid of tetrahedra, pyramids, wedges and hexahedra.
class ORMELLE_API PoIndexedMesh3D : public PoMeshProperty {
  PO_NODE_HEADER(PoIndexedMesh3D, PoMeshProperty);

 public:
  PoSFIndexedMesh3D mesh;  ///< empty by default

  PoIndexedMesh3D();

  PbIndexedMesh3D* getMesh() const override;

  /// As the function of PbIndexedMesh3D with this name. It touches the field.
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index,
                   const int* cell_type);

  void doAction(SoAction* action) override;

 protected:
  ~PoIndexedMesh3D() override;
  PoSFMesh& getMeshField() override;
};

#endif
