#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PbPixelCell.h>
#include <Ormelle/PbQuadrangleCell.h>

#include <cmath>

#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/mesh/PiNodesCoord.h"
#include "quillane/mesh/PiPrintArray.h"
#include "quillane/mesh/PiSidesNormals.h"
#include "quillane/search/PiAxisSearch.h"

PbParalCartesianGrid2D::PbParalCartesianGrid2D(int isDataDuplicate)
    : PbCartesianGrid2D(isDataDuplicate), m_pixel(std::make_unique<PbPixelCell>(this)) {}

PbParalCartesianGrid2D::PbParalCartesianGrid2D(int num_x, int num_y, const float* x, const float* y,
                                               int isDataDuplicate)
    : PbParalCartesianGrid2D(num_x, num_y, x, y, nullptr, isDataDuplicate) {}

PbParalCartesianGrid2D::PbParalCartesianGrid2D(int num_x, int num_y, const float* x, const float* y, const float* z,
                                               int isDataDuplicate)
    : PbParalCartesianGrid2D(isDataDuplicate) {
  setGeometry(num_x, num_y, x, y, z);
}

PbParalCartesianGrid2D::PbParalCartesianGrid2D(const PbParalCartesianGrid2D& other)
    : PbCartesianGrid2D(other), m_pixel(std::make_unique<PbPixelCell>(this)) {}

PbParalCartesianGrid2D& PbParalCartesianGrid2D::operator=(const PbParalCartesianGrid2D& other) {
  PbCartesianGrid2D::operator=(other);
  return *this;
}

PbParalCartesianGrid2D::~PbParalCartesianGrid2D() = default;

void PbParalCartesianGrid2D::setXYGeometry(int num_x, int num_y, const float* x, const float* y) {
  m_x.set(x, num_x, m_isDataDuplicate);
  m_y.set(y, num_y, m_isDataDuplicate);
}

void PbParalCartesianGrid2D::getGeometry(int& num_x, int& num_y, const float*& x, const float*& y) const {
  getDim(num_x, num_y);
  getXYGeometry(x, y);
}

void PbParalCartesianGrid2D::getGeometry(int& num_x, int& num_y, const float*& x, const float*& y,
                                         const float*& z) const {
  getGeometry(num_x, num_y, x, y);
  z = getZcoord();
}

void PbParalCartesianGrid2D::getGeometry(int& num_x, int& num_y, const float*& x, const float*& y,
                                         const float* const*& z) const {
  getGeometry(num_x, num_y, x, y);
  z = getZRows();
}

const PbCell* PbParalCartesianGrid2D::getCell(int cell_index) const {
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  int i, j;
  getCellIndices(cell_index, i, j);
  const int* nodes = getCellNodeIds(i, j);
  if (getZcoord()) {
    m_quadrangle->set(cell_index, nodes, m_x[i], m_y[j], m_x[i + 1], m_y[j + 1], getZcoord());
    return m_quadrangle.get();
  }
  m_pixel->set(cell_index, nodes, m_x[i], m_y[j], m_x[i + 1], m_y[j + 1]);
  return m_pixel.get();
}

const PbCell* PbParalCartesianGrid2D::getTopoCell(int cell_index) const {
  if (getZcoord()) return PbCartesianGrid2D::getTopoCell(cell_index);
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  m_pixel->setTopology(cell_index, getCellNodeIds(cell_index));
  return m_pixel.get();
}

float PbParalCartesianGrid2D::getArea() const {
  if (m_numMeshCells < 1) return 0;
  if (getZcoord()) return PbCartesianGrid2D::getArea();
  return std::fabs((m_x[m_numX - 1] - m_x[0]) * (m_y[m_numY - 1] - m_y[0]));
}

const PbCell* PbParalCartesianGrid2D::findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  const int i = findAxisInterval(m_x.get(), m_numX, point[0]);
  const int j = findAxisInterval(m_y.get(), m_numY, point[1]);
  if (i < 0 || i == m_numX - 1 || j < 0 || j == m_numY - 1) return nullptr;
  const PbCell* cell = getCell(getCellIndex(i, j));
  return cell->locatePoint(point, tolerance, pcoord) ? cell : nullptr;
}

const PbCell* PbParalCartesianGrid2D::findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                                         const PbCell*) const {
  return findContainingCell(point, tolerance, pcoord);
}

int PbParalCartesianGrid2D::hasSidesNormals() const { return 1; }

void PbParalCartesianGrid2D::getSidesNormals(SbVec3f*& normals, const PbArrayOfInt&) const {
  normals = m_numMeshCells > 0 ? makeSidesNormals(m_numX, m_numY, m_x[m_numX - 1] < m_x[0], m_y[m_numY - 1] < m_y[0])
                               : nullptr;
}

void PbParalCartesianGrid2D::getNodesCoord(const float* z, SoMFVec3f& coords) const {
  fillNodesCoord(viewOf(*this, z), coords);
}

void PbParalCartesianGrid2D::print(FILE* file) const {
  PbGrid2D::print(file);
  printArray(file, "PbParalCartesianGrid2D", "x", m_x.get(), m_x.getNum());
  printArray(file, "PbParalCartesianGrid2D", "y", m_y.get(), m_y.getNum());
}

SbVec3f PbParalCartesianGrid2D::getNodeCoord(int i, int j) const {
  return SbVec3f(m_x[i], m_y[j], getNodeZ(getNodeIndex(i, j)));
}

void PbParalCartesianGrid2D::updateBoundingBox() const {
  if (isBoundingBoxValid()) return;
  if (getZcoord()) {
    setBoundingBox(boxOfNodes(viewOf(*this)));
    return;
  }
  const PiFiniteRange x(m_x.get(), m_numX), y(m_y.get(), m_numY);
  setBoundingBox(x.isEmpty() || y.isEmpty() ? SbBox3f() : SbBox3f(x.low, y.low, 0, x.high, y.high, 0));
}
