#include <Ormelle/PoBevelEdgeElement.h>

#include "nodes/element/PiSubElement.h"

PO_ELEMENT_SOURCE(PoBevelEdgeElement);

void PoBevelEdgeElement::init(SoState* state) {
  inherited::init(state);
  m_isOn = 0;
  m_radius = 0;
  m_radiusFlag = PoBevelEdge::ABSOLUTE_RADIUS;
  m_bevelAngle = 0;
}

void PoBevelEdgeElement::set(SoState* state, SoNode* node, float radius, PoBevelEdge::RadiusFlag radiusFlag,
                             float bevelAngle) {
  auto* element = PiElement::toSet<PoBevelEdgeElement>(state, node);
  if (!element) return;
  element->m_isOn = 1;
  element->m_radius = radius;
  element->m_radiusFlag = radiusFlag;
  element->m_bevelAngle = bevelAngle;
}

int PoBevelEdgeElement::get(SoState* state, float& radius, PoBevelEdge::RadiusFlag& radiusFlag, float& bevelAngle) {
  const auto* element = PiElement::toGet<PoBevelEdgeElement>(state);
  radius = element ? element->m_radius : 0;
  radiusFlag = element ? element->m_radiusFlag : PoBevelEdge::ABSOLUTE_RADIUS;
  bevelAngle = element ? element->m_bevelAngle : 0;
  return element && element->m_isOn;
}
