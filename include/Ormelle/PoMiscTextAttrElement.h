#ifndef ORMELLE_POMISCTEXTATTRELEMENT_H
#define ORMELLE_POMISCTEXTATTRELEMENT_H

#include <Ormelle/PoSubElement.h>

class PbMiscTextAttr;

/// Font, wrapping and outline of texts, set by PoMiscTextAttr.
class ORMELLE_API PoMiscTextAttrElement : public SoReplacedElement {
  PO_POINTER_ELEMENT_HEADER(PoMiscTextAttrElement, const PbMiscTextAttr);
};

#endif
