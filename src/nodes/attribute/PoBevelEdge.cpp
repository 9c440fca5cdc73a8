#include <Ormelle/PoBevelEdge.h>

#include <numbers>

#include <Inventor/actions/SoAction.h>
#include <Ormelle/PoBevelEdgeElement.h>

#include "nodes/attribute/PiEnumField.h"

PO_NODE_SOURCE(PoBevelEdge)

PoBevelEdge::PoBevelEdge() {
  PO_NODE_CONSTRUCTOR(PoBevelEdge);
  PO_NODE_ADD_FIELD(radius, (0.05f));
  PO_NODE_ADD_FIELD(radiusFlag, (ABSOLUTE_RADIUS));
  PO_NODE_ADD_FIELD(bevelAngle, (std::numbers::pi_v<float> / 6));
  PO_NODE_DEFINE_ENUM_VALUE(RadiusFlag, ABSOLUTE_RADIUS);
  PO_NODE_DEFINE_ENUM_VALUE(RadiusFlag, PERCENTAGE_RADIUS);
  PO_NODE_SET_ENUM_TYPE(radiusFlag, RadiusFlag);
  PO_NODE_CONSTRUCTED(PoBevelEdge);
}

PoBevelEdge::~PoBevelEdge() = default;

void PoBevelEdge::doAction(SoAction* action) {
  if (radius.isIgnored() || bevelAngle.isIgnored()) return;
  PoBevelEdgeElement::set(action->getState(), this, radius.getValue(),
                          PiEnumField::get(radiusFlag, PERCENTAGE_RADIUS, ABSOLUTE_RADIUS), bevelAngle.getValue());
}
