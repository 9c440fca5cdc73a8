#ifndef ORMELLE_POCARTESIANGRID2D_H
#define ORMELLE_POCARTESIANGRID2D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFCartesianGrid2D.h>

/// Puts a PbCartesianGrid2D in PoMeshElement: a curvilinear surface grid.
class ORMELLE_API PoCartesianGrid2D : public PoMeshProperty {
  PO_NODE_HEADER(PoCartesianGrid2D, PoMeshProperty);

 public:
  PoSFCartesianGrid2D mesh;  ///< empty by default

  PoCartesianGrid2D();

  PbCartesianGrid2D* getMesh() const override;

  /// As the functions of PbCartesianGrid2D with this name. They touch the field.
  /// @{
  void setGeometry(int num_x, int num_y, const float* x, const float* y);
  void setGeometry(int num_x, int num_y, const float* x, const float* y, const float* z);
  /// @}

  void doAction(SoAction* action) override;

 protected:
  ~PoCartesianGrid2D() override;
  PoSFMesh& getMeshField() override;
};

#endif
