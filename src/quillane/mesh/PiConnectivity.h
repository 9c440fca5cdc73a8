#ifndef ORMELLE_PICONNECTIVITY_H
#define ORMELLE_PICONNECTIVITY_H

#include <Ormelle/PbMeshArray.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

struct PiCellTopology;

/// Which nodes each cell of an indexed mesh has: one array of nodes, cell after cell, and the number of nodes of each
/// cell, which is one for all or an array of its own.
///
/// A cell is whole if it has as many nodes as a kind of cell, and all of them are nodes of the mesh. Algorithms work on
/// whole cells; the others only hold a place in the numbering.
class PiConnectivity {
 public:
  /// More nodes than any cell has: who announces them hasn't got them.
  static constexpr int kMaxCellSize = 1000;

  /// `dimension` (2 or 3) tells which numbers of nodes are kinds of cells. `cellSize` is the number of nodes of every
  /// cell, or 0 if each has its own.
  PiConnectivity(int dimension, int cellSize) : m_dimension(dimension), m_cellSize(cellSize) {}
  /// A copy owns its nodes if the source does, and else borrows the same.
  PiConnectivity(const PiConnectivity&) = default;
  PiConnectivity& operator=(const PiConnectivity&) = default;

  /// Replaces the cells. `sizes` holds the number of nodes of each cell; it may be null if they are all the same. No
  /// cells if an array is missing, or there are cells of another size than the one that all must have.
  void set(int numNodes, int numCells, const int* nodes, const int* sizes, int copies);

  int dimension() const { return m_dimension; }
  int cellSize() const { return m_cellSize; }
  int numNodes() const { return m_numNodes; }
  int numCells() const { return m_numCells; }
  /// Length of nodes().
  int numIndices() const { return m_nodes.getNum(); }
  const int* nodes() const { return m_nodes.get(); }
  /// Null if every cell has the same number of nodes.
  const int* sizes() const { return m_sizes.get(); }
  bool areAllWhole() const { return m_areAllWhole; }

  /// The nodes of a cell as they were given; none for an index outside the cells.
  std::span<const int> given(int cell) const {
    return static_cast<unsigned>(cell) < static_cast<unsigned>(m_numCells) ? nodesOf(cell) : std::span<const int>();
  }
  /// The nodes of a cell that is whole; none for others.
  std::span<const int> whole(int cell) const {
    const std::span<const int> nodes = given(cell);
    return m_areAllWhole || isWhole(nodes) ? nodes : std::span<const int>();
  }
  /// Calls `use(cell, nodes)` for every whole cell in order.
  template <class Use>
  void forEachWhole(Use&& use) const {
    for (int cell = 0; cell < m_numCells; ++cell) {
      const std::span<const int> nodes = nodesOf(cell);
      if (m_areAllWhole || isWhole(nodes)) use(cell, nodes);
    }
  }
  /// The kind of cell that has this number of nodes, or null.
  const PiCellTopology* topologyOf(std::size_t size) const;

 private:
  std::span<const int> nodesOf(int cell) const {
    if (m_cellSize > 0)
      return {m_nodes.get() + static_cast<std::size_t>(cell) * static_cast<std::size_t>(m_cellSize),
              static_cast<std::size_t>(m_cellSize)};
    const int first = m_first[static_cast<std::size_t>(cell)];
    return {m_nodes.get() + first, static_cast<std::size_t>(m_first[static_cast<std::size_t>(cell) + 1] - first)};
  }
  bool isWhole(std::span<const int> nodes) const;
  void setSizes(int numCells, const int* sizes, int copies);

  int m_dimension, m_cellSize;
  int m_numNodes = 0;
  int m_numCells = 0;
  bool m_areAllWhole = true;
  PbMeshArray<int> m_nodes;
  PbMeshArray<int> m_sizes;
  std::vector<int> m_first;  // place of the first node of each cell, and behind the last; unused with one size for all
};

#endif
