#include <Ormelle/PbTetrahedronMesh3D.h>

PbTetrahedronMesh3D::PbTetrahedronMesh3D(int isDataDuplicate) : PbIndexedMesh3D(4, isDataDuplicate) {}

PbTetrahedronMesh3D::PbTetrahedronMesh3D(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                         const int* cell_index, int isDataDuplicate)
    : PbTetrahedronMesh3D(isDataDuplicate) {
  setGeometry(num_nodes, x, y, z, num_cells, cell_index);
}

PbTetrahedronMesh3D::PbTetrahedronMesh3D(const PbTetrahedronMesh3D& other) = default;
PbTetrahedronMesh3D& PbTetrahedronMesh3D::operator=(const PbTetrahedronMesh3D& other) = default;
PbTetrahedronMesh3D::~PbTetrahedronMesh3D() = default;

void PbTetrahedronMesh3D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                      const int* cell_index) {
  storeGeometry(num_nodes, x, y, z, num_cells, cell_index, nullptr);
}

void PbTetrahedronMesh3D::getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                                      const int*& cell_index) const {
  const int* sizes;
  getGeometry(num_nodes, x, y, z, num_cells, cell_index, sizes);
}

void PbTetrahedronMesh3D::getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                                      const int* const*& cell_nodes) const {
  const int* nodes;
  getGeometry(num_nodes, x, y, z, num_cells, nodes);
  cell_nodes = getCellRows();
}
