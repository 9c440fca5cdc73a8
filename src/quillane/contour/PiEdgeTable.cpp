#include "quillane/contour/PiEdgeTable.h"

#include <algorithm>
#include <bit>

int& PiEdgeTable::use(int node1, int node2) {
  if (2 * (m_size + 1) > m_slots.size()) grow();
  const auto low = static_cast<std::uint64_t>(std::min(node1, node2));
  const std::uint64_t nodes = static_cast<std::uint64_t>(std::max(node1, node2)) << 32 | low;
  Slot& slot = find(nodes);
  const bool isNew = slot.state / 2 != m_generation;
  if (isNew) ++m_size;
  if (isNew || slot.state % 2 == 0)
    slot = {nodes, -1, m_generation * 2 + 1};
  else
    slot.state = m_generation * 2;
  return slot.stored;
}

// The slot of the edge, or the empty one where it belongs.
PiEdgeTable::Slot& PiEdgeTable::find(std::uint64_t nodes) {
  // Multiplication by the golden ratio (Knuth, The Art of Computer Programming, volume 3, 6.4) spreads neighbours.
  std::uint64_t hash = nodes * 0x9E3779B97F4A7C15ULL;
  hash = (hash ^ hash >> 32) * 0x9E3779B97F4A7C15ULL;
  const std::size_t mask = m_slots.size() - 1;
  for (std::size_t s = hash >> m_shift;; s = (s + 1) & mask) {
    Slot& slot = m_slots[s];
    if (slot.state / 2 != m_generation || slot.nodes == nodes) return slot;
  }
}

void PiEdgeTable::grow() {
  std::vector<Slot> old(std::max<std::size_t>(1024, 2 * m_slots.size()));
  old.swap(m_slots);
  m_shift = 64 - std::countr_zero(m_slots.size());
  for (const Slot& slot : old)
    if (slot.state / 2 == m_generation) find(slot.nodes) = slot;
}
