// The elements that carry one pointer and nothing else.
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoDateFormatMappingElement.h>
#include <Ormelle/PoDomainElement.h>
#include <Ormelle/PoIsovaluesListElement.h>
#include <Ormelle/PoMesh1DFilterElement.h>
#include <Ormelle/PoMiscTextAttrElement.h>
#include <Ormelle/PoNumericDisplayFormatElement.h>
#include <Ormelle/PoProfileElement.h>

#include "nodes/element/PiSubElement.h"

PO_POINTER_ELEMENT_SOURCE(PoDomainElement, const PbDomain);
PO_POINTER_ELEMENT_SOURCE(PoNumericDisplayFormatElement, const PbNumericDisplayFormat);
PO_POINTER_ELEMENT_SOURCE(PoIsovaluesListElement, const PbIsovaluesList);
PO_POINTER_ELEMENT_SOURCE(PoDateFormatMappingElement, PbDateFormatMapping);
PO_POINTER_ELEMENT_SOURCE(PoMiscTextAttrElement, const PbMiscTextAttr);
PO_POINTER_ELEMENT_SOURCE(PoDataMappingElement, const PbDataMapping);
PO_POINTER_ELEMENT_SOURCE(PoCellFilterElement, const PoCellFilter);
PO_POINTER_ELEMENT_SOURCE(PoMesh1DFilterElement, const PoMesh1DFilter);
PO_POINTER_ELEMENT_SOURCE(PoProfileElement, const PoProfile);
