#include <Ormelle/PbMesh1D.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoMeshElement.h>

#include "nodes/element/PiSubElement.h"

PO_ELEMENT_SOURCE(PoMeshElement);

void PoMeshElement::init(SoState* state) {
  inherited::init(state);
  m_mesh = nullptr;
  m_dimension = DIMENSION_1;
}

void PoMeshElement::set(SoState* state, SoNode* node, const PbMesh1D* mesh) {
  store(state, node, const_cast<PbMesh1D*>(mesh), DIMENSION_1);
}

void PoMeshElement::set(SoState* state, SoNode* node, const PbMesh2D* mesh) {
  store(state, node, const_cast<PbMesh2D*>(mesh), DIMENSION_2);
}

void PoMeshElement::set(SoState* state, SoNode* node, const PbMesh3D* mesh) {
  store(state, node, const_cast<PbMesh3D*>(mesh), DIMENSION_3);
}

PbMesh* PoMeshElement::getMesh(SoState* state) {
  const auto* element = PiElement::toGet<PoMeshElement>(state);
  return element ? element->m_mesh : nullptr;
}

PbMesh1D* PoMeshElement::getMesh1D(SoState* state) { return static_cast<PbMesh1D*>(find(state, DIMENSION_1)); }

PbMesh2D* PoMeshElement::getMesh2D(SoState* state) { return static_cast<PbMesh2D*>(find(state, DIMENSION_2)); }

PbMesh3D* PoMeshElement::getMesh3D(SoState* state) { return static_cast<PbMesh3D*>(find(state, DIMENSION_3)); }

void PoMeshElement::store(SoState* state, SoNode* node, PbMesh* mesh, Dimension dimension) {
  auto* element = PiElement::toSet<PoMeshElement>(state, node);
  if (!element) return;
  element->m_mesh = mesh;
  element->m_dimension = dimension;
}

PbMesh* PoMeshElement::find(SoState* state, Dimension dimension) {
  const auto* element = PiElement::toGet<PoMeshElement>(state);
  return element && element->m_dimension == dimension ? element->m_mesh : nullptr;
}
