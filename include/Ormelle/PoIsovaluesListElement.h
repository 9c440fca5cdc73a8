#ifndef ORMELLE_POISOVALUESLISTELEMENT_H
#define ORMELLE_POISOVALUESLISTELEMENT_H

#include <Ormelle/PoSubElement.h>

class PbIsovaluesList;

/// The contour levels in force, set by PoIsovaluesList.
class ORMELLE_API PoIsovaluesListElement : public SoReplacedElement {
  PO_POINTER_ELEMENT_HEADER(PoIsovaluesListElement, const PbIsovaluesList);
};

#endif
