#ifndef ORMELLE_POSFREGULARCARTESIANGRID3D_H
#define ORMELLE_POSFREGULARCARTESIANGRID3D_H

#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbRegularCartesianGrid3D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFRegularCartesianGrid3D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFRegularCartesianGrid3D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbRegularCartesianGrid3D& mesh);
  const PbRegularCartesianGrid3D& operator=(const PbRegularCartesianGrid3D& mesh);
  const PbRegularCartesianGrid3D& getValue() const;
  PbRegularCartesianGrid3D* getMesh() override;

 private:
  std::unique_ptr<PbRegularCartesianGrid3D> m_mesh;
};

#endif
