#ifndef ORMELLE_POSFIRREGULARMESH1D_H
#define ORMELLE_POSFIRREGULARMESH1D_H

#include <Ormelle/PbIrregularMesh1D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbIrregularMesh1D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFIrregularMesh1D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFIrregularMesh1D);

 public:
  /// Copies `mesh` with its data sets.
  void setValue(const PbIrregularMesh1D& mesh);
  const PbIrregularMesh1D& operator=(const PbIrregularMesh1D& mesh);
  const PbIrregularMesh1D& getValue() const;
  PbIrregularMesh1D* getMesh() override;

 private:
  std::unique_ptr<PbIrregularMesh1D> m_mesh;
};

#endif
