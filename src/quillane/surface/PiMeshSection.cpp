#include "quillane/surface/PiMeshSection.h"

#include <algorithm>
#include <cmath>

#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoCellFilter.h>

#include "quillane/surface/PiVolumeCells.h"

namespace {

bool isAccepted(const PiSectionRequest& request, int cell) {
  return !request.filter || request.filter->acceptCell(cell, request.filterValues ? request.filterValues[cell] : 0);
}

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
  return section.memorySize() + m_cutter.memorySize() + m_axes.memorySize() + m_zShares.capacity() * sizeof(float) +
         m_rows.capacity() * sizeof(Row);
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

template <class Cells>
void PiMeshSection::cutBlocks(Cells cells, const PiSectionRequest& request) {
  m_numVisited = 0;
  m_cutter.start(request.plane, request.values);
  const PiSectionPlane plane = request.plane;
  const PiNodeArrays points = cells.points;
  const PiSectionCases* cases = &PiSectionCases::of(PiTopology::kHexahedron);
  m_blocks->forEachCellNear(plane, [&](int cell) {
    const std::span<const int> nodes = cells.nodes(cell);
    if (nodes.empty()) return;
    ++m_numVisited;
    float distances[8];
    bool isAnyBehind = false, isAnyBefore = false;
    const std::size_t num = Cells::kCellSize > 0 ? Cells::kCellSize : nodes.size();
    for (std::size_t n = 0; n < num; ++n) {
      const int node = nodes[n];
      distances[n] = plane.distance(points.x[node], points.y[node], points.z[node]);
      isAnyBehind |= distances[n] <= 0;
      isAnyBefore |= distances[n] >= 0;
    }
    if (!isAnyBehind || !isAnyBefore || !isAccepted(request, cell)) return;
    if (cases->topology().numNodes != static_cast<int>(nodes.size()))
      cases = &PiSectionCases::of(cells.topologyOf(nodes.size()));
    m_cutter.cut(*cases, cell, nodes.data(), distances,
                 [&](int local) { return points[nodes[static_cast<std::size_t>(local)]]; });
  });
  m_cutter.finish();
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
  m_numVisited = 0;
  m_cutter.start(request.plane, request.values);
  if (grid.getNumCells() > 0) {
    m_axes.set(grid);
    const int num[3] = {m_axes.num(0), m_axes.num(1), m_axes.num(2)};
    findRowCuts(request.plane);

    const PiSectionCases& cases = PiSectionCases::of(PiTopology::kHexahedron);
    static constexpr int kCornerI[8] = {0, 1, 1, 0, 0, 1, 1, 0}, kCornerJ[8] = {0, 0, 1, 1, 0, 0, 1, 1};
    const auto numRows = static_cast<std::size_t>(num[1]);
    for (int i = 0; i + 1 < num[0]; ++i)
      for (int j = 0; j + 1 < num[1]; ++j) {
        const Row* row = m_rows.data() + static_cast<std::size_t>(i) * numRows + static_cast<std::size_t>(j);
        const Row* rows[4] = {row, row + numRows, row + numRows + 1, row + 1};
        const int first = std::min({rows[0]->leaves, rows[1]->leaves, rows[2]->leaves, rows[3]->leaves}) - 1;
        const int last = std::max({rows[0]->arrives, rows[1]->arrives, rows[2]->arrives, rows[3]->arrives}) - 1;
        for (int k = std::max(first, 0); k <= std::min(last, num[2] - 2); ++k) {
          ++m_numVisited;
          const int cell = grid.getCellIndex(i, j, k);
          float distances[8];
          int nodes[8];
          for (int n = 0; n < 8; ++n) {
            const int up = n / 4;
            distances[n] = rows[n % 4]->base + m_zShares[static_cast<std::size_t>(k + up)] - request.plane.d;
            nodes[n] = grid.getNodeIndex(i + kCornerI[n], j + kCornerJ[n], k + up);
          }
          if (!isAccepted(request, cell)) continue;
          m_cutter.cut(cases, cell, nodes, distances, [&](int n) {
            return SbVec3f(m_axes.at(0, i + kCornerI[n]), m_axes.at(1, j + kCornerJ[n]), m_axes.at(2, k + n / 4));
          });
        }
      }
  }
  m_cutter.finish();
}

void PiMeshSection::findRowCuts(const PiSectionPlane& plane) {
  const std::vector<float>& z = m_axes.coords[2];
  const int numZ = static_cast<int>(z.size());
  m_zShares.resize(z.size());
  std::transform(z.begin(), z.end(), m_zShares.begin(), [&plane](float c) { return plane.c * c; });
  m_rows.resize(m_axes.coords[0].size() * m_axes.coords[1].size());
  const bool isOrdered = m_axes.isMonotone(2);
  const float sign = m_zShares.front() <= m_zShares.back() ? 1.0F : -1.0F;
  Row* row = m_rows.data();
  int guess = 0;
  for (const float x : m_axes.coords[0])
    for (const float y : m_axes.coords[1]) {
      row->base = plane.a * x + plane.b * y;
      const auto distance = [&](int k) {
        return sign * (row->base + m_zShares[static_cast<std::size_t>(k)] - plane.d);
      };
      row->leaves = 0;
      row->arrives = numZ;
      if (isOrdered) {
        guess = row->leaves = firstReached(numZ, guess, [&](int k) { return distance(k) >= 0; });
        row->arrives = guess;
        while (row->arrives < numZ && distance(row->arrives) <= 0) ++row->arrives;
      }
      ++row;
    }
}
