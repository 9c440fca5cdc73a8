#ifndef ORMELLE_PIPAIRTABLE_H
#define ORMELLE_PIPAIRTABLE_H

#include <cstddef>
#include <cstdint>

#include "quillane/surface/PiGrowBuffer.h"

/// A point of a surface inside a volume: on the edge from node `a` to node `b`, a <= b, at the fraction `t` of the way.
/// The point of a pair (a, a) is node a itself.
struct PiSurfacePoint {
  int a, b;
  float t;
};

/// The points of a surface, each once: the same pair of nodes gets the same index, whichever way round it comes.
///
/// Memory is kept from one surface to the next. The table of slots begins with 2^17 of them, four bytes each, and grows
/// with the number of points; another four bytes a point link the points of one slot.
class PiPairTable {
 public:
  /// Forgets all points.
  void clear();

  /// Gives the index of the pair. Returns 1 if the pair is new, else 0. `t` of a new point is 0.
  int add(int a, int b, int& index) {
    if (m_points.size() >= m_slots.size() || m_next.size() != m_points.size()) link();
    if (a > b) {
      const int other = a;
      a = b;
      b = other;
    }
    const std::size_t slot = slotOf(a, b);
    for (int point = m_slots[slot]; point >= 0; point = m_next[static_cast<std::size_t>(point)]) {
      const PiSurfacePoint& found = m_points[static_cast<std::size_t>(point)];
      if (found.a == a && found.b == b) {
        index = point;
        return 0;
      }
    }
    index = static_cast<int>(m_points.size());
    m_points.push_back({a, b, 0});
    m_next.push_back(m_slots[slot]);
    m_slots[slot] = index;
    return 1;
  }

  std::size_t size() const { return m_points.size(); }
  /// The points by index. Who knows by itself which points there are may size and fill the array after clear().
  PiGrowBuffer<PiSurfacePoint>& points() { return m_points; }
  const PiGrowBuffer<PiSurfacePoint>& points() const { return m_points; }

  /// Bytes of the slots and links.
  std::size_t tableMemorySize() const { return (m_slots.capacity() + m_next.capacity()) * sizeof(int); }
  /// Bytes of the points.
  std::size_t pointMemorySize() const { return m_points.capacity() * sizeof(PiSurfacePoint); }

 private:
  // Neighbouring edges get neighbouring slots, so that a walk over a mesh stays in the cache. But runs of them are
  // strewn by the golden ratio: across a grid nodes differ by multiples of its sizes, which may be powers of two.
  std::size_t slotOf(int a, int b) const {
    const std::uint64_t key = 7 * static_cast<std::uint64_t>(static_cast<std::uint32_t>(b)) +
                              3 * static_cast<std::uint64_t>(static_cast<std::uint32_t>(a));
    return static_cast<std::size_t>(key + (key >> 8) * 0x9E3779B1ULL) & (m_slots.size() - 1);
  }
  void link();

  PiGrowBuffer<int> m_slots;  // first point of each slot, or -1
  PiGrowBuffer<int> m_next;   // the next point in the same slot, or -1
  PiGrowBuffer<PiSurfacePoint> m_points;
};

#endif
