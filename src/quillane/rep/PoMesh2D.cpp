#include <Ormelle/PoMesh2D.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Ormelle/PoMeshElement.h>

#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiMeshInputs.h"

PO_KIT_ABSTRACT_SOURCE(PoMesh2D)

PoMesh2D::PoMesh2D() {
  PO_KIT_CONSTRUCTOR(PoMesh2D);
  PO_KIT_ADD_FIELD(zValuesIndex, (-1));
  PO_KIT_CONSTRUCTED(PoMesh2D);
  watchField(zValuesIndex);
}

PoMesh2D::~PoMesh2D() = default;

void PoMesh2D::setMesh(PbMesh2D* mesh) {
  inputs().mesh2D.give(mesh);
  inherited::setMesh(mesh);
}

PbMesh2D* PoMesh2D::getMesh() const {
  if (PbMesh2D* given = givenMesh()) return given;
  return isStateValid() ? PoMeshElement::getMesh2D(getState()) : nullptr;
}

PbMesh2D* PoMesh2D::givenMesh() const {
  if (PbMesh2D* given = inputs().mesh2D.given()) return given;
  // One that was given through the base class.
  return dynamic_cast<PbMesh2D*>(inputs().mesh.given());
}

void PoMesh2D::basicObjectChange(PbBase* object) {
  if (object == m_currentMesh2D && object->getChangeType() == PbBase::OBJECT_DELETED) m_currentMesh2D = nullptr;
  inherited::basicObjectChange(object);
}

void PoMesh2D::preRebuild() {
  inherited::preRebuild();
  const bool isTraversed = isStateValid() != 0;
  m_currentMesh2D = inputs().mesh2D.resolve(isTraversed, isTraversed ? PoMeshElement::getMesh2D(getState()) : nullptr);
  if (PbMesh2D* given = givenMesh()) m_currentMesh2D = given;
  if (m_currentMesh2D && !hasValuesToColor(m_currentMesh2D)) m_currentColoring = COLOR_INHERITED;
}

const PbMesh2D* PoMesh2D::drawnMesh() const {
  return m_currentMesh2D && !m_currentMesh2D->isEmpty() ? m_currentMesh2D : nullptr;
}

int PoMesh2D::heightsIndex(const PbMesh2D& mesh) const {
  const int index = zValuesIndex.getValue();
  return findNodeValues(mesh, index) ? index : -1;
}

const float* PoMesh2D::heights(const PbMesh2D& mesh) const {
  const float* values = findNodeValues(mesh, zValuesIndex.getValue());
  return values ? values : mesh.getZcoord();
}

const float* PoMesh2D::nodeValuesToColor(const PbMesh2D& mesh) {
  if (m_currentColoring == COLOR_INHERITED) return nullptr;
  const float* values = findNodeValues(mesh, valuesIndex.getValue());
  if (!values) m_currentColoring = COLOR_INHERITED;
  return values;
}

void PoMesh2D::makeSoCoordinate3(const float* z) {
  if (!m_currentMesh2D) return;
  nodes().coordinate = new SoCoordinate3;
  m_currentMesh2D->getNodesCoord(z, nodes().coordinate->point);
}
