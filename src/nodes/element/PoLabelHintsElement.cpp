#include <Ormelle/PoLabelHintsElement.h>

#include "nodes/element/PiSubElement.h"

PO_ELEMENT_SOURCE(PoLabelHintsElement);

void PoLabelHintsElement::init(SoState* state) {
  inherited::init(state);
  m_labelPath = PoLabelHints::PATH_DEPEND;
  m_justification = PoLabelHints::DEPEND;
  m_addString = "";
  m_isLabelLineVisible = 0;
}

// A pushed element was used before: what set() may keep is what the element below holds.
void PoLabelHintsElement::push(SoState* state) {
  inherited::push(state);
  m_addString = static_cast<const PoLabelHintsElement*>(getNextInStack())->m_addString;
}

void PoLabelHintsElement::set(SoState* state, SoNode* node, PoLabelHints::LabelPath labelPath,
                              PoLabelHints::Justification justification, const char* addString, int isStringKept,
                              int isLabelLineVisible) {
  auto* element = PiElement::toSet<PoLabelHintsElement>(state, node);
  if (!element) return;
  element->m_labelPath = labelPath;
  element->m_justification = justification;
  if (!isStringKept) element->m_addString = addString ? addString : "";
  element->m_isLabelLineVisible = isLabelLineVisible;
}

void PoLabelHintsElement::set(SoState* state, SoNode* node, PoLabelHints::LabelPath labelPath,
                              PoLabelHints::Justification justification, const SbString& addString, int isStringKept,
                              int isLabelLineVisible) {
  set(state, node, labelPath, justification, addString.getString(), isStringKept, isLabelLineVisible);
}

void PoLabelHintsElement::get(SoState* state, PoLabelHints::LabelPath& labelPath,
                              PoLabelHints::Justification& justification, SbString& addString,
                              int& isLabelLineVisible) {
  const auto* element = PiElement::toGet<PoLabelHintsElement>(state);
  labelPath = element ? element->m_labelPath : PoLabelHints::PATH_DEPEND;
  justification = element ? element->m_justification : PoLabelHints::DEPEND;
  addString = element ? element->m_addString : SbString();
  isLabelLineVisible = element ? element->m_isLabelLineVisible : 0;
}

SbBool PoLabelHintsElement::matches(const SoElement* element) const {
  return inherited::matches(element) && m_addString == static_cast<const PoLabelHintsElement*>(element)->m_addString;
}

SoElement* PoLabelHintsElement::copyMatchInfo() const {
  auto* copy = static_cast<PoLabelHintsElement*>(inherited::copyMatchInfo());
  copy->m_addString = m_addString;
  return copy;
}
