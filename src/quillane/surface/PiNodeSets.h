#ifndef ORMELLE_PINODESETS_H
#define ORMELLE_PINODESETS_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "quillane/surface/PiGrowBuffer.h"

/// A set of sets of up to four nodes, such as the corners of a facet, found whatever their order. It keeps its memory
/// when it is emptied.
class PiNodeSets {
 public:
  using Key = std::array<int, 4>;

  /// The nodes in rising order; -1 stands for those that there aren't.
  static Key keyOf(std::span<const int> nodes) {
    Key key = {-1, -1, -1, -1};
    std::copy(nodes.begin(), nodes.begin() + static_cast<std::ptrdiff_t>(std::min(nodes.size(), key.size())),
              key.begin());
    std::sort(key.begin(), key.end());
    return key;
  }

  void clear() {
    if (m_keys.size() > 0) m_slots.fill(m_slots.size(), -1);
    m_keys.clear();
    m_next.clear();
    m_counts.clear();
  }
  std::size_t size() const { return m_keys.size(); }

  /// The place of the key, which is added if it isn't there. Places count up from 0.
  std::size_t add(const Key& key) {
    if (m_keys.size() >= m_slots.size()) growSlots();
    int& slot = m_slots[slotOf(key)];
    for (int place = slot; place >= 0; place = m_next[static_cast<std::size_t>(place)])
      if (m_keys[static_cast<std::size_t>(place)] == key) return static_cast<std::size_t>(place);
    const std::size_t place = m_keys.size();
    m_keys.push_back(key);
    m_counts.push_back(0);
    m_next.push_back(slot);
    slot = static_cast<int>(place);
    return place;
  }
  const Key& key(std::size_t place) const { return m_keys[place]; }
  /// A number that the caller keeps with each key, 0 at first.
  int& count(std::size_t place) { return m_counts[place]; }

  std::size_t memorySize() const {
    return m_keys.capacity() * sizeof(Key) +
           (m_slots.capacity() + m_next.capacity() + m_counts.capacity()) * sizeof(int);
  }

 private:
  std::size_t slotOf(const Key& key) const {
    std::size_t hash = 0;
    for (const int node : key) hash = hash * 31 + static_cast<std::uint32_t>(node);
    return hash & (m_slots.size() - 1);
  }
  void growSlots() {
    m_slots.fill(m_slots.size() == 0 ? 256 : 4 * m_slots.size(), -1);
    for (std::size_t place = 0; place < m_keys.size(); ++place) {
      int& slot = m_slots[slotOf(m_keys[place])];
      m_next[place] = slot;
      slot = static_cast<int>(place);
    }
  }

  PiGrowBuffer<Key> m_keys;
  PiGrowBuffer<int> m_counts;
  PiGrowBuffer<int> m_next;
  PiGrowBuffer<int> m_slots;
};

#endif
