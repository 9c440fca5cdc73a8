#include "graph/toolkit/PiElementRegistry.h"

#include <vector>

#include <Inventor/C/tidbits.h>
#include <Inventor/actions/SoAction.h>
#include <Inventor/elements/SoReplacedElement.h>

namespace {

struct Entry {
  SoType& type;
  int& stackIndex;
  int& isShown;
};

// Registration runs in one thread, see PoBase::init(). Held by pointer-free storage that outlives every static object's
// destructor, as the toolkit may be ended from one.
std::vector<Entry>& entries() {
  static auto* list = new std::vector<Entry>;
  return *list;
}

// Never made: these two only reach protected members. What SoAction enables, every action inherits.
struct Actions : SoAction {
  static void enable(SoType type, int stackIndex) { getClassEnabledElements()->enable(type, stackIndex); }
};
struct Elements : SoElement {
  static int newStackIndex(SoType type) { return createStackIndex(type); }
};

// Runs first in SoDB::finish, which then drops all types and enabled elements itself.
void forgetAll() {
  for (Entry& entry : entries()) {
    entry.type = SoType::badType();
    entry.stackIndex = -1;
    entry.isShown = 0;
  }
  entries().clear();
}

}  // namespace

void PiElementRegistry::enter(const char* name, SoType::instantiationMethod create, SoType& type, int& stackIndex,
                              int& isShown) {
  if (type != SoType::badType()) return;
  if (entries().empty()) cc_coin_atexit(&forgetAll);
  type = SoType::createType(SoReplacedElement::getClassTypeId(), name, create);
  stackIndex = Elements::newStackIndex(type);
  Actions::enable(type, stackIndex);
  entries().push_back({type, stackIndex, isShown});
}
