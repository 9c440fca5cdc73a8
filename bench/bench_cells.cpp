// Point location in one cell, and the build of the marching tables.

#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbTetrahedronCell.h>
#include <Ormelle/PbVoxelCell.h>
#include <Ormelle/PbWedgeCell.h>
#include <benchmark/benchmark.h>

#include <vector>

namespace {

// A cell whose facets are slightly warped, and points inside and just outside it.
template <class Cell>
void BM_LocatePoint(benchmark::State& state) {
  const float x[] = {0, 1, 1.1f, 0, 0, 1, 1, 0.1f}, y[] = {0, 0.1f, 1, 1, 0, 0, 1.1f, 1};
  const float z[] = {0, 0, 0.1f, 0, 1, 1.1f, 1, 1};
  const int nodes[] = {0, 1, 2, 3, 4, 5, 6, 7};
  Cell cell(nullptr);
  if constexpr (requires { cell.set(0, nodes, x, y, z); })
    cell.set(0, nodes, x, y, z);
  else
    cell.set(0, nodes, 0, 0, 0, 1, 1, 1);
  std::vector<SbVec3f> points;
  for (int i = 0; i < 512; ++i)
    points.emplace_back(0.17f * static_cast<float>(i % 7), 0.17f * static_cast<float>(i / 7 % 7),
                        0.1f * static_cast<float>(i / 49));
  int numFound = 0;
  SbVec3f pcoord;
  for (auto _ : state)
    for (const SbVec3f& point : points) numFound += cell.locatePoint(point, 0.0f, pcoord);
  benchmark::DoNotOptimize(numFound);
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(points.size()));
}
BENCHMARK(BM_LocatePoint<PbHexahedronCell>);
BENCHMARK(BM_LocatePoint<PbWedgeCell>);
BENCHMARK(BM_LocatePoint<PbPyramidCell>);
BENCHMARK(BM_LocatePoint<PbTetrahedronCell>);
BENCHMARK(BM_LocatePoint<PbVoxelCell>);

void BM_BuildMarchingTables(benchmark::State& state) {
  for (auto _ : state) {
    PbHexahedronCell::init(), PbPyramidCell::init(), PbTetrahedronCell::init(), PbWedgeCell::init();
    PbHexahedronCell::finish(), PbPyramidCell::finish(), PbTetrahedronCell::finish(), PbWedgeCell::finish();
  }
}
BENCHMARK(BM_BuildMarchingTables)->Unit(benchmark::kMicrosecond);

}  // namespace
