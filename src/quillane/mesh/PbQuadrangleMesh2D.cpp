#include <Ormelle/PbQuadrangleMesh2D.h>

PbQuadrangleMesh2D::PbQuadrangleMesh2D(int isDataDuplicate) : PbIndexedMesh2D(4, isDataDuplicate) {}

PbQuadrangleMesh2D::PbQuadrangleMesh2D(int num_nodes, const float* x, const float* y, int num_cells,
                                       const int* cell_index, int isDataDuplicate)
    : PbQuadrangleMesh2D(num_nodes, x, y, nullptr, num_cells, cell_index, isDataDuplicate) {}

PbQuadrangleMesh2D::PbQuadrangleMesh2D(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                       const int* cell_index, int isDataDuplicate)
    : PbQuadrangleMesh2D(isDataDuplicate) {
  setGeometry(num_nodes, x, y, z, num_cells, cell_index);
}

PbQuadrangleMesh2D::PbQuadrangleMesh2D(const PbQuadrangleMesh2D& other) = default;
PbQuadrangleMesh2D& PbQuadrangleMesh2D::operator=(const PbQuadrangleMesh2D& other) = default;
PbQuadrangleMesh2D::~PbQuadrangleMesh2D() = default;

void PbQuadrangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y, int num_cells,
                                     const int* cell_index) {
  setGeometry(num_nodes, x, y, nullptr, num_cells, cell_index);
}

void PbQuadrangleMesh2D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                     const int* cell_index) {
  storeGeometry(num_nodes, x, y, z, num_cells, cell_index, nullptr, m_isDataDuplicate);
}

void PbQuadrangleMesh2D::getGeometry(int& num_nodes, const float*& x, const float*& y, int& num_cells,
                                     const int*& cell_index) const {
  const int* sizes;
  getGeometry(num_nodes, x, y, num_cells, cell_index, sizes);
}

void PbQuadrangleMesh2D::getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                                     const int*& cell_index) const {
  getGeometry(num_nodes, x, y, num_cells, cell_index);
  z = getZcoord();
}

void PbQuadrangleMesh2D::getGeometry(int& num_nodes, const float*& x, const float*& y, int& num_cells,
                                     const int* const*& cell_nodes) const {
  const int* nodes;
  getGeometry(num_nodes, x, y, num_cells, nodes);
  cell_nodes = getCellRows();
}

void PbQuadrangleMesh2D::getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                                     const int* const*& cell_nodes) const {
  getGeometry(num_nodes, x, y, num_cells, cell_nodes);
  z = getZcoord();
}
