#ifndef ORMELLE_POCELLFILTERELEMENT_H
#define ORMELLE_POCELLFILTERELEMENT_H

#include <Ormelle/PoSubElement.h>

class PoCellFilter;

/// The node that says which cells are shown, set by the classes derived from PoCellFilter.
class ORMELLE_API PoCellFilterElement : public SoReplacedElement {
  PO_POINTER_ELEMENT_HEADER(PoCellFilterElement, const PoCellFilter);
};

#endif
