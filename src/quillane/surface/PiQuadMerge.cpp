#include "quillane/surface/PiQuadMerge.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr std::size_t kFirstQuadSlots = 128;

}  // namespace

void PiQuadMerge::clear() {
  m_quadrangles.clear();
  m_next.clear();
  m_numShared = 0;
  if (m_slots.size() > 0) m_slots.fill(m_slots.size(), -1);
}

void PiQuadMerge::add(const std::array<int, 4>& corners, int cell) {
  if (m_quadrangles.size() >= m_slots.size()) growSlots();
  std::array<int, 4> turned = corners;
  std::rotate(turned.begin(), std::min_element(turned.begin(), turned.end()), turned.end());
  int& slot = m_slots[slotOf(turned)];
  for (int i = slot; i >= 0; i = m_next[static_cast<std::size_t>(i)]) {
    Quadrangle& found = m_quadrangles[static_cast<std::size_t>(i)];
    if (found.corners != turned) continue;
    found.cell = cell;
    if (++found.count == 2) ++m_numShared;
    return;
  }
  m_next.push_back(slot);
  slot = static_cast<int>(m_quadrangles.size());
  m_quadrangles.push_back({turned, 1, cell});
}

std::size_t PiQuadMerge::slotOf(const std::array<int, 4>& corners) const {
  std::size_t hash = 0;
  for (const int corner : corners) hash = hash * 31 + static_cast<std::uint32_t>(corner);
  return hash & (m_slots.size() - 1);
}

void PiQuadMerge::growSlots() {
  m_slots.fill(m_slots.size() == 0 ? kFirstQuadSlots : 4 * m_slots.size(), -1);
  m_next.reset(m_quadrangles.size());
  for (std::size_t i = 0; i < m_quadrangles.size(); ++i) {
    int& slot = m_slots[slotOf(m_quadrangles[i].corners)];
    m_next[i] = slot;
    slot = static_cast<int>(i);
  }
}
