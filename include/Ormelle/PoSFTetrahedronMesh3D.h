#ifndef ORMELLE_POSFTETRAHEDRONMESH3D_H
#define ORMELLE_POSFTETRAHEDRONMESH3D_H

#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbTetrahedronMesh3D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFTetrahedronMesh3D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFTetrahedronMesh3D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbTetrahedronMesh3D& mesh);
  const PbTetrahedronMesh3D& operator=(const PbTetrahedronMesh3D& mesh);
  const PbTetrahedronMesh3D& getValue() const;
  PbTetrahedronMesh3D* getMesh() override;

 private:
  std::unique_ptr<PbTetrahedronMesh3D> m_mesh;
};

#endif
