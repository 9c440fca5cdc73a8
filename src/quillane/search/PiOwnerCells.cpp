#include "quillane/search/PiOwnerCells.h"

#include <Ormelle/PbArrayOfInt.h>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/mesh/PiConnectivity.h"
#include "quillane/search/PiUniqueIndices.h"

PiOwnerCells::PiOwnerCells(const PiConnectivity& cells) : m_first(static_cast<std::size_t>(cells.numNodes()) + 1, 0) {
  const auto isNode = [num = static_cast<unsigned>(cells.numNodes())](int node) {
    return static_cast<unsigned>(node) < num;
  };
  const int* nodes = cells.nodes();
  for (int n = 0; n < cells.numIndices(); ++n)
    if (isNode(nodes[n])) ++m_first[static_cast<std::size_t>(nodes[n]) + 1];
  for (std::size_t node = 1; node < m_first.size(); ++node) m_first[node] += m_first[node - 1];

  m_cells.resize(static_cast<std::size_t>(m_first.back()));
  std::vector<int> end(m_first.begin(), m_first.end() - 1);
  bool areRepeated = false;
  for (int cell = 0; cell < cells.numCells(); ++cell)
    for (const int node : cells.given(cell)) {
      if (!isNode(node)) continue;
      int& place = end[static_cast<std::size_t>(node)];
      areRepeated = areRepeated || (place > m_first[static_cast<std::size_t>(node)] &&
                                    m_cells[static_cast<std::size_t>(place) - 1] == cell);
      m_cells[static_cast<std::size_t>(place++)] = cell;
    }
  if (areRepeated) dropRepetitions();
}

// A cell that names a node twice stands twice in its list, one behind the other.
void PiOwnerCells::dropRepetitions() {
  auto end = m_cells.begin();
  int begin = 0;
  for (std::size_t node = 0; node + 1 < m_first.size(); ++node) {
    const auto first = m_cells.begin() + begin, last = m_cells.begin() + m_first[node + 1];
    begin = m_first[node + 1];
    m_first[node] = static_cast<int>(end - m_cells.begin());
    end = std::unique_copy(first, last, end);
  }
  m_first.back() = static_cast<int>(end - m_cells.begin());
  m_cells.erase(end, m_cells.end());
}

void findFacetNeighbours(const PiConnectivity& cells, const PiOwnerCells& owners, int cell, PbArrayOfInt& neighbours) {
  neighbours.empty();
  const std::span<const int> nodes = cells.whole(cell);
  const PiCellTopology* topology = cells.topologyOf(nodes.size());
  if (!topology) return;
  PiUniqueIndices result(neighbours);
  const auto addOwners = [&](std::span<const int> corners) {
    int facet[4];
    for (std::size_t n = 0; n < corners.size(); ++n) facet[n] = nodes[static_cast<std::size_t>(corners[n])];
    owners.forEachOfAll({facet, corners.size()}, [&](int owner) {
      if (owner != cell) result.add(owner);
    });
  };
  if (topology->dimension == 2)
    for (const auto& edge : topology->edges) addOwners(edge);
  else
    for (const PiFacet& facet : topology->facets) addOwners(facet.corners());
}
