#ifndef ORMELLE_PISUBELEMENT_H
#define ORMELLE_PISUBELEMENT_H

/// @file
/// The bodies that belong to the macros of <Ormelle/PoSubElement.h>.

#include <Inventor/misc/SoState.h>
#include <Ormelle/PoSubElement.h>

#include "graph/toolkit/PiElementRegistry.h"

/// Way to an element on a state. Null if the state wasn't built for it, as when its traversal started before the
/// library did. Never made; deriving only reaches protected members.
class PiElement : public SoReplacedElement {
 public:
  template <class Element>
  static Element* toSet(SoState* state, SoNode* node) {
    return isOn<Element>(state) ? static_cast<Element*>(getElement(state, Element::getClassStackIndex(), node))
                                : nullptr;
  }
  /// Makes the open caches of the traversal depend on the element.
  template <class Element>
  static const Element* toGet(SoState* state) {
    return isOn<Element>(state) ? static_cast<const Element*>(getConstElement(state, Element::getClassStackIndex()))
                                : nullptr;
  }

 private:
  template <class Element>
  static bool isOn(const SoState* state) {
    return Element::getClassStackIndex() >= 0 && state->isElementEnabled(Element::getClassStackIndex());
  }
};

/// Belongs to PO_ELEMENT_HEADER; `init`, `set` and `get` are left to the class.
#define PO_ELEMENT_SOURCE(Class)                                                                          \
  SoType Class::classTypeId;                                                                              \
  int Class::classStackIndex = -1;                                                                        \
  int Class::isClassShown = 0;                                                                            \
  void Class::initClass() {                                                                               \
    PiElementRegistry::enter(#Class, &Class::createInstance, classTypeId, classStackIndex, isClassShown); \
    isClassShown = 1;                                                                                     \
  }                                                                                                       \
  void Class::exitClass() { isClassShown = 0; }                                                           \
  SoType Class::getClassTypeId() { return isClassShown ? classTypeId : SoType::badType(); }               \
  int Class::getClassStackIndex() { return classStackIndex; }                                             \
  void* Class::createInstance() { return new Class; }                                                     \
  Class::Class() {                                                                                        \
    setTypeId(classTypeId);                                                                               \
    setStackIndex(classStackIndex);                                                                       \
  }                                                                                                       \
  Class::~Class() = default

/// Belongs to PO_POINTER_ELEMENT_HEADER.
#define PO_POINTER_ELEMENT_SOURCE(Class, Carried)                                           \
  PO_ELEMENT_SOURCE(Class);                                                                 \
  void Class::init(SoState* state) {                                                        \
    inherited::init(state);                                                                 \
    m_carried = nullptr;                                                                    \
  }                                                                                         \
  void Class::set(SoState* state, SoNode* node, Carried* carried) {                         \
    if (auto* element = PiElement::toSet<Class>(state, node)) element->m_carried = carried; \
  }                                                                                         \
  Carried* Class::get(SoState* state) {                                                     \
    const auto* element = PiElement::toGet<Class>(state);                                   \
    return element ? element->m_carried : nullptr;                                          \
  }                                                                                         \
  static_assert(true)

#endif
