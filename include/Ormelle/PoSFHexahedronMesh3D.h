#ifndef ORMELLE_POSFHEXAHEDRONMESH3D_H
#define ORMELLE_POSFHEXAHEDRONMESH3D_H

#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbHexahedronMesh3D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFHexahedronMesh3D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFHexahedronMesh3D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbHexahedronMesh3D& mesh);
  const PbHexahedronMesh3D& operator=(const PbHexahedronMesh3D& mesh);
  const PbHexahedronMesh3D& getValue() const;
  PbHexahedronMesh3D* getMesh() override;

 private:
  std::unique_ptr<PbHexahedronMesh3D> m_mesh;
};

#endif
