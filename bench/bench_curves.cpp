// Rebuilds of the kits that draw curves.

#include <Ormelle/PoCurve.h>
#include <Ormelle/PoCurve3.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace {

constexpr int kNumDrawn = 1000000;

/// Points of a wave of 50 periods of which a representation makes a million.
template <class Vec>
std::vector<Vec> waveFor(int rep) {
  const int drawnOfPoint[] = {1, 1, 10, 2, 2, 2, 2, 4, 4};
  std::vector<Vec> points(static_cast<std::size_t>(kNumDrawn / drawnOfPoint[rep]));
  for (std::size_t i = 0; i < points.size(); ++i) {
    const float x = static_cast<float>(i) / static_cast<float>(points.size());
    points[i][0] = x;
    points[i][1] = std::sin(314 * x);
    if constexpr (sizeof(Vec) > 2 * sizeof(float)) points[i][2] = std::cos(314 * x);
  }
  return points;
}

void rebuildAll(benchmark::State& state, PoBase* curve) {
  curve->ref();
  for (auto _ : state) curve->rebuild();
  curve->unref();
}

void BM_Curve(benchmark::State& state) {
  PoBase::init();
  const int rep = static_cast<int>(state.range(0));
  const std::vector<SbVec2f> points = waveFor<SbVec2f>(rep);
  auto* curve = new PoCurve(static_cast<int>(points.size()), points.data(), static_cast<PoCurve::CurveRep>(rep));
  curve->isCurveFilled = state.range(1) != 0;
  curve->fillingThreshold = 0.1F;
  rebuildAll(state, curve);
}
BENCHMARK(BM_Curve)
    ->ArgNames({"rep", "filled"})
    ->ArgsProduct({benchmark::CreateDenseRange(PoCurve::CURVE_POLYLINE, PoCurve::CURVE_STAIRS_2Y, 1), {0, 1}})
    ->Unit(benchmark::kMillisecond);

/// Raised lines and markers, 0 to 5 being the types of the filter; 1,000 places where the type doesn't say all.
void BM_CurvePlaces(benchmark::State& state) {
  PoBase::init();
  const std::vector<SbVec2f> points = waveFor<SbVec2f>(PoCurve::CURVE_POLYLINE);
  auto* curve = new PoCurve(static_cast<int>(points.size()), points.data(), PoCurve::CURVE_NONE);
  const int type = static_cast<int>(state.range(0));
  curve->raiseFilterType = type;
  if (state.range(1)) curve->markerFilterType = type;
  curve->raiseIndexPeriod = curve->markerIndexPeriod = kNumDrawn / 1000;
  curve->raiseXPeriod = curve->markerXPeriod = 0.001F;
  rebuildAll(state, curve);
}
BENCHMARK(BM_CurvePlaces)
    ->ArgNames({"filter", "markers"})
    ->Args({PoCurve::ALL_POINTS, 0})
    ->Args({PoCurve::INDEX_PERIOD, 1})
    ->Args({PoCurve::X_PERIOD, 1})
    ->Unit(benchmark::kMillisecond);

void BM_Curve3(benchmark::State& state) {
  PoBase::init();
  const int rep = static_cast<int>(state.range(0));
  const std::vector<SbVec3f> points = waveFor<SbVec3f>(rep);
  rebuildAll(state, new PoCurve3(static_cast<int>(points.size()), points.data(), static_cast<PoCurve::CurveRep>(rep)));
}
BENCHMARK(BM_Curve3)
    ->ArgName("rep")
    ->DenseRange(PoCurve::CURVE_POLYLINE, PoCurve::CURVE_STAIRS_2Y, 1)
    ->Unit(benchmark::kMillisecond);

}  // namespace
