#include "graph/axis/PiGradStrings.h"

#include <cstring>

char** PiGradStrings::alloc(int n) {
  const auto wanted = static_cast<size_t>(n > 0 ? n : 0);
  if (m_slots.size() >= wanted) return m_slots.data();
  size_t capacity = 2 * (m_slots.empty() ? wanted : m_slots.size());
  if (capacity < wanted) capacity = wanted;
  m_block = std::make_unique<char[]>(capacity * SLOT_SIZE);
  m_slots.resize(capacity);
  for (size_t i = 0; i < capacity; ++i) m_slots[i] = m_block.get() + i * SLOT_SIZE;
  return m_slots.data();
}

void PiGradStrings::append(char* slot, const char* text) {
  if (!text) return;
  const size_t length = std::strlen(slot);
  size_t num = std::strlen(text);
  if (length + num > SLOT_SIZE - 1) {
    num = SLOT_SIZE - 1 - length;
    while (num > 0 && (text[num] & '\xC0') == '\x80') --num;
  }
  std::memcpy(slot + length, text, num);
  slot[length + num] = 0;
}
