#include "graph/chart/PiHistogramState.h"

#include <algorithm>
#include <cmath>

#include <Ormelle/PbDomain.h>

namespace {

constexpr float kFrameMargin = 0.34f;  // of the reference length, for texts beside the domain

}  // namespace

void PiHistogramState::corners(float low, float high, float foot, float top, SbVec2f& min, SbVec2f& max) const {
  const SbVec2f along(std::min(low, high), std::max(low, high));
  const SbVec2f across(std::min(foot, top), std::max(foot, top));
  min.setValue(isAlongX ? along[0] : across[0], isAlongX ? across[0] : along[0]);
  max.setValue(isAlongX ? along[1] : across[1], isAlongX ? across[1] : along[1]);
}

PoHistogram::Position PiHistogramState::beyondTop(bool isBelow) const {
  if (isAlongX) return isBelow ? PoHistogram::POS_BOTTOM_OUT : PoHistogram::POS_TOP_OUT;
  return isBelow ? PoHistogram::POS_LEFT_OUT : PoHistogram::POS_RIGHT_OUT;
}

SbBox2f PiHistogramState::frame(const PbDomain& domain) const {
  SbBox2f box;
  domain.getDomain(box);
  SbVec2f min = box.getMin();
  SbVec2f max = box.getMax();
  min[1] *= ratio;
  max[1] *= ratio;
  const float slack = 1e-4f * reference;
  for (const PiHistogramBars::Bar& bar : bars.bars()) {
    SbVec2f barMin, barMax;
    corners(bar, barMin, barMax);
    if (barMin[0] < min[0] - slack || barMin[1] < min[1] - slack || barMax[0] > max[0] + slack ||
        barMax[1] > max[1] + slack)
      return SbBox2f();
  }
  const SbVec2f margin(kFrameMargin * reference, kFrameMargin * reference);
  return SbBox2f(min - margin, max + margin);
}
