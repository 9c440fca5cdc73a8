#ifndef ORMELLE_PIEDGETABLE_H
#define ORMELLE_PIEDGETABLE_H

#include <cstddef>
#include <cstdint>
#include <vector>

/// Finds what was stored for the edge between two nodes, whichever way round they come: an open hash table that grows,
/// and that is emptied without being touched.
///
/// What is stored serves two cells, those on both sides of the edge. On a surface that branches, further cells on the
/// edge start afresh in pairs.
class PiEdgeTable {
 public:
  void clear() {
    m_size = 0;
    if (++m_generation > kLastGeneration) {
      m_slots.clear();
      m_generation = 1;
    }
  }
  /// The place of the edge between two different nodes, for one more cell: it holds -1 the first time. Valid until the
  /// next call.
  int& use(int node1, int node2);

  std::size_t memorySize() const { return m_slots.capacity() * sizeof(Slot); }

 private:
  struct Slot {
    std::uint64_t nodes = 0;
    int stored = -1;
    std::uint32_t state = 0;  // generation * 2, and 1 if one cell only has used it
  };
  static constexpr std::uint32_t kLastGeneration = 0x7FFFFFFF;

  Slot& find(std::uint64_t nodes);
  void grow();

  std::vector<Slot> m_slots;
  std::size_t m_size = 0;
  int m_shift = 64;  // leaves the bits of a hash that number a slot
  std::uint32_t m_generation = 1;
};

#endif
