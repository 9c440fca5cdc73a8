#include <Ormelle/PbPixelCell.h>
#include <Ormelle/PbQuadrangleCell.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>

#include <cmath>

#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/mesh/PiNodesCoord.h"
#include "quillane/mesh/PiRegularAxis.h"
#include "quillane/mesh/PiSidesNormals.h"

PbRegularCartesianGrid2D::PbRegularCartesianGrid2D(int isDataDuplicate)
    : PbGrid2D(isDataDuplicate),
      m_pixel(std::make_unique<PbPixelCell>(this)),
      m_quadrangle(std::make_unique<PbQuadrangleCell>(this)) {}

PbRegularCartesianGrid2D::PbRegularCartesianGrid2D(int num_x, int num_y, float x_min, float y_min, float x_max,
                                                   float y_max, int isDataDuplicate)
    : PbRegularCartesianGrid2D(num_x, num_y, x_min, y_min, x_max, y_max, nullptr, isDataDuplicate) {}

PbRegularCartesianGrid2D::PbRegularCartesianGrid2D(int num_x, int num_y, float x_min, float y_min, float x_max,
                                                   float y_max, const float* z, int isDataDuplicate)
    : PbRegularCartesianGrid2D(isDataDuplicate) {
  setGeometry(num_x, num_y, x_min, y_min, x_max, y_max, z);
}

PbRegularCartesianGrid2D::PbRegularCartesianGrid2D(int num_x, int num_y, const PbRegularCartesianGrid2D& other)
    : PbRegularCartesianGrid2D(num_x, num_y, other.m_xMin, other.m_yMin, other.m_xMax, other.m_yMax,
                               other.m_isDataDuplicate) {}

PbRegularCartesianGrid2D::PbRegularCartesianGrid2D(const PbRegularCartesianGrid2D& other)
    : PbGrid2D(other),
      m_xMin(other.m_xMin),
      m_xMax(other.m_xMax),
      m_xStep(other.m_xStep),
      m_yMin(other.m_yMin),
      m_yMax(other.m_yMax),
      m_yStep(other.m_yStep),
      m_pixel(std::make_unique<PbPixelCell>(this)),
      m_quadrangle(std::make_unique<PbQuadrangleCell>(this)) {}

PbRegularCartesianGrid2D& PbRegularCartesianGrid2D::operator=(const PbRegularCartesianGrid2D& other) {
  if (this == &other) return *this;
  m_xMin = other.m_xMin;
  m_xMax = other.m_xMax;
  m_xStep = other.m_xStep;
  m_yMin = other.m_yMin;
  m_yMax = other.m_yMax;
  m_yStep = other.m_yStep;
  PbGrid2D::operator=(other);
  return *this;
}

PbRegularCartesianGrid2D::~PbRegularCartesianGrid2D() = default;

void PbRegularCartesianGrid2D::setGeometry(int num_x, int num_y, float x_min, float y_min, float x_max, float y_max) {
  setGeometry(num_x, num_y, x_min, y_min, x_max, y_max, nullptr);
}

void PbRegularCartesianGrid2D::setGeometry(int num_x, int num_y, float x_min, float y_min, float x_max, float y_max,
                                           const float* z) {
  m_xMin = x_min;
  m_xMax = x_max;
  m_xStep = PiRegularAxis::stepOf(x_min, x_max, num_x);
  m_yMin = y_min;
  m_yMax = y_max;
  m_yStep = PiRegularAxis::stepOf(y_min, y_max, num_y);
  if (isValidDim(num_x, num_y))
    storeGeometry(num_x, num_y, nullptr, nullptr, z);
  else
    storeGeometry(0, 0, nullptr, nullptr, nullptr);
}

void PbRegularCartesianGrid2D::getGeometry(int& num_x, int& num_y, float& x_min, float& y_min, float& x_max,
                                           float& y_max) const {
  getDim(num_x, num_y);
  x_min = m_xMin;
  y_min = m_yMin;
  x_max = m_xMax;
  y_max = m_yMax;
}

void PbRegularCartesianGrid2D::getGeometry(int& num_x, int& num_y, float& x_min, float& y_min, float& x_max,
                                           float& y_max, const float*& z) const {
  getGeometry(num_x, num_y, x_min, y_min, x_max, y_max);
  z = getZcoord();
}

void PbRegularCartesianGrid2D::setXYGeometry(int, int, const float*, const float*) {}

void PbRegularCartesianGrid2D::getXYGeometry(const float*& x, const float*& y) const { x = y = nullptr; }

void PbRegularCartesianGrid2D::setCoordinates(const float*, const float*, const float* z) {
  setGeometry(m_numX, m_numY, m_xMin, m_yMin, m_xMax, m_yMax, z);
}

const PbCell* PbRegularCartesianGrid2D::getCell(int cell_index) const {
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  int i, j;
  getCellIndices(cell_index, i, j);
  const int* nodes = getCellNodeIds(i, j);
  const PiRegularAxis x(m_xMin, m_xMax, m_xStep, m_numX), y(m_yMin, m_yMax, m_yStep, m_numY);
  if (getZcoord()) {
    m_quadrangle->set(cell_index, nodes, x.coord(i), y.coord(j), x.coord(i + 1), y.coord(j + 1), getZcoord());
    return m_quadrangle.get();
  }
  m_pixel->set(cell_index, nodes, x.coord(i), y.coord(j), x.coord(i + 1), y.coord(j + 1));
  return m_pixel.get();
}

const PbCell* PbRegularCartesianGrid2D::getTopoCell(int cell_index) const {
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  PbCell* cell = m_pixel.get();
  if (getZcoord()) cell = m_quadrangle.get();
  cell->setTopology(cell_index, getCellNodeIds(cell_index));
  return cell;
}

float PbRegularCartesianGrid2D::getArea() const {
  if (m_numMeshCells < 1) return 0;
  if (getZcoord()) return PbGrid2D::getArea();
  return std::fabs((m_xMax - m_xMin) * (m_yMax - m_yMin));
}

const PbCell* PbRegularCartesianGrid2D::findContainingCell(const SbVec3f& point, float tolerance,
                                                           SbVec3f& pcoord) const {
  const int i = PiRegularAxis(m_xMin, m_xMax, m_xStep, m_numX).cellOf(point[0]);
  const int j = PiRegularAxis(m_yMin, m_yMax, m_yStep, m_numY).cellOf(point[1]);
  if (i < 0 || j < 0) return nullptr;
  const PbCell* cell = getCell(getCellIndex(i, j));
  return cell->locatePoint(point, tolerance, pcoord) ? cell : nullptr;
}

const PbCell* PbRegularCartesianGrid2D::findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                                           const PbCell*) const {
  return findContainingCell(point, tolerance, pcoord);
}

int PbRegularCartesianGrid2D::hasSidesNormals() const { return 1; }

void PbRegularCartesianGrid2D::getSidesNormals(SbVec3f*& normals, const PbArrayOfInt&) const {
  normals = m_numMeshCells > 0 ? makeSidesNormals(m_numX, m_numY, m_xMax < m_xMin, m_yMax < m_yMin) : nullptr;
}

void PbRegularCartesianGrid2D::getNodesCoord(const float* z, SoMFVec3f& coords) const {
  fillNodesCoord(viewOf(*this, z), coords);
}

void PbRegularCartesianGrid2D::print(FILE* file) const {
  PbGrid2D::print(file);
  std::fprintf(file, "PbRegularCartesianGrid2D:: x = %g to %g by %g\n", double(m_xMin), double(m_xMax),
               double(m_xStep));
  std::fprintf(file, "PbRegularCartesianGrid2D:: y = %g to %g by %g\n", double(m_yMin), double(m_yMax),
               double(m_yStep));
}

SbVec3f PbRegularCartesianGrid2D::getNodeCoord(int i, int j) const {
  return SbVec3f(PiRegularAxis(m_xMin, m_xMax, m_xStep, m_numX).coord(i),
                 PiRegularAxis(m_yMin, m_yMax, m_yStep, m_numY).coord(j), getNodeZ(getNodeIndex(i, j)));
}

void PbRegularCartesianGrid2D::updateBoundingBox() const {
  if (isBoundingBoxValid()) return;
  if (getZcoord() || m_numMeshNodes < 1) {
    setBoundingBox(boxOfNodes(viewOf(*this)));
    return;
  }
  PiFiniteBox box;
  for (const int i : {0, m_numX - 1})
    for (const int j : {0, m_numY - 1}) box.add(getNodeCoord(i, j));
  setBoundingBox(box.box());
}
