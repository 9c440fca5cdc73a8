#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbQuadrangleCell.h>

#include "quillane/mesh/PiNodesCoord.h"
#include "quillane/mesh/PiPrintArray.h"
#include "quillane/mesh/PiRowTable.h"

PbCartesianGrid2D::PbCartesianGrid2D(int isDataDuplicate)
    : PbGrid2D(isDataDuplicate), m_quadrangle(std::make_unique<PbQuadrangleCell>(this)) {}

PbCartesianGrid2D::PbCartesianGrid2D(int num_x, int num_y, const float* x, const float* y, int isDataDuplicate)
    : PbCartesianGrid2D(num_x, num_y, x, y, nullptr, isDataDuplicate) {}

PbCartesianGrid2D::PbCartesianGrid2D(int num_x, int num_y, const float* x, const float* y, const float* z,
                                     int isDataDuplicate)
    : PbCartesianGrid2D(isDataDuplicate) {
  setGeometry(num_x, num_y, x, y, z);
}

PbCartesianGrid2D::PbCartesianGrid2D(const PbCartesianGrid2D& other)
    : PbGrid2D(other), m_x(other.m_x), m_y(other.m_y), m_quadrangle(std::make_unique<PbQuadrangleCell>(this)) {}

PbCartesianGrid2D& PbCartesianGrid2D::operator=(const PbCartesianGrid2D& other) {
  if (this == &other) return *this;
  m_x = other.m_x;
  m_y = other.m_y;
  m_xRows.clear();
  m_yRows.clear();
  PbGrid2D::operator=(other);
  return *this;
}

PbCartesianGrid2D::~PbCartesianGrid2D() = default;

void PbCartesianGrid2D::setXYGeometry(int num_x, int num_y, const float* x, const float* y) {
  m_x.set(x, num_x * num_y, m_isDataDuplicate);
  m_y.set(y, num_x * num_y, m_isDataDuplicate);
  m_xRows.clear();
  m_yRows.clear();
}

void PbCartesianGrid2D::getXYGeometry(const float*& x, const float*& y) const {
  x = m_x.get();
  y = m_y.get();
}

void PbCartesianGrid2D::getGeometry(int& num_x, int& num_y, const float*& x, const float*& y) const {
  getDim(num_x, num_y);
  getXYGeometry(x, y);
}

void PbCartesianGrid2D::getGeometry(int& num_x, int& num_y, const float*& x, const float*& y, const float*& z) const {
  getGeometry(num_x, num_y, x, y);
  z = getZcoord();
}

void PbCartesianGrid2D::getGeometry(int& num_x, int& num_y, const float* const*& x, const float* const*& y) const {
  getDim(num_x, num_y);
  // A grid with one coordinate a line, seen as its base, has no such rows.
  const bool isPerNode = m_x.getNum() == m_numMeshNodes && m_y.getNum() == m_numMeshNodes;
  x = isPerNode ? PiRowTable::update(m_xRows, m_x.get(), m_numX, m_numY) : nullptr;
  y = isPerNode ? PiRowTable::update(m_yRows, m_y.get(), m_numX, m_numY) : nullptr;
}

void PbCartesianGrid2D::getGeometry(int& num_x, int& num_y, const float* const*& x, const float* const*& y,
                                    const float* const*& z) const {
  getGeometry(num_x, num_y, x, y);
  z = getZRows();
}

const PbCell* PbCartesianGrid2D::getCell(int cell_index) const {
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  const int* nodes = getCellNodeIds(cell_index);
  if (getZcoord())
    m_quadrangle->set(cell_index, nodes, m_x.get(), m_y.get(), getZcoord());
  else
    m_quadrangle->set(cell_index, nodes, m_x.get(), m_y.get());
  return m_quadrangle.get();
}

const PbCell* PbCartesianGrid2D::getTopoCell(int cell_index) const {
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  m_quadrangle->setTopology(cell_index, getCellNodeIds(cell_index));
  return m_quadrangle.get();
}

void PbCartesianGrid2D::getNodesCoord(const float* z, SoMFVec3f& coords) const {
  fillNodesCoord(viewOf(*this, z), coords);
}

void PbCartesianGrid2D::print(FILE* file) const {
  PbGrid2D::print(file);
  printArray(file, "PbCartesianGrid2D", "x", m_x.get(), m_x.getNum());
  printArray(file, "PbCartesianGrid2D", "y", m_y.get(), m_y.getNum());
}

SbVec3f PbCartesianGrid2D::getNodeCoord(int i, int j) const {
  const int node = getNodeIndex(i, j);
  return SbVec3f(m_x[node], m_y[node], getNodeZ(node));
}

void PbCartesianGrid2D::updateBoundingBox() const {
  if (!isBoundingBoxValid()) setBoundingBox(boxOfNodes(viewOf(*this)));
}

const PbCell* PbCartesianGrid2D::findContainingCellProtected(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                                             PbArrayOfInt&) const {
  return findFirstContainingCell(point, tolerance, pcoord);
}
