#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbVoxelCell.h>

#include <algorithm>
#include <cmath>

#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/mesh/PiPrintArray.h"
#include "quillane/search/PiAxisSearch.h"

PbParalCartesianGrid3D::PbParalCartesianGrid3D(int isDataDuplicate)
    : PbCartesianGrid3D(isDataDuplicate), m_voxel(std::make_unique<PbVoxelCell>(this)) {}

PbParalCartesianGrid3D::PbParalCartesianGrid3D(int num_x, int num_y, int num_z, const float* x, const float* y,
                                               const float* z, int isDataDuplicate)
    : PbParalCartesianGrid3D(isDataDuplicate) {
  setGeometry(num_x, num_y, num_z, x, y, z);
}

PbParalCartesianGrid3D::PbParalCartesianGrid3D(const PbParalCartesianGrid3D& other)
    : PbCartesianGrid3D(other), m_voxel(std::make_unique<PbVoxelCell>(this)) {}

PbParalCartesianGrid3D& PbParalCartesianGrid3D::operator=(const PbParalCartesianGrid3D& other) {
  PbCartesianGrid3D::operator=(other);
  return *this;
}

PbParalCartesianGrid3D::~PbParalCartesianGrid3D() = default;

void PbParalCartesianGrid3D::setXYZGeometry(int num_x, int num_y, int num_z, const float* x, const float* y,
                                            const float* z) {
  m_x.set(x, num_x, m_isDataDuplicate);
  m_y.set(y, num_y, m_isDataDuplicate);
  m_z.set(z, num_z, m_isDataDuplicate);
}

void PbParalCartesianGrid3D::getGeometry(int& num_x, int& num_y, int& num_z, const float*& x, const float*& y,
                                         const float*& z) const {
  getDim(num_x, num_y, num_z);
  getXYZGeometry(x, y, z);
}

const PbCell* PbParalCartesianGrid3D::getCell(int cell_index) const {
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  int i, j, k;
  getCellIndices(cell_index, i, j, k);
  m_voxel->set(cell_index, getCellNodeIds(i, j, k), m_x[i], m_y[j], m_z[k], m_x[i + 1], m_y[j + 1], m_z[k + 1]);
  return m_voxel.get();
}

const PbCell* PbParalCartesianGrid3D::getTopoCell(int cell_index) const {
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  m_voxel->setTopology(cell_index, getCellNodeIds(cell_index));
  return m_voxel.get();
}

float PbParalCartesianGrid3D::getLongestEdgeLength() const {
  float longest = 0;
  for (const PbMeshArray<float>* axis : {&m_x, &m_y, &m_z})
    for (int i = 1; i < axis->getNum(); ++i) {
      const float step = std::fabs((*axis)[i] - (*axis)[i - 1]);
      if (step > longest && std::isfinite(step)) longest = step;
    }
  return longest;
}

const PbCell* PbParalCartesianGrid3D::findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  const int i = findAxisInterval(m_x.get(), m_numX, point[0]);
  const int j = findAxisInterval(m_y.get(), m_numY, point[1]);
  const int k = findAxisInterval(m_z.get(), m_numZ, point[2]);
  if (i < 0 || i == m_numX - 1 || j < 0 || j == m_numY - 1 || k < 0 || k == m_numZ - 1) return nullptr;
  const PbCell* cell = getCell(getCellIndex(i, j, k));
  return cell->locatePoint(point, tolerance, pcoord) ? cell : nullptr;
}

const PbCell* PbParalCartesianGrid3D::findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                                         const PbCell*) const {
  return findContainingCell(point, tolerance, pcoord);
}

int PbParalCartesianGrid3D::isCrossSectionOptimal() const { return 1; }

void PbParalCartesianGrid3D::print(FILE* file) const {
  PbGrid3D::print(file);
  printArray(file, "PbParalCartesianGrid3D", "x", m_x.get(), m_x.getNum());
  printArray(file, "PbParalCartesianGrid3D", "y", m_y.get(), m_y.getNum());
  printArray(file, "PbParalCartesianGrid3D", "z", m_z.get(), m_z.getNum());
}

SbVec3f PbParalCartesianGrid3D::getNodeCoord(int i, int j, int k) const { return SbVec3f(m_x[i], m_y[j], m_z[k]); }

void PbParalCartesianGrid3D::updateBoundingBox() const {
  if (isBoundingBoxValid()) return;
  const PiFiniteRange x(m_x.get(), m_numX), y(m_y.get(), m_numY), z(m_z.get(), m_numZ);
  const bool isEmptyBox = x.isEmpty() || y.isEmpty() || z.isEmpty();
  setBoundingBox(isEmptyBox ? SbBox3f() : SbBox3f(x.low, y.low, z.low, x.high, y.high, z.high));
}
