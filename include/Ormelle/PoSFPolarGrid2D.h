#ifndef ORMELLE_POSFPOLARGRID2D_H
#define ORMELLE_POSFPOLARGRID2D_H

#include <Ormelle/PbPolarGrid2D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbPolarGrid2D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFPolarGrid2D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFPolarGrid2D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbPolarGrid2D& mesh);
  const PbPolarGrid2D& operator=(const PbPolarGrid2D& mesh);
  const PbPolarGrid2D& getValue() const;
  PbPolarGrid2D* getMesh() override;

 private:
  std::unique_ptr<PbPolarGrid2D> m_mesh;
};

#endif
