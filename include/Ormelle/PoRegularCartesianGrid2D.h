#ifndef ORMELLE_POREGULARCARTESIANGRID2D_H
#define ORMELLE_POREGULARCARTESIANGRID2D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFRegularCartesianGrid2D.h>

/// Puts a PbRegularCartesianGrid2D in PoMeshElement: a surface grid with equal steps along the axes.
class ORMELLE_API PoRegularCartesianGrid2D : public PoMeshProperty {
  PO_NODE_HEADER(PoRegularCartesianGrid2D, PoMeshProperty);

 public:
  PoSFRegularCartesianGrid2D mesh;  ///< empty by default

  PoRegularCartesianGrid2D();

  PbRegularCartesianGrid2D* getMesh() const override;

  /// As the functions of PbRegularCartesianGrid2D with this name. They touch the field.
  /// @{
  void setGeometry(int num_x, int num_y, float x_min, float y_min, float x_max, float y_max);
  void setGeometry(int num_x, int num_y, float x_min, float y_min, float x_max, float y_max, const float* z);
  /// @}

  void doAction(SoAction* action) override;

 protected:
  ~PoRegularCartesianGrid2D() override;
  PoSFMesh& getMeshField() override;
};

#endif
