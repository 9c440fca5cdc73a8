#ifndef ORMELLE_PIOWNERCELLS_H
#define ORMELLE_PIOWNERCELLS_H

#include <algorithm>
#include <span>
#include <vector>

class PbArrayOfInt;
class PiConnectivity;

/// The cells round each node of an indexed mesh, in one array with a place for each node.
class PiOwnerCells {
 public:
  /// Lists every cell at every node of the mesh that it names. In time in proportion to nodes and cells.
  explicit PiOwnerCells(const PiConnectivity& cells);

  /// The cells that name the node, each once, by rising index. None for a node outside the mesh.
  std::span<const int> of(int node) const {
    if (node < 0 || static_cast<std::size_t>(node) + 1 >= m_first.size()) return {};
    const int first = m_first[static_cast<std::size_t>(node)], end = m_first[static_cast<std::size_t>(node) + 1];
    return {m_cells.data() + first, static_cast<std::size_t>(end - first)};
  }
  /// Calls `use(cell)` for the cells that name all of the nodes, by rising index. It is the shortest list that is gone
  /// through, so that a node with very many cells doesn't make it slow.
  template <class Use>
  void forEachOfAll(std::span<const int> nodes, Use&& use) const;

 private:
  void dropRepetitions();

  std::vector<int> m_first;  // place in m_cells for each node, and behind the last
  std::vector<int> m_cells;
};

template <class Use>
void PiOwnerCells::forEachOfAll(std::span<const int> nodes, Use&& use) const {
  if (nodes.empty()) return;
  std::span<const int> shortest = of(nodes[0]);
  for (const int node : nodes)
    if (of(node).size() < shortest.size()) shortest = of(node);
  for (const int cell : shortest) {
    const bool isOfAll = std::all_of(nodes.begin(), nodes.end(), [&](int node) {
      const std::span<const int> others = of(node);
      return others.data() == shortest.data() || std::binary_search(others.begin(), others.end(), cell);
    });
    if (isOfAll) use(cell);
  }
}

/// Fills in the other cells that share a facet with a whole cell, each once, facet by facet: an edge of a surface cell,
/// a side of a solid.
void findFacetNeighbours(const PiConnectivity& cells, const PiOwnerCells& owners, int cell, PbArrayOfInt& neighbours);

#endif
