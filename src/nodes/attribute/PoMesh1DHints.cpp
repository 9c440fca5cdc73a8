#include <Ormelle/PoMesh1DHints.h>

#include <Inventor/actions/SoAction.h>
#include <Ormelle/PoMesh1DHintsElement.h>

#include "nodes/attribute/PiEnumField.h"

PO_NODE_SOURCE(PoMesh1DHints)

PoMesh1DHints::PoMesh1DHints() {
  PO_NODE_CONSTRUCTOR(PoMesh1DHints);
  PO_NODE_ADD_FIELD(geomInterpretation, (AS_IS));
  PO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, AS_IS);
  PO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, SMOOTH);
  PO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, STAIRS_X);
  PO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, STAIRS_Y);
  PO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, HISTO_X);
  PO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, HISTO_Y);
  PO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, STAIRS_2X);
  PO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, STAIRS_2Y);
  PO_NODE_SET_ENUM_TYPE(geomInterpretation, GeomInterpretation);
  PO_NODE_CONSTRUCTED(PoMesh1DHints);
}

PoMesh1DHints::~PoMesh1DHints() = default;

void PoMesh1DHints::doAction(SoAction* action) {
  PoMesh1DHintsElement::set(action->getState(), this, PiEnumField::get(geomInterpretation, STAIRS_2Y, AS_IS));
}
