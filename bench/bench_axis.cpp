#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PoGenAxis.h>
#include <Ormelle/PoLinearAxis.h>
#include <Ormelle/PoLogAxis.h>
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <functional>
#include <string>

#include "AllocationCount.h"

namespace {

// Axes over a domain of their own length.
class BenchedAxis {
 public:
  BenchedAxis(PoCartesianAxis* axis, float length)
      : m_domain(0, 0, length, length, PbDomain::BOX_AS_GIVEN), m_axis(axis) {
    m_axis->ref();
    m_axis->end = length;
    m_axis->setDomain(&m_domain);
    m_axis->titleVisibility = PoAxis::VISIBILITY_ON;
    m_axis->titleString = "A title";
    m_axis->gridVisibility = PoAxis::VISIBILITY_ON;
    m_axis->rebuild();
  }
  ~BenchedAxis() { m_axis->unref(); }
  BenchedAxis(const BenchedAxis&) = delete;
  BenchedAxis& operator=(const BenchedAxis&) = delete;

  PoCartesianAxis* operator->() const { return m_axis; }

 private:
  PbDomain m_domain;
  PoCartesianAxis* m_axis;
};

PoCartesianAxis* newLinear(int numGradations) {
  auto* axis = new PoLinearAxis;
  axis->step = 100.0F / static_cast<float>(numGradations - 1);
  return axis;
}

PoCartesianAxis* newGeneralized(int numGradations) {
  auto* axis = new PoGenAxis;
  for (int i = 0; i < numGradations; ++i) axis->gradList.set1Value(i, ("text " + std::to_string(i)).c_str());
  return axis;
}

void rebuild(benchmark::State& state, const BenchedAxis& axis) {
  const std::size_t before = allocationCount();
  for (auto _ : state) axis->rebuild();
  const float* coords = nullptr;
  state.counters["gradations"] = axis->getMainGradCoords(coords);
  state.counters["allocations"] =
      static_cast<double>(allocationCount() - before) / static_cast<double>(state.iterations());
}

void linearAxisRebuild(benchmark::State& state) {
  rebuild(state, BenchedAxis(newLinear(static_cast<int>(state.range(0))), 100));
}
BENCHMARK(linearAxisRebuild)->Arg(5)->Arg(20)->Arg(100)->Unit(benchmark::kMicrosecond);

void generalizedAxisRebuild(benchmark::State& state) { rebuild(state, BenchedAxis(newGeneralized(20), 100)); }
BENCHMARK(generalizedAxisRebuild)->Unit(benchmark::kMicrosecond);

// 20 decades, or five with their digits.
void logAxisRebuild(benchmark::State& state) {
  auto* axis = new PoLogAxis;
  if (state.range(0) == 5) axis->decadeRep = PoLogAxis::DECADE_AUTO;
  rebuild(state, BenchedAxis(axis, static_cast<float>(state.range(0))));
}
BENCHMARK(logAxisRebuild)->Arg(5)->Arg(19)->Unit(benchmark::kMicrosecond);

// Other texts at each rebuild: what measuring costs where nothing is known yet.
void linearAxisRebuildWithNewTexts(benchmark::State& state) {
  const BenchedAxis axis(newLinear(20), 100);
  int i = 0;
  axis->gradAddStringVisibility = TRUE;
  for (auto _ : state) {
    axis->gradAddString = std::to_string(++i).c_str();
    axis->rebuild();
  }
}
BENCHMARK(linearAxisRebuildWithNewTexts)->Unit(benchmark::kMicrosecond);

// A traversal of an axis that is up to date.
void linearAxisTraversal(benchmark::State& state) {
  const BenchedAxis axis(newLinear(20), 100);
  SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
  for (auto _ : state) action.apply(axis.operator->());
}
BENCHMARK(linearAxisTraversal)->Unit(benchmark::kMicrosecond);

// Bytes that the heap holds more after 10,000 rebuilds.
void axisHeapGrowth(benchmark::State& state, PoCartesianAxis* (*make)(int)) {
  const BenchedAxis axis(make(20), 100);
  for (int i = 0; i < 100; ++i) axis->rebuild();
  double growth = 0;
  for (auto _ : state) {
    const auto before = mallinfo2().uordblks;
    for (int i = 0; i < 10000; ++i) axis->rebuild();
    growth = static_cast<double>(mallinfo2().uordblks) - static_cast<double>(before);
  }
  state.counters["bytes"] = growth;
}
BENCHMARK_CAPTURE(axisHeapGrowth, linear, newLinear)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(axisHeapGrowth, generalized, newGeneralized)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
