#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbVoxelCell.h>

#include <algorithm>
#include <cmath>

#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/mesh/PiRegularAxis.h"

PbRegularCartesianGrid3D::PbRegularCartesianGrid3D(int isDataDuplicate)
    : PbGrid3D(isDataDuplicate), m_voxel(std::make_unique<PbVoxelCell>(this)) {}

PbRegularCartesianGrid3D::PbRegularCartesianGrid3D(int num_x, int num_y, int num_z, float x_min, float y_min,
                                                   float z_min, float x_max, float y_max, float z_max,
                                                   int isDataDuplicate)
    : PbRegularCartesianGrid3D(isDataDuplicate) {
  setGeometry(num_x, num_y, num_z, x_min, y_min, z_min, x_max, y_max, z_max);
}

PbRegularCartesianGrid3D::PbRegularCartesianGrid3D(const PbRegularCartesianGrid3D& other)
    : PbGrid3D(other),
      m_xAxis(other.m_xAxis),
      m_yAxis(other.m_yAxis),
      m_zAxis(other.m_zAxis),
      m_voxel(std::make_unique<PbVoxelCell>(this)) {}

PbRegularCartesianGrid3D& PbRegularCartesianGrid3D::operator=(const PbRegularCartesianGrid3D& other) {
  if (this == &other) return *this;
  m_xAxis = other.m_xAxis;
  m_yAxis = other.m_yAxis;
  m_zAxis = other.m_zAxis;
  PbGrid3D::operator=(other);
  return *this;
}

PbRegularCartesianGrid3D::~PbRegularCartesianGrid3D() = default;

void PbRegularCartesianGrid3D::setGeometry(int num_x, int num_y, int num_z, float x_min, float y_min, float z_min,
                                           float x_max, float y_max, float z_max) {
  m_xAxis = {x_min, x_max, PiRegularAxis::stepOf(x_min, x_max, num_x)};
  m_yAxis = {y_min, y_max, PiRegularAxis::stepOf(y_min, y_max, num_y)};
  m_zAxis = {z_min, z_max, PiRegularAxis::stepOf(z_min, z_max, num_z)};
  if (isValidDim(num_x, num_y, num_z))
    storeGeometry(num_x, num_y, num_z, nullptr, nullptr, nullptr);
  else
    storeGeometry(0, 0, 0, nullptr, nullptr, nullptr);
}

void PbRegularCartesianGrid3D::getGeometry(int& num_x, int& num_y, int& num_z, float& x_min, float& y_min, float& z_min,
                                           float& x_max, float& y_max, float& z_max) const {
  getDim(num_x, num_y, num_z);
  x_min = m_xAxis.min;
  y_min = m_yAxis.min;
  z_min = m_zAxis.min;
  x_max = m_xAxis.max;
  y_max = m_yAxis.max;
  z_max = m_zAxis.max;
}

void PbRegularCartesianGrid3D::setXYZGeometry(int, int, int, const float*, const float*, const float*) {}

void PbRegularCartesianGrid3D::getXYZGeometry(const float*& x, const float*& y, const float*& z) const {
  x = y = z = nullptr;
}

void PbRegularCartesianGrid3D::setCoordinates(const float*, const float*, const float*) {}

const PbCell* PbRegularCartesianGrid3D::getCell(int cell_index) const {
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  int i, j, k;
  getCellIndices(cell_index, i, j, k);
  const SbVec3f min = getNodeCoord(i, j, k), max = getNodeCoord(i + 1, j + 1, k + 1);
  m_voxel->set(cell_index, getCellNodeIds(i, j, k), min[0], min[1], min[2], max[0], max[1], max[2]);
  return m_voxel.get();
}

const PbCell* PbRegularCartesianGrid3D::getTopoCell(int cell_index) const {
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  m_voxel->setTopology(cell_index, getCellNodeIds(cell_index));
  return m_voxel.get();
}

float PbRegularCartesianGrid3D::getLongestEdgeLength() const {
  if (isEmpty()) return 0;
  float longest = 0;
  for (const Axis* axis : {&m_xAxis, &m_yAxis, &m_zAxis})
    if (std::isfinite(axis->step)) longest = std::max(longest, std::fabs(axis->step));
  return longest;
}

const PbCell* PbRegularCartesianGrid3D::findContainingCell(const SbVec3f& point, float tolerance,
                                                           SbVec3f& pcoord) const {
  const int i = PiRegularAxis(m_xAxis.min, m_xAxis.max, m_xAxis.step, m_numX).cellOf(point[0]);
  const int j = PiRegularAxis(m_yAxis.min, m_yAxis.max, m_yAxis.step, m_numY).cellOf(point[1]);
  const int k = PiRegularAxis(m_zAxis.min, m_zAxis.max, m_zAxis.step, m_numZ).cellOf(point[2]);
  if (i < 0 || j < 0 || k < 0) return nullptr;
  const PbCell* cell = getCell(getCellIndex(i, j, k));
  return cell->locatePoint(point, tolerance, pcoord) ? cell : nullptr;
}

const PbCell* PbRegularCartesianGrid3D::findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                                           const PbCell*) const {
  return findContainingCell(point, tolerance, pcoord);
}

int PbRegularCartesianGrid3D::isCrossSectionOptimal() const { return 1; }

void PbRegularCartesianGrid3D::print(FILE* file) const {
  PbGrid3D::print(file);
  const char* const names[3] = {"x", "y", "z"};
  const Axis* const axes[3] = {&m_xAxis, &m_yAxis, &m_zAxis};
  for (int a = 0; a < 3; ++a)
    std::fprintf(file, "PbRegularCartesianGrid3D:: %s = %g to %g by %g\n", names[a], double(axes[a]->min),
                 double(axes[a]->max), double(axes[a]->step));
}

SbVec3f PbRegularCartesianGrid3D::getNodeCoord(int i, int j, int k) const {
  return SbVec3f(PiRegularAxis(m_xAxis.min, m_xAxis.max, m_xAxis.step, m_numX).coord(i),
                 PiRegularAxis(m_yAxis.min, m_yAxis.max, m_yAxis.step, m_numY).coord(j),
                 PiRegularAxis(m_zAxis.min, m_zAxis.max, m_zAxis.step, m_numZ).coord(k));
}

void PbRegularCartesianGrid3D::updateBoundingBox() const {
  if (isBoundingBoxValid()) return;
  PiFiniteBox box;
  if (!isEmpty())
    for (const int i : {0, m_numX - 1})
      for (const int j : {0, m_numY - 1})
        for (const int k : {0, m_numZ - 1}) box.add(getNodeCoord(i, j, k));
  setBoundingBox(box.box());
}
