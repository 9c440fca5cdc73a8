#ifndef ORMELLE_POSFCARTESIANGRID2D_H
#define ORMELLE_POSFCARTESIANGRID2D_H

#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbCartesianGrid2D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFCartesianGrid2D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFCartesianGrid2D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbCartesianGrid2D& mesh);
  const PbCartesianGrid2D& operator=(const PbCartesianGrid2D& mesh);
  const PbCartesianGrid2D& getValue() const;
  PbCartesianGrid2D* getMesh() override;

 private:
  std::unique_ptr<PbCartesianGrid2D> m_mesh;
};

#endif
