#ifndef ORMELLE_POSFINDEXEDMESH2D_H
#define ORMELLE_POSFINDEXEDMESH2D_H

#include <Ormelle/PbIndexedMesh2D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbIndexedMesh2D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFIndexedMesh2D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFIndexedMesh2D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbIndexedMesh2D& mesh);
  const PbIndexedMesh2D& operator=(const PbIndexedMesh2D& mesh);
  const PbIndexedMesh2D& getValue() const;
  PbIndexedMesh2D* getMesh() override;

 private:
  std::unique_ptr<PbIndexedMesh2D> m_mesh;
};

#endif
