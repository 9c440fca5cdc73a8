#include "graph/chart/PiChartCurve.h"

#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbMesh1D.h>
#include <Ormelle/PoChart.h>
#include <Ormelle/PoDataMappingElement.h>

#include <memory>

#include "graph/chart/PiFiniteRuns.h"

namespace {

/// What a mesh answered: new arrays, which are ours to free.
struct Answer {
  int num = 0;
  float* x = nullptr;
  float* y = nullptr;
  SoMaterial* material = nullptr;
  int* index = nullptr;
};

/// From which transparency on a point isn't drawn; above 1 for none.
float transparencyLeftOut(const PoChart& chart, SoState* state) {
  if (chart.getColorSource() != PoChart::COLOR_MAPPING_SOURCE) return 2;
  const PbDataMapping* mapping = PoDataMappingElement::get(state);
  if (!mapping) return 2;
  // Only values without a colour have any transparency if the mapping doesn't show it.
  return mapping->isTransparencyEnabled() ? mapping->getTransparencyValueDeletedParts() : 1e-6F;
}

void findGaps(PiChartCurve& curve, float leftOut) {
  const SoMFFloat* transparency = curve.material ? &curve.material->transparency : nullptr;
  const int numTransparencies = transparency ? transparency->getNum() : 0;
  const auto isHidden = [&](std::size_t point) {
    return numTransparencies > 1 && (*transparency)[static_cast<int>(point) % numTransparencies] >= leftOut;
  };
  for (std::size_t s = 0; s + 1 < curve.points.size(); ++s) {
    const bool isGap = !PiFiniteRuns::isFinite(curve.points[s]) || !PiFiniteRuns::isFinite(curve.points[s + 1]) ||
                       isHidden(s) || (!curve.isPerPart && isHidden(s + 1));
    if (!isGap) continue;
    if (curve.gaps.empty()) curve.gaps.resize(curve.points.size() - 1);
    curve.gaps[s] = 1;
  }
  if (leftOut < 0.5F && numTransparencies > 0) curve.material->transparency = 0.0F;
}

PiChartCurve curveOf(const Answer& answer, const PbMesh1D& mesh, const PoChart& chart, SoState* state) {
  const std::unique_ptr<float[]> x(answer.x), y(answer.y);
  const std::unique_ptr<int[]> index(answer.index);
  PiChartCurve curve;
  curve.material.reset(answer.material);
  curve.isPerPart = chart.getColorBinding() == PoChart::PER_PART;
  curve.points.resize(static_cast<std::size_t>(answer.num));
  for (std::size_t i = 0; i < curve.points.size(); ++i) curve.points[i].setValue(x[i], y[i]);
  if (index) curve.nodePoints.assign(index.get(), index.get() + mesh.getNumNodes());
  findGaps(curve, transparencyLeftOut(chart, state));
  return curve;
}

}  // namespace

PiChartCurve PiChartCurve::make(const PbMesh1D* mesh, const PoChart& chart, SoState* state) {
  if (!mesh) return PiChartCurve();
  Answer answer;
  mesh->getXYGeometry(&chart, state, answer.num, answer.x, answer.y, answer.material, 1, answer.index);
  return curveOf(answer, *mesh, chart, state);
}

PiChartCurve PiChartCurve::makeCut(const PbMesh1D* mesh, const PoChart& chart, SoState* state, int axis,
                                   float threshold) {
  if (!mesh) return PiChartCurve();
  Answer answer;
  int numCuts, *cuts;
  mesh->getGeometryInterThreshold(&chart, state, axis, threshold, answer.num, answer.x, answer.y, answer.material, 1,
                                  answer.index, numCuts, cuts);
  delete[] cuts;
  return curveOf(answer, *mesh, chart, state);
}
