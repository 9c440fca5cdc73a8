// Curves of a one-dimensional mesh, as charts ask for them.

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbRegularMesh1D.h>
#include <Ormelle/PoChart.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoMesh1DHints.h>
#include <Ormelle/PoOrmelle.h>
#include <Ormelle/PoPeriodFilter.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <functional>
#include <vector>

/// Draws nothing; it says how curves are coloured.
class BenchChart : public PoChart {
  PO_KIT_HEADER(BenchChart, PoChart);

 public:
  BenchChart() {
    PO_KIT_CONSTRUCTOR(BenchChart);
    PO_KIT_CONSTRUCTED(BenchChart);
  }
};

PO_KIT_SOURCE(BenchChart)

namespace {

/// A wave of 50 periods, coloured by its own values if asked, with the nodes that make `numPoints` points of the
/// interpretation or a little less.
class CurveScene {
 public:
  CurveScene(int interpretation, int numPoints, bool isColored) : m_mesh(numNodes(interpretation, numPoints), 0, 100) {
    PoOrmelle::init();
    BenchChart::initClass();
    std::vector<float> values(static_cast<size_t>(m_mesh.getNumNodes()));
    for (size_t n = 0; n < values.size(); ++n)
      values[n] = std::sin(static_cast<float>(n) * 314 / static_cast<float>(values.size()));
    m_mesh.addValuesSet(0, values.data(), "wave");
    m_chart = new BenchChart;
    m_chart->ref();
    if (isColored) m_chart->colorBinding = PoChart::PER_VERTEX;
    m_scene = new SoSeparator;
    m_scene->ref();
    auto* hints = new PoMesh1DHints;
    hints->geomInterpretation = interpretation;
    m_scene->addChild(hints);
    m_scene->addChild(new PoLinearDataMapping);
    m_scene->addChild(new SoSeparator);  // the place of a filter
    auto* probe = new SoCallback;
    probe->setCallback(
        [](void* data, SoAction* action) { static_cast<CurveScene*>(data)->m_question(action->getState()); }, this);
    m_scene->addChild(probe);
  }
  ~CurveScene() {
    m_scene->unref();
    m_chart->unref();
  }
  CurveScene(const CurveScene&) = delete;
  CurveScene& operator=(const CurveScene&) = delete;

  void setFilter(SoNode* filter) { m_scene->replaceChild(2, filter); }

  /// Runs `question` with the state, again and again, in one traversal.
  void ask(std::function<void(SoState*)> question) {
    m_question = std::move(question);
    SoGetBoundingBoxAction(SbViewportRegion(100, 100)).apply(m_scene);
  }
  const PbMesh1D& mesh() const { return m_mesh; }
  const PoChart* chart() const { return m_chart; }

 private:
  static int numNodes(int interpretation, int numPoints) {
    const int pointsOfNode[] = {1, 10, 2, 2, 2, 2, 4, 4};
    return numPoints / pointsOfNode[interpretation];
  }

  PbRegularMesh1D m_mesh;
  BenchChart* m_chart = nullptr;
  SoSeparator* m_scene = nullptr;
  std::function<void(SoState*)> m_question;
};

void release(float* x, float* y, SoMaterial* material) {
  delete[] x;
  delete[] y;
  if (!material) return;
  material->ref();
  material->unref();
}

constexpr int kNumPoints = 1000000;

void BM_CurveGeometry(benchmark::State& state) {
  CurveScene scene(static_cast<int>(state.range(0)), kNumPoints, state.range(1) != 0);
  int num = 0;
  scene.ask([&](SoState* traversal) {
    for (auto _ : state) {
      int* index;
      float *x, *y;
      SoMaterial* material;
      scene.mesh().getXYGeometry(scene.chart(), traversal, num, x, y, material, 1, index);
      delete[] index;
      release(x, y, material);
    }
  });
  state.counters["points"] = num;
}
BENCHMARK(BM_CurveGeometry)
    ->ArgNames({"interpretation", "coloured"})
    ->ArgsProduct({benchmark::CreateDenseRange(0, 7, 1), {0, 1}})
    ->Unit(benchmark::kMillisecond);

/// A threshold that the curve crosses 100 times.
void BM_CurveThreshold(benchmark::State& state) {
  CurveScene scene(PoMesh1DHints::AS_IS, kNumPoints, state.range(0) != 0);
  int numAdded = 0;
  scene.ask([&](SoState* traversal) {
    for (auto _ : state) {
      int num, *index, *added;
      float *x, *y;
      SoMaterial* material;
      scene.mesh().getGeometryInterThreshold(scene.chart(), traversal, 1, 0.1f, num, x, y, material, 1, index, numAdded,
                                             added);
      delete[] index;
      delete[] added;
      release(x, y, material);
    }
  });
  state.counters["crossings"] = numAdded;
}
BENCHMARK(BM_CurveThreshold)->ArgName("coloured")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// Places along y, each of which a wave of 50 periods has 100 times.
void BM_CurveFilter(benchmark::State& state) {
  CurveScene scene(PoMesh1DHints::AS_IS, kNumPoints, false);
  auto* filter = new PoPeriodFilter;
  filter->axis = PoMesh1DFilter::Y;
  filter->period = 2 / static_cast<float>(state.range(0));
  scene.setFilter(filter);
  int num = 0;
  scene.ask([&](SoState* traversal) {
    for (auto _ : state) {
      float *x, *y;
      SoMaterial* material;
      scene.mesh().getFilteredXYGeometry(scene.chart(), traversal, num, x, y, material);
      release(x, y, material);
    }
  });
  state.counters["points"] = num;
}
BENCHMARK(BM_CurveFilter)->ArgName("places")->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
