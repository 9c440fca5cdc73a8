#ifndef ORMELLE_POSFREGULARCARTESIANGRID2D_H
#define ORMELLE_POSFREGULARCARTESIANGRID2D_H

#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbRegularCartesianGrid2D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFRegularCartesianGrid2D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFRegularCartesianGrid2D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbRegularCartesianGrid2D& mesh);
  const PbRegularCartesianGrid2D& operator=(const PbRegularCartesianGrid2D& mesh);
  const PbRegularCartesianGrid2D& getValue() const;
  PbRegularCartesianGrid2D* getMesh() override;

 private:
  std::unique_ptr<PbRegularCartesianGrid2D> m_mesh;
};

#endif
