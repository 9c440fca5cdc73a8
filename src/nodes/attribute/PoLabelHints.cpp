#include <Ormelle/PoLabelHints.h>

#include <Inventor/actions/SoAction.h>
#include <Ormelle/PoLabelHintsElement.h>

#include "nodes/attribute/PiEnumField.h"

PO_NODE_SOURCE(PoLabelHints)

PoLabelHints::PoLabelHints() {
  PO_NODE_CONSTRUCTOR(PoLabelHints);
  PO_NODE_ADD_FIELD(labelPath, (PATH_DEPEND));
  PO_NODE_ADD_FIELD(justification, (DEPEND));
  PO_NODE_ADD_FIELD(addString, (""));
  PO_NODE_ADD_FIELD(isLabelLineVisible, (FALSE));
  PO_NODE_DEFINE_ENUM_VALUE(LabelPath, PATH_RIGHT);
  PO_NODE_DEFINE_ENUM_VALUE(LabelPath, PATH_LEFT);
  PO_NODE_DEFINE_ENUM_VALUE(LabelPath, PATH_UP);
  PO_NODE_DEFINE_ENUM_VALUE(LabelPath, PATH_DOWN);
  PO_NODE_DEFINE_ENUM_VALUE(LabelPath, PATH_DEPEND);
  PO_NODE_DEFINE_ENUM_VALUE(Justification, LEFT);
  PO_NODE_DEFINE_ENUM_VALUE(Justification, CENTER);
  PO_NODE_DEFINE_ENUM_VALUE(Justification, RIGHT);
  PO_NODE_DEFINE_ENUM_VALUE(Justification, DEPEND);
  PO_NODE_SET_ENUM_TYPE(labelPath, LabelPath);
  PO_NODE_SET_ENUM_TYPE(justification, Justification);
  PO_NODE_CONSTRUCTED(PoLabelHints);
}

PoLabelHints::~PoLabelHints() = default;

void PoLabelHints::doAction(SoAction* action) {
  PoLabelHintsElement::set(action->getState(), this, PiEnumField::get(labelPath, PATH_DEPEND, PATH_DEPEND),
                           PiEnumField::get(justification, DEPEND, DEPEND), addString.getValue(), addString.isIgnored(),
                           isLabelLineVisible.getValue());
}
