#ifndef ORMELLE_PODOMAINELEMENT_H
#define ORMELLE_PODOMAINELEMENT_H

#include <Ormelle/PoSubElement.h>

class PbDomain;

/// The box of user coordinates in force, set by PoDomain. Where there is none, a kit uses its own default domain.
class ORMELLE_API PoDomainElement : public SoReplacedElement {
  PO_POINTER_ELEMENT_HEADER(PoDomainElement, const PbDomain);
};

#endif
