#ifndef ORMELLE_POPARALCARTESIANGRID3D_H
#define ORMELLE_POPARALCARTESIANGRID3D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFParalCartesianGrid3D.h>

/// Puts a PbParalCartesianGrid3D in PoMeshElement: a volume grid with lines parallel to the axes.
class ORMELLE_API PoParalCartesianGrid3D : public PoMeshProperty {
  PO_NODE_HEADER(PoParalCartesianGrid3D, PoMeshProperty);

 public:
  PoSFParalCartesianGrid3D mesh;  ///< empty by default

  PoParalCartesianGrid3D();

  PbParalCartesianGrid3D* getMesh() const override;

  /// As the function of PbParalCartesianGrid3D with this name. It touches the field.
  void setGeometry(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z);

  void doAction(SoAction* action) override;

 protected:
  ~PoParalCartesianGrid3D() override;
  PoSFMesh& getMeshField() override;
};

#endif
