// What it takes to rebuild the surface kits on an n x n grid, and to find that nothing has changed.

#include <Inventor/actions/SoCallbackAction.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLines.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <limits>
#include <memory>

#include "AllocationCount.h"
#include "Peaks.h"

namespace {

constexpr int kSmall = 1001;
constexpr int kLarge = 2829;  // 8 times as many nodes

enum Shape { FLAT, RAISED, WITH_A_HOLE };

/// A grid with its values as set 0, and a kit that shows it.
template <class Kit>
struct Scene {
  Scene(int n, int coloring, Shape shape) : grid(n, n, -3, -3, 3, 3, 0), values(peaksRipple(n)), kit(new Kit) {
    if (shape == WITH_A_HOLE) values[values.size() / 2] = std::numeric_limits<float>::quiet_NaN();
    grid.addValuesSet(0, values.data(), "peaks");
    mapping.setValues(-8, SbColor(0, 0, 1), 10, SbColor(1, 0, 0));
    kit->ref();
    kit->setMesh(&grid);
    kit->setDataMapping(&mapping);
    if (coloring == PoMesh::COLOR_TEXTURE_CONTOURING) kit->setIsovaluesList(&isovalues);
    kit->valuesIndex = 0;
    kit->coloringType = coloring;
    if (shape == RAISED) kit->zValuesIndex = 0;
    kit->rebuild();
  }
  ~Scene() { kit->unref(); }

  PbRegularCartesianGrid2D grid;
  PbLinearDataMapping mapping;
  PbIsovaluesList isovalues{-8, 10, 19};
  std::vector<float> values;
  Kit* kit;
};

void countNodes(benchmark::State& state, int n) {
  state.counters["nodes/s"] =
      benchmark::Counter(static_cast<double>(n) * n, benchmark::Counter::kIsIterationInvariantRate);
}

template <class Kit>
void rebuild(benchmark::State& state) {
  const int n = static_cast<int>(state.range(2));
  Scene<Kit> scene(n, static_cast<int>(state.range(0)), static_cast<Shape>(state.range(1)));
  for (auto _ : state) scene.kit->rebuild();
  countNodes(state, n);
}

void BM_FilledRebuild(benchmark::State& state) { rebuild<PoMeshFilled>(state); }
BENCHMARK(BM_FilledRebuild)
    ->ArgNames({"coloring", "shape", "n"})
    ->ArgsProduct({{PoMesh::COLOR_INHERITED, PoMesh::COLOR_AVERAGE, PoMesh::COLOR_MAPPING,
                    PoMesh::COLOR_TEXTURE_CONTOURING},
                   {FLAT, RAISED, WITH_A_HOLE},
                   {kSmall, kLarge}})
    ->MinTime(2)
    ->Unit(benchmark::kMillisecond);

void BM_LinesRebuild(benchmark::State& state) { rebuild<PoMeshLines>(state); }
BENCHMARK(BM_LinesRebuild)
    ->ArgNames({"coloring", "shape", "n"})
    ->ArgsProduct({{PoMesh::COLOR_INHERITED, PoMesh::COLOR_MAPPING}, {FLAT, WITH_A_HOLE}, {kSmall, kLarge}})
    ->MinTime(2)
    ->Unit(benchmark::kMillisecond);

// The least that a rebuild can take: new memory for one or two arrays of three floats a node, written once.
void BM_WriteArrays(benchmark::State& state) {
  const int n = static_cast<int>(state.range(1));
  const std::size_t num = 3 * static_cast<std::size_t>(n) * static_cast<std::size_t>(n);
  for (auto _ : state) {
    for (int array = 0; array < state.range(0); ++array) {
      std::unique_ptr<float[]> memory(new float[num]);
      std::fill(memory.get(), memory.get() + num, 1.0F);
      benchmark::DoNotOptimize(memory.get());
      benchmark::ClobberMemory();
    }
  }
  countNodes(state, n);
}
BENCHMARK(BM_WriteArrays)->ArgsProduct({{1, 2}, {kSmall, kLarge}})->MinTime(2)->Unit(benchmark::kMillisecond);

void BM_UnchangedTraversal(benchmark::State& state) {
  Scene<PoMeshFilled> scene(kSmall, PoMesh::COLOR_MAPPING, FLAT);
  SoCallbackAction action;
  action.apply(scene.kit);
  action.apply(scene.kit);
  const std::size_t before = allocationCount();
  for (auto _ : state) action.apply(scene.kit);
  state.counters["allocations"] =
      benchmark::Counter(static_cast<double>(allocationCount() - before), benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_UnchangedTraversal);

}  // namespace
