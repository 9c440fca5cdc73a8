// How the skin of an indexed mesh is found.
//
// Facets are grouped by their smallest node. The hashes of the facets of a node, joined by exclusive or, cancel where
// each facet occurs twice: that costs no comparison and no branch, and tells for all but a few nodes that they have no
// facet of the skin. The nodes that are left are called open. Only facets of open nodes are then compared with each
// other, in lists of a few. (An open node passes for closed if the hashes of its open facets cancel by chance, once in
// 2^64.)

#include "quillane/surface/PiSkinBuilder.h"

#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbGrid3D.h>
#include <Ormelle/PbIndexedMesh3D.h>

#include <algorithm>
#include <bit>
#include <numeric>
#include <span>

#include "graph/frame/PiParallel.h"
#include "quillane/mesh/PiConnectivity.h"

/// The chosen cells of an indexed mesh.
struct PiSkinBuilder::Cells {
  const PiConnectivity& all;
  const std::vector<int>* chosen;  ///< null for all

  std::size_t num() const { return chosen ? chosen->size() : static_cast<std::size_t>(all.numCells()); }

  /// Calls `use(kind, i, cell, nodes)` for the i-th of the cells chosen, from `begin` to `end`, but for cells that
  /// aren't whole.
  template <class Use>
  void forEach(std::size_t begin, std::size_t end, const Use& use) const {
    if (chosen)
      forEachAt([this](std::size_t i) { return (*chosen)[i]; }, begin, end, use);
    else
      forEachAt([](std::size_t i) { return static_cast<int>(i); }, begin, end, use);
  }

 private:
  template <class CellAt, class Use>
  void forEachAt(const CellAt& cellAt, std::size_t begin, std::size_t end, const Use& use) const {
    if (all.areAllWhole() && all.cellSize() == PiHexahedronKind::kNum)
      forEachOfKind<PiHexahedronKind>(cellAt, begin, end, use);
    else if (all.areAllWhole() && all.cellSize() == PiTetrahedronKind::kNum)
      forEachOfKind<PiTetrahedronKind>(cellAt, begin, end, use);
    else
      for (std::size_t i = begin; i < end; ++i) ofAnyKind(i, cellAt(i), use);
  }
  template <class Kind, class CellAt, class Use>
  void forEachOfKind(const CellAt& cellAt, std::size_t begin, std::size_t end, const Use& use) const {
    // Far enough ahead that memory has answered; chosen cells are too irregular for the processor to foresee.
    constexpr std::size_t kAhead = 16;
    const int* nodes = all.nodes();
    for (std::size_t i = begin; i < end; ++i) {
      const int cell = cellAt(i);
      if (chosen && i + kAhead < end) {
        const int* later = nodes + static_cast<std::size_t>(cellAt(i + kAhead)) * Kind::kNum;
        __builtin_prefetch(later);
        __builtin_prefetch(later + Kind::kNum - 1);
      }
      use(Kind(), i, cell, nodes + static_cast<std::size_t>(cell) * Kind::kNum);
    }
  }
  template <class Use>
  void ofAnyKind(std::size_t i, int cell, const Use& use) const {
    const std::span<const int> nodes = all.whole(cell);
    switch (nodes.size()) {
      case PiTetrahedronKind::kNum:
        return use(PiTetrahedronKind(), i, cell, nodes.data());
      case PiPyramidKind::kNum:
        return use(PiPyramidKind(), i, cell, nodes.data());
      case PiWedgeKind::kNum:
        return use(PiWedgeKind(), i, cell, nodes.data());
      case PiHexahedronKind::kNum:
        return use(PiHexahedronKind(), i, cell, nodes.data());
      default:
        return;
    }
  }
};

namespace {

/// Maps a hash evenly to 0 .. num-1.
std::uint32_t scaled(PiFacetHash::Word hash, std::uint32_t num) {
  return static_cast<std::uint32_t>(((hash >> 32) * num) >> 32);
}

/// Facet `facet` of a solid of `numNodes` nodes.
const PiFacet& facetOf(std::size_t numNodes, std::uint32_t facet) {
  switch (numNodes) {
    case PiTetrahedronKind::kNum:
      return PiTetrahedronKind::kFacets[facet];
    case PiPyramidKind::kNum:
      return PiPyramidKind::kFacets[facet];
    case PiWedgeKind::kNum:
      return PiWedgeKind::kFacets[facet];
    default:
      return PiHexahedronKind::kFacets[facet];
  }
}

/// The nodes of a facet of a cell; a triangle has kNoNode for the fourth.
struct FacetNodes {
  FacetNodes(const int* cell, const PiFacet& facet)
      : nodes{cell[facet.nodes[0]], cell[facet.nodes[1]], cell[facet.nodes[2]],
              facet.numNodes == 4 ? cell[facet.nodes[3]] : PiMeshSkin::kNoNode} {}

  bool isSameSet(FacetNodes other) const {
    FacetNodes own = *this;
    own.sort();
    other.sort();
    return std::equal(own.nodes, own.nodes + 4, other.nodes);
  }

  int nodes[4];

 private:
  void order(int a, int b) {
    const int smaller = std::min(nodes[a], nodes[b]);
    nodes[b] = std::max(nodes[a], nodes[b]);
    nodes[a] = smaller;
  }
  void sort() {
    order(0, 1);
    order(2, 3);
    order(0, 2);
    order(1, 3);
    order(1, 2);
  }
};

/// The part `index` of 0 .. num when it is cut into `parts`.
struct Part {
  Part(std::size_t num, std::size_t index, std::size_t parts)
      : begin(num / parts * index + std::min(index, num % parts)),
        end(begin + num / parts + (index < num % parts ? 1 : 0)) {}
  std::size_t begin, end;
};

}  // namespace

void PiSkinBuilder::build(const PbMesh3D& mesh, const std::vector<int>* accepted, PiMeshSkin& skin) {
  if (const auto* indexed = dynamic_cast<const PbIndexedMesh3D*>(&mesh))
    buildIndexed({indexed->getConnectivity(), accepted}, skin);
  else if (const auto* grid = dynamic_cast<const PbGrid3D*>(&mesh))
    buildGrid(*grid, accepted, skin);
  else
    buildAny(mesh, accepted, skin);
}

std::size_t PiSkinBuilder::getMemorySize() const {
  std::size_t size =
      m_buckets.capacity() * sizeof(std::uint32_t) + m_openCells.capacity() * sizeof(int) + m_isAccepted.capacity();
  for (const Share& share : m_shares)
    size += share.parities.capacity() * sizeof(PiFacetHash::Word) + share.openCells.capacity() * sizeof(int) +
            share.counts.capacity() * sizeof(std::uint32_t) + share.facets.memorySize();
  return size;
}

void PiSkinBuilder::buildIndexed(const Cells& cells, PiMeshSkin& skin) {
  setNumShares(cells);
  pairFacets(cells);
  const std::uint32_t numOpenNodes = numberOpenNodes();
  findOpenCells(cells, numOpenNodes);
  shareOpenNodes(numOpenNodes);
  m_openCells.clear();
  for (const Share& share : m_shares)
    m_openCells.insert(m_openCells.end(), share.openCells.begin(), share.openCells.end());
  PiParallel::run(static_cast<int>(m_shares.size()),
                  [&](int s) { compareFacets(cells.all, m_shares[static_cast<std::size_t>(s)]); });
  store(cells.all, skin);
}

/// As many shares as threads that have enough to do, but no more than memory allows.
void PiSkinBuilder::setNumShares(const Cells& cells) {
  constexpr std::size_t kFewCells = 50000;
  const std::size_t numNodes = std::max<std::size_t>(1, static_cast<std::size_t>(cells.all.numNodes()));
  const std::size_t most = std::max<std::size_t>(2, static_cast<std::size_t>(cells.all.numCells()) / numNodes);
  const std::size_t num = std::min(static_cast<std::size_t>(PiParallel::numThreads()), cells.num() / kFewCells);
  m_shares.resize(std::clamp<std::size_t>(num, 1, most));
}

/// Joins the hashes of all facets at their smallest nodes.
void PiSkinBuilder::pairFacets(const Cells& cells) {
  PiParallel::run(static_cast<int>(m_shares.size()), [&](int s) {
    Share& share = m_shares[static_cast<std::size_t>(s)];
    share.parities.assign(static_cast<std::size_t>(cells.all.numNodes()), 0);
    PiFacetHash::Word* parities = share.parities.data();
    const Part part(cells.num(), static_cast<std::size_t>(s), m_shares.size());
    cells.forEach(part.begin, part.end, [parities](auto kind, std::size_t, int, const int* nodes) {
      PiHashedCell<decltype(kind)>(nodes).forEachFacet(
          [parities](std::uint32_t smallest, PiFacetHash::Word hash, std::uint32_t) { parities[smallest] ^= hash; });
    });
  });
}

/// Replaces the parity of an open node in the first share by its number, from 1, and leaves 0 for the others.
std::uint32_t PiSkinBuilder::numberOpenNodes() {
  const std::size_t numShares = m_shares.size();
  std::vector<PiFacetHash::Word>& numbers = m_shares[0].parities;
  std::vector<std::uint32_t> nums(numShares, 0);
  PiParallel::run(static_cast<int>(numShares), [&](int s) {
    const Part part(numbers.size(), static_cast<std::size_t>(s), numShares);
    for (std::size_t other = 1; other < numShares; ++other)
      for (std::size_t node = part.begin; node < part.end; ++node) numbers[node] ^= m_shares[other].parities[node];
    PiFacetHash::Word num = 0;
    for (std::size_t node = part.begin; node < part.end; ++node) {
      const bool isOpen = numbers[node] != 0;
      num += isOpen ? 1 : 0;
      numbers[node] = isOpen ? num : 0;
    }
    nums[static_cast<std::size_t>(s)] = static_cast<std::uint32_t>(num);
  });
  if (numShares > 1)
    PiParallel::run(static_cast<int>(numShares), [&](int s) {
      const Part part(numbers.size(), static_cast<std::size_t>(s), numShares);
      const std::uint32_t before = std::accumulate(nums.begin(), nums.begin() + s, 0U);
      for (std::size_t node = part.begin; node < part.end; ++node) numbers[node] += numbers[node] != 0 ? before : 0;
    });
  return std::accumulate(nums.begin(), nums.end(), 0U);
}

void PiSkinBuilder::findOpenCells(const Cells& cells, std::uint32_t numOpenNodes) {
  const PiFacetHash::Word* numbers = m_shares[0].parities.data();
  PiParallel::run(static_cast<int>(m_shares.size()), [&](int s) {
    Share& share = m_shares[static_cast<std::size_t>(s)];
    share.openCells.clear();
    share.counts.assign(static_cast<std::size_t>(numOpenNodes) + 1, 0);  // that of closed nodes stands first
    std::uint32_t* counts = share.counts.data();
    const Part part(cells.num(), static_cast<std::size_t>(s), m_shares.size());
    cells.forEach(part.begin, part.end, [=, &share](auto kind, std::size_t, int cell, const int* nodes) {
      PiFacetHash::Word isOpen = 0;
      for (int n = 0; n < kind.kNum; ++n) isOpen |= numbers[nodes[n]];
      if (isOpen == 0) return;
      share.openCells.push_back(cell);
      PiHashedCell<decltype(kind)>::forEachSmallest(nodes,
                                                    [=](std::uint32_t smallest) { ++counts[numbers[smallest]]; });
    });
  });
}

/// Gives each open node a bucket for every two facets that it may have, so that the lists are short also where very
/// many cells share a node, and each share about the same number of facets.
void PiSkinBuilder::shareOpenNodes(std::uint32_t numOpenNodes) {
  m_buckets.resize(static_cast<std::size_t>(numOpenNodes) + 1);
  std::uint32_t end = 0;
  for (std::size_t node = 0; node < numOpenNodes; ++node) {
    std::uint32_t count = 0;
    for (const Share& share : m_shares) count += share.counts[node + 1];
    m_buckets[node] = end;
    end += (count + 1) / 2;
  }
  m_buckets[numOpenNodes] = end;
  std::uint32_t begin = 0;
  for (std::size_t s = 0; s < m_shares.size(); ++s) {
    const auto past = static_cast<std::uint32_t>(Part(end, s, m_shares.size()).end);
    m_shares[s].begin = begin;
    begin =
        static_cast<std::uint32_t>(std::lower_bound(m_buckets.begin(), m_buckets.end() - 1, past) - m_buckets.begin());
    m_shares[s].end = begin;
  }
}

/// Leaves in the share those of its facets that don't occur twice.
void PiSkinBuilder::compareFacets(const PiConnectivity& cells, Share& share) const {
  const PiFacetHash::Word* numbers = m_shares[0].parities.data();
  const std::uint32_t* buckets = m_buckets.data() + share.begin;
  const PiFacetHash::Word first = PiFacetHash::Word(share.begin) + 1;
  const std::uint32_t num = share.end - share.begin;
  const std::uint32_t firstBucket = buckets[0];
  PiFacetSet& facets = share.facets;
  facets.reset(buckets[num] - firstBucket, m_openCells.size());
  Cells{cells, &m_openCells}.forEach(
      0, m_openCells.size(),
      [&, numbers, buckets, first, num, firstBucket](auto kind, std::size_t i, int, const int* nodes) {
        using Kind = decltype(kind);
        PiHashedCell<Kind>(nodes).forEachFacet([&](std::uint32_t smallest, PiFacetHash::Word hash,
                                                   std::uint32_t facet) {
          const PiFacetHash::Word node = numbers[smallest] - first;  // too big for a closed node, too
          if (node >= num) return;
          const std::uint32_t bucket = buckets[node] - firstBucket + scaled(hash, buckets[node + 1] - buckets[node]);
          facets.toggle(bucket, static_cast<std::uint32_t>(hash), static_cast<std::uint32_t>(8 * i) + facet,
                        [&](std::uint32_t other) {
                          const std::span<const int> otherNodes = cells.whole(m_openCells[other / 8]);
                          const FacetNodes theirs(otherNodes.data(), facetOf(otherNodes.size(), other % 8));
                          return FacetNodes(nodes, Kind::kFacets[facet]).isSameSet(theirs);
                        });
        });
      });
}

/// Writes the facets in the order of their cells.
void PiSkinBuilder::store(const PiConnectivity& cells, PiMeshSkin& skin) const {
  const auto facetsOf = [this](std::size_t cell) {
    unsigned facets = 0;
    for (const Share& share : m_shares) facets |= share.facets.facetsOf(cell);
    return facets;
  };
  const std::size_t numParts = m_shares.size();
  std::vector<std::size_t> first(numParts + 1, 0);
  PiParallel::run(static_cast<int>(numParts), [&](int p) {
    const Part part(m_openCells.size(), static_cast<std::size_t>(p), numParts);
    std::size_t num = 0;
    for (std::size_t cell = part.begin; cell < part.end; ++cell)
      for (unsigned facets = facetsOf(cell); facets != 0; facets &= facets - 1) ++num;
    first[static_cast<std::size_t>(p) + 1] = num;
  });
  std::partial_sum(first.begin(), first.end(), first.begin());
  skin.resize(first.back());
  PiParallel::run(static_cast<int>(numParts), [&](int p) {
    const Part part(m_openCells.size(), static_cast<std::size_t>(p), numParts);
    std::size_t place = first[static_cast<std::size_t>(p)];
    Cells{cells, &m_openCells}.forEach(part.begin, part.end, [&](auto kind, std::size_t i, int cell, const int* nodes) {
      for (unsigned facets = facetsOf(i); facets != 0; facets &= facets - 1)
        skin.set(place++, cell, FacetNodes(nodes, kind.kFacets[std::countr_zero(facets)]).nodes);
    });
  });
}

/// A grid tells the neighbours of a cell: its facets are looked at cell by cell.
void PiSkinBuilder::buildGrid(const PbGrid3D& grid, const std::vector<int>* accepted, PiMeshSkin& skin) {
  skin.resize(0);
  if (grid.getNumCells() < 1) return;
  int num[3];
  grid.getDim(num[0], num[1], num[2]);
  for (int& n : num) --n;  // cells
  const int step[3] = {num[1] * num[2], num[2], 1};
  const std::uint8_t* isAccepted = nullptr;
  if (accepted) {
    m_isAccepted.assign(static_cast<std::size_t>(grid.getNumCells()), 0);
    for (const int cell : *accepted) m_isAccepted[static_cast<std::size_t>(cell)] = 1;
    isAccepted = m_isAccepted.data();
  }

  // The facets of a hexahedron come in this order: at the lower and the upper end of i, of j, of k.
  const auto visit = [&](int i, int j, int k) {
    const int place[3] = {i, j, k};
    const int cell = grid.getCellIndex(i, j, k);
    if (isAccepted && !isAccepted[cell]) return;
    const int* corners = nullptr;
    for (int f = 0; f < 6; ++f) {
      const int axis = f / 2, isUpper = f % 2;
      const bool isOutside = place[axis] == (isUpper ? num[axis] - 1 : 0);
      if (!isOutside && (!isAccepted || isAccepted[isUpper ? cell + step[axis] : cell - step[axis]])) continue;
      if (!corners) corners = grid.getCellNodeIds(i, j, k);
      const int(&local)[4] = PiTopology::kHexahedronFacets[f].nodes;
      skin.add(cell, {corners[local[0]], corners[local[1]], corners[local[2]], corners[local[3]]});
    }
  };
  for (int i = 0; i < num[0]; ++i)
    for (int j = 0; j < num[1]; ++j) {
      const bool isInside = i > 0 && i < num[0] - 1 && j > 0 && j < num[1] - 1;
      const int stepK = isInside && !isAccepted ? std::max(num[2] - 1, 1) : 1;
      for (int k = 0; k < num[2]; k += stepK) visit(i, j, k);
    }
}

/// A mesh class of the application has cells, and that is all there is to know of it: their nodes are copied.
void PiSkinBuilder::buildAny(const PbMesh3D& mesh, const std::vector<int>* accepted, PiMeshSkin& skin) {
  std::vector<int> nodes, sizes;
  PbArrayOfInt nodesOfCell;
  for (int index = 0; index < mesh.getNumCells(); ++index) {
    sizes.push_back(0);
    const PbCell* cell = mesh.getTopoCell(index);
    if (!cell || cell->getNumFacets() < 4) continue;
    cell->getNodesIndex(nodesOfCell);
    nodes.insert(nodes.end(), nodesOfCell.get(), nodesOfCell.get() + nodesOfCell.getNum());
    sizes.back() = nodesOfCell.getNum();
  }
  PiConnectivity cells(3, 0);
  cells.set(mesh.getNumNodes(), static_cast<int>(sizes.size()), nodes.data(), sizes.data(), 0);
  buildIndexed({cells, accepted}, skin);
}
