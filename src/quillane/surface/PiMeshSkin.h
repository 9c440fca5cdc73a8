#ifndef ORMELLE_PIMESHSKIN_H
#define ORMELLE_PIMESHSKIN_H

#include <cstddef>
#include <span>
#include <vector>

/// The skin of a volume mesh: the facets that an odd number of the cells chosen has, which in a conforming mesh are
/// those with a chosen cell on one side only. See PbMesh3D::getSkinTopology().
///
/// A facet has the nodes that its cell gives it, in the order of PbCell::getNodesIndexOfFacet(): three or four indices
/// of the mesh. The order of the facets is the same for the same mesh and filter.
class PiMeshSkin {
 public:
  int getNumFacets() const { return static_cast<int>(m_cells.size()); }
  /// The chosen cell that has the facet.
  int getCell(int facet) const { return m_cells[static_cast<std::size_t>(facet)]; }
  std::span<const int> getNodes(int facet) const {
    const int* nodes = m_nodes.data() + kStride * static_cast<std::size_t>(facet);
    return {nodes, nodes[3] == kNoNode ? 3U : 4U};
  }
  std::size_t getMemorySize() const { return (m_nodes.capacity() + m_cells.capacity()) * sizeof(int); }

  /// @name For the builder
  /// @{
  /// The fourth node of a triangle.
  static constexpr int kNoNode = -1;

  void resize(std::size_t numFacets) {
    m_nodes.resize(kStride * numFacets);
    m_cells.resize(numFacets);
  }
  void set(std::size_t facet, int cell, const int (&nodes)[4]) {
    m_cells[facet] = cell;
    for (std::size_t n = 0; n < kStride; ++n) m_nodes[kStride * facet + n] = nodes[n];
  }
  void add(int cell, const int (&nodes)[4]) {
    m_cells.push_back(cell);
    m_nodes.insert(m_nodes.end(), nodes, nodes + kStride);
  }
  /// @}

 private:
  static constexpr std::size_t kStride = 4;

  std::vector<int> m_nodes;  // four places a facet
  std::vector<int> m_cells;
};

#endif
