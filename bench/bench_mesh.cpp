#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbCell.h>
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <memory>

#include "Workloads.h"
#include "quillane/search/PiCellSearch.h"

namespace {

constexpr int kNumPoints = 1000000;

// Inputs are made once and kept.
const Workloads::WarpedCube& cubeOf(int cells) {
  static std::unique_ptr<Workloads::WarpedCube> s_cubes[256];
  if (!s_cubes[cells])
    s_cubes[cells] = std::make_unique<Workloads::WarpedCube>(Workloads::warpedCube(cells, Workloads::gyroid));
  return *s_cubes[cells];
}

const std::vector<float>& points() {
  static const std::vector<float> s_points = Workloads::randomPoints(kNumPoints);
  return s_points;
}

std::unique_ptr<PbCartesianGrid3D> meshOf(int cells, int isDataDuplicate) {
  const auto& cube = cubeOf(cells);
  return std::make_unique<PbCartesianGrid3D>(cube.num, cube.num, cube.num, cube.x.data(), cube.y.data(), cube.z.data(),
                                             isDataDuplicate);
}

// Whether the inputs are the bits that other figures were measured on.
bool isIntact(int cells) {
  const auto& cube = cubeOf(cells);
  const bool isSmall = cells == 50;
  return cube.hashOfNodes() == (isSmall ? 0x9bb03703b2d39f3dULL : 0xd4ae9b217ebf556dULL) &&
         Workloads::hash(cube.values) == (isSmall ? 0x119491156c322055ULL : 0x37c5b4ef3299c0d5ULL) &&
         Workloads::hash(Workloads::hexahedra(cube)) == (isSmall ? 0xf8235e7c0b966179ULL : 0x4e0ab9a59d9a56beULL) &&
         Workloads::hash(Workloads::tetrahedra(cube)) == (isSmall ? 0x9b175a2c56a76b71ULL : 0xc79a87e2c708b9beULL) &&
         Workloads::hash(points()) == 0xbb0d644892d2c599ULL;
}

const Workloads::Square& square() {
  static const Workloads::Square s_square = Workloads::square(1001, true);
  return s_square;
}

PbCartesianGrid2D surfaceOf(bool isRaised) {
  return PbCartesianGrid2D(1001, 1001, square().x.data(), square().y.data(),
                           isRaised ? square().values.data() : nullptr, 0);
}

bool isSquareIntact() {
  return Workloads::hash(square().values) == 0x72aa8afd1d85e187ULL &&
         Workloads::hash(Workloads::triangles(square())) == 0x2a0d320d8e9589f5ULL;
}

std::size_t allocatedBytes() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

void octreeBuild(benchmark::State& state) {
  const int cells = static_cast<int>(state.range(0));
  if (!isIntact(cells)) return state.SkipWithError("the input isn't the one meant");
  const auto mesh = meshOf(cells, 0);
  for (auto _ : state) {
    const auto search = PiCellSearch::make(*mesh, 0);
    state.counters["bytes/cell"] = double(search->tree()->memorySize()) / mesh->getNumCells();
    state.counters["entries/cell"] = double(search->tree()->numEntries()) / mesh->getNumCells();
  }
}
BENCHMARK(octreeBuild)->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond);

// A million points at random places of the cube, all of which are in a cell; the octree is there.
void locateInVolume(benchmark::State& state) {
  const auto mesh = meshOf(static_cast<int>(state.range(0)), 0);
  SbVec3f pcoord;
  mesh->findContainingCell(SbVec3f(0, 0, 0), 0, pcoord);
  int numFound = 0;
  for (auto _ : state) {
    numFound = 0;
    for (int p = 0; p < kNumPoints; ++p) {
      const float* c = &points()[3 * static_cast<std::size_t>(p)];
      numFound += mesh->findContainingCell(SbVec3f(c[0], c[1], c[2]), 0, pcoord) != nullptr;
    }
  }
  state.counters["found"] = numFound;
  state.counters["s/point"] =
      benchmark::Counter(kNumPoints, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(locateInVolume)->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond);

// Along a path in steps of a tenth of a cell, each search starting at the cell before.
void locateAlongPath(benchmark::State& state) {
  const auto mesh = meshOf(100, 0);
  SbVec3f pcoord;
  mesh->findContainingCell(SbVec3f(0, 0, 0), 0, pcoord);
  const int num = 10000;
  for (auto _ : state) {
    const PbCell* cell = nullptr;
    for (int n = 0; n < num; ++n) {
      const float t = 0.002F * float(n);
      cell = mesh->findContainingCell(SbVec3f(0.9F * std::sin(t), 0.9F * std::cos(t), 0.9F - 1e-5F * float(n)), 0,
                                      pcoord, cell);
    }
    benchmark::DoNotOptimize(cell);
  }
  state.SetItemsProcessed(state.iterations() * num);
}
BENCHMARK(locateAlongPath)->Unit(benchmark::kMillisecond);

// A million quadrangles, flat or raised.
void locateInSurface(benchmark::State& state) {
  if (!isSquareIntact()) return state.SkipWithError("the input isn't the one meant");
  const PbCartesianGrid2D mesh = surfaceOf(state.range(0) != 0);
  SbVec3f pcoord;
  int numFound = 0;
  mesh.findContainingCell(SbVec3f(0, 0, 0), 0, pcoord);
  for (auto _ : state) {
    numFound = 0;
    for (int p = 0; p < kNumPoints; ++p) {
      const float* c = &points()[3 * static_cast<std::size_t>(p)];
      const float x = 3 * c[0], y = 3 * c[1];
      const float z = state.range(0) ? static_cast<float>(Workloads::peaks(double(x), double(y))) : 0;
      numFound += mesh.findContainingCell(SbVec3f(x, y, z), 0, pcoord) != nullptr;
    }
  }
  state.counters["found"] = numFound;
}
BENCHMARK(locateInSurface)->ArgName("raised")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void surfaceIndexBuild(benchmark::State& state) {
  const PbCartesianGrid2D mesh = surfaceOf(state.range(0) != 0);
  for (auto _ : state) {
    const auto search = PiCellSearch::make(mesh, 0);
    state.counters["bytes/cell"] = double(search->tree()->memorySize()) / mesh.getNumCells();
    state.counters["entries/cell"] = double(search->tree()->numEntries()) / mesh.getNumCells();
  }
}
BENCHMARK(surfaceIndexBuild)->ArgName("raised")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// What a grid that copied its coordinates holds, with tables of rows or without.
void gridMemory(benchmark::State& state) {
  for (auto _ : state) {
    const std::size_t before = allocatedBytes();
    const auto mesh = meshOf(100, 1);
    if (state.range(0)) {
      int numX, numY, numZ;
      const float *const *const *x, *const *const *y, *const *const *z;
      mesh->getGeometry(numX, numY, numZ, x, y, z);
    }
    const auto bytes = static_cast<double>(allocatedBytes() - before);
    state.counters["bytes/node"] = bytes / mesh->getNumNodes();
    state.counters["bytes/cell"] = bytes / mesh->getNumCells();
  }
}
BENCHMARK(gridMemory)->ArgName("rows")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void meshSums(benchmark::State& state) {
  const auto mesh = meshOf(100, 0);
  for (auto _ : state) benchmark::DoNotOptimize(mesh->getVolume());
  state.counters["volume"] = double(mesh->getVolume());
}
BENCHMARK(meshSums)->Unit(benchmark::kMillisecond);

}  // namespace
