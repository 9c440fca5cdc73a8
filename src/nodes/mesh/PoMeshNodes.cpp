#include <Inventor/actions/SoAction.h>
#include <Ormelle/PoMeshElement.h>

#include "nodes/field/PiMeshClasses.h"
#include "nodes/field/PiMeshField.h"
#include "nodes/mesh/PiMeshNodeClasses.h"

#define PI_MESH_NODE_SOURCE(Name)                                                          \
  PO_NODE_SOURCE(Po##Name)                                                                 \
  Po##Name::Po##Name() {                                                                   \
    PO_NODE_CONSTRUCTOR(Po##Name);                                                         \
    PO_NODE_ADD_FIELD(mesh, (PiMeshField<Pb##Name>::make()));                              \
    PO_NODE_CONSTRUCTED(Po##Name);                                                         \
  }                                                                                        \
  Po##Name::~Po##Name() = default;                                                         \
  Pb##Name* Po##Name::getMesh() const { return const_cast<PoSF##Name&>(mesh).getMesh(); }  \
  PoSFMesh& Po##Name::getMeshField() { return mesh; }                                      \
  void Po##Name::doAction(SoAction* action) {                                              \
    if (!mesh.isIgnored()) PoMeshElement::set(action->getState(), this, &mesh.getValue()); \
  }

PI_FOR_EACH_MESH_CLASS(PI_MESH_NODE_SOURCE)

namespace {

template <class Field, class... Arguments>
void setGeometryOf(Field& field, Arguments... arguments) {
  field.getMesh()->setGeometry(arguments...);
  field.touch();
}

}  // namespace

void PoCartesianGrid2D::setGeometry(int num_x, int num_y, const float* x, const float* y) {
  setGeometryOf(mesh, num_x, num_y, x, y);
}
void PoCartesianGrid2D::setGeometry(int num_x, int num_y, const float* x, const float* y, const float* z) {
  setGeometryOf(mesh, num_x, num_y, x, y, z);
}

void PoParalCartesianGrid2D::setGeometry(int num_x, int num_y, const float* x, const float* y) {
  setGeometryOf(mesh, num_x, num_y, x, y);
}
void PoParalCartesianGrid2D::setGeometry(int num_x, int num_y, const float* x, const float* y, const float* z) {
  setGeometryOf(mesh, num_x, num_y, x, y, z);
}

void PoPolarGrid2D::setGeometry(int num_r, int num_t, const float* radius, const float* angle) {
  setGeometryOf(mesh, num_r, num_t, radius, angle);
}
void PoPolarGrid2D::setGeometry(int num_r, int num_t, const float* radius, const float* angle, const float* z) {
  setGeometryOf(mesh, num_r, num_t, radius, angle, z);
}

void PoRegularCartesianGrid2D::setGeometry(int num_x, int num_y, float x_min, float y_min, float x_max, float y_max) {
  setGeometryOf(mesh, num_x, num_y, x_min, y_min, x_max, y_max);
}
void PoRegularCartesianGrid2D::setGeometry(int num_x, int num_y, float x_min, float y_min, float x_max, float y_max,
                                           const float* z) {
  setGeometryOf(mesh, num_x, num_y, x_min, y_min, x_max, y_max, z);
}

void PoCartesianGrid3D::setGeometry(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z) {
  setGeometryOf(mesh, num_x, num_y, num_z, x, y, z);
}

void PoParalCartesianGrid3D::setGeometry(int num_x, int num_y, int num_z, const float* x, const float* y,
                                         const float* z) {
  setGeometryOf(mesh, num_x, num_y, num_z, x, y, z);
}

void PoRegularCartesianGrid3D::setGeometry(int num_x, int num_y, int num_z, float x_min, float y_min, float z_min,
                                           float x_max, float y_max, float z_max) {
  setGeometryOf(mesh, num_x, num_y, num_z, x_min, y_min, z_min, x_max, y_max, z_max);
}

void PoIndexedMesh2D::setGeometry(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index,
                                  const int* cell_type) {
  setGeometryOf(mesh, num_nodes, x, y, num_cells, cell_index, cell_type);
}
void PoIndexedMesh2D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                  const int* cell_index, const int* cell_type) {
  setGeometryOf(mesh, num_nodes, x, y, z, num_cells, cell_index, cell_type);
}

void PoTriangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y, int num_cells,
                                   const int* cell_index) {
  setGeometryOf(mesh, num_nodes, x, y, num_cells, cell_index);
}
void PoTriangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                   const int* cell_index) {
  setGeometryOf(mesh, num_nodes, x, y, z, num_cells, cell_index);
}
void PoTriangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y) {
  setGeometryOf(mesh, num_nodes, x, y);
}
void PoTriangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y, const float* z) {
  setGeometryOf(mesh, num_nodes, x, y, z);
}

void PoQuadrangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y, int num_cells,
                                     const int* cell_index) {
  setGeometryOf(mesh, num_nodes, x, y, num_cells, cell_index);
}
void PoQuadrangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                     const int* cell_index) {
  setGeometryOf(mesh, num_nodes, x, y, z, num_cells, cell_index);
}

void PoIndexedMesh3D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                  const int* cell_index, const int* cell_type) {
  setGeometryOf(mesh, num_nodes, x, y, z, num_cells, cell_index, cell_type);
}

void PoTetrahedronMesh3D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                      const int* cell_index) {
  setGeometryOf(mesh, num_nodes, x, y, z, num_cells, cell_index);
}

void PoHexahedronMesh3D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                     const int* cell_index) {
  setGeometryOf(mesh, num_nodes, x, y, z, num_cells, cell_index);
}

void PoRegularMesh1D::setGeometry(int num_x, float x_begin, float x_end) { setGeometryOf(mesh, num_x, x_begin, x_end); }

void PoIrregularMesh1D::setGeometry(int num_x, const float* x) { setGeometryOf(mesh, num_x, x); }
