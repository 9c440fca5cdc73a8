#include <Ormelle/PbGrid2D.h>

#include <limits>

#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/mesh/PiPrintArray.h"
#include "quillane/mesh/PiRowTable.h"

PbGrid2D::PbGrid2D(int isDataDuplicate) : PbMesh2D(isDataDuplicate) {}

PbGrid2D::PbGrid2D(const PbGrid2D& other) : PbMesh2D(other), m_numX(other.m_numX), m_numY(other.m_numY) {}

PbGrid2D& PbGrid2D::operator=(const PbGrid2D& other) {
  if (this == &other) return *this;
  m_numX = other.m_numX;
  m_numY = other.m_numY;
  m_zRows.clear();
  PbMesh2D::operator=(other);
  return *this;
}

PbGrid2D::~PbGrid2D() = default;

bool PbGrid2D::isValidDim(int num_x, int num_y) {
  return num_x > 0 && num_y > 0 && static_cast<long long>(num_x) * num_y <= std::numeric_limits<int>::max();
}

void PbGrid2D::setGeometry(int num_x, int num_y, const float* x, const float* y) {
  setGeometry(num_x, num_y, x, y, nullptr);
}

void PbGrid2D::setGeometry(int num_x, int num_y, const float* x, const float* y, const float* z) {
  if (isValidDim(num_x, num_y) && x && y)
    storeGeometry(num_x, num_y, x, y, z);
  else
    storeGeometry(0, 0, nullptr, nullptr, nullptr);
}

void PbGrid2D::storeGeometry(int num_x, int num_y, const float* x, const float* y, const float* z) {
  setZCoord(num_x * num_y, z);
  m_zRows.clear();
  setXYGeometry(num_x, num_y, x, y);
  const bool isTopologyNew = num_x != m_numX || num_y != m_numY;
  m_numX = num_x;
  m_numY = num_y;
  setCounts(num_x * num_y, num_x > 1 && num_y > 1 ? (num_x - 1) * (num_y - 1) : 0, isTopologyNew);
  notifyGeometryChange();
}

const float* const* PbGrid2D::getZRows() const { return PiRowTable::update(m_zRows, getZcoord(), m_numX, m_numY); }

const int* PbGrid2D::getCellNodeIds(int cell) const {
  int i, j;
  getCellIndices(cell, i, j);
  return getCellNodeIds(i, j);
}

const int* PbGrid2D::getCellNodeIds(int i, int j) const {
  const int first = getNodeIndex(i, j);
  m_cellNodeIds[0] = first;
  m_cellNodeIds[1] = first + m_numY;
  m_cellNodeIds[2] = first + m_numY + 1;
  m_cellNodeIds[3] = first + 1;
  return m_cellNodeIds;
}

SbVec3f PbGrid2D::getNodeCoord(int node) const {
  int i, j;
  getNodeIndices(node, i, j);
  return getNodeCoord(i, j);
}

void PbGrid2D::getNodeOwnerCellsInd(int nod_index, PbArrayOfInt& owner_cells) const {
  owner_cells.empty();
  if (nod_index < 0 || nod_index >= m_numMeshNodes) return;
  int i, j;
  getNodeIndices(nod_index, i, j);
  const auto add = [&](int ci, int cj) {
    if (ci >= 0 && ci < m_numX - 1 && cj >= 0 && cj < m_numY - 1) owner_cells.add(getCellIndex(ci, cj));
  };
  add(i, j);
  add(i - 1, j);
  add(i - 1, j - 1);
  add(i, j - 1);
}

void PbGrid2D::getAdjacentCellsIndByNode(int cell_index, PbArrayOfInt& adjacent_cells) const {
  adjacent_cells.empty();
  if (cell_index < 0 || cell_index >= m_numMeshCells) return;
  int i, j;
  getCellIndices(cell_index, i, j);
  for (int ci = i - 1; ci <= i + 1; ++ci)
    for (int cj = j - 1; cj <= j + 1; ++cj)
      if ((ci != i || cj != j) && ci >= 0 && ci < m_numX - 1 && cj >= 0 && cj < m_numY - 1)
        adjacent_cells.add(getCellIndex(ci, cj));
}

void PbGrid2D::getAdjacentCellsIndByFacet(int cell_index, PbArrayOfInt& adjacent_cells) const {
  adjacent_cells.empty();
  if (cell_index < 0 || cell_index >= m_numMeshCells) return;
  int i, j;
  getCellIndices(cell_index, i, j);
  if (i > 0) adjacent_cells.add(getCellIndex(i - 1, j));
  if (i < m_numX - 2) adjacent_cells.add(getCellIndex(i + 1, j));
  if (j > 0) adjacent_cells.add(getCellIndex(i, j - 1));
  if (j < m_numY - 2) adjacent_cells.add(getCellIndex(i, j + 1));
}

void PbGrid2D::setCoordinates(const float* x, const float* y, const float* z) { setGeometry(m_numX, m_numY, x, y, z); }

void PbGrid2D::getCoordinates(const float*& x, const float*& y, const float*& z, int& num_x, int& num_y,
                              int& num_z) const {
  getXYGeometry(x, y);
  z = getZcoord();
  getDim(num_x, num_y);
  num_z = 1;
}

void PbGrid2D::print(FILE* file) const {
  PbMesh2D::print(file);
  std::fprintf(file, "PbGrid2D:: numX = %d\n", m_numX);
  std::fprintf(file, "PbGrid2D:: numY = %d\n", m_numY);
  printArray(file, "PbGrid2D", "z", getZcoord(), m_numMeshNodes);
}

void PbGrid2D::getLimitIndices(PbArrayOfInt& sizes, PbArrayOfInt& indices) const {
  sizes.empty();
  indices.empty();
  if (m_numX < 2 || m_numY < 2) return;
  const int size = 2 * (m_numX - 1) + 2 * (m_numY - 1);
  sizes.add(size);
  indices.setCapacity(size, 0);
  const int lastI = m_numX - 1, lastJ = m_numY - 1;
  for (int j = 0; j < lastJ; ++j) indices.add(getNodeIndex(0, j));
  for (int i = 0; i < lastI; ++i) indices.add(getNodeIndex(i, lastJ));
  for (int j = lastJ; j > 0; --j) indices.add(getNodeIndex(lastI, j));
  for (int i = lastI; i > 0; --i) indices.add(getNodeIndex(i, 0));
}

SbVec3f PbGrid2D::getFirstCellNormal() const {
  if (m_numMeshCells < 1) return SbVec3f(0, 0, 0);
  const SbVec3f corner = getNodeCoord(0, 0);
  return (getNodeCoord(1, 0) - corner).cross(getNodeCoord(0, 1) - corner);
}

void PbGrid2D::updateCellBoundingBox() const {
  resetCellBoxes();
  for (int i = 0; i < m_numX - 1; ++i)
    for (int j = 0; j < m_numY - 1; ++j) {
      PiFiniteBox box;
      for (const SbVec3f& node :
           {getNodeCoord(i, j), getNodeCoord(i + 1, j), getNodeCoord(i + 1, j + 1), getNodeCoord(i, j + 1)})
        box.add(node);
      if (box.isWhole()) compareCellBox(box.box(), getCellIndex(i, j));
    }
}
