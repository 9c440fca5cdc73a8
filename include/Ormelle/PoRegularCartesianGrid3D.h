#ifndef ORMELLE_POREGULARCARTESIANGRID3D_H
#define ORMELLE_POREGULARCARTESIANGRID3D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFRegularCartesianGrid3D.h>

/// Puts a PbRegularCartesianGrid3D in PoMeshElement: a volume grid with equal steps along the axes.
class ORMELLE_API PoRegularCartesianGrid3D : public PoMeshProperty {
  PO_NODE_HEADER(PoRegularCartesianGrid3D, PoMeshProperty);

 public:
  PoSFRegularCartesianGrid3D mesh;  ///< empty by default

  PoRegularCartesianGrid3D();

  PbRegularCartesianGrid3D* getMesh() const override;

  /// As the function of PbRegularCartesianGrid3D with this name. It touches the field.
  void setGeometry(int num_x, int num_y, int num_z, float x_min, float y_min, float z_min, float x_max, float y_max,
                   float z_max);

  void doAction(SoAction* action) override;

 protected:
  ~PoRegularCartesianGrid3D() override;
  PoSFMesh& getMeshField() override;
};

#endif
