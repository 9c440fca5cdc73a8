#ifndef ORMELLE_POQUADRANGLEMESH2D_H
#define ORMELLE_POQUADRANGLEMESH2D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFQuadrangleMesh2D.h>

/// Puts a PbQuadrangleMesh2D in PoMeshElement: a surface of quadrangles.
class ORMELLE_API PoQuadrangleMesh2D : public PoMeshProperty {
  PO_NODE_HEADER(PoQuadrangleMesh2D, PoMeshProperty);

 public:
  PoSFQuadrangleMesh2D mesh;  ///< empty by default

  PoQuadrangleMesh2D();

  PbQuadrangleMesh2D* getMesh() const override;

  /// As the functions of PbQuadrangleMesh2D with this name. They touch the field.
  /// @{
  void setGeometry(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index);
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index);
  /// @}

  void doAction(SoAction* action) override;

 protected:
  ~PoQuadrangleMesh2D() override;
  PoSFMesh& getMeshField() override;
};

#endif
