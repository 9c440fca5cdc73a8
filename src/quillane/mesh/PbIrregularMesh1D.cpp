#include <Ormelle/PbIrregularMesh1D.h>

#include "quillane/mesh/PiPrintArray.h"

PbIrregularMesh1D::PbIrregularMesh1D() = default;

PbIrregularMesh1D::PbIrregularMesh1D(int num_x, const float* x) { setGeometry(num_x, x); }

PbIrregularMesh1D::PbIrregularMesh1D(const PbIrregularMesh1D&) = default;

PbIrregularMesh1D& PbIrregularMesh1D::operator=(const PbIrregularMesh1D& other) {
  m_x = other.m_x;
  PbMesh1D::operator=(other);
  return *this;
}

PbIrregularMesh1D::~PbIrregularMesh1D() = default;

void PbIrregularMesh1D::setGeometry(int num_x, const float* x) {
  m_x.set(x, num_x, 1);
  storeSize(m_x.getNum());
}

void PbIrregularMesh1D::getGeometry(int& num_x, const float*& x) const {
  num_x = getNumNodes();
  x = m_x.get();
}

float PbIrregularMesh1D::getXCoord(int node) const { return node >= 0 && node < m_x.getNum() ? m_x[node] : 0; }

void PbIrregularMesh1D::print(FILE* file) const {
  PbMesh1D::print(file);
  printArray(file, "PbIrregularMesh1D", "x", m_x.get(), m_x.getNum());
}
