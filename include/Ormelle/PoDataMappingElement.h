#ifndef ORMELLE_PODATAMAPPINGELEMENT_H
#define ORMELLE_PODATAMAPPINGELEMENT_H

#include <Ormelle/PoSubElement.h>

class PbDataMapping;

/// The colours that values get, set by the classes derived from PoDataMapping.
class ORMELLE_API PoDataMappingElement : public SoReplacedElement {
  PO_POINTER_ELEMENT_HEADER(PoDataMappingElement, const PbDataMapping);
};

#endif
