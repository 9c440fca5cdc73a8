#ifndef ORMELLE_POREGULARMESH1D_H
#define ORMELLE_POREGULARMESH1D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFRegularMesh1D.h>

/// Puts a PbRegularMesh1D in PoMeshElement: nodes at equal distances, for charts.
class ORMELLE_API PoRegularMesh1D : public PoMeshProperty {
  PO_NODE_HEADER(PoRegularMesh1D, PoMeshProperty);

 public:
  PoSFRegularMesh1D mesh;  ///< empty by default

  PoRegularMesh1D();

  PbRegularMesh1D* getMesh() const override;

  /// As the function of PbRegularMesh1D with this name. It touches the field.
  void setGeometry(int num_x, float x_begin, float x_end);

  void doAction(SoAction* action) override;

 protected:
  ~PoRegularMesh1D() override;
  PoSFMesh& getMeshField() override;
};

#endif
