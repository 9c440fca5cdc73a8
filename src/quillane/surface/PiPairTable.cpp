#include "quillane/surface/PiPairTable.h"

#include <algorithm>
#include <bit>

namespace {

constexpr std::size_t kFirstSlots = std::size_t{1} << 17;

}  // namespace

void PiPairTable::clear() {
  if (!m_next.empty()) m_slots.fill(m_slots.size(), -1);
  m_points.clear();
  m_next.clear();
}

void PiPairTable::link() {
  std::size_t numSlots = std::max(m_slots.size(), kFirstSlots);
  if (m_points.size() >= numSlots) numSlots = std::bit_ceil(4 * m_points.size());
  m_slots.fill(numSlots, -1);
  m_next.reset(m_points.size());
  for (std::size_t point = 0; point < m_points.size(); ++point) {
    int& slot = m_slots[slotOf(m_points[point].a, m_points[point].b)];
    m_next[point] = slot;
    slot = static_cast<int>(point);
  }
}
