#include <vector>

#include <benchmark/benchmark.h>

#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoBase.h>
#include <Ormelle/PoMesh3DVec.h>
#include <Ormelle/PoOrmelle.h>

#include "Workloads.h"

namespace {

/// A rebuild of glyphs at every node: bodies as lines with flat arrows (0), or solid arrows alone (1).
void glyphs(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  PoOrmelle::init();
  PoBase::setNumThreads(static_cast<int>(state.range(2)));
  {
    const Workloads::FlowCube flow = Workloads::flowCube(n, false);
    const float side = 6.2831853f;
    PbRegularCartesianGrid3D mesh(n, n, n, 0, 0, 0, side, side, side, 1);
    std::vector<SbVec3f> vectors;
    for (std::size_t i = 0; i < flow.velocities.size(); i += 3) vectors.emplace_back(&flow.velocities[i]);
    mesh.addVecsSet(0, vectors.data(), "flow");
    auto* kit = new PoMesh3DVec;
    kit->ref();
    kit->setMesh(&mesh);
    kit->vecsIndex = 0;
    kit->bodyLengthFactor = 0.1f;
    if (state.range(1) != 0) {
      kit->bodyShape = PoVectorGlyphs::NO_BODY;
      kit->endArrowShape = PoVectorGlyphs::CONE;
    }
    for (auto _ : state) kit->rebuild();
    kit->unref();
  }
  PoBase::setNumThreads(0);
  PoOrmelle::finish();
  state.counters["glyphs/s"] =
      benchmark::Counter(static_cast<double>(n) * n * n, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(glyphs)
    ->ArgNames({"n", "solid", "threads"})
    ->ArgsProduct({{33, 65, 100}, {0, 1}, {1, 2}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
