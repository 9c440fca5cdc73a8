#include <Ormelle/PoGenAxis.h>

#include <algorithm>
#include <vector>

#include "graph/axis/PiAxisState.h"
#include "graph/axis/PiGradStrings.h"
#include "graph/axis/PiGradations.h"

PO_KIT_SOURCE(PoGenAxis)

PoGenAxis::PoGenAxis() {
  PO_KIT_CONSTRUCTOR(PoGenAxis);
  PO_KIT_ADD_FIELD(gradList, (""));
  PO_KIT_CONSTRUCTED(PoGenAxis);
  watchField(gradList);
  beginWatching();
}

PoGenAxis::PoGenAxis(const SbVec3f& axisStart, float axisEnd, PoCartesianAxis::Type axisType, const char** list,
                     short num)
    : PoGenAxis() {
  start = axisStart;
  end = axisEnd;
  type = axisType;
  gradList.setNum(list ? std::max<int>(0, num) : 0);
  for (int i = 0; i < gradList.getNum(); ++i) gradList.set1Value(i, list[i] ? list[i] : "");
}

PoGenAxis::PoGenAxis(const PoGenAxis& other) : PoGenAxis() { *this = other; }

PoGenAxis& PoGenAxis::operator=(const PoGenAxis& other) {
  if (this != &other) copyAxis(other);
  return *this;
}

PoGenAxis::~PoGenAxis() = default;

void PoGenAxis::rebuild() {
  preRebuild();
  float axisStart, axisEnd;
  if (beginAxis(axisStart, axisEnd)) {
    chooseGradations(axisStart, axisEnd);
    buildAxisLine(axisStart, axisEnd);
    buildTicksAndGrids();
    buildGradTextPart();
    buildTitlePart(axisStart, axisEnd);
  }
  postRebuild();
}

void PoGenAxis::chooseGradations(float axisStart, float axisEnd) {
  const int num = std::min(gradList.getNum(), PiGradations::MAX_GRADATIONS);
  float gradStart, gradEnd;
  computeGradLimit(axisStart, axisEnd, gradStart, gradEnd);
  std::vector<float>& coords = state().allCoords;
  coords.clear();
  for (int i = 0; i < num; ++i) {
    const double part = num > 1 ? static_cast<double>(i) / (num - 1) : 0;
    coords.push_back(static_cast<float>(gradStart + part * (static_cast<double>(gradEnd) - gradStart)));
  }
  char** slots = allocGradString(num);
  for (int i = 0; i < num; ++i) {
    slots[i][0] = 0;
    PiGradStrings::append(slots[i], gradList[i].getString());
    PiGradStrings::append(slots[i], state().attributes.addedString());
  }
  computeGradList(gradStart, gradEnd, 0, num, const_cast<const char**>(slots), coords.data());
}
