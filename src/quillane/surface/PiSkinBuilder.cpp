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
#include <Ormelle/PbCellFilterIterator.h>
#include <Ormelle/PbGrid3D.h>
#include <Ormelle/PbIndexedMesh3D.h>

#include <algorithm>
#include <span>

#include "quillane/mesh/PiConnectivity.h"

/// The chosen cells of an indexed mesh.
struct PiSkinBuilder::Cells {
  const PiConnectivity& all;
  const std::vector<int>* chosen;  ///< null for all

  std::size_t num() const { return chosen ? chosen->size() : static_cast<std::size_t>(all.numCells()); }

  /// Calls `use(kind, cell, nodes)` for the cells from `begin` to `end` of those chosen, but for cells that aren't
  /// whole.
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
      for (std::size_t i = begin; i < end; ++i) ofAnyKind(cellAt(i), use);
  }
  template <class Kind, class CellAt, class Use>
  void forEachOfKind(const CellAt& cellAt, std::size_t begin, std::size_t end, const Use& use) const {
    const int* nodes = all.nodes();
    for (std::size_t i = begin; i < end; ++i) {
      const int cell = cellAt(i);
      use(Kind(), cell, nodes + static_cast<std::size_t>(cell) * Kind::kNum);
    }
  }
  template <class Use>
  void ofAnyKind(int cell, const Use& use) const {
    const std::span<const int> nodes = all.whole(cell);
    switch (nodes.size()) {
      case PiTetrahedronKind::kNum:
        return use(PiTetrahedronKind(), cell, nodes.data());
      case PiPyramidKind::kNum:
        return use(PiPyramidKind(), cell, nodes.data());
      case PiWedgeKind::kNum:
        return use(PiWedgeKind(), cell, nodes.data());
      case PiHexahedronKind::kNum:
        return use(PiHexahedronKind(), cell, nodes.data());
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

}  // namespace

void PiSkinBuilder::build(const PbMesh3D& mesh, const PoCellFilter* filter, int valueSetIndex, PiMeshSkin& skin) {
  skin.resize(0);
  m_accepted.clear();
  if (filter) {
    PbCellFilterIterator cell(&mesh, filter, valueSetIndex);
    for (cell.first(); cell.notDone(); cell.next()) m_accepted.push_back(cell.getCellIndex());
  }
  if (const auto* indexed = dynamic_cast<const PbIndexedMesh3D*>(&mesh))
    buildIndexed({indexed->getConnectivity(), filter ? &m_accepted : nullptr}, skin);
  else if (const auto* grid = dynamic_cast<const PbGrid3D*>(&mesh))
    buildGrid(*grid, filter != nullptr, skin);
  else
    buildAny(mesh, filter != nullptr, skin);
}

std::size_t PiSkinBuilder::getMemorySize() const {
  std::size_t size = (m_accepted.capacity() + m_openCells.capacity()) * sizeof(int) + m_isAccepted.capacity();
  for (const auto& parity : m_parities) size += parity.capacity() * sizeof(PiFacetHash::Word);
  for (const auto& cells : m_openCellsOf) size += cells.capacity() * sizeof(int);
  for (const Range& range : m_ranges)
    size += range.buckets.capacity() * sizeof(std::uint32_t) + range.facets.memorySize();
  return size;
}

void PiSkinBuilder::buildIndexed(const Cells& cells, PiMeshSkin& skin) {
  pairFacets(cells);
  const std::uint32_t numOpenNodes = numberOpenNodes();
  findOpenCells(cells);
  cutIntoRanges(numOpenNodes);
  const Cells openCells = {cells.all, &m_openCells};
  for (Range& range : m_ranges) collect(openCells, range);
  store(skin);
}

/// Joins the hashes of all facets at their smallest nodes.
void PiSkinBuilder::pairFacets(const Cells& cells) {
  m_parities.resize(1);
  for (auto& parities : m_parities) {
    parities.assign(static_cast<std::size_t>(cells.all.numNodes()), 0);
    PiFacetHash::Word* parity = parities.data();
    cells.forEach(0, cells.num(), [parity](auto kind, int, const int* nodes) {
      PiHashedCell<decltype(kind)>(nodes).forEachFacet(
          [parity](int smallest, PiFacetHash::Word hash, const PiFacet&) { parity[smallest] ^= hash; });
    });
  }
}

/// Replaces the parity of an open node by its number, from 1, and leaves 0 for the others.
std::uint32_t PiSkinBuilder::numberOpenNodes() {
  std::uint32_t num = 0;
  for (PiFacetHash::Word& parity : m_parities[0])
    if (parity != 0) parity = ++num;
  return num;
}

void PiSkinBuilder::findOpenCells(const Cells& cells) {
  m_openCells.clear();
  const PiFacetHash::Word* number = m_parities[0].data();
  cells.forEach(0, cells.num(), [this, number](auto kind, int cell, const int* nodes) {
    PiFacetHash::Word isOpen = 0;
    for (int n = 0; n < kind.kNum; ++n) isOpen |= number[nodes[n]];
    if (isOpen != 0) m_openCells.push_back(cell);
  });
}

void PiSkinBuilder::cutIntoRanges(std::uint32_t numOpenNodes) {
  m_ranges.resize(1);
  const std::uint64_t num = m_ranges.size();
  for (std::uint64_t r = 0; r < num; ++r) {
    m_ranges[r].begin = static_cast<std::uint32_t>(numOpenNodes * r / num);
    m_ranges[r].end = static_cast<std::uint32_t>(numOpenNodes * (r + 1) / num);
  }
}

/// Leaves in the range those of its facets that don't cancel. A node gets a bucket for every two facets that it may
/// have, so that the lists are short also where very many cells share a node.
void PiSkinBuilder::collect(const Cells& cells, Range& range) const {
  const PiFacetHash::Word* number = m_parities[0].data();
  const PiFacetHash::Word first = PiFacetHash::Word(range.begin) + 1;
  const std::uint32_t num = range.end - range.begin;
  range.buckets.assign(static_cast<std::size_t>(num) + 1, 0);
  std::uint32_t* buckets = range.buckets.data();
  cells.forEach(0, cells.num(), [=](auto kind, int, const int* nodes) {
    PiHashedCell<decltype(kind)>(nodes).forEachFacet([=](int smallest, PiFacetHash::Word, const PiFacet&) {
      const PiFacetHash::Word node = number[smallest] - first;  // that of a closed node is too big, too
      if (node < num) ++buckets[node];
    });
  });
  std::uint32_t end = 0;
  for (std::uint32_t& bucket : range.buckets) {
    const std::uint32_t numBuckets = (bucket + 1) / 2;
    bucket = end;
    end += numBuckets;
  }

  range.facets.reset(end);
  PiFacetSet& facets = range.facets;
  cells.forEach(0, cells.num(), [=, &facets](auto kind, int cell, const int* nodes) {
    PiHashedCell<decltype(kind)>(nodes).forEachFacet(
        [=, &facets](int smallest, PiFacetHash::Word hash, const PiFacet& facet) {
          const PiFacetHash::Word node = number[smallest] - first;
          if (node >= num) return;
          const std::uint32_t bucket = buckets[node] + scaled(hash, buckets[node + 1] - buckets[node]);
          facets.toggle(bucket, static_cast<std::uint32_t>(hash), cell, nodes[facet.nodes[0]], nodes[facet.nodes[1]],
                        nodes[facet.nodes[2]], facet.numNodes == 4 ? nodes[facet.nodes[3]] : PiMeshSkin::kNoNode);
        });
  });
}

void PiSkinBuilder::store(PiMeshSkin& skin) const {
  std::size_t num = 0;
  for (const Range& range : m_ranges) num += range.facets.size();
  skin.resize(num);
  std::size_t place = 0;
  for (const Range& range : m_ranges)
    range.facets.forEach([&](const PiFacetSet::Facet& facet) { skin.set(place++, facet.cell, facet.nodes); });
}

/// A grid tells the neighbours of a cell: its facets are looked at cell by cell.
void PiSkinBuilder::buildGrid(const PbGrid3D& grid, bool isFiltered, PiMeshSkin& skin) {
  if (grid.getNumCells() < 1) return;
  int num[3];
  grid.getDim(num[0], num[1], num[2]);
  for (int& n : num) --n;  // cells
  const int step[3] = {num[1] * num[2], num[2], 1};
  const std::uint8_t* isAccepted = nullptr;
  if (isFiltered) {
    m_isAccepted.assign(static_cast<std::size_t>(grid.getNumCells()), 0);
    for (const int cell : m_accepted) m_isAccepted[static_cast<std::size_t>(cell)] = 1;
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

/// A mesh class of the application has cells, and that is all there is to know of it.
void PiSkinBuilder::buildAny(const PbMesh3D& mesh, bool isFiltered, PiMeshSkin& skin) {
  m_ranges.resize(1);
  PiFacetSet& facets = m_ranges[0].facets;
  const auto numCells = static_cast<std::size_t>(isFiltered ? static_cast<int>(m_accepted.size()) : mesh.getNumCells());
  facets.reset(2 * numCells + 1);
  PbArrayOfInt nodes;
  for (std::size_t c = 0; c < numCells; ++c) {
    const int index = isFiltered ? m_accepted[c] : static_cast<int>(c);
    const PbCell* cell = mesh.getTopoCell(index);
    for (int f = 0; cell && f < cell->getNumFacets(); ++f) {
      cell->getNodesIndexOfFacet(f, nodes);
      const int num = nodes.getNum();
      const int* node = nodes.get();
      if ((num != 3 && num != 4) || std::any_of(node, node + num, [](int n) { return n < 0; })) continue;
      PiFacetHash::Word sum = 0;
      for (int n = 0; n < num; ++n) sum += PiFacetHash::mix(node[n]);
      const PiFacetHash::Word hash = PiFacetHash::finish(sum);
      facets.toggle(scaled(hash, static_cast<std::uint32_t>(facets.numBuckets())), static_cast<std::uint32_t>(hash),
                    index, node[0], node[1], node[2], num == 4 ? node[3] : PiMeshSkin::kNoNode);
    }
  }
  store(skin);
}
