#include <Ormelle/PoCurveLine.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Ormelle/PbMesh1D.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "graph/chart/PiChartCurve.h"
#include "graph/chart/PiFiniteRuns.h"
#include "graph/chart/PiMitre.h"
#include "graph/chart/PiSweep.h"
#include "nodes/attribute/PiEnumField.h"
#include "quillane/emit/PiIndexList.h"
#include "quillane/mesh/PiNodeValues.h"

PO_KIT_SOURCE(PoCurveLine)

namespace {

/// A line of the toolkit.
SoGroup* makeThinLine(const PiChartCurve& curve) {
  PiIndexList coordIndex, materialIndex;
  coordIndex.reserve(curve.points.size() + 1);
  curve.forEachRun([&](std::size_t first, std::size_t last) {
    for (std::size_t p = first; p <= last; ++p) coordIndex.push_back(static_cast<int>(p));
    coordIndex.push_back(-1);
    if (curve.material && curve.isPerPart)
      for (std::size_t p = first; p < last; ++p) materialIndex.push_back(static_cast<int>(p));
  });
  if (coordIndex.size() == 0) return nullptr;
  auto* group = new SoGroup;
  if (curve.material) {
    auto* binding = new SoMaterialBinding;
    group->addChild(binding);
    binding->value = curve.isPerPart ? SoMaterialBinding::PER_PART_INDEXED : SoMaterialBinding::PER_VERTEX_INDEXED;
    group->addChild(curve.material.get());
  }
  auto* coordinate = new SoCoordinate3;
  group->addChild(coordinate);
  coordinate->point.setNum(static_cast<int>(curve.points.size()));
  SbVec3f* out = coordinate->point.startEditing();
  for (const SbVec2f& point : curve.points) {
    // Nothing refers to a point that isn't finite, but what measures coordinates may meet it.
    const bool isFinite = PiFiniteRuns::isFinite(point);
    *out++ = isFinite ? SbVec3f(point[0], point[1], 0) : SbVec3f(0, 0, 0);
  }
  coordinate->point.finishEditing();
  auto* shape = new SoIndexedLineSet;
  group->addChild(shape);
  coordIndex.handTo(shape->coordIndex);
  if (materialIndex.size() > 0) materialIndex.handTo(shape->materialIndex);
  return group;
}

/// Half the thickness at each point, from that of the nodes; NaN where it is undefined.
std::vector<float> halvesOf(const PiChartCurve& curve, const float* values, float factor, bool isPerPart) {
  std::vector<float> halves(curve.points.size());
  const auto halfOf = [&](std::size_t node) { return values[node] < 0 ? 0 : values[node] * factor / 2; };
  const std::size_t numNodes = curve.nodePoints.size();
  for (std::size_t n = 0; n < numNodes; ++n) {
    const auto first = static_cast<std::size_t>(curve.nodePoints[n]);
    const std::size_t last = n + 1 < numNodes ? static_cast<std::size_t>(curve.nodePoints[n + 1]) : first;
    double length = 0;
    for (std::size_t p = first; p < last; ++p) length += (curve.points[p + 1] - curve.points[p]).length();
    double way = 0;
    for (std::size_t p = first; p < last; ++p) {
      const auto t = static_cast<float>(isPerPart || !(length > 0) ? 0 : way / length);
      halves[p] = t > 0 ? halfOf(n) * (1 - t) + halfOf(n + 1) * t : halfOf(n);
      way += (curve.points[p + 1] - curve.points[p]).length();
    }
    if (first == last) std::fill(halves.begin() + static_cast<std::ptrdiff_t>(first), halves.end(), halfOf(n));
  }
  return halves;
}

SoGroup* makeStrip(PiChartCurve& curve, const std::vector<float>& halves, bool isPerPart, const SbVec2f& stretch) {
  if (curve.gaps.empty() && !curve.points.empty()) curve.gaps.resize(curve.points.size() - 1);
  for (std::size_t s = 0; s < curve.gaps.size(); ++s)
    if (!std::isfinite(halves[s]) || (!isPerPart && !std::isfinite(halves[s + 1]))) curve.gaps[s] = 1;

  PiSweep sweep(2, PiSweep::FLAT, curve.points.size() * (isPerPart ? 2 : 1));
  curve.forEachRun([&](std::size_t first, std::size_t last) {
    const std::span<const SbVec2f> run(&curve.points[first], last - first + 1);
    const std::vector<SbVec2f> mitres = mitresOf(run, stretch);
    const auto addSection = [&](std::size_t p, float half) {
      const SbVec2f &point = curve.points[p], side = mitres[p - first] * half;
      const SbVec3f corners[] = {SbVec3f(point[0] + side[0], point[1] + side[1], 0),
                                 SbVec3f(point[0] - side[0], point[1] - side[1], 0)};
      sweep.add(corners, static_cast<int>(p));
    };
    if (!isPerPart) {
      sweep.startRun();
      for (std::size_t p = first; p <= last; ++p) addSection(p, halves[p]);
      return;
    }
    for (std::size_t p = first; p < last; ++p) {
      sweep.startRun();
      addSection(p, halves[p]);
      addSection(p + 1, halves[p]);
    }
  });
  return sweep.finish({curve.material.get(), curve.isPerPart});
}

}  // namespace

PoCurveLine::PoCurveLine() {
  PO_KIT_CONSTRUCTOR(PoCurveLine);
  PO_KIT_ADD_CATALOG_ENTRY(curveLine, SoGroup, alternateRep);
  PO_KIT_DEFINE_ENUM_VALUE(ThicknessBinding, PER_PART_THICKNESS);
  PO_KIT_DEFINE_ENUM_VALUE(ThicknessBinding, PER_VERTEX_THICKNESS);
  PO_KIT_ADD_FIELD(thicknessBinding, (PER_VERTEX_THICKNESS));
  PO_KIT_ADD_FIELD(thicknessFactor, (1));
  PO_KIT_ADD_FIELD(thicknessIndex, (-1));
  PO_KIT_SET_ENUM_TYPE(thicknessBinding, ThicknessBinding);
  PO_KIT_CONSTRUCTED(PoCurveLine);
  watchField(thicknessBinding);
  watchField(thicknessFactor);
  watchField(thicknessIndex);
  ownPart(curveLine);
  beginWatching();
}

PoCurveLine::~PoCurveLine() = default;

void PoCurveLine::rebuild() {
  if (isPostponed()) return;
  preRebuild();
  const PbMesh1D* mesh = currentMesh();
  PiChartCurve curve = PiChartCurve::make(mesh, *this, getState());
  const float* thicknesses =
      mesh && thicknessIndex.getValue() >= 0 ? findNodeValues(*mesh, thicknessIndex.getValue()) : nullptr;
  if (thicknesses) {
    const bool isPerPart =
        PiEnumField::get(thicknessBinding, PER_VERTEX_THICKNESS, PER_VERTEX_THICKNESS) == PER_PART_THICKNESS;
    const SbVec3f stretched = stretch();
    setPart("curveLine",
            makeStrip(curve, halvesOf(curve, thicknesses, std::fabs(thicknessFactor.getValue()), isPerPart), isPerPart,
                      SbVec2f(stretched[0], stretched[1])));
  } else {
    setPart("curveLine", makeThinLine(curve));
  }
  postRebuild();
}
