#ifndef ORMELLE_POPOLARGRID2D_H
#define ORMELLE_POPOLARGRID2D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFPolarGrid2D.h>

/// Puts a PbPolarGrid2D in PoMeshElement: a surface grid of radii and angles.
class ORMELLE_API PoPolarGrid2D : public PoMeshProperty {
  PO_NODE_HEADER(PoPolarGrid2D, PoMeshProperty);

 public:
  PoSFPolarGrid2D mesh;  ///< empty by default

  PoPolarGrid2D();

  PbPolarGrid2D* getMesh() const override;

  /// As the functions of PbPolarGrid2D with this name. They touch the field.
  /// @{
  void setGeometry(int num_r, int num_t, const float* radius, const float* angle);
  void setGeometry(int num_r, int num_t, const float* radius, const float* angle, const float* z);
  /// @}

  void doAction(SoAction* action) override;

 protected:
  ~PoPolarGrid2D() override;
  PoSFMesh& getMeshField() override;
};

#endif
