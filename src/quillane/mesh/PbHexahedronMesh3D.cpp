#include <Ormelle/PbHexahedronMesh3D.h>

PbHexahedronMesh3D::PbHexahedronMesh3D(int isDataDuplicate) : PbIndexedMesh3D(8, isDataDuplicate) {}

PbHexahedronMesh3D::PbHexahedronMesh3D(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                       const int* cell_index, int isDataDuplicate)
    : PbHexahedronMesh3D(isDataDuplicate) {
  setGeometry(num_nodes, x, y, z, num_cells, cell_index);
}

PbHexahedronMesh3D::PbHexahedronMesh3D(const PbHexahedronMesh3D& other) = default;
PbHexahedronMesh3D& PbHexahedronMesh3D::operator=(const PbHexahedronMesh3D& other) = default;
PbHexahedronMesh3D::~PbHexahedronMesh3D() = default;

void PbHexahedronMesh3D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                     const int* cell_index) {
  storeGeometry(num_nodes, x, y, z, num_cells, cell_index, nullptr);
}

void PbHexahedronMesh3D::getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                                     const int*& cell_index) const {
  const int* sizes;
  getGeometry(num_nodes, x, y, z, num_cells, cell_index, sizes);
}

void PbHexahedronMesh3D::getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                                     const int* const*& cell_nodes) const {
  const int* nodes;
  getGeometry(num_nodes, x, y, z, num_cells, nodes);
  cell_nodes = getCellRows();
}
