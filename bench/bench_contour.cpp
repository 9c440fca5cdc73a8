// What it takes to cut a surface along isovalues, all levels in one pass: joined isolines and bands as polygons, by a
// worker whose memory is there already (warm) and by a new one (cold), and by the kit that shows bands.
//
// The label names the best other library on the same arrays; the figures are its seconds of the best warm run on one
// thread of a 2.6 GHz EPYC.

#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PbTriangleMesh2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "AllocationCount.h"
#include "Workloads.h"
#include "quillane/contour/PiContouringFilled.h"
#include "quillane/contour/PiContouringLines.h"

namespace {

enum Temperature { WARM, COLD };

/// The square as a grid or, bent, as triangles.
struct GridInput {
  explicit GridInput(int n) : square(Workloads::square(n, false)), mesh(n, n, -3, -3, 3, 3, 0) {}
  Workloads::Square square;
  PbRegularCartesianGrid2D mesh;
};
struct TriangleInput {
  explicit TriangleInput(int n) : square(Workloads::square(n, true)), cells(Workloads::triangles(square)), mesh(0) {
    mesh.setGeometry(n * n, square.x.data(), square.y.data(), static_cast<int>(cells.size() / 3), cells.data());
  }
  Workloads::Square square;
  std::vector<std::int32_t> cells;
  PbTriangleMesh2D mesh;
};
/// The input of one size is kept while it is wanted.
template <class Input>
Input& input(int n) {
  static std::pair<int, std::unique_ptr<Input>> s_last;
  if (s_last.first != n) {
    s_last.second.reset();
    s_last = {n, std::make_unique<Input>(n)};
  }
  return *s_last.second;
}

template <class Worker, class Input, class Use>
void cutRepeatedly(benchmark::State& state, const std::vector<float>& levels, Use&& use) {
  const Input& in = input<Input>(static_cast<int>(state.range(0)));
  PbIsovaluesList list;
  list.setIrregularIsoList(static_cast<int>(levels.size()), levels.data());
  std::unique_ptr<Worker> worker;
  const auto cut = [&] {
    if (!worker || state.range(2) == COLD) worker = std::make_unique<Worker>();
    worker->setIsovaluesList(&list);
    worker->setMesh(in.mesh, nullptr);
    use(*worker, in.square.values.data());
  };
  cut();
  const std::size_t before = allocationCount();
  for (auto _ : state) cut();
  state.counters["allocations"] =
      benchmark::Counter(static_cast<double>(allocationCount() - before), benchmark::Counter::kAvgIterations);
  state.counters["cells/s"] =
      benchmark::Counter(static_cast<double>(in.mesh.getNumCells()), benchmark::Counter::kIsIterationInvariantRate);
}

template <class Input>
void extractLines(benchmark::State& state) {
  std::size_t numLines = 0, numPoints = 0;
  const auto measure = [&](PiContouringLines& worker, const float* values) {
    numLines = numPoints = 0;
    for (const PiIsoline& line : worker.extract(values)) {
      ++numLines;
      numPoints += line.points.size();
    }
  };
  cutRepeatedly<PiContouringLines, Input>(state, Workloads::lineLevels(static_cast<int>(state.range(1))), measure);
  state.counters["lines"] = static_cast<double>(numLines);
  state.counters["points"] = static_cast<double>(numPoints);
}

void setPeer(benchmark::State& state, const std::string& name,
             const std::map<std::pair<std::int64_t, std::int64_t>, const char*>& seconds) {
  const auto found = seconds.find({state.range(0), state.range(1)});
  if (found != seconds.end()) state.SetLabel(name + " " + found->second + " s");
}

void BM_ContourLinesGrid(benchmark::State& state) {
  extractLines<GridInput>(state);
  setPeer(state, "FlyingEdges2D+Stripper",
          {{{1001, 10}, "0.024"}, {{1001, 50}, "0.114"}, {{2829, 10}, "0.147"}, {{2829, 50}, "0.671"}});
}
BENCHMARK(BM_ContourLinesGrid)
    ->ArgNames({"n", "levels", "cold"})
    ->ArgsProduct({{1001, 2829}, {10, 50}, {WARM, COLD}})
    ->Unit(benchmark::kMillisecond);

void BM_ContourLinesTriangles(benchmark::State& state) {
  extractLines<TriangleInput>(state);
  setPeer(state, "ContourFilter+Stripper",
          {{{354, 10}, "0.060"}, {{354, 50}, "0.214"}, {{1001, 10}, "0.410"}, {{1001, 50}, "1.438"}});
}
BENCHMARK(BM_ContourLinesTriangles)
    ->ArgNames({"n", "levels", "cold"})
    ->ArgsProduct({{354, 1001}, {10, 50}, {WARM, COLD}})
    ->Unit(benchmark::kMillisecond);

template <class Input>
void cutBands(benchmark::State& state) {
  std::size_t numPolygons = 0, numPoints = 0;
  cutRepeatedly<PiContouringFilled, Input>(state, Workloads::bandEdges(static_cast<int>(state.range(1))),
                                           [&](PiContouringFilled& worker, const float* values) {
                                             worker.cut(values);
                                             numPolygons = worker.lowerIsovalues().size();
                                             numPoints = worker.cutPoints().size();
                                           });
  state.counters["polygons"] = static_cast<double>(numPolygons);
  state.counters["cutPoints"] = static_cast<double>(numPoints);
}

void BM_ContourBandsGrid(benchmark::State& state) {
  cutBands<GridInput>(state);
  setPeer(state, "contourpy (outlines only)",
          {{{1001, 10}, "0.038"}, {{1001, 50}, "0.186"}, {{2829, 10}, "0.281"}, {{2829, 50}, "1.391"}});
}
BENCHMARK(BM_ContourBandsGrid)
    ->ArgNames({"n", "bands", "cold"})
    ->ArgsProduct({{1001, 2829}, {10, 50}, {WARM, COLD}})
    ->Unit(benchmark::kMillisecond);

void BM_ContourBandsTriangles(benchmark::State& state) { cutBands<TriangleInput>(state); }
BENCHMARK(BM_ContourBandsTriangles)
    ->ArgNames({"n", "bands", "cold"})
    ->ArgsProduct({{354, 1001}, {10, 50}, {WARM, COLD}})
    ->Unit(benchmark::kMillisecond);

/// The kit also writes coordinates, a colour for each polygon and the indices into new nodes.
void BM_ContourBandsKit(benchmark::State& state) {
  GridInput& in = input<GridInput>(static_cast<int>(state.range(0)));
  const std::vector<float> levels = Workloads::bandEdges(static_cast<int>(state.range(1)));
  PbIsovaluesList list;
  list.setIrregularIsoList(static_cast<int>(levels.size()), levels.data());
  PbLinearDataMapping mapping;
  mapping.setValues(-8, SbColor(0, 0, 1), 10, SbColor(1, 0, 0));
  in.mesh.addValuesSet(0, in.square.values.data(), "peaks");
  auto* kit = new PoMeshFilled;
  kit->ref();
  kit->setMesh(&in.mesh);
  kit->setDataMapping(&mapping);
  kit->setIsovaluesList(&list);
  kit->valuesIndex = 0;
  kit->coloringType = PoMesh::COLOR_CONTOURING;
  // The second rebuild is the first for which the old and the new nodes need memory at once.
  for (int i = 0; i < 2; ++i) kit->rebuild();
  for (auto _ : state) kit->rebuild();
  kit->unref();
}
BENCHMARK(BM_ContourBandsKit)
    ->ArgNames({"n", "bands"})
    ->ArgsProduct({{1001, 2829}, {10, 50}})
    ->MinTime(2)
    ->Unit(benchmark::kMillisecond);

}  // namespace
