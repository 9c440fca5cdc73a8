#include <Ormelle/PoRibbon.h>

#include <Inventor/nodes/SoGroup.h>

#include <cmath>

#include "graph/chart/PiChartCurve.h"
#include "graph/chart/PiSweep.h"

PO_KIT_SOURCE(PoRibbon)

PoRibbon::PoRibbon() {
  PO_KIT_CONSTRUCTOR(PoRibbon);
  PO_KIT_ADD_CATALOG_ENTRY(ribbon, SoGroup, alternateRep);
  PO_KIT_ADD_FIELD(width, (0.1F));
  PO_KIT_CONSTRUCTED(PoRibbon);
  watchField(width);
  ownPart(ribbon);
  beginWatching();
}

PoRibbon::~PoRibbon() = default;

void PoRibbon::rebuild() {
  if (isPostponed()) return;
  preRebuild();
  const float half = width.getValue() / stretch()[2] / 2;
  PiChartCurve curve;
  if (half > 0 && std::isfinite(half)) curve = PiChartCurve::make(currentMesh(), *this, getState());
  PiSweep sweep(2, PiSweep::OPEN, curve.points.size());
  curve.forEachRun([&](std::size_t first, std::size_t last) {
    sweep.startRun();
    for (std::size_t p = first; p <= last; ++p) {
      const SbVec2f& point = curve.points[p];
      const SbVec3f corners[] = {SbVec3f(point[0], point[1], -half), SbVec3f(point[0], point[1], half)};
      sweep.add(corners, static_cast<int>(p));
    }
  });
  setPart("ribbon", sweep.finish({curve.material.get(), curve.isPerPart}));
  postRebuild();
}
