#include "quillane/surface/PiIndexedLevelSurf.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "graph/frame/PiParallel.h"
#include "quillane/marching/PiFlatCases.h"
#include "quillane/surface/PiNodeSides.h"

namespace {

constexpr int kCellsInBlock = 1 << 16;
constexpr std::size_t kNodesInBlock = 1 << 16;
/// More than all nodes of a cell: a cell with such a node never seems cut.
constexpr std::uint8_t kUnusable = 16;

unsigned kindOf(std::size_t numNodes) {
  return static_cast<unsigned>(numNodes == 4   ? PiSolidKind::TETRAHEDRON
                               : numNodes == 5 ? PiSolidKind::PYRAMID
                               : numNodes == 6 ? PiSolidKind::WEDGE
                                               : PiSolidKind::HEXAHEDRON);
}

/// The tables by the code of a cut cell.
std::array<const PiFlatCases*, 8> tablesByCode(bool asStrips) {
  std::array<const PiFlatCases*, 8> tables;
  for (unsigned t = 0; t < tables.size(); ++t)
    tables[t] = &PiFlatCases::of(static_cast<PiSolidKind>(t / 2), asStrips, t % 2 != 0);
  return tables;
}

}  // namespace

int PiIndexedLevelSurf::numBlocks() const { return (m_cells->numCells() + kCellsInBlock - 1) / kCellsInBlock; }

void PiIndexedLevelSurf::make(const PiConnectivity& cells, const PiLevelSurfInput& input,
                              const std::function<bool(std::span<const int>)>& isMirrored, PiLevelSurfOutput& output) {
  m_cells = &cells;
  m_input = &input;
  m_isMirrored = &isMirrored;
  m_output = &output;
  output.iso = input.iso;
  findSides();
  listCutCells();
  writeFacets();
}

void PiIndexedLevelSurf::findSides() {
  const auto numNodes = static_cast<std::size_t>(m_cells->numNodes());
  m_sides.reset(numNodes);
  const auto compare = [&] {
    std::vector<PiSidesSeen> seen(numNodes / kNodesInBlock + 1);
    PiParallel::forBlocks(numNodes, kNodesInBlock, [&](std::size_t begin, std::size_t end) {
      seen[begin / kNodesInBlock] =
          ::findSides(m_input->values + begin, end - begin, m_output->iso, m_input->isToMax, m_sides.data() + begin);
    });
    PiSidesSeen all;
    for (const PiSidesSeen& part : seen) all.add(part);
    return all;
  };
  PiSidesSeen seen = compare();
  if (seen.isAnyEqual && m_input->moveOff) {
    m_input->moveOff(m_output->iso);
    if (m_output->iso != m_input->iso) compare();
  }
  if (!seen.isAnyNaN && !m_input->isNodeFinite) return;
  for (std::size_t node = 0; node < numNodes; ++node)
    if (std::isnan(m_input->values[node]) || (m_input->isNodeFinite && !m_input->isNodeFinite(static_cast<int>(node))))
      m_sides[node] = kUnusable;
}

void PiIndexedLevelSurf::listCutCells() {
  m_cutCells.resize(std::max(m_cutCells.size(), static_cast<std::size_t>(numBlocks())));
  PiParallel::run(numBlocks(), [this](int block) {
    const int size = m_cells->areAllWhole() ? m_cells->cellSize() : 0;
    if (size == 8)
      listCutCells<8>(block);
    else if (size == 4)
      listCutCells<4>(block);
    else
      listCutCells<0>(block);
  });
  if (!m_input->accepts) return;
  for (int block = 0; block < numBlocks(); ++block) {
    PiGrowBuffer<CutCell>& cut = m_cutCells[static_cast<std::size_t>(block)];
    CutCell* end = std::remove_if(cut.begin(), cut.end(), [&](const CutCell& c) { return !m_input->accepts(c.cell); });
    cut.resize(static_cast<std::size_t>(end - cut.begin()));
  }
}

/// `kCellSize` is the number of nodes of every cell, all of them whole; or 0 if they may differ.
template <int kCellSize>
void PiIndexedLevelSurf::listCutCells(int block) {
  PiGrowBuffer<CutCell>& cut = m_cutCells[static_cast<std::size_t>(block)];
  cut.clear();
  const std::uint8_t* sides = m_sides.data();
  const auto look = [&](int cell, std::span<const int> nodes) {
    const unsigned size = kCellSize > 0 ? kCellSize : static_cast<unsigned>(nodes.size());
    unsigned sum = 0;
    for (unsigned n = 0; n < size; ++n) sum += sides[nodes[n]];
    if (sum - 1 >= size - 1) return;
    unsigned id = 0;
    for (unsigned n = 0; n < size; ++n) id |= static_cast<unsigned>(sides[nodes[n]]) << n;
    const unsigned isMirrored = (*m_isMirrored)(nodes) ? 1 : 0;
    cut.push_back({cell, id | (isMirrored | 2 * kindOf(size)) << 8});
  };
  const int end = std::min(m_cells->numCells(), (block + 1) * kCellsInBlock);
  if (m_input->blocks) {
    m_input->blocks->forEachCellNear(m_input->plane, block * kCellsInBlock, end, [&](int cell) {
      const std::span<const int> nodes = m_cells->whole(cell);
      if (!nodes.empty()) look(cell, nodes);
    });
    return;
  }
  if constexpr (kCellSize > 0) {
    const int* nodes = m_cells->nodes() + static_cast<std::size_t>(block) * kCellsInBlock * kCellSize;
    for (int cell = block * kCellsInBlock; cell < end; ++cell, nodes += kCellSize)
      look(cell, std::span<const int>(nodes, kCellSize));
  } else {
    for (int cell = block * kCellsInBlock; cell < end; ++cell) {
      const std::span<const int> nodes = m_cells->whole(cell);
      if (!nodes.empty()) look(cell, nodes);
    }
  }
}

void PiIndexedLevelSurf::writeFacets() {
  const std::array<const PiFlatCases*, 8> tables = tablesByCode(m_input->asStrips);
  std::size_t numIndices = 0, numFacets = 0, numQuads = 0;
  const auto blocks = std::span(m_cutCells.data(), static_cast<std::size_t>(numBlocks()));
  for (const PiGrowBuffer<CutCell>& block : blocks)
    for (const CutCell& cut : block) {
      const PiFlatCase& flat = (*tables[cut.code >> 8])[cut.code & 255];
      numIndices += flat.numEntries;
      numFacets += flat.numFacets;
      numQuads += flat.numQuads;
    }
  const std::size_t most = numIndices + numQuads / 2 * 5;
  int* indices = most < std::numeric_limits<int>::max() ? m_output->indices(most) : nullptr;
  m_output->cells.reset(numFacets + numQuads / 2);
  m_output->cells.resize(indices ? numFacets : 0);
  if (!indices) {
    m_output->indices(0);
    return;
  }

  int* out = indices;
  int* outCells = m_output->cells.data();
  std::array<int, 16> points;
  points[PiFlatCase::kEnd] = -1;
  for (const PiGrowBuffer<CutCell>& block : blocks)
    for (const CutCell& cut : block) {
      const PiFlatCases& table = *tables[cut.code >> 8];
      const unsigned id = cut.code & 255;
      const PiFlatCase& flat = table[id];
      const int* nodes = m_cells->given(cut.cell).data();
      for (unsigned e = 0; e < flat.numEdges; ++e) {
        const unsigned edge = flat.edges[e];
        const auto& [a, b] = table.ends(edge);
        m_output->points.add(nodes[a], nodes[b], points[edge]);
      }
      for (unsigned entry = 0; entry < flat.numEntries; ++entry) *out++ = points[flat.entries[entry]];
      for (unsigned facet = 0; facet < flat.numFacets; ++facet) *outCells++ = cut.cell;
      const std::uint8_t* edges = table.quads(id);
      for (unsigned quad = 0; quad < flat.numQuads; ++quad, edges += 4)
        m_output->quadrangles.add({points[edges[0]], points[edges[1]], points[edges[2]], points[edges[3]]}, cut.cell);
    }
  finishLevelSurf(m_input->asStrips, indices, numIndices, *m_output);
}

std::size_t PiIndexedLevelSurf::memorySize() const {
  std::size_t size = m_sides.capacity();
  for (const PiGrowBuffer<CutCell>& block : m_cutCells) size += block.capacity() * sizeof(CutCell);
  return size;
}
