#include "quillane/surface/PiCellBlocks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

#include "graph/frame/PiParallel.h"
#include "quillane/surface/PiVolumeCells.h"

namespace {

constexpr float kFarAway = std::numeric_limits<float>::infinity();

struct CellBounds {
  float low[3] = {kFarAway, kFarAway, kFarAway};
  float high[3] = {-kFarAway, -kFarAway, -kFarAway};

  bool isFinite() const {
    for (int axis = 0; axis < 3; ++axis)
      if (!(low[axis] >= -std::numeric_limits<float>::max() && high[axis] <= std::numeric_limits<float>::max()))
        return false;
    return true;
  }
  void add(const CellBounds& other) {
    for (int axis = 0; axis < 3; ++axis) {
      low[axis] = std::min(low[axis], other.low[axis]);
      high[axis] = std::max(high[axis], other.high[axis]);
    }
  }
  float girth() const { return high[0] - low[0] + (high[1] - low[1]) + (high[2] - low[2]); }
};

/// The box round a cell; not finite if the cell isn't whole or a coordinate isn't finite.
template <class Cells>
CellBounds boxOf(Cells& cells, int cell) {
  CellBounds box;
  bool isNumber = true;
  for (const int node : cells.nodes(cell)) {
    const float coords[3] = {cells.points.x[node], cells.points.y[node], cells.points.z[node]};
    for (int axis = 0; axis < 3; ++axis) {
      box.low[axis] = coords[axis] < box.low[axis] ? coords[axis] : box.low[axis];
      box.high[axis] = coords[axis] > box.high[axis] ? coords[axis] : box.high[axis];
      isNumber &= coords[axis] == coords[axis];
    }
  }
  return isNumber ? box : CellBounds();
}

/// The lowest ten bits with two free places behind each.
std::uint32_t withGaps(std::uint32_t bits) {
  bits = (bits | bits << 16) & 0x030000FFU;
  bits = (bits | bits << 8) & 0x0300F00FU;
  bits = (bits | bits << 4) & 0x030C30C3U;
  return (bits | bits << 2) & 0x09249249U;
}

/// Which blocks there are, to share them between kits. Rebuilds are made one at a time.
struct KnownBlocks {
  unsigned geometry, topology;
  std::weak_ptr<const PiCellBlocks> blocks;
};
std::vector<KnownBlocks>& knownBlocks() {
  static std::vector<KnownBlocks> s_known;
  return s_known;
}

}  // namespace

std::shared_ptr<const PiCellBlocks> PiCellBlocks::of(const PbIndexedMesh3D& mesh) { return find(mesh); }
std::shared_ptr<const PiCellBlocks> PiCellBlocks::of(const PbCartesianGrid3D& mesh) { return find(mesh); }

template <class Mesh>
std::shared_ptr<const PiCellBlocks> PiCellBlocks::find(const Mesh& mesh) {
  std::vector<KnownBlocks>& known = knownBlocks();
  std::erase_if(known, [](const KnownBlocks& entry) { return entry.blocks.expired(); });
  for (const KnownBlocks& entry : known)
    if (entry.geometry == mesh.getGeometryId() && entry.topology == mesh.getTopologyId()) return entry.blocks.lock();
  const auto blocks = std::make_shared<PiCellBlocks>();
  if constexpr (std::is_same_v<Mesh, PbCartesianGrid3D>) {
    blocks->build(PiGridCells(mesh));
  } else {
    switch (mesh.getConnectivity().cellSize()) {
      case 8:
        blocks->build(PiIndexedCells<8>(mesh));
        break;
      case 4:
        blocks->build(PiIndexedCells<4>(mesh));
        break;
      default:
        blocks->build(PiIndexedCells<0>(mesh));
    }
  }
  known.push_back({mesh.getGeometryId(), mesh.getTopologyId(), blocks});
  return blocks;
}

template <class Cells>
void PiCellBlocks::build(const Cells& cells) {
  // A block of neighbours has about twice the girth of a cell. Where blocks are much larger, order is worth its price.
  static constexpr float kMaxGrowth = 5;
  m_numCells = cells.numCells();
  if (boundBlocks(cells) < kMaxGrowth) return;
  sortCells(cells);
  boundBlocks(cells);
}

// Gives the mean girth of the blocks over that of the cells.
template <class Cells>
float PiCellBlocks::boundBlocks(const Cells& source) {
  static constexpr std::size_t kBlocksInTask = 1 << 13;
  const auto numCells = static_cast<std::size_t>(m_numCells), numBlocks = (numCells + kBlockSize - 1) / kBlockSize;
  for (std::vector<float>& bound : m_bounds) bound.resize(numBlocks);
  struct Girths {
    double ofBlocks = 0, ofCells = 0;
  };
  std::vector<Girths> girths(numBlocks / kBlocksInTask + 1);
  PiParallel::forBlocks(numBlocks, kBlocksInTask, [&](std::size_t firstBlock, std::size_t endBlock) {
    Cells cells = source;
    Girths& sums = girths[firstBlock / kBlocksInTask];
    for (std::size_t block = firstBlock; block < endBlock; ++block) {
      CellBounds box;
      const std::size_t begin = block * kBlockSize, end = std::min(begin + kBlockSize, numCells);
      for (std::size_t place = begin; place < end; ++place) {
        const CellBounds cell = boxOf(cells, m_order.empty() ? static_cast<int>(place) : m_order[place]);
        if (!cell.isFinite()) continue;
        box.add(cell);
        sums.ofCells += static_cast<double>(cell.girth()) / kBlockSize;
      }
      for (std::size_t axis = 0; axis < 3; ++axis) {
        m_bounds[axis][block] = box.low[axis];
        m_bounds[axis + 3][block] = box.high[axis];
      }
      if (box.isFinite()) sums.ofBlocks += static_cast<double>(box.girth());
    }
  });
  Girths all;
  for (const Girths& sums : girths) {
    all.ofBlocks += sums.ofBlocks;
    all.ofCells += sums.ofCells;
  }
  return all.ofCells > 0 ? static_cast<float>(all.ofBlocks / all.ofCells) : 0;
}

// Along a Z-order curve of 1024 steps an axis, by a radix sort.
template <class Cells>
void PiCellBlocks::sortCells(const Cells& source) {
  Cells cells = source;
  CellBounds domain;
  for (std::size_t block = 0; block < m_bounds[0].size(); ++block) {
    CellBounds box;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      box.low[axis] = m_bounds[axis][block];
      box.high[axis] = m_bounds[axis + 3][block];
    }
    domain.add(box);
  }
  const auto num = static_cast<std::size_t>(m_numCells);
  std::vector<std::uint32_t> keys(num);
  for (std::size_t cell = 0; cell < num; ++cell) {
    const CellBounds box = boxOf(cells, static_cast<int>(cell));
    if (!box.isFinite()) continue;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double extent = static_cast<double>(domain.high[axis]) - domain.low[axis];
      const double middle = (static_cast<double>(box.low[axis]) + box.high[axis]) / 2 - domain.low[axis];
      const auto step = extent > 0 ? static_cast<std::uint32_t>(std::clamp(middle / extent * 1024, 0.0, 1023.0)) : 0U;
      keys[cell] |= withGaps(step) << axis;
    }
  }
  m_order.resize(num);
  std::iota(m_order.begin(), m_order.end(), 0);
  std::vector<int> sorted(num);
  static constexpr unsigned kDigitBits = 10;
  for (unsigned digit = 0; digit < 30; digit += kDigitBits) {
    std::array<std::size_t, (1U << kDigitBits) + 1> places{};
    const auto digitOf = [&](int cell) {
      return (keys[static_cast<std::size_t>(cell)] >> digit) & ((1U << kDigitBits) - 1U);
    };
    for (const int cell : m_order) ++places[digitOf(cell) + 1];
    std::partial_sum(places.begin(), places.end(), places.begin());
    for (const int cell : m_order) sorted[places[digitOf(cell)]++] = cell;
    m_order.swap(sorted);
  }
}

bool PiCellBlocks::findMet(const PiSectionPlane& plane, std::size_t first, std::size_t num, std::uint8_t* isMet) const {
  // The corner of each box that is furthest behind the plane, and the one furthest in front of it.
  const float normal[3] = {plane.a, plane.b, plane.c};
  const float *back[3], *front[3];
  for (int axis = 0; axis < 3; ++axis) {
    const float* low = m_bounds[axis].data() + first;
    const float* high = m_bounds[axis + 3].data() + first;
    back[axis] = normal[axis] >= 0 ? low : high;
    front[axis] = normal[axis] >= 0 ? high : low;
  }
  int isAnyMet = 0;
  for (std::size_t block = 0; block < num; ++block) {
    const float behind = plane.distance(back[0][block], back[1][block], back[2][block]);
    const float before = plane.distance(front[0][block], front[1][block], front[2][block]);
    const int met = static_cast<int>(behind <= 0) & static_cast<int>(before >= 0);
    isMet[block] = static_cast<std::uint8_t>(met);
    isAnyMet |= met;
  }
  return isAnyMet != 0;
}

std::size_t PiCellBlocks::memorySize() const {
  std::size_t size = m_order.capacity() * sizeof(int);
  for (const std::vector<float>& bound : m_bounds) size += bound.capacity() * sizeof(float);
  return size;
}
