#include <Ormelle/PoTube.h>

#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodes/SoGroup.h>
#include <Ormelle/PoProfile.h>
#include <Ormelle/PoProfileElement.h>

#include <span>
#include <vector>

#include "graph/chart/PiChartCurve.h"
#include "graph/chart/PiMitre.h"
#include "graph/chart/PiProfileOutline.h"
#include "graph/chart/PiSweep.h"

PO_KIT_SOURCE(PoTube)

namespace {

SoGroup* makeTube(const PiChartCurve& curve, const std::vector<SbVec2f>& outline, const SbVec3f& stretch) {
  if (outline.empty()) return nullptr;
  const auto numCorners = static_cast<int>(outline.size());
  PiSweep sweep(numCorners, PiSweep::CLOSED, curve.points.size());
  std::vector<SbVec3f> corners(outline.size());
  curve.forEachRun([&](std::size_t first, std::size_t last) {
    const std::span<const SbVec2f> run(&curve.points[first], last - first + 1);
    const std::vector<SbVec2f> mitres = mitresOf(run, SbVec2f(stretch[0], stretch[1]));
    sweep.startRun();
    for (std::size_t p = 0; p < run.size(); ++p) {
      for (std::size_t c = 0; c < outline.size(); ++c)
        corners[c].setValue(run[p][0] + mitres[p][0] * outline[c][0], run[p][1] + mitres[p][1] * outline[c][0],
                            outline[c][1] / stretch[2]);
      sweep.add(corners.data(), static_cast<int>(first + p));
    }
  });
  return sweep.finish({curve.material.get(), curve.isPerPart});
}

}  // namespace

PoTube::PoTube() {
  PO_KIT_CONSTRUCTOR(PoTube);
  PO_KIT_ADD_CATALOG_ENTRY(tube, SoGroup, alternateRep);
  PO_KIT_ADD_FIELD(radius, (0.02F));
  PO_KIT_CONSTRUCTED(PoTube);
  watchField(radius);
  ownPart(tube);
  beginWatching();
}

PoTube::~PoTube() = default;

void PoTube::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoProfileElement::get(getState());
}

void PoTube::preRebuild() {
  inherited::preRebuild();
  const int index = PoProfileElement::getClassStackIndex();
  if (isStateValid() && !isCacheValid() && getAllCache() && getState()->isElementEnabled(index))
    getAllCache()->addElement(getState()->getConstElement(index));
}

void PoTube::rebuild() {
  if (isPostponed()) return;
  preRebuild();
  const PoProfile* profile = PoProfileElement::get(getState());
  setPart("tube", makeTube(PiChartCurve::make(currentMesh(), *this, getState()),
                           profile ? outlineOf(*profile) : circleOutline(radius.getValue()), stretch()));
  postRebuild();
}
