#include <Ormelle/PoBaseAxis.h>

PO_KIT_ABSTRACT_SOURCE(PoBaseAxis)

PoBaseAxis::PoBaseAxis() {
  PO_KIT_CONSTRUCTOR(PoBaseAxis);
  PO_KIT_CONSTRUCTED(PoBaseAxis);
}

PoBaseAxis::~PoBaseAxis() = default;
