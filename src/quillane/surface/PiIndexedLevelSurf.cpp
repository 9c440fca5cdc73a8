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
constexpr int kMostGroups = 16;
constexpr std::uint8_t kSeveral = 255;
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
  countFacets();
  const std::size_t most = m_numIndices + m_numQuads / 2 * 5;
  m_indices = most < std::numeric_limits<int>::max() ? output.indices(most) : nullptr;
  if (!m_indices) m_numIndices = m_numFacets = 0;
  output.cells.reset(m_numFacets + m_numQuads / 2);
  output.cells.resize(m_numFacets);
  if (!m_indices) {
    output.indices(0);
    return;
  }
  if (PiParallel::numThreads() > 1 && numGroups() > 1)
    writeFacetsInGroups();
  else
    writeFacets();
  finishLevelSurf(input.asStrips, m_indices, m_numIndices, output);
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
  m_blocks.resize(std::max(m_blocks.size(), static_cast<std::size_t>(numBlocks())));
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
    PiGrowBuffer<CutCell>& cut = m_blocks[static_cast<std::size_t>(block)].cutCells;
    CutCell* end = std::remove_if(cut.begin(), cut.end(), [&](const CutCell& c) { return !m_input->accepts(c.cell); });
    cut.resize(static_cast<std::size_t>(end - cut.begin()));
  }
}

/// `kCellSize` is the number of nodes of every cell, all of them whole; or 0 if they may differ.
template <int kCellSize>
void PiIndexedLevelSurf::listCutCells(int block) {
  PiGrowBuffer<CutCell>& cut = m_blocks[static_cast<std::size_t>(block)].cutCells;
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

/// Counts what each block will write, and where it goes.
void PiIndexedLevelSurf::countFacets() {
  const std::array<const PiFlatCases*, 8> tables = tablesByCode(m_input->asStrips);
  PiParallel::run(numBlocks(), [&](int b) {
    Block& block = m_blocks[static_cast<std::size_t>(b)];
    block.numIndices = block.numFacets = block.numQuads = 0;
    for (const CutCell& cut : block.cutCells) {
      const PiFlatCase& flat = (*tables[cut.code >> 8])[cut.code & 255];
      block.numIndices += flat.numEntries;
      block.numFacets += flat.numFacets;
      block.numQuads += flat.numQuads;
    }
  });
  m_numIndices = m_numFacets = m_numQuads = 0;
  for (Block& block : std::span(m_blocks.data(), static_cast<std::size_t>(numBlocks()))) {
    block.firstIndex = m_numIndices;
    block.firstFacet = m_numFacets;
    m_numIndices += block.numIndices;
    m_numFacets += block.numFacets;
    m_numQuads += block.numQuads;
  }
}

/// Writes the facets of some blocks. `addPoint(a, b, point)` gives the point on an edge, and `propose(corners, cell)`
/// takes the optional quadrangles.
template <class AddPoint, class Propose>
void PiIndexedLevelSurf::writeBlocks(int firstBlock, int endBlock, AddPoint&& addPoint, Propose&& propose) const {
  const std::array<const PiFlatCases*, 8> tables = tablesByCode(m_input->asStrips);
  if (firstBlock == endBlock) return;
  int* out = m_indices + m_blocks[static_cast<std::size_t>(firstBlock)].firstIndex;
  int* outCells = m_output->cells.data() + m_blocks[static_cast<std::size_t>(firstBlock)].firstFacet;
  std::array<int, 16> points;
  points[PiFlatCase::kEnd] = -1;
  for (int b = firstBlock; b < endBlock; ++b)
    for (const CutCell& cut : m_blocks[static_cast<std::size_t>(b)].cutCells) {
      const PiFlatCases& table = *tables[cut.code >> 8];
      const unsigned id = cut.code & 255;
      const PiFlatCase& flat = table[id];
      const int* nodes = m_cells->given(cut.cell).data();
      for (unsigned e = 0; e < flat.numEdges; ++e) {
        const unsigned edge = flat.edges[e];
        const auto& [a, b2] = table.ends(edge);
        addPoint(nodes[a], nodes[b2], points[edge]);
      }
      for (unsigned entry = 0; entry < flat.numEntries; ++entry) *out++ = points[flat.entries[entry]];
      for (unsigned facet = 0; facet < flat.numFacets; ++facet) *outCells++ = cut.cell;
      const std::uint8_t* edges = table.quads(id);
      for (unsigned quad = 0; quad < flat.numQuads; ++quad, edges += 4)
        propose({points[edges[0]], points[edges[1]], points[edges[2]], points[edges[3]]}, cut.cell);
    }
}

void PiIndexedLevelSurf::writeFacets() {
  writeBlocks(
      0, numBlocks(), [this](int a, int b, int& point) { m_output->points.add(a, b, point); },
      [this](const std::array<int, 4>& corners, int cell) { m_output->quadrangles.add(corners, cell); });
}

// --- with several threads -------------------------------------------------------------------------------------------

int PiIndexedLevelSurf::numGroups() const { return std::min(numBlocks(), kMostGroups); }

void PiIndexedLevelSurf::writeFacetsInGroups() {
  const auto numNodes = static_cast<std::size_t>(m_cells->numNodes());
  if (m_users.size() != numNodes) m_users = std::vector<std::atomic<std::uint8_t>>(numNodes);
  PiParallel::forBlocks(numNodes, kNodesInBlock, [this](std::size_t begin, std::size_t end) {
    for (std::size_t node = begin; node < end; ++node) m_users[node].store(0, std::memory_order_relaxed);
  });
  m_groups.resize(static_cast<std::size_t>(kMostGroups));
  // Each group numbers its points by itself.
  PiParallel::run(numGroups(), [this](int g) {
    Group& group = m_groups[static_cast<std::size_t>(g)];
    group.points.clear();
    group.proposals.clear();
    const auto own = static_cast<std::uint8_t>(g + 1);
    const auto use = [this, own](int node) {
      std::atomic<std::uint8_t>& user = m_users[static_cast<std::size_t>(node)];
      std::uint8_t found = user.load(std::memory_order_relaxed);
      if (found == own || found == kSeveral) return;
      if (found == 0 && user.compare_exchange_strong(found, own, std::memory_order_relaxed)) return;
      user.store(kSeveral, std::memory_order_relaxed);
    };
    writeBlocks(
        firstBlockOf(g), firstBlockOf(g + 1),
        [&group, &use](int a, int b, int& point) {
          if (!group.points.add(a, b, point)) return;
          use(a);
          use(b);
        },
        [&group](const std::array<int, 4>& corners, int cell) {
          group.proposals.push_back({corners, cell});
        });
  });
  findDuplicates();
  numberPoints();
  for (int g = 0; g < numGroups(); ++g) {
    const Group& group = m_groups[static_cast<std::size_t>(g)];
    for (const Proposal& proposal : group.proposals) {
      std::array<int, 4> corners = proposal.corners;
      for (int& corner : corners) corner = group.numbers[static_cast<std::size_t>(corner)];
      m_output->quadrangles.add(corners, proposal.cell);
    }
  }
}

/// Finds the points that an earlier group has already.
void PiIndexedLevelSurf::findDuplicates() {
  PiParallel::run(numGroups(), [this](int g) {
    Group& group = m_groups[static_cast<std::size_t>(g)];
    group.shared.clear();
    const auto isShared = [this](int node) {
      return m_users[static_cast<std::size_t>(node)].load(std::memory_order_relaxed) == kSeveral;
    };
    int point = 0;
    for (const PiSurfacePoint& cut : group.points.points()) {
      if (isShared(cut.a) && isShared(cut.b)) group.shared.push_back(point);
      ++point;
    }
  });
  m_shared.clear();
  m_owners.clear();
  for (int g = 0; g < numGroups(); ++g) {
    Group& group = m_groups[static_cast<std::size_t>(g)];
    group.duplicates.clear();
    for (const int point : group.shared) {
      const PiSurfacePoint& cut = group.points.points()[static_cast<std::size_t>(point)];
      int pair = 0;
      if (m_shared.add(cut.a, cut.b, pair)) {
        m_owners.emplace_back(g, point);
      } else {
        const auto& [owner, ownerPoint] = m_owners[static_cast<std::size_t>(pair)];
        group.duplicates.push_back({point, owner, ownerPoint});
      }
    }
  }
}

int PiIndexedLevelSurf::rankOf(int group, int point) const {
  const std::vector<Duplicate>& duplicates = m_groups[static_cast<std::size_t>(group)].duplicates;
  const auto before = std::lower_bound(duplicates.begin(), duplicates.end(), point,
                                       [](const Duplicate& duplicate, int p) { return duplicate.point < p; });
  return point - static_cast<int>(before - duplicates.begin());
}

/// Numbers the points of all groups, puts them into the output, and brings the indices up to date.
void PiIndexedLevelSurf::numberPoints() {
  std::size_t numPoints = 0;
  for (int g = 0; g < numGroups(); ++g) {
    Group& group = m_groups[static_cast<std::size_t>(g)];
    group.firstPoint = numPoints;
    numPoints += group.points.size() - group.duplicates.size();
  }
  PiGrowBuffer<PiSurfacePoint>& points = m_output->points.points();
  points.reset(numPoints);
  PiParallel::run(numGroups(), [this, &points](int g) {
    Group& group = m_groups[static_cast<std::size_t>(g)];
    group.numbers.reset(group.points.size());
    auto duplicate = group.duplicates.begin();
    std::size_t next = group.firstPoint;
    for (std::size_t point = 0; point < group.points.size(); ++point) {
      if (duplicate != group.duplicates.end() && duplicate->point == static_cast<int>(point)) {
        const std::size_t first = m_groups[static_cast<std::size_t>(duplicate->owner)].firstPoint;
        group.numbers[point] = static_cast<int>(first) + rankOf(duplicate->owner, duplicate->ownerPoint);
        ++duplicate;
      } else {
        group.numbers[point] = static_cast<int>(next);
        points[next++] = group.points.points()[point];
      }
    }
    for (int b = firstBlockOf(g); b < firstBlockOf(g + 1); ++b) {
      const Block& block = m_blocks[static_cast<std::size_t>(b)];
      int* index = m_indices + block.firstIndex;
      for (int* end = index + block.numIndices; index != end; ++index)
        if (*index >= 0) *index = group.numbers[static_cast<std::size_t>(*index)];
    }
  });
}

std::size_t PiIndexedLevelSurf::memorySize() const {
  std::size_t size = m_sides.capacity() + m_users.capacity() + m_shared.tableMemorySize() + m_shared.pointMemorySize() +
                     m_owners.capacity() * sizeof(std::pair<int, int>);
  for (const Block& block : m_blocks) size += block.cutCells.capacity() * sizeof(CutCell);
  for (const Group& group : m_groups)
    size += group.points.tableMemorySize() + group.points.pointMemorySize() +
            (group.shared.capacity() + group.numbers.capacity()) * sizeof(int) +
            group.duplicates.capacity() * sizeof(Duplicate) + group.proposals.capacity() * sizeof(Proposal);
  return size;
}
