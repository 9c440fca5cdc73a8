#ifndef ORMELLE_PIFACETHASH_H
#define ORMELLE_PIFACETHASH_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>

#include "quillane/cell/PiCellTopology.h"

/// A number for the set of nodes of a facet, the same in whatever order a cell names them. Facets that differ have
/// different numbers but for one pair in 2^64.
///
/// Each node is mixed for itself, so that the facets of one cell share that work. The finish keeps sums of neighbouring
/// nodes from cancelling where several numbers are joined by exclusive or. The multipliers are odd numbers with as many
/// bits set as not.
class PiFacetHash {
 public:
  using Word = std::uint64_t;

  static constexpr Word mix(int node) {
    const Word word = (static_cast<std::uint32_t>(node) + 0x9E3779B97F4A7C15U) * 0xD6E8FEB86659FD93U;
    return (word ^ (word >> 32)) * 0xA0761D6478BD642FU;
  }
  static constexpr Word finish(Word sum) { return (sum ^ (sum >> 32)) * 0xE7037ED1A0B428DBU; }
};

/// A kind of cell as a type: its facets are known where the code is compiled.
template <int kNumNodes, const auto& kFacetNodes>
struct PiCellKind {
  static constexpr int kNum = kNumNodes;
  static constexpr const auto& kFacets = kFacetNodes;
};
using PiTetrahedronKind = PiCellKind<4, PiTopology::kTetrahedronFacets>;
using PiPyramidKind = PiCellKind<5, PiTopology::kPyramidFacets>;
using PiWedgeKind = PiCellKind<6, PiTopology::kWedgeFacets>;
using PiHexahedronKind = PiCellKind<8, PiTopology::kHexahedronFacets>;

/// The facets of one cell with what tells them apart.
template <class Kind>
class PiHashedCell {
 public:
  explicit PiHashedCell(const int* nodes) : m_nodes(nodes) {
    for (int n = 0; n < Kind::kNum; ++n) m_mixed[n] = PiFacetHash::mix(nodes[n]);
  }

  /// Calls `use(smallest node, hash, number of the facet)` for each facet.
  template <class Use>
  void forEachFacet(Use&& use) const {
    each(use, Indices());
  }
  /// Calls `use(smallest node)` for each facet of the cell.
  template <class Use>
  static void forEachSmallest(const int* nodes, Use&& use) {
    eachSmallest(nodes, use, Indices());
  }

 private:
  using Indices = std::make_index_sequence<std::size(Kind::kFacets)>;

  template <class Use, std::size_t... kFacet>
  void each(Use& use, std::index_sequence<kFacet...>) const {
    (use(smallestNode<kFacet>(m_nodes), hash<kFacet>(), static_cast<std::uint32_t>(kFacet)), ...);
  }
  template <class Use, std::size_t... kFacet>
  static void eachSmallest(const int* nodes, Use& use, std::index_sequence<kFacet...>) {
    (use(smallestNode<kFacet>(nodes)), ...);
  }
  template <std::size_t kFacet>
  static std::uint32_t smallestNode(const int* nodes) {
    constexpr PiFacet kF = Kind::kFacets[kFacet];
    const auto node = [=](int local) { return static_cast<std::uint32_t>(nodes[kF.nodes[local]]); };
    const std::uint32_t three = std::min(std::min(node(0), node(1)), node(2));
    if constexpr (kF.numNodes == 4)
      return std::min(three, node(3));
    else
      return three;
  }
  template <std::size_t kFacet>
  PiFacetHash::Word hash() const {
    constexpr PiFacet kF = Kind::kFacets[kFacet];
    const PiFacetHash::Word three = m_mixed[kF.nodes[0]] + m_mixed[kF.nodes[1]] + m_mixed[kF.nodes[2]];
    if constexpr (kF.numNodes == 4)
      return PiFacetHash::finish(three + m_mixed[kF.nodes[3]]);
    else
      return PiFacetHash::finish(three);
  }

  const int* m_nodes;
  PiFacetHash::Word m_mixed[Kind::kNum];
};

#endif
