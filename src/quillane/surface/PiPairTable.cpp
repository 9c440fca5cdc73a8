#include "quillane/surface/PiPairTable.h"

namespace {

constexpr std::size_t kFirstSlots = std::size_t{1} << 17;

}  // namespace

void PiPairTable::clear() {
  m_points.clear();
  m_next.clear();
  if (m_slots.size() > 0) m_slots.fill(m_slots.size(), -1);
}

void PiPairTable::growSlots() {
  m_slots.fill(m_slots.size() == 0 ? kFirstSlots : 4 * m_slots.size(), -1);
  m_next.reset(m_points.size());
  for (std::size_t point = 0; point < m_points.size(); ++point) {
    int& slot = m_slots[slotOf(m_points[point].a, m_points[point].b)];
    m_next[point] = slot;
    slot = static_cast<int>(point);
  }
}
