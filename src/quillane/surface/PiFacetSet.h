#ifndef ORMELLE_PIFACETSET_H
#define ORMELLE_PIFACETSET_H

#include <cstddef>
#include <cstdint>
#include <vector>

/// A set of facets in which adding one that is there takes it out: what is left of the facets of many cells are those
/// that an odd number of cells has.
///
/// A facet is known by its place: eight times the number of its cell, plus its number in the cell. The facets hang in
/// lists, one a bucket, which the caller chooses. Memory of facets that were taken out is used again, and all of it is
/// kept for the next time.
class PiFacetSet {
 public:
  void reset(std::size_t numBuckets, std::size_t numCells) {
    m_heads.assign(numBuckets, kNone);
    m_entries.clear();
    m_free = kNone;
    m_facetsOf.assign(numCells, 0);
  }
  /// Which facets of a cell are in the set, a bit for each.
  std::uint8_t facetsOf(std::size_t cell) const { return m_facetsOf[cell]; }
  std::size_t memorySize() const {
    return m_heads.capacity() * sizeof(int) + m_entries.capacity() * sizeof(Entry) + m_facetsOf.capacity();
  }

  /// `hash` is that of the nodes as a set; of two facets for which it is the same `areSame(other place)` is asked.
  template <class AreSame>
  void toggle(std::size_t bucket, std::uint32_t hash, std::uint32_t place, const AreSame& areSame) {
    int* link = &m_heads[bucket];
    while (*link != kNone) {
      Entry& entry = m_entries[static_cast<std::size_t>(*link)];
      if (entry.hash == hash && areSame(entry.place)) {
        flip(entry.place);
        const int found = *link;
        *link = entry.next;
        entry.next = m_free;
        m_free = found;
        return;
      }
      link = &entry.next;
    }
    flip(place);
    int added = m_free;
    if (added == kNone) {
      added = static_cast<int>(m_entries.size());
      m_entries.emplace_back();
    } else {
      m_free = m_entries[static_cast<std::size_t>(added)].next;
    }
    m_entries[static_cast<std::size_t>(added)] = {m_heads[bucket], hash, place};
    m_heads[bucket] = added;
  }

 private:
  static constexpr int kNone = -1;

  struct Entry {
    int next;
    std::uint32_t hash, place;
  };

  void flip(std::uint32_t place) { m_facetsOf[place / 8] ^= static_cast<std::uint8_t>(1U << place % 8); }

  std::vector<int> m_heads;
  std::vector<Entry> m_entries;
  int m_free = kNone;
  std::vector<std::uint8_t> m_facetsOf;
};

#endif
