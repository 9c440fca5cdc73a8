#ifndef ORMELLE_POSFINDEXEDMESH3D_H
#define ORMELLE_POSFINDEXEDMESH3D_H

#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbIndexedMesh3D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFIndexedMesh3D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFIndexedMesh3D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbIndexedMesh3D& mesh);
  const PbIndexedMesh3D& operator=(const PbIndexedMesh3D& mesh);
  const PbIndexedMesh3D& getValue() const;
  PbIndexedMesh3D* getMesh() override;

 private:
  std::unique_ptr<PbIndexedMesh3D> m_mesh;
};

#endif
