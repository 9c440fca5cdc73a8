#ifndef ORMELLE_POSFPARALCARTESIANGRID3D_H
#define ORMELLE_POSFPARALCARTESIANGRID3D_H

#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbParalCartesianGrid3D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFParalCartesianGrid3D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFParalCartesianGrid3D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbParalCartesianGrid3D& mesh);
  const PbParalCartesianGrid3D& operator=(const PbParalCartesianGrid3D& mesh);
  const PbParalCartesianGrid3D& getValue() const;
  PbParalCartesianGrid3D* getMesh() override;

 private:
  std::unique_ptr<PbParalCartesianGrid3D> m_mesh;
};

#endif
