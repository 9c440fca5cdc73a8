#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh3D.h>

#include "quillane/mesh/PiCellSum.h"
#include "quillane/search/PiCellSearch.h"

PbMesh3D::PbMesh3D(int isDataDuplicate) : PbMesh(isDataDuplicate) {}

PbMesh3D::PbMesh3D(const PbMesh3D& other) : PbMesh(other), m_skins(nullptr) {}

PbMesh3D& PbMesh3D::operator=(const PbMesh3D& other) {
  if (this != &other) PbMesh::operator=(other);
  return *this;
}

PbMesh3D::~PbMesh3D() = default;

void PbMesh3D::meshSkin(PoMeshSkin*) const {}
void PbMesh3D::meshLevelSurfShapeIndices(PoMesh3D*, int, const float*) const {}
void PbMesh3D::meshCrossSection(PoMeshCrossSection*) const {}
void PbMesh3D::meshCrossContour(PoMeshCrossContour*) const {}
void PbMesh3D::meshSkeleton(PoMeshSkeleton*, const float*, float*, float*, float*) const {}

int PbMesh3D::isCrossSectionOptimal() const { return 0; }
int PbMesh3D::evaluateSkinFacesNum() const { return 0; }

float PbMesh3D::getVolume() const { return sumOverCells(*this, &PbCell::getVolume); }
float PbMesh3D::getArea() const { return 0; }

const PbCell* PbMesh3D::findContainingCellProtected(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                                    PbArrayOfInt&) const {
  PiPlainCell found;
  return PiCellSearch::of(*this, tolerance)->find(point, tolerance, found, pcoord) ? getCell(found.index()) : nullptr;
}
