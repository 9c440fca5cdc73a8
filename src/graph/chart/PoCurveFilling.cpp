#include <Ormelle/PoCurveFilling.h>

#include <Inventor/nodes/SoGroup.h>

#include <cmath>

#include "graph/chart/PiChartCurve.h"
#include "graph/chart/PiSweep.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_SOURCE(PoCurveFilling)

PoCurveFilling::PoCurveFilling() {
  PO_KIT_CONSTRUCTOR(PoCurveFilling);
  PO_KIT_ADD_CATALOG_ENTRY(curveFilling, SoGroup, alternateRep);
  PO_KIT_DEFINE_ENUM_VALUE(Orientation, FILL_TO_X);
  PO_KIT_DEFINE_ENUM_VALUE(Orientation, FILL_TO_Y);
  PO_KIT_DEFINE_ENUM_VALUE(Side, BOTH_SIDES);
  PO_KIT_DEFINE_ENUM_VALUE(Side, ABOVE_THRESHOLD);
  PO_KIT_DEFINE_ENUM_VALUE(Side, BELOW_THRESHOLD);
  PO_KIT_ADD_FIELD(orientation, (FILL_TO_Y));
  PO_KIT_ADD_FIELD(threshold, (0));
  PO_KIT_ADD_FIELD(side, (BOTH_SIDES));
  PO_KIT_SET_ENUM_TYPE(orientation, Orientation);
  PO_KIT_SET_ENUM_TYPE(side, Side);
  PO_KIT_CONSTRUCTED(PoCurveFilling);
  watchField(orientation);
  watchField(threshold);
  watchField(side);
  ownPart(curveFilling);
  beginWatching();
}

PoCurveFilling::~PoCurveFilling() = default;

void PoCurveFilling::rebuild() {
  if (isPostponed()) return;
  preRebuild();
  const float base = threshold.getValue();
  const int across = PiEnumField::get(orientation, FILL_TO_Y, FILL_TO_Y) == FILL_TO_X ? 0 : 1;
  const Side filled = PiEnumField::get(side, BELOW_THRESHOLD, BOTH_SIDES);
  PiChartCurve curve;
  if (std::isfinite(base)) curve = PiChartCurve::makeCut(currentMesh(), *this, getState(), across, base);

  PiSweep sweep(2, PiSweep::FLAT, curve.points.size());
  const auto addSection = [&](std::size_t p) {
    SbVec3f corners[] = {SbVec3f(curve.points[p][0], curve.points[p][1], 0), {}};
    corners[1] = corners[0];
    corners[1][across] = base;
    sweep.add(corners, static_cast<int>(p));
  };
  // A segment lies on one side, since the curve has a point wherever it passes the threshold.
  const auto isFilled = [&](std::size_t segment) {
    const float start = curve.points[segment][across], end = curve.points[segment + 1][across];
    if (start == base && end == base) return false;
    return filled == BOTH_SIDES || ((start > base || end > base) == (filled == ABOVE_THRESHOLD));
  };
  curve.forEachRun([&](std::size_t first, std::size_t last) {
    bool isOpen = false;
    for (std::size_t s = first; s < last; ++s) {
      if (!isFilled(s)) {
        isOpen = false;
        continue;
      }
      if (!isOpen) {
        sweep.startRun();
        addSection(s);
      }
      isOpen = true;
      addSection(s + 1);
    }
  });
  setPart("curveFilling", sweep.finish({curve.material.get(), curve.isPerPart}));
  postRebuild();
}
