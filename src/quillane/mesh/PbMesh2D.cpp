#include <Inventor/SbVec2f.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh2D.h>

#include <vector>

#include "quillane/mesh/PiCellSum.h"
#include "quillane/search/PiCellSearch.h"

PbMesh2D::PbMesh2D(int isDataDuplicate) : PbMesh(isDataDuplicate) {}

PbMesh2D::PbMesh2D(const PbMesh2D& other) : PbMesh(other), m_ownZCoord(other.m_ownZCoord) {
  m_zCoord = m_savedZCoord = m_ownZCoord.get();
}

PbMesh2D& PbMesh2D::operator=(const PbMesh2D& other) {
  if (this == &other) return *this;
  m_ownZCoord = other.m_ownZCoord;
  m_zCoord = m_savedZCoord = m_ownZCoord.get();
  PbMesh::operator=(other);
  return *this;
}

PbMesh2D::~PbMesh2D() = default;

SbBox2f PbMesh2D::getBoundingBox() const {
  const SbBox3f box = PbMesh::getBoundingBox();
  return SbBox2f(box.getMin()[0], box.getMin()[1], box.getMax()[0], box.getMax()[1]);
}

const float* PbMesh2D::getZcoord() const { return m_zCoord; }

void PbMesh2D::meshLines(PoMeshLines*) const {}
void PbMesh2D::meshFilled(PoMeshFilled*) const {}
void PbMesh2D::meshContouring(PiContouring*, const float*) const {}

int PbMesh2D::hasSidesNormals() const { return 0; }
void PbMesh2D::getSidesNormals(SbVec3f*& normals, const PbArrayOfInt&) const { normals = nullptr; }

void PbMesh2D::addVecsSet(int set_index, const SbVec2f* val, const SbString& set_name) {
  std::vector<SbVec3f> vecs;
  if (val) {
    vecs.reserve(m_numMeshNodes);
    for (int n = 0; n < m_numMeshNodes; ++n) vecs.emplace_back(val[n][0], val[n][1], 0.0F);
  }
  addCopiedVecsSet(set_index, val ? vecs.data() : nullptr, set_name);
}

void PbMesh2D::pushZCoord(int set_index) {
  m_savedZCoord = m_zCoord;
  if (set_index < 0) return;
  // Values of the cells would be read beyond their end.
  m_zCoord = getValuesBinding(set_index) == PER_NODE ? getValuesSet(set_index) : nullptr;
  if (m_zCoord != m_savedZCoord) resetBoxes();
}

void PbMesh2D::popZCoord() {
  if (m_zCoord != m_savedZCoord) resetBoxes();
  m_zCoord = m_savedZCoord;
}

void PbMesh2D::setZCoord(int num, const float* z) {
  m_ownZCoord.set(z, num, m_isDataDuplicate);
  m_zCoord = m_savedZCoord = m_ownZCoord.get();
}

float PbMesh2D::getVolume() const { return 0; }
float PbMesh2D::getArea() const { return sumOverCells(*this, &PbCell::getArea); }

const PbCell* PbMesh2D::findContainingCellProtected(const SbVec3f&, float, SbVec3f&, PbArrayOfInt&) const {
  return nullptr;
}

const PbCell* PbMesh2D::findFirstContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  PiPlainCell found;
  return PiCellSearch::of(*this, tolerance)->find(point, tolerance, found, pcoord) ? getCell(found.index()) : nullptr;
}
