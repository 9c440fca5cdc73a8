#include <Ormelle/PbTriangleMesh2D.h>

#include <vector>

#include "quillane/mesh/PiTriangulation.h"

PbTriangleMesh2D::PbTriangleMesh2D(int isDataDuplicate) : PbIndexedMesh2D(3, isDataDuplicate) {}

PbTriangleMesh2D::PbTriangleMesh2D(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index,
                                   int isDataDuplicate)
    : PbTriangleMesh2D(num_nodes, x, y, nullptr, num_cells, cell_index, isDataDuplicate) {}

PbTriangleMesh2D::PbTriangleMesh2D(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                   const int* cell_index, int isDataDuplicate)
    : PbTriangleMesh2D(isDataDuplicate) {
  setGeometry(num_nodes, x, y, z, num_cells, cell_index);
}

PbTriangleMesh2D::PbTriangleMesh2D(const PbTriangleMesh2D& other) = default;
PbTriangleMesh2D& PbTriangleMesh2D::operator=(const PbTriangleMesh2D& other) = default;
PbTriangleMesh2D::~PbTriangleMesh2D() = default;

void PbTriangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y, int num_cells,
                                   const int* cell_index) {
  setGeometry(num_nodes, x, y, nullptr, num_cells, cell_index);
}

void PbTriangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                   const int* cell_index) {
  storeGeometry(num_nodes, x, y, z, num_cells, cell_index, nullptr, m_isDataDuplicate);
}

void PbTriangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y) {
  setGeometry(num_nodes, x, y, nullptr);
}

void PbTriangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y, const float* z) {
  const std::vector<int> triangles = PiTriangulation::triangulate(num_nodes, x, y);
  storeGeometry(num_nodes, x, y, z, static_cast<int>(triangles.size() / 3), triangles.data(), nullptr, 1);
}

int PbTriangleMesh2D::canTriangulate() { return PiTriangulation::isAvailable(); }

void PbTriangleMesh2D::getGeometry(int& num_nodes, const float*& x, const float*& y, int& num_cells,
                                   const int*& cell_index) const {
  const int* sizes;
  getGeometry(num_nodes, x, y, num_cells, cell_index, sizes);
}

void PbTriangleMesh2D::getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                                   const int*& cell_index) const {
  getGeometry(num_nodes, x, y, num_cells, cell_index);
  z = getZcoord();
}

void PbTriangleMesh2D::getGeometry(int& num_nodes, const float*& x, const float*& y, int& num_cells,
                                   const int* const*& cell_nodes) const {
  const int* nodes;
  getGeometry(num_nodes, x, y, num_cells, nodes);
  cell_nodes = getCellRows();
}

void PbTriangleMesh2D::getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                                   const int* const*& cell_nodes) const {
  getGeometry(num_nodes, x, y, num_cells, cell_nodes);
  z = getZcoord();
}
