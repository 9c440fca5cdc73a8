#include <Ormelle/PoChart.h>
#include <Ormelle/PoTavernel.h>

#include "graph/frame/PiClassTable.h"

PO_KIT_ABSTRACT_SOURCE(PoTavernel)

namespace {

constexpr PiClassEntry kClasses[] = {PI_CLASS(PoTavernel), PI_CLASS(PoChart)};

}  // namespace

PoTavernel::PoTavernel(void (*catchActionFunction)(void*, SoAction*)) : PoBase(catchActionFunction) {
  PO_KIT_CONSTRUCTOR(PoTavernel);
  PO_KIT_CONSTRUCTED(PoTavernel);
}

PoTavernel::~PoTavernel() = default;

void PoTavernel::initClasses() { piInitClasses(kClasses); }

void PoTavernel::exitClasses() { piExitClasses(kClasses); }
