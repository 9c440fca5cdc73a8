#ifndef ORMELLE_POTRIANGLEMESH2D_H
#define ORMELLE_POTRIANGLEMESH2D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFTriangleMesh2D.h>

/// Puts a PbTriangleMesh2D in PoMeshElement: a surface of triangles, which may be computed from nodes.
class ORMELLE_API PoTriangleMesh2D : public PoMeshProperty {
  PO_NODE_HEADER(PoTriangleMesh2D, PoMeshProperty);

 public:
  PoSFTriangleMesh2D mesh;  ///< empty by default

  PoTriangleMesh2D();

  PbTriangleMesh2D* getMesh() const override;

  /// As the functions of PbTriangleMesh2D with this name. They touch the field.
  /// @{
  void setGeometry(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index);
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index);
  void setGeometry(int num_nodes, const float* x, const float* y);
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z);
  /// @}

  void doAction(SoAction* action) override;

 protected:
  ~PoTriangleMesh2D() override;
  PoSFMesh& getMeshField() override;
};

#endif
