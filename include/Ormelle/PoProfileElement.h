#ifndef ORMELLE_POPROFILEELEMENT_H
#define ORMELLE_POPROFILEELEMENT_H

#include <Ormelle/PoSubElement.h>

class PoProfile;

/// The outline that is swept along a path, set by the classes derived from PoProfile.
class ORMELLE_API PoProfileElement : public SoReplacedElement {
  PO_POINTER_ELEMENT_HEADER(PoProfileElement, const PoProfile);
};

#endif
