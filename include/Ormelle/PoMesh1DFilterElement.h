#ifndef ORMELLE_POMESH1DFILTERELEMENT_H
#define ORMELLE_POMESH1DFILTERELEMENT_H

#include <Ormelle/PoSubElement.h>

class PoMesh1DFilter;

/// The node that says which points of a curve are used, set by the classes derived from PoMesh1DFilter.
class ORMELLE_API PoMesh1DFilterElement : public SoReplacedElement {
  PO_POINTER_ELEMENT_HEADER(PoMesh1DFilterElement, const PoMesh1DFilter);
};

#endif
