#include <Ormelle/PoIsovaluesList.h>

#include <Inventor/actions/SoAction.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PoIsovaluesListElement.h>

#include "nodes/attribute/PiFieldWatch.h"

PO_NODE_SOURCE(PoIsovaluesList)

PoIsovaluesList::PoIsovaluesList() : m_list(std::make_unique<PbIsovaluesList>()) {
  PO_NODE_CONSTRUCTOR(PoIsovaluesList);
  PO_NODE_ADD_EMPTY_MFIELD(isovaluesList);
  PO_NODE_CONSTRUCTED(PoIsovaluesList);
  setField();
  isovaluesList.setDefault(TRUE);
  m_watch = std::make_unique<PiFieldWatch>(isovaluesList);
}

PoIsovaluesList::~PoIsovaluesList() = default;

void PoIsovaluesList::setRegularIsoList(float min, float max, int num) { setRegular(min, max, num); }
void PoIsovaluesList::setRegularIsoList(float min, float max) { setRegular(min, max); }
void PoIsovaluesList::setRegularIsoList(int num) { setRegular(num); }
void PoIsovaluesList::setRegularIsoList(int n, const float* values) { setRegular(n, values); }
void PoIsovaluesList::setRegularIsoList(int n, const float* values, int num) { setRegular(n, values, num); }
void PoIsovaluesList::setRegularIsoList(int num, float start, float step) { setRegular(num, start, step); }

// Made in the object itself: after the way through the field, rounding could make it an irregular list.
template <class... Arguments>
void PoIsovaluesList::setRegular(Arguments... arguments) {
  updateIsoList();
  m_list->setRegularIsoList(arguments...);
  setField();
  m_watch->take();
}

const float* PoIsovaluesList::getIsoList(int& num, float& min, float& max, float& step, int& isRegular) {
  updateIsoList();
  return m_list->getIsoList(num, min, max, step, isRegular);
}

void PoIsovaluesList::doAction(SoAction* action) {
  updateIsoList();
  PoIsovaluesListElement::set(action->getState(), this, m_list.get());
}

void PoIsovaluesList::updateIsoList() {
  if (m_watch->take()) m_list->setIrregularIsoList(isovaluesList.getNum(), isovaluesList.getValues(0));
}

void PoIsovaluesList::setField() {
  int num = 0, isRegular;
  float min, max, step;
  const float* values = m_list->getIsoList(num, min, max, step, isRegular);
  isovaluesList.setNum(num);
  if (values) isovaluesList.setValues(0, num, values);
}
