#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>

#include "ChartPage.h"
#include "Dataset.h"

namespace importer {

namespace {

// Straight onto the chart, for a picture of the usual shape.
void addCamera(SoSeparator* root) {
  SoGetBoundingBoxAction measure(SbViewportRegion(800, 600));
  measure.apply(root);
  const SbBox3f box = measure.getBoundingBox();
  if (box.isEmpty() || !std::isfinite((box.getMax() - box.getMin()).length())) return;
  constexpr float kAspect = 4.0F / 3.0F, kMargin = 1.06F;
  auto* camera = new SoOrthographicCamera;
  root->insertChild(camera, 0);
  const SbVec3f size = box.getMax() - box.getMin(), center = box.getCenter();
  camera->position.setValue(center[0], center[1], box.getMax()[2] + 1);
  camera->height = std::max(size[1], size[0] / kAspect) * kMargin;
  camera->nearDistance = 0.5F;
  camera->farDistance = size[2] + 2;
  camera->focalDistance = 1;
}

}  // namespace

std::vector<std::size_t> rowsInOrder(const std::vector<double>& x) {
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < x.size(); ++row)
    if (std::isfinite(x[row])) rows.push_back(row);
  std::stable_sort(rows.begin(), rows.end(), [&](std::size_t a, std::size_t b) { return x[a] < x[b]; });
  return rows;
}

ChartScene makeChartScene(const Chart& chart) {
  ChartScene scene;
  scene.root = new SoSeparator;
  scene.root->ref();
  if (chart.kind == Chart::Kind::BARS)
    drawBars(chart, scene);
  else
    drawPlots(chart, scene);
  addCamera(scene.root);
  scene.root->unrefNoDelete();
  const bool isBars = chart.kind == Chart::Kind::BARS;
  scene.summary = isBars ? "bars of " + counted(chart.rowNames.size(), "row", "rows")
                         : std::string(chart.kind == Chart::Kind::CURVES ? "curves" : "marks") + " of " +
                               counted(chart.x.size(), "point", "points");
  std::string names;
  for (const Chart::Column& column : chart.columns) names += (names.empty() ? "" : ", ") + column.name;
  scene.summary += "; values: " + names;
  return scene;
}

}  // namespace importer
