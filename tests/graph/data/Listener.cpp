#include "Listener.h"

#include <gtest/gtest.h>

PO_KIT_SOURCE(Listener)

Listener::Listener() {
  PO_KIT_CONSTRUCTOR(Listener);
  PO_KIT_CONSTRUCTED(Listener);
}

void Listener::basicObjectChange(PbBase* object) {
  changes.push_back(object->getChangeType());
  if (react) react(object);
}

namespace {
class Registration : public ::testing::Environment {
  void SetUp() override {
    PoBase::init();
    Listener::initClass();
  }
};
const auto* const registration = ::testing::AddGlobalTestEnvironment(new Registration);
}  // namespace
