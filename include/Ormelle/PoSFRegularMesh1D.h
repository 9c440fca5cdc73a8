#ifndef ORMELLE_POSFREGULARMESH1D_H
#define ORMELLE_POSFREGULARMESH1D_H

#include <Ormelle/PbRegularMesh1D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbRegularMesh1D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFRegularMesh1D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFRegularMesh1D);

 public:
  /// Copies `mesh` with its data sets.
  void setValue(const PbRegularMesh1D& mesh);
  const PbRegularMesh1D& operator=(const PbRegularMesh1D& mesh);
  const PbRegularMesh1D& getValue() const;
  PbRegularMesh1D* getMesh() override;

 private:
  std::unique_ptr<PbRegularMesh1D> m_mesh;
};

#endif
