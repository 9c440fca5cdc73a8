#include "nodes/element/PiElementClasses.h"

#include <iterator>

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

namespace {

struct ElementClass {
  void (*init)();
  void (*exit)();
};

template <class Element>
constexpr ElementClass elementClass() {
  return {&Element::initClass, &Element::exitClass};
}

constexpr ElementClass kElements[] = {
    elementClass<PoDomainElement>(),        elementClass<PoNumericDisplayFormatElement>(),
    elementClass<PoIsovaluesListElement>(), elementClass<PoDateFormatMappingElement>(),
    elementClass<PoMiscTextAttrElement>(),  elementClass<PoDataMappingElement>(),
    elementClass<PoCellFilterElement>(),    elementClass<PoMeshElement>(),
    elementClass<PoBevelEdgeElement>(),     elementClass<PoMesh1DFilterElement>(),
    elementClass<PoMesh1DHintsElement>(),   elementClass<PoProfileElement>(),
    elementClass<PoLabelHintsElement>(),
};

}  // namespace

void PiElementTable::initClasses() {
  for (const ElementClass& element : kElements) element.init();
}

void PiElementTable::exitClasses() {
  for (auto element = std::rbegin(kElements); element != std::rend(kElements); ++element) element->exit();
}
