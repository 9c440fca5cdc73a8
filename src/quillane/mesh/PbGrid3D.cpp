#include <Ormelle/PbGrid3D.h>

#include <algorithm>
#include <limits>

namespace {

void divide(int index, int numJ, int numK, int& i, int& j, int& k) {
  if (numJ < 1 || numK < 1) {
    i = j = k = 0;
    return;
  }
  k = index % numK;
  j = index / numK % numJ;
  i = index / numK / numJ;
}

constexpr long long kMaxInt = std::numeric_limits<int>::max();

}  // namespace

PbGrid3D::PbGrid3D(int isDataDuplicate) : PbMesh3D(isDataDuplicate) {}

PbGrid3D::PbGrid3D(const PbGrid3D& other)
    : PbMesh3D(other), m_numX(other.m_numX), m_numY(other.m_numY), m_numZ(other.m_numZ) {}

PbGrid3D& PbGrid3D::operator=(const PbGrid3D& other) {
  if (this == &other) return *this;
  m_numX = other.m_numX;
  m_numY = other.m_numY;
  m_numZ = other.m_numZ;
  PbMesh3D::operator=(other);
  return *this;
}

PbGrid3D::~PbGrid3D() = default;

bool PbGrid3D::isValidDim(int num_x, int num_y, int num_z) {
  if (num_x < 1 || num_y < 1 || num_z < 1) return false;
  const long long numRows = static_cast<long long>(num_x) * num_y;
  return numRows <= kMaxInt && numRows * num_z <= kMaxInt;
}

void PbGrid3D::setGeometry(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z) {
  if (isValidDim(num_x, num_y, num_z) && x && y && z)
    storeGeometry(num_x, num_y, num_z, x, y, z);
  else
    storeGeometry(0, 0, 0, nullptr, nullptr, nullptr);
}

void PbGrid3D::storeGeometry(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z) {
  setXYZGeometry(num_x, num_y, num_z, x, y, z);
  const bool isTopologyNew = num_x != m_numX || num_y != m_numY || num_z != m_numZ;
  m_numX = num_x;
  m_numY = num_y;
  m_numZ = num_z;
  const bool hasCells = num_x > 1 && num_y > 1 && num_z > 1;
  setCounts(num_x * num_y * num_z, hasCells ? (num_x - 1) * (num_y - 1) * (num_z - 1) : 0, isTopologyNew);
  notifyGeometryChange();
}

void PbGrid3D::getNodeIndices(int node, int& i, int& j, int& k) const { divide(node, m_numY, m_numZ, i, j, k); }

void PbGrid3D::getCellIndices(int cell, int& i, int& j, int& k) const { divide(cell, m_numY - 1, m_numZ - 1, i, j, k); }

const int* PbGrid3D::getCellNodeIds(int cell) const {
  int i, j, k;
  getCellIndices(cell, i, j, k);
  return getCellNodeIds(i, j, k);
}

const int* PbGrid3D::getCellNodeIds(int i, int j, int k) const {
  const int first = getNodeIndex(i, j, k), stepI = m_numY * m_numZ, stepJ = m_numZ;
  for (int up = 0; up < 2; ++up) {
    int* nodes = m_cellNodeIds + 4 * up;
    nodes[0] = first + up;
    nodes[1] = nodes[0] + stepI;
    nodes[2] = nodes[1] + stepJ;
    nodes[3] = nodes[0] + stepJ;
  }
  return m_cellNodeIds;
}

SbVec3f PbGrid3D::getNodeCoord(int node) const {
  int i, j, k;
  getNodeIndices(node, i, j, k);
  return getNodeCoord(i, j, k);
}

void PbGrid3D::getNodeOwnerCellsInd(int nod_index, PbArrayOfInt& owner_cells) const {
  owner_cells.empty();
  if (nod_index < 0 || nod_index >= m_numMeshNodes) return;
  int i, j, k;
  getNodeIndices(nod_index, i, j, k);
  const auto add = [&](int ci, int cj, int ck) {
    if (ci >= 0 && ci < m_numX - 1 && cj >= 0 && cj < m_numY - 1 && ck >= 0 && ck < m_numZ - 1)
      owner_cells.add(getCellIndex(ci, cj, ck));
  };
  for (int ck = k; ck >= k - 1; --ck) {
    add(i, j, ck);
    add(i - 1, j, ck);
    add(i - 1, j - 1, ck);
    add(i, j - 1, ck);
  }
}

void PbGrid3D::getAdjacentCellsIndByNode(int cell_index, PbArrayOfInt& adjacent_cells) const {
  adjacent_cells.empty();
  if (cell_index < 0 || cell_index >= m_numMeshCells) return;
  int i, j, k;
  getCellIndices(cell_index, i, j, k);
  for (int ci = std::max(i - 1, 0); ci <= std::min(i + 1, m_numX - 2); ++ci)
    for (int cj = std::max(j - 1, 0); cj <= std::min(j + 1, m_numY - 2); ++cj)
      for (int ck = std::max(k - 1, 0); ck <= std::min(k + 1, m_numZ - 2); ++ck)
        if (ci != i || cj != j || ck != k) adjacent_cells.add(getCellIndex(ci, cj, ck));
}

void PbGrid3D::getAdjacentCellsIndByFacet(int cell_index, PbArrayOfInt& adjacent_cells) const {
  adjacent_cells.empty();
  if (cell_index < 0 || cell_index >= m_numMeshCells) return;
  int i, j, k;
  getCellIndices(cell_index, i, j, k);
  if (i > 0) adjacent_cells.add(getCellIndex(i - 1, j, k));
  if (i < m_numX - 2) adjacent_cells.add(getCellIndex(i + 1, j, k));
  if (j > 0) adjacent_cells.add(getCellIndex(i, j - 1, k));
  if (j < m_numY - 2) adjacent_cells.add(getCellIndex(i, j + 1, k));
  if (k > 0) adjacent_cells.add(getCellIndex(i, j, k - 1));
  if (k < m_numZ - 2) adjacent_cells.add(getCellIndex(i, j, k + 1));
}

void PbGrid3D::setCoordinates(const float* x, const float* y, const float* z) {
  setGeometry(m_numX, m_numY, m_numZ, x, y, z);
}

void PbGrid3D::getCoordinates(const float*& x, const float*& y, const float*& z, int& num_x, int& num_y,
                              int& num_z) const {
  getXYZGeometry(x, y, z);
  getDim(num_x, num_y, num_z);
}

void PbGrid3D::print(FILE* file) const {
  PbMesh3D::print(file);
  std::fprintf(file, "PbGrid3D:: numX = %d\n", m_numX);
  std::fprintf(file, "PbGrid3D:: numY = %d\n", m_numY);
  std::fprintf(file, "PbGrid3D:: numZ = %d\n", m_numZ);
}

int PbGrid3D::evaluateSkinFacesNum() const {
  if (m_numMeshNodes < 1) return 0;
  const long long x = m_numX, y = m_numY, z = m_numZ;
  return static_cast<int>(std::min(kMaxInt, (x - 2 + y) * (2 * z - 2) + (2 * y - 2) * (x - 1)));
}

void PbGrid3D::grid3DSkin(PoMeshSkin*) const {}
