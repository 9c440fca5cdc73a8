#include "nodes/element/PiElementClasses.h"

#include <Ormelle/PoBevelEdgeElement.h>
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoDateFormatMappingElement.h>
#include <Ormelle/PoDomainElement.h>
#include <Ormelle/PoIsovaluesListElement.h>
#include <Ormelle/PoLabelHintsElement.h>
#include <Ormelle/PoMesh1DFilterElement.h>
#include <Ormelle/PoMesh1DHintsElement.h>
#include <Ormelle/PoMeshElement.h>
#include <Ormelle/PoMiscTextAttrElement.h>
#include <Ormelle/PoNumericDisplayFormatElement.h>
#include <Ormelle/PoProfileElement.h>

#include "graph/frame/PiClassTable.h"

namespace {

constexpr PiClassEntry kElements[] = {
    PI_CLASS(PoDomainElement),        PI_CLASS(PoNumericDisplayFormatElement),
    PI_CLASS(PoIsovaluesListElement), PI_CLASS(PoDateFormatMappingElement),
    PI_CLASS(PoMiscTextAttrElement),  PI_CLASS(PoDataMappingElement),
    PI_CLASS(PoCellFilterElement),    PI_CLASS(PoMeshElement),
    PI_CLASS(PoBevelEdgeElement),     PI_CLASS(PoMesh1DFilterElement),
    PI_CLASS(PoMesh1DHintsElement),   PI_CLASS(PoProfileElement),
    PI_CLASS(PoLabelHintsElement),
};

}  // namespace

void PiElementTable::initClasses() { piInitClasses(kElements); }

void PiElementTable::exitClasses() { piExitClasses(kElements); }
