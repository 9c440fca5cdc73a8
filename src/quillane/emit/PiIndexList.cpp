#include "quillane/emit/PiIndexList.h"

#include <algorithm>

#include <Inventor/fields/SoMFInt32.h>

void PiIndexList::reserve(int capacity) {
  if (capacity <= m_capacity) return;
  std::unique_ptr<std::int32_t[]> larger(new std::int32_t[static_cast<std::size_t>(capacity)]);
  std::copy(m_indices.get(), m_indices.get() + m_size, larger.get());
  m_indices = std::move(larger);
  m_capacity = capacity;
}

void PiIndexList::handTo(SoMFInt32& field) {
  if (m_size == 0) {
    field.setNum(0);
    return;
  }
  field.setValuesPointer(m_size, m_indices.release());
  field.enableDeleteValues();
  m_size = m_capacity = 0;
}
