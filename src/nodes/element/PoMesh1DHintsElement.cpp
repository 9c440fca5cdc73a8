#include <Ormelle/PoMesh1DHintsElement.h>

#include "nodes/element/PiSubElement.h"

PO_ELEMENT_SOURCE(PoMesh1DHintsElement);

void PoMesh1DHintsElement::init(SoState* state) {
  inherited::init(state);
  m_geomInterpretation = PoMesh1DHints::AS_IS;
}

void PoMesh1DHintsElement::set(SoState* state, SoNode* node, PoMesh1DHints::GeomInterpretation geomInterpretation) {
  if (auto* element = PiElement::toSet<PoMesh1DHintsElement>(state, node))
    element->m_geomInterpretation = geomInterpretation;
}

PoMesh1DHints::GeomInterpretation PoMesh1DHintsElement::get(SoState* state) {
  const auto* element = PiElement::toGet<PoMesh1DHintsElement>(state);
  return element ? element->m_geomInterpretation : PoMesh1DHints::AS_IS;
}
