#include <Ormelle/PbRegularMesh1D.h>

#include <algorithm>

#include "quillane/mesh/PiFiniteBox.h"

PbRegularMesh1D::PbRegularMesh1D() = default;

PbRegularMesh1D::PbRegularMesh1D(int num_x, float x_begin, float x_end) { setGeometry(num_x, x_begin, x_end); }

PbRegularMesh1D::PbRegularMesh1D(const PbRegularMesh1D&) = default;

PbRegularMesh1D& PbRegularMesh1D::operator=(const PbRegularMesh1D& other) {
  m_xBegin = other.m_xBegin;
  m_xEnd = other.m_xEnd;
  PbMesh1D::operator=(other);
  return *this;
}

PbRegularMesh1D::~PbRegularMesh1D() = default;

void PbRegularMesh1D::setGeometry(int num_x, float x_begin, float x_end) {
  m_xBegin = x_begin;
  m_xEnd = x_end;
  storeSize(std::max(num_x, 0));
}

void PbRegularMesh1D::getGeometry(int& num_x, float& x_begin, float& x_end) const {
  num_x = getNumNodes();
  x_begin = m_xBegin;
  x_end = m_xEnd;
}

float PbRegularMesh1D::getXCoord(int node) const {
  const int last = getNumNodes() - 1;
  if (node < 0 || node > last) return 0;
  if (node == 0) return m_xBegin;
  if (node == last) return m_xEnd;
  // In double, so that no finite limits overflow.
  return static_cast<float>(m_xBegin + node * (static_cast<double>(m_xEnd) - m_xBegin) / last);
}

void PbRegularMesh1D::print(FILE* file) const {
  PbMesh1D::print(file);
  std::fprintf(file, "PbRegularMesh1D:: x = %g to %g\n", static_cast<double>(m_xBegin), static_cast<double>(m_xEnd));
}

void PbRegularMesh1D::updateBoundingBox() const {
  if (isBoundingBoxValid()) return;
  PiFiniteBox box;
  for (const int node : {0, getNumNodes() - 1})
    if (!isEmpty()) box.add(getNodeCoord(node));
  setBoundingBox(box.box());
}
