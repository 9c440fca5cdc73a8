#include <Ormelle/PoCartesianAxis.h>

#include <Inventor/nodes/SoMatrixTransform.h>

#include "graph/axis/PiAxisTransform.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_ABSTRACT_SOURCE(PoCartesianAxis)

PoCartesianAxis::PoCartesianAxis() {
  PO_KIT_CONSTRUCTOR(PoCartesianAxis);
  PO_KIT_DEFINE_ENUM_VALUE(Type, XY);
  PO_KIT_DEFINE_ENUM_VALUE(Type, XZ);
  PO_KIT_DEFINE_ENUM_VALUE(Type, YX);
  PO_KIT_DEFINE_ENUM_VALUE(Type, YZ);
  PO_KIT_DEFINE_ENUM_VALUE(Type, ZX);
  PO_KIT_DEFINE_ENUM_VALUE(Type, ZY);
  PO_KIT_ADD_FIELD(start, (0, 0, 0));
  PO_KIT_ADD_FIELD(end, (1));
  PO_KIT_ADD_FIELD(type, (XY));
  PO_KIT_SET_ENUM_TYPE(type, Type);
  PO_KIT_CONSTRUCTED(PoCartesianAxis);
  for (SoField* field : std::initializer_list<SoField*>{&start, &end, &type}) watchField(*field);
}

PoCartesianAxis::~PoCartesianAxis() = default;

PoCartesianAxis::Type PoCartesianAxis::getType() const { return PiEnumField::get(type, ZY, XY); }

void PoCartesianAxis::computeTransfo(const SbVec3f& axisStart, SoMatrixTransform* out, float& ref1, float& ref2) {
  SbVec3f deltas;
  getDomain()->getDelta(deltas[0], deltas[1], deltas[2]);
  const PiAxisTransform placed = PiAxisTransform::make(getType(), axisStart, deltas);
  out->matrix = placed.matrix;
  ref1 = placed.along;
  ref2 = placed.across;
}
