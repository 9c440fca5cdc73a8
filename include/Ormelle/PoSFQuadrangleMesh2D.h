#ifndef ORMELLE_POSFQUADRANGLEMESH2D_H
#define ORMELLE_POSFQUADRANGLEMESH2D_H

#include <Ormelle/PbQuadrangleMesh2D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbQuadrangleMesh2D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFQuadrangleMesh2D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFQuadrangleMesh2D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbQuadrangleMesh2D& mesh);
  const PbQuadrangleMesh2D& operator=(const PbQuadrangleMesh2D& mesh);
  const PbQuadrangleMesh2D& getValue() const;
  PbQuadrangleMesh2D* getMesh() override;

 private:
  std::unique_ptr<PbQuadrangleMesh2D> m_mesh;
};

#endif
