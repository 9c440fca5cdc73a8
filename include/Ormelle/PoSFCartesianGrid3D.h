#ifndef ORMELLE_POSFCARTESIANGRID3D_H
#define ORMELLE_POSFCARTESIANGRID3D_H

#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbCartesianGrid3D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFCartesianGrid3D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFCartesianGrid3D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbCartesianGrid3D& mesh);
  const PbCartesianGrid3D& operator=(const PbCartesianGrid3D& mesh);
  const PbCartesianGrid3D& getValue() const;
  PbCartesianGrid3D* getMesh() override;

 private:
  std::unique_ptr<PbCartesianGrid3D> m_mesh;
};

#endif
