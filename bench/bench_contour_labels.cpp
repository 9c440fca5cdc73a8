// What labels add to the rebuild of isolines: about 10^5 points of lines at n = 1001, and twice as many at twice as
// many nodes a side. The labels are small, so that there are many.

#include <Ormelle/PbDomain.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoMeshContouring.h>
#include <benchmark/benchmark.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>

#include "Peaks.h"
#include "quillane/contour/PiContouringLines.h"
#include "quillane/contour/PiLabelPlacement.h"
#include "quillane/contour/PiLineClipping.h"

namespace {

constexpr int kNumLevels = 20;

struct Map {
  explicit Map(int n)
      : grid(n, n, -3, -3, 3, 3, 0), values(peaksRipple(n)), domain(-3, -3, 3, 3, PbDomain::BOX_AS_GIVEN) {
    grid.addValuesSet(0, values.data(), "peaks");
    levels.setRegularIsoList(-7.3F, 9.1F, kNumLevels);
  }

  PbRegularCartesianGrid2D grid;
  std::vector<float> values;
  PbIsovaluesList levels;
  PbDomain domain;
};

struct Scene : Map {
  explicit Scene(int n) : Map(n), kit(new PoMeshContouring) {
    kit->ref();
    kit->setMesh(&grid);
    kit->setIsovaluesList(&levels);
    kit->setDomain(&domain);
    kit->valuesIndex = 0;
    kit->majorPeriod = 2;
    kit->annotFontSize = 0.008F;
    kit->annotGap = 0.1F;
    kit->annotIsContourClip = TRUE;
  }
  ~Scene() { kit->unref(); }

  double numChildren(const char* part) const {
    auto* group = static_cast<SoGroup*>(kit->getPart(part, FALSE));
    return group ? group->getNumChildren() : 0;
  }
  double numPoints() const {
    double num = 0;
    for (const char* part : {"majorContourLine", "minorContourLine"})
      if (auto* group = static_cast<SoGroup*>(kit->getPart(part, FALSE)))
        num += static_cast<SoCoordinate3*>(group->getChild(0))->point.getNum();
    return num;
  }

  PoMeshContouring* kit;
};

// Without labels (-1), or with them under an AnnotCrossStatus; flat, or on a surface raised by the values.
void BM_ContouringRebuild(benchmark::State& state) {
  Scene scene(static_cast<int>(state.range(0)));
  scene.kit->annotIsVisible = state.range(1) >= 0;
  scene.kit->annotCrossStatus = static_cast<int>(state.range(1));
  if (state.range(2)) scene.kit->zValuesIndex = 0;
  for (auto _ : state) scene.kit->rebuild();
  state.counters["points"] = scene.numPoints();
  state.counters["labels"] = scene.numChildren("annotText");
}
BENCHMARK(BM_ContouringRebuild)
    ->ArgNames({"n", "status", "raised"})
    ->ArgsProduct({{1001, 2001}, {-1, PoMeshContouring::CROSS_CONTOUR, PoMeshContouring::DONT_CROSS_CONTOUR}, {0, 1}})
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

// The search alone, and then the cutting of the lines: with small labels that may cross lines (0) or not (1), and with
// labels so large that hardly any finds a place among the lines (2).
void BM_LabelPlacement(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  Map map(n);
  PiContouringLines worker;
  worker.setIsovaluesList(&map.levels);
  worker.setMesh(map.grid, nullptr);
  std::vector<PiLabelLine> lines;
  std::vector<PiPolyline> polylines;
  for (const PiIsoline& line : worker.extract(map.values.data())) {
    const float size = state.range(1) == 2 ? 5 : 1;
    lines.push_back({line.points, 0.12F * size, 0.035F * size, state.range(1) != 0});
    polylines.push_back(line.points);
  }
  std::vector<SbVec3f> boundary;
  for (int side = 0; side < 4; ++side) {
    for (int i = 0; i + 1 < n; ++i) {
      const float along = -3 + 6 * static_cast<float>(i) / static_cast<float>(n - 1);
      boundary.push_back(side == 0   ? SbVec3f(along, -3, 0)
                         : side == 1 ? SbVec3f(3, along, 0)
                         : side == 2 ? SbVec3f(-along, 3, 0)
                                     : SbVec3f(-3, -along, 0));
    }
  }
  boundary.push_back(SbVec3f(boundary.front()));
  const PiPolyline outline(boundary);
  std::size_t numLabels = 0, numPieces = 0;
  for (auto _ : state) {
    PiLabelPlacement placement(PiLabelPlacement::TANGENTIAL, 0.6, false);
    placement.setBoundary({&outline, 1});
    const std::vector<PiPlacedLabel> labels = placement.place(lines);
    std::vector<PiLabelBox> boxes;
    for (const PiPlacedLabel& label : labels) boxes.push_back(label.box);
    numLabels = labels.size();
    numPieces = PiLineClipping(std::move(boxes)).clip(polylines).pieces.size();
  }
  state.counters["labels"] = static_cast<double>(numLabels);
  state.counters["pieces"] = static_cast<double>(numPieces);
}
BENCHMARK(BM_LabelPlacement)
    ->ArgNames({"n", "forbidden"})
    ->ArgsProduct({{1001, 2001, 4001}, {0, 1, 2}})
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
