// Rebuilds of the kits that draw curves.

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoCurve.h>
#include <Ormelle/PoCurve3.h>
#include <Ormelle/PoCurveFilling.h>
#include <Ormelle/PoCurveLine.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoRegularMesh1D.h>
#include <Ormelle/PoRibbon.h>
#include <Ormelle/PoTube.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <ctime>
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

/// Rebuilds of a chart on a mesh of as many nodes as make a million points of its shape. What is counted is the
/// time of the processor within the rebuild, not the traversal that causes it.
template <class Kit>
class ChartScene {
 public:
  explicit ChartScene(int numNodes, int binding) {
    PoBase::init();
    m_scene = new SoSeparator;
    m_scene->ref();
    auto* mesh = new PoRegularMesh1D;
    mesh->setGeometry(numNodes, 0, 1);
    std::vector<float> values(static_cast<std::size_t>(numNodes));
    for (std::size_t n = 0; n < values.size(); ++n)
      values[n] = std::sin(314 * static_cast<float>(n) / static_cast<float>(values.size()));
    mesh->addValuesSet(0, values.data(), "wave");
    m_scene->addChild(mesh);
    m_scene->addChild(new PoLinearDataMapping);
    m_kit = new Kit;
    m_kit->colorBinding = binding;
    m_scene->addChild(m_kit);
    m_kit->addPreRebuildCallback(&ChartScene::start, this);
    m_kit->addPostRebuildCallback(&ChartScene::stop, this);
  }
  ~ChartScene() { m_scene->unref(); }
  ChartScene(const ChartScene&) = delete;
  ChartScene& operator=(const ChartScene&) = delete;

  void run(benchmark::State& state) {
    SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
    for (auto _ : state) {
      m_kit->touchKit();
      action.apply(m_scene);
      state.SetIterationTime(m_seconds);
    }
  }
  Kit* kit() { return m_kit; }

 private:
  static double now() {
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
  }
  static void start(void* scene, PoBase*) { static_cast<ChartScene*>(scene)->m_start = now(); }
  static void stop(void* scene, PoBase*) {
    static_cast<ChartScene*>(scene)->m_seconds = now() - static_cast<ChartScene*>(scene)->m_start;
  }

  SoSeparator* m_scene;
  Kit* m_kit;
  double m_start = 0, m_seconds = 0;
};

void BM_CurveLine(benchmark::State& state) {
  ChartScene<PoCurveLine> scene(state.range(1) ? kNumDrawn / 2 : kNumDrawn, static_cast<int>(state.range(0)));
  if (state.range(1)) scene.kit()->thicknessIndex = 0;
  scene.run(state);
}
BENCHMARK(BM_CurveLine)
    ->ArgNames({"binding", "thick"})
    ->ArgsProduct({{PoChart::INHERITED, PoChart::PER_VERTEX, PoChart::PER_PART}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

template <class Kit, int numCorners>
void BM_SweptCurve(benchmark::State& state) {
  ChartScene<Kit>(kNumDrawn / numCorners, static_cast<int>(state.range(0))).run(state);
}
BENCHMARK(BM_SweptCurve<PoCurveFilling, 2>)
    ->ArgName("binding")
    ->DenseRange(0, 2, 1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SweptCurve<PoRibbon, 2>)
    ->ArgName("binding")
    ->DenseRange(0, 2, 1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SweptCurve<PoTube, 12>)
    ->ArgName("binding")
    ->DenseRange(0, 2, 1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
