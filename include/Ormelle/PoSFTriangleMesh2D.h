#ifndef ORMELLE_POSFTRIANGLEMESH2D_H
#define ORMELLE_POSFTRIANGLEMESH2D_H

#include <Ormelle/PbTriangleMesh2D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbTriangleMesh2D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFTriangleMesh2D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFTriangleMesh2D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbTriangleMesh2D& mesh);
  const PbTriangleMesh2D& operator=(const PbTriangleMesh2D& mesh);
  const PbTriangleMesh2D& getValue() const;
  PbTriangleMesh2D* getMesh() override;

 private:
  std::unique_ptr<PbTriangleMesh2D> m_mesh;
};

#endif
