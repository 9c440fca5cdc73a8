#ifndef ORMELLE_PIFACETSET_H
#define ORMELLE_PIFACETSET_H

#include <cstddef>
#include <cstdint>
#include <vector>

/// A set of facets in which adding one that is there takes it out: what is left of the facets of many cells are those
/// that an odd number of cells has.
///
/// The facets hang in lists, one a bucket; the caller chooses the bucket, by the hash or by more than it. Memory of
/// facets that were taken out is used again, and all of it is kept for the next time.
class PiFacetSet {
 public:
  /// Nodes as the cell gives them; the fourth of a triangle is -1.
  struct Facet {
    int next;
    int cell;
    std::uint32_t hash;
    int nodes[4];
  };

  void reset(std::size_t numBuckets) {
    m_heads.assign(numBuckets, kNone);
    m_facets.clear();
    m_free = kNone;
    m_num = 0;
  }
  std::size_t numBuckets() const { return m_heads.size(); }
  std::size_t size() const { return m_num; }
  std::size_t memorySize() const { return m_heads.capacity() * sizeof(int) + m_facets.capacity() * sizeof(Facet); }

  /// `hash` is that of the nodes as a set.
  void toggle(std::size_t bucket, std::uint32_t hash, int cell, int n0, int n1, int n2, int n3) {
    int* link = &m_heads[bucket];
    while (*link != kNone) {
      Facet& facet = m_facets[static_cast<std::size_t>(*link)];
      if (facet.hash == hash && isSameSet(facet.nodes, {n0, n1, n2, n3})) {
        const int found = *link;
        *link = facet.next;
        facet.next = m_free;
        m_free = found;
        --m_num;
        return;
      }
      link = &facet.next;
    }
    const int place = takePlace();  // which may move the facets
    m_facets[static_cast<std::size_t>(place)] = {m_heads[bucket], cell, hash, {n0, n1, n2, n3}};
    m_heads[bucket] = place;
    ++m_num;
  }

  /// Bucket by bucket, in each the last one added first.
  template <class Use>
  void forEach(Use&& use) const {
    for (const int head : m_heads)
      for (int place = head; place != kNone; place = m_facets[static_cast<std::size_t>(place)].next)
        use(m_facets[static_cast<std::size_t>(place)]);
  }

 private:
  static constexpr int kNone = -1;

  struct Nodes {
    int node[4];
  };
  static void order(int& a, int& b) {
    const int smaller = a < b ? a : b;
    b = a < b ? b : a;
    a = smaller;
  }
  static void sort(int (&node)[4]) {
    order(node[0], node[1]);
    order(node[2], node[3]);
    order(node[0], node[2]);
    order(node[1], node[3]);
    order(node[1], node[2]);
  }
  static bool isSameSet(const int (&nodes)[4], Nodes other) {
    Nodes own = {{nodes[0], nodes[1], nodes[2], nodes[3]}};
    sort(own.node);
    sort(other.node);
    return own.node[0] == other.node[0] && own.node[1] == other.node[1] && own.node[2] == other.node[2] &&
           own.node[3] == other.node[3];
  }
  int takePlace() {
    if (m_free != kNone) {
      const int place = m_free;
      m_free = m_facets[static_cast<std::size_t>(place)].next;
      return place;
    }
    m_facets.emplace_back();
    return static_cast<int>(m_facets.size()) - 1;
  }

  std::vector<int> m_heads;
  std::vector<Facet> m_facets;
  int m_free = kNone;
  std::size_t m_num = 0;
};

#endif
