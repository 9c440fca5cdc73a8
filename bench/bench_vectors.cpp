#include <cmath>
#include <vector>

#include <benchmark/benchmark.h>

#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoBase.h>
#include <Ormelle/PoMesh3DVec.h>
#include <Ormelle/PoOrmelle.h>

namespace {

/// The flow A sin z + C cos y, B sin x + A cos z, C sin y + B cos x at n x n x n nodes over two pi.
std::vector<SbVec3f> flow(int n) {
  const double pi = 3.14159265358979323846;
  const double a = std::sqrt(3.0);
  const double b = std::sqrt(2.0);
  std::vector<SbVec3f> vectors;
  vectors.reserve(static_cast<std::size_t>(n) * static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i)
    for (int j = 0; j < n; ++j)
      for (int k = 0; k < n; ++k) {
        const double x = 2 * pi * i / (n - 1);
        const double y = 2 * pi * j / (n - 1);
        const double z = 2 * pi * k / (n - 1);
        vectors.emplace_back(static_cast<float>(a * std::sin(z) + std::cos(y)),
                             static_cast<float>(b * std::sin(x) + a * std::cos(z)),
                             static_cast<float>(std::sin(y) + b * std::cos(x)));
      }
  return vectors;
}

/// A rebuild of glyphs at every node: bodies as lines with flat arrows (0), or solid arrows alone (1).
void glyphs(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  PoOrmelle::init();
  PoBase::setNumThreads(static_cast<int>(state.range(2)));
  {
    const std::vector<SbVec3f> vectors = flow(n);
    const float side = 6.2831853f;
    PbRegularCartesianGrid3D mesh(n, n, n, 0, 0, 0, side, side, side, 1);
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
