#include "graph/frame/PiConnectedSlot.h"

#include <algorithm>
#include <cassert>

#include <Ormelle/PbBase.h>

PiConnectedSlots::~PiConnectedSlots() { assert(m_slots.empty() && "slots must not outlive their list"); }

bool PiConnectedSlots::holds(const PbBase* object) const {
  return object && std::any_of(m_slots.begin(), m_slots.end(),
                               [object](const PiConnectedSlotBase* slot) { return slot->m_object == object; });
}

void PiConnectedSlots::forget(const PbBase* object) {
  for (PiConnectedSlotBase* slot : m_slots)
    if (slot->m_object == object) slot->m_object = nullptr;
}

PiConnectedSlotBase::PiConnectedSlotBase(PiConnectedSlots& slots) : m_slots(slots) { slots.m_slots.push_back(this); }

PiConnectedSlotBase::~PiConnectedSlotBase() {
  setObject(nullptr);
  std::erase(m_slots.m_slots, this);
}

void PiConnectedSlotBase::setObject(PbBase* object) {
  if (object == m_object) return;
  PbBase* old = m_object;
  const bool isConnected = m_slots.holds(object);
  m_object = object;
  if (object && !isConnected) object->addConnection(m_slots.m_kit);
  if (old && !m_slots.holds(old)) old->removeConnection(m_slots.m_kit);
}
