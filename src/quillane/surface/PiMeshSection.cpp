#include "quillane/surface/PiMeshSection.h"

#include <algorithm>
#include <cmath>

#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>

#include "graph/frame/PiParallel.h"
#include "quillane/surface/PiVolumeCells.h"

namespace {

/// The first index from 0 to `num` where `isReached` holds, which it then does for all greater ones. Looks near `guess`
/// first.
template <class Test>
int firstReached(int num, int guess, Test&& isReached) {
  int low = 0, high = num, step = 1;
  guess = std::clamp(guess, 0, num - 1);
  if (isReached(guess)) {
    high = guess;
    while (high - step > 0 && isReached(high - step)) {
      high -= step;
      step *= 2;
    }
    low = std::max(high - step, 0);
  } else {
    low = guess + 1;
    while (low + step < num && !isReached(low + step)) {
      low += step;
      step *= 2;
    }
    high = std::min(low + step, num);
  }
  while (low < high) {
    const int middle = low + (high - low) / 2;
    if (isReached(middle))
      high = middle;
    else
      low = middle + 1;
  }
  return low;
}

}  // namespace

std::size_t PiMeshSection::memorySize() const {
  std::size_t parts = 0;
  for (const auto& part : m_parts) parts += part->section.memorySize() + part->cutter.memorySize();
  return parts + section.memorySize() + m_cutter.memorySize() + m_axes.memorySize() +
         m_zShares.capacity() * sizeof(float) + m_rows.capacity() * sizeof(Row);
}

void PiMeshSection::cut(const PbIndexedMesh3D& mesh, const PiSectionRequest& request) {
  m_blocks = PiCellBlocks::of(mesh);
  switch (mesh.getConnectivity().cellSize()) {
    case 8:
      cutBlocks(PiIndexedCells<8>(mesh), request);
      break;
    case 4:
      cutBlocks(PiIndexedCells<4>(mesh), request);
      break;
    default:
      cutBlocks(PiIndexedCells<0>(mesh), request);
  }
}

void PiMeshSection::cut(const PbCartesianGrid3D& mesh, const PiSectionRequest& request) {
  m_blocks = PiCellBlocks::of(mesh);
  cutBlocks(PiGridCells(mesh), request);
}

// `cut(begin, end, cutter)` cuts a range of what there is from 0 to `num`, and gives the number of cells visited.
template <class CutRange>
void PiMeshSection::cutRange(int num, const PiSectionRequest& request, const CutRange& cut) {
  if (cutInParts(num, request, cut)) return;
  m_cutter.start(request.plane, request.values);
  m_numVisited = cut(0, num, m_cutter);
  m_cutter.finish();
}

// The same in parts side by side; false if it can't be done. Points are numbered as they come, so parts that are put
// together in their order have the points of the whole, in its order. A filter is the application's and is asked by one
// thread. Facets in the plane ask to be known by all parts.
template <class CutRange>
bool PiMeshSection::cutInParts(int num, const PiSectionRequest& request, const CutRange& cut) {
  static constexpr int kNumParts = 16;
  if (PiParallel::numThreads() < 2 || request.accepts || num < 8 * kNumParts) return false;
  while (m_parts.size() < kNumParts) m_parts.push_back(std::make_unique<Part>());
  const int size = (num / kNumParts / PiCellBlocks::kBlockSize + 1) * PiCellBlocks::kBlockSize;
  PiParallel::run(kNumParts, [&](int part) {
    Part& own = *m_parts[static_cast<std::size_t>(part)];
    own.cutter.start(request.plane, request.values);
    own.numVisited = cut(std::min(num, part * size), std::min(num, (part + 1) * size), own.cutter);
  });
  for (const auto& part : m_parts)
    if (part->cutter.hasFacetsInPlane()) return false;
  m_numVisited = 0;
  m_cutter.start(request.plane, request.values);
  for (const auto& part : m_parts) {
    m_cutter.append(part->cutter);
    m_numVisited += part->numVisited;
  }
  return true;
}

template <class Cells>
void PiMeshSection::cutBlocks(const Cells& allCells, const PiSectionRequest& request) {
  cutRange(allCells.numCells(), request, [&](int begin, int end, PiPlaneCutter& cutter) {
    Cells cells = allCells;
    const PiSectionPlane plane = request.plane;
    const PiNodeArrays points = cells.points;
    const PiSectionCases* cases = &PiSectionCases::of(PiTopology::kHexahedron);
    std::size_t numVisited = 0;
    m_blocks->forEachCellNear(plane, begin, end, [&](int cell) {
      const std::span<const int> nodes = cells.nodes(cell);
      if (nodes.empty() || isInVain(cutter)) return;
      ++numVisited;
      float distances[8];
      bool isAnyBehind = false, isAnyBefore = false;
      const std::size_t num = Cells::kCellSize > 0 ? Cells::kCellSize : nodes.size();
      for (std::size_t n = 0; n < num; ++n) {
        const int node = nodes[n];
        distances[n] = plane.distance(points.x[node], points.y[node], points.z[node]);
        isAnyBehind |= distances[n] <= 0;
        isAnyBefore |= distances[n] >= 0;
      }
      if (!isAnyBehind || !isAnyBefore || (request.accepts && !request.accepts(cell))) return;
      if (cases->topology().numNodes != static_cast<int>(nodes.size()))
        cases = &PiSectionCases::of(cells.topologyOf(nodes.size()));
      cutter.cut(*cases, cell, nodes.data(), distances,
                 [&](int local) { return points[nodes[static_cast<std::size_t>(local)]]; });
    });
    return numVisited;
  });
}

void PiMeshSection::cut(const PbRegularCartesianGrid3D& mesh, const PiSectionRequest& request) {
  cutAxisGrid(mesh, request);
}

void PiMeshSection::cut(const PbParalCartesianGrid3D& mesh, const PiSectionRequest& request) {
  cutAxisGrid(mesh, request);
}

// Along a row of nodes in z the distance only rises or only falls. So the cells of a column that the plane meets are
// known from where its four rows change sides.
void PiMeshSection::cutAxisGrid(const PbGrid3D& grid, const PiSectionRequest& request) {
  m_blocks.reset();
  const bool hasCells = grid.getNumCells() > 0;
  if (hasCells) {
    m_axes.set(grid);
    findRowCuts(request.plane);
  }
  const int numColumns = hasCells ? (m_axes.num(0) - 1) * (m_axes.num(1) - 1) : 0;
  cutRange(numColumns, request,
           [&](int begin, int end, PiPlaneCutter& cutter) { return cutColumns(grid, begin, end, request, cutter); });
}

std::size_t PiMeshSection::cutColumns(const PbGrid3D& grid, int begin, int end, const PiSectionRequest& request,
                                      PiPlaneCutter& cutter) const {
  const PiSectionCases& cases = PiSectionCases::of(PiTopology::kHexahedron);
  static constexpr int kCornerI[8] = {0, 1, 1, 0, 0, 1, 1, 0}, kCornerJ[8] = {0, 0, 1, 1, 0, 0, 1, 1};
  const int numRows = m_axes.num(1), numCells = m_axes.num(2) - 1;
  std::size_t numVisited = 0;
  for (int column = begin; column < end && !isInVain(cutter); ++column) {
    const int i = column / (numRows - 1), j = column % (numRows - 1);
    const Row* row = m_rows.data() + static_cast<std::size_t>(i) * static_cast<std::size_t>(numRows) + j;
    const Row* rows[4] = {row, row + numRows, row + numRows + 1, row + 1};
    const int first = std::min({rows[0]->leaves, rows[1]->leaves, rows[2]->leaves, rows[3]->leaves}) - 1;
    const int last = std::max({rows[0]->arrives, rows[1]->arrives, rows[2]->arrives, rows[3]->arrives}) - 1;
    for (int k = std::max(first, 0); k <= std::min(last, numCells - 1); ++k) {
      ++numVisited;
      const int cell = grid.getCellIndex(i, j, k);
      float distances[8];
      int nodes[8];
      for (int n = 0; n < 8; ++n) {
        const int up = n / 4;
        distances[n] = rows[n % 4]->base + m_zShares[static_cast<std::size_t>(k + up)] - request.plane.d;
        nodes[n] = grid.getNodeIndex(i + kCornerI[n], j + kCornerJ[n], k + up);
      }
      if ((request.accepts && !request.accepts(cell))) continue;
      cutter.cut(cases, cell, nodes, distances, [&](int n) {
        return SbVec3f(m_axes.at(0, i + kCornerI[n]), m_axes.at(1, j + kCornerJ[n]), m_axes.at(2, k + n / 4));
      });
    }
  }
  return numVisited;
}

void PiMeshSection::findRowCuts(const PiSectionPlane& plane) {
  const std::vector<float>& z = m_axes.coords[2];
  const int numZ = static_cast<int>(z.size());
  m_zShares.resize(z.size());
  std::transform(z.begin(), z.end(), m_zShares.begin(), [&plane](float c) { return plane.c * c; });
  m_rows.resize(m_axes.coords[0].size() * m_axes.coords[1].size());
  const bool isOrdered = m_axes.isMonotone(2);
  const float sign = m_zShares.front() <= m_zShares.back() ? 1.0F : -1.0F;
  const std::vector<float>&x = m_axes.coords[0], &y = m_axes.coords[1];
  PiParallel::forBlocks(x.size(), 16, [&](std::size_t begin, std::size_t end) {
    int guess = 0;
    for (std::size_t i = begin; i < end; ++i)
      for (std::size_t j = 0; j < y.size(); ++j) {
        Row& row = m_rows[i * y.size() + j];
        row = {plane.a * x[i] + plane.b * y[j], 0, numZ};
        if (!isOrdered) continue;
        const auto distance = [&](int k) {
          return sign * (row.base + m_zShares[static_cast<std::size_t>(k)] - plane.d);
        };
        guess = row.leaves = firstReached(numZ, guess, [&](int k) { return distance(k) >= 0; });
        row.arrives = guess;
        while (row.arrives < numZ && distance(row.arrives) <= 0) ++row.arrives;
      }
  });
}
