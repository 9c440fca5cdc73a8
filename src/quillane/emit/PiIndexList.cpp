#include "quillane/emit/PiIndexList.h"

#include <algorithm>
#include <limits>

#include <Inventor/fields/SoMFInt32.h>

void PiIndexList::reserve(std::size_t capacity) {
  if (capacity <= m_capacity) return;
  std::unique_ptr<std::int32_t[]> larger(new std::int32_t[capacity]);
  std::copy(m_indices.get(), m_indices.get() + m_size, larger.get());
  m_indices = std::move(larger);
  m_capacity = capacity;
}

void PiIndexList::grow(std::size_t numMore) { reserve(std::max(2 * m_capacity, m_size + numMore + 64)); }

void PiIndexList::handTo(SoMFInt32& field) {
  if (m_size == 0 || m_size > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    field.setNum(0);
  } else {
    field.setValuesPointer(static_cast<int>(m_size), m_indices.release());
    field.enableDeleteValues();
    m_capacity = 0;
  }
  m_size = 0;
}
