#ifndef ORMELLE_POSFPARALCARTESIANGRID2D_H
#define ORMELLE_POSFPARALCARTESIANGRID2D_H

#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoSubMeshField.h>

#include <memory>

/// Field that holds a PbParalCartesianGrid2D; PoSFMesh tells how it is read and written.
class ORMELLE_API PoSFParalCartesianGrid2D : public PoSFMesh {
  PO_MESH_FIELD_HEADER(PoSFParalCartesianGrid2D);

 public:
  /// Copies `mesh` with its data sets; arrays that it borrows stay borrowed.
  void setValue(const PbParalCartesianGrid2D& mesh);
  const PbParalCartesianGrid2D& operator=(const PbParalCartesianGrid2D& mesh);
  const PbParalCartesianGrid2D& getValue() const;
  PbParalCartesianGrid2D* getMesh() override;

 private:
  std::unique_ptr<PbParalCartesianGrid2D> m_mesh;
};

#endif
