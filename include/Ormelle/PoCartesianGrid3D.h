#ifndef ORMELLE_POCARTESIANGRID3D_H
#define ORMELLE_POCARTESIANGRID3D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFCartesianGrid3D.h>

/// Puts a PbCartesianGrid3D in PoMeshElement: a curvilinear volume grid.
class ORMELLE_API PoCartesianGrid3D : public PoMeshProperty {
  PO_NODE_HEADER(PoCartesianGrid3D, PoMeshProperty);

 public:
  PoSFCartesianGrid3D mesh;  ///< empty by default

  PoCartesianGrid3D();

  PbCartesianGrid3D* getMesh() const override;

  /// As the function of PbCartesianGrid3D with this name. It touches the field.
  void setGeometry(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z);

  void doAction(SoAction* action) override;

 protected:
  ~PoCartesianGrid3D() override;
  PoSFMesh& getMeshField() override;
};

#endif
