#include <Ormelle/PbMesh1D.h>

#include <cstdio>

#include <Ormelle/PbArrayOfInt.h>

#include "quillane/mesh/PiFiniteBox.h"

PbMesh1D::PbMesh1D() : PbMesh(1) {}
PbMesh1D::PbMesh1D(const PbMesh1D&) = default;
PbMesh1D& PbMesh1D::operator=(const PbMesh1D&) = default;
PbMesh1D::~PbMesh1D() = default;

SbVec3f PbMesh1D::getNodeCoord(int node) const { return SbVec3f(getXCoord(node), 0, 0); }

void PbMesh1D::getNodeOwnerCellsInd(int, PbArrayOfInt& owner_cells) const { owner_cells.empty(); }

const PbCell* PbMesh1D::getCell(int) const { return nullptr; }
float PbMesh1D::getVolume() const { return 0; }
float PbMesh1D::getArea() const { return 0; }

const PbCell* PbMesh1D::findContainingCell(const SbVec3f&, float, SbVec3f&) const { return nullptr; }
const PbCell* PbMesh1D::findContainingCell(const SbVec3f&, float, SbVec3f&, const PbCell*) const { return nullptr; }
const PbCell* PbMesh1D::findContainingCellProtected(const SbVec3f&, float, SbVec3f&, PbArrayOfInt&) const {
  return nullptr;
}

void PbMesh1D::print(FILE* file) const {
  PbMesh::print(file);
  std::fprintf(file, "PbMesh1D:: size = %d\n", getNumNodes());
}

void PbMesh1D::updateBoundingBox() const {
  if (isBoundingBoxValid()) return;
  PiFiniteBox box;
  for (int n = 0; n < getNumNodes(); ++n) box.add(getNodeCoord(n));
  setBoundingBox(box.box());
}

void PbMesh1D::storeSize(int size) {
  setCounts(size, 0, size != getNumNodes());
  notifyGeometryChange();
}
