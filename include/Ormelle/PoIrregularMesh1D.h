#ifndef ORMELLE_POIRREGULARMESH1D_H
#define ORMELLE_POIRREGULARMESH1D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFIrregularMesh1D.h>

/// Puts a PbIrregularMesh1D in PoMeshElement: nodes at any places of a line, for charts.
class ORMELLE_API PoIrregularMesh1D : public PoMeshProperty {
  PO_NODE_HEADER(PoIrregularMesh1D, PoMeshProperty);

 public:
  PoSFIrregularMesh1D mesh;  ///< empty by default

  PoIrregularMesh1D();

  PbIrregularMesh1D* getMesh() const override;

  /// As the function of PbIrregularMesh1D with this name. It touches the field.
  void setGeometry(int num_x, const float* x);

  void doAction(SoAction* action) override;

 protected:
  ~PoIrregularMesh1D() override;
  PoSFMesh& getMeshField() override;
};

#endif
