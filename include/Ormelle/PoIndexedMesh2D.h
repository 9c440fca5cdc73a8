#ifndef ORMELLE_POINDEXEDMESH2D_H
#define ORMELLE_POINDEXEDMESH2D_H

#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFIndexedMesh2D.h>

/// Puts a PbIndexedMesh2D in PoMeshElement: a surface of triangles and quadrangles.
class ORMELLE_API PoIndexedMesh2D : public PoMeshProperty {
  PO_NODE_HEADER(PoIndexedMesh2D, PoMeshProperty);

 public:
  PoSFIndexedMesh2D mesh;  ///< empty by default

  PoIndexedMesh2D();

  PbIndexedMesh2D* getMesh() const override;

  /// As the functions of PbIndexedMesh2D with this name. They touch the field.
  /// @{
  void setGeometry(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index,
                   const int* cell_type);
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index,
                   const int* cell_type);
  /// @}

  void doAction(SoAction* action) override;

 protected:
  ~PoIndexedMesh2D() override;
  PoSFMesh& getMeshField() override;
};

#endif
