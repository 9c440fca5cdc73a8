#ifndef ORMELLE_PODATEFORMATMAPPINGELEMENT_H
#define ORMELLE_PODATEFORMATMAPPINGELEMENT_H

#include <Ormelle/PoSubElement.h>

class PbDateFormatMapping;

/// The dates that coordinates stand for, set by PoDateFormatMapping.
class ORMELLE_API PoDateFormatMappingElement : public SoReplacedElement {
  PO_POINTER_ELEMENT_HEADER(PoDateFormatMappingElement, PbDateFormatMapping);
};

#endif
