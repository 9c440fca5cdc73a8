#include <Ormelle/PbPolarGrid2D.h>

#include <cmath>

#include "quillane/mesh/PiNodesCoord.h"
#include "quillane/mesh/PiPrintArray.h"

PbPolarGrid2D::PbPolarGrid2D(int isDataDuplicate) : PbGrid2D(isDataDuplicate) {}

PbPolarGrid2D::PbPolarGrid2D(int num_r, int num_t, const float* radius, const float* angle, int isDataDuplicate)
    : PbPolarGrid2D(num_r, num_t, radius, angle, nullptr, isDataDuplicate) {}

PbPolarGrid2D::PbPolarGrid2D(int num_r, int num_t, const float* radius, const float* angle, const float* z,
                             int isDataDuplicate)
    : PbPolarGrid2D(isDataDuplicate) {
  setGeometry(num_r, num_t, radius, angle, z);
}

PbPolarGrid2D::PbPolarGrid2D(const PbPolarGrid2D& other) = default;

PbPolarGrid2D& PbPolarGrid2D::operator=(const PbPolarGrid2D& other) {
  if (this == &other) return *this;
  m_radius = other.m_radius;
  m_angle = other.m_angle;
  PbGrid2D::operator=(other);
  return *this;
}

PbPolarGrid2D::~PbPolarGrid2D() = default;

void PbPolarGrid2D::setXYGeometry(int num_r, int num_t, const float* radius, const float* angle) {
  m_radius.set(radius, num_r, m_isDataDuplicate);
  m_angle.set(angle, num_t, m_isDataDuplicate);
}

void PbPolarGrid2D::getXYGeometry(const float*& radius, const float*& angle) const {
  radius = m_radius.get();
  angle = m_angle.get();
}

void PbPolarGrid2D::getGeometry(int& num_r, int& num_t, const float*& radius, const float*& angle) const {
  getDim(num_r, num_t);
  getXYGeometry(radius, angle);
}

void PbPolarGrid2D::getGeometry(int& num_r, int& num_t, const float*& radius, const float*& angle,
                                const float*& z) const {
  getGeometry(num_r, num_t, radius, angle);
  z = getZcoord();
}

void PbPolarGrid2D::getGeometry(int& num_r, int& num_t, const float*& radius, const float*& angle,
                                const float* const*& z) const {
  getGeometry(num_r, num_t, radius, angle);
  z = getZRows();
}

const PbCell* PbPolarGrid2D::getCell(int) const { return nullptr; }

void PbPolarGrid2D::getNodesCoord(const float* z, SoMFVec3f& coords) const { fillNodesCoord(viewOf(*this, z), coords); }

void PbPolarGrid2D::print(FILE* file) const {
  PbGrid2D::print(file);
  printArray(file, "PbPolarGrid2D", "r", m_radius.get(), m_radius.getNum());
  printArray(file, "PbPolarGrid2D", "t", m_angle.get(), m_angle.getNum());
}

SbVec3f PbPolarGrid2D::getNodeCoord(int i, int j) const {
  return SbVec3f(m_radius[i] * std::cos(m_angle[j]), m_radius[i] * std::sin(m_angle[j]), getNodeZ(getNodeIndex(i, j)));
}

void PbPolarGrid2D::updateBoundingBox() const {
  if (!isBoundingBoxValid()) setBoundingBox(boxOfNodes(viewOf(*this)));
}
