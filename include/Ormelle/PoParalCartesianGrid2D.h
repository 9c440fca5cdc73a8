#ifndef ORMELLE_POPARALCARTESIANGRID2D_H
#define ORMELLE_POPARALCARTESIANGRID2D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFParalCartesianGrid2D.h>

/// Puts a PbParalCartesianGrid2D in PoMeshElement: a surface grid with lines parallel to the axes.
class ORMELLE_API PoParalCartesianGrid2D : public PoMeshProperty {
  PO_NODE_HEADER(PoParalCartesianGrid2D, PoMeshProperty);

 public:
  PoSFParalCartesianGrid2D mesh;  ///< empty by default

  PoParalCartesianGrid2D();

  PbParalCartesianGrid2D* getMesh() const override;

  /// As the functions of PbParalCartesianGrid2D with this name. They touch the field.
  /// @{
  void setGeometry(int num_x, int num_y, const float* x, const float* y);
  void setGeometry(int num_x, int num_y, const float* x, const float* y, const float* z);
  /// @}

  void doAction(SoAction* action) override;

 protected:
  ~PoParalCartesianGrid2D() override;
  PoSFMesh& getMeshField() override;
};

#endif
