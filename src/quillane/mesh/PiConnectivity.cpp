#include "quillane/mesh/PiConnectivity.h"

#include <algorithm>
#include <limits>

#include "quillane/cell/PiCellTopology.h"

namespace {

constexpr int kMaxIndices = std::numeric_limits<int>::max();

}  // namespace

const PiCellTopology* PiConnectivity::topologyOf(std::size_t size) const {
  if (m_dimension == 2) return size == 3 ? &PiTopology::kTriangle : size == 4 ? &PiTopology::kQuadrangle : nullptr;
  switch (size) {
    case 4:
      return &PiTopology::kTetrahedron;
    case 5:
      return &PiTopology::kPyramid;
    case 6:
      return &PiTopology::kWedge;
    case 8:
      return &PiTopology::kHexahedron;
    default:
      return nullptr;
  }
}

bool PiConnectivity::isWhole(std::span<const int> nodes) const {
  return topologyOf(nodes.size()) && std::all_of(nodes.begin(), nodes.end(), [this](int node) {
           return static_cast<unsigned>(node) < static_cast<unsigned>(m_numNodes);
         });
}

void PiConnectivity::set(int numNodes, int numCells, const int* nodes, const int* sizes, int copies) {
  const bool areSizesOne = m_cellSize > 0;
  const auto isOther = [this](int size) { return size != m_cellSize; };
  if (!nodes || numCells < 1 || (!areSizesOne && !sizes) ||
      (areSizesOne &&
       (numCells > kMaxIndices / m_cellSize || (sizes && std::any_of(sizes, sizes + numCells, isOther)))))
    numCells = 0;

  m_numNodes = numNodes;
  m_numCells = numCells;
  if (areSizesOne)
    m_nodes.set(nodes, numCells * m_cellSize, copies);
  else
    setSizes(numCells, sizes, copies), m_nodes.set(nodes, m_first.back(), copies);

  m_areAllWhole = false;  // until it is known
  bool areAllWhole = true;
  for (int cell = 0; areAllWhole && cell < m_numCells; ++cell) areAllWhole = isWhole(nodesOf(cell));
  m_areAllWhole = areAllWhole;
}

void PiConnectivity::setSizes(int numCells, const int* sizes, int copies) {
  m_first.assign(static_cast<std::size_t>(numCells) + 1, 0);
  int end = 0;
  for (int cell = 0; cell < numCells; ++cell) {
    const int size = sizes[cell];
    if (size < 0 || size > kMaxCellSize || size > kMaxIndices - end) {
      std::fill(m_first.begin() + cell + 1, m_first.end(), end);
      break;
    }
    end += size;
    m_first[static_cast<std::size_t>(cell) + 1] = end;
  }
  m_sizes.set(sizes, numCells, copies);
}
