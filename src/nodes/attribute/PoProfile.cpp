#include <Ormelle/PoProfile.h>

#include <Inventor/actions/SoAction.h>
#include <Ormelle/PoCircularProfile.h>
#include <Ormelle/PoEllipticProfile.h>
#include <Ormelle/PoProfileCoordinate2.h>
#include <Ormelle/PoProfileElement.h>
#include <Ormelle/PoSquareProfile.h>

PO_NODE_ABSTRACT_SOURCE(PoProfile)
PO_NODE_SOURCE(PoCircularProfile)
PO_NODE_SOURCE(PoEllipticProfile)
PO_NODE_SOURCE(PoSquareProfile)
PO_NODE_SOURCE(PoProfileCoordinate2)

PoProfile::PoProfile() {
  PO_NODE_CONSTRUCTOR(PoProfile);
  PO_NODE_CONSTRUCTED(PoProfile);
}

PoProfile::~PoProfile() = default;

void PoProfile::doAction(SoAction* action) { PoProfileElement::set(action->getState(), this, this); }

PoCircularProfile::PoCircularProfile() {
  PO_NODE_CONSTRUCTOR(PoCircularProfile);
  PO_NODE_ADD_FIELD(radius, (1));
  PO_NODE_CONSTRUCTED(PoCircularProfile);
}

PoCircularProfile::~PoCircularProfile() = default;

PoEllipticProfile::PoEllipticProfile() {
  PO_NODE_CONSTRUCTOR(PoEllipticProfile);
  PO_NODE_ADD_FIELD(xRadius, (1));
  PO_NODE_ADD_FIELD(yRadius, (1));
  PO_NODE_CONSTRUCTED(PoEllipticProfile);
}

PoEllipticProfile::~PoEllipticProfile() = default;

PoSquareProfile::PoSquareProfile() {
  PO_NODE_CONSTRUCTOR(PoSquareProfile);
  PO_NODE_ADD_FIELD(width, (1));
  PO_NODE_ADD_FIELD(height, (1));
  PO_NODE_CONSTRUCTED(PoSquareProfile);
}

PoSquareProfile::~PoSquareProfile() = default;

PoProfileCoordinate2::PoProfileCoordinate2() {
  PO_NODE_CONSTRUCTOR(PoProfileCoordinate2);
  PO_NODE_ADD_EMPTY_MFIELD(point);
  PO_NODE_CONSTRUCTED(PoProfileCoordinate2);
}

PoProfileCoordinate2::~PoProfileCoordinate2() = default;
