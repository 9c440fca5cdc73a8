// The four legends: each turns the list of values into boxes.

#include <Ormelle/PoLinearValueLegend.h>
#include <Ormelle/PoNonLinearValueLegend1.h>
#include <Ormelle/PoNonLinearValueLegend2.h>
#include <Ormelle/PoNonLinearValueLegend3.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "graph/legend/PiLegendState.h"
#include "graph/legend/PiValueLegendState.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_SOURCE(PoLinearValueLegend)
PO_KIT_SOURCE(PoNonLinearValueLegend1)
PO_KIT_SOURCE(PoNonLinearValueLegend2)
PO_KIT_SOURCE(PoNonLinearValueLegend3)

namespace {

// The part of the room across that texts may take; what is no number counts as 0.
float partOf(const SoSFFloat& field) {
  const float part = field.getValue();
  return part > 0 ? std::min(part, 1.0F) : 0;
}

}  // namespace

// --- one long box ----------------------------------------------------------------------------------------------------

PoLinearValueLegend::PoLinearValueLegend() {
  PO_KIT_CONSTRUCTOR(PoLinearValueLegend);
  PO_KIT_DEFINE_ENUM_VALUE(ValueDistribution, ALL_VALUES);
  PO_KIT_DEFINE_ENUM_VALUE(ValueDistribution, LINEAR_VALUES);
  PO_KIT_DEFINE_ENUM_VALUE(ValueDistribution, MIN_MAX_VALUES);
  PO_KIT_ADD_FIELD(valueDistribution, (ALL_VALUES));
  PO_KIT_ADD_FIELD(maxValueSize, (0.6F));
  PO_KIT_ADD_FIELD(lowerUpperBoxes, (TRUE));
  PO_KIT_SET_ENUM_TYPE(valueDistribution, ValueDistribution);
  PO_KIT_CONSTRUCTED(PoLinearValueLegend);
  for (SoField* field : std::initializer_list<SoField*>{&valueDistribution, &maxValueSize, &lowerUpperBoxes})
    watchField(*field);
  beginWatching();
}

PoLinearValueLegend::PoLinearValueLegend(const SbVec2f& first, const SbVec2f& second, ValueDistribution distribution)
    : PoLinearValueLegend() {
  start = first;
  end = second;
  valueDistribution = distribution;
}

PoLinearValueLegend::~PoLinearValueLegend() = default;

void PoLinearValueLegend::rebuild() {
  preRebuild();
  const ValueDistribution chosen = PiEnumField::get(valueDistribution, MIN_MAX_VALUES, ALL_VALUES);
  drawOneBoxLegend(static_cast<ValDistrib>(chosen), partOf(maxValueSize), lowerUpperBoxes.getValue());
  postRebuild();
}

PoNonLinearValueLegend3::PoNonLinearValueLegend3() {
  PO_KIT_CONSTRUCTOR(PoNonLinearValueLegend3);
  PO_KIT_ADD_FIELD(maxValueSize, (0.6F));
  PO_KIT_ADD_FIELD(lowerUpperBoxes, (TRUE));
  PO_KIT_CONSTRUCTED(PoNonLinearValueLegend3);
  watchField(maxValueSize);
  watchField(lowerUpperBoxes);
  beginWatching();
}

PoNonLinearValueLegend3::PoNonLinearValueLegend3(const SbVec2f& first, const SbVec2f& second)
    : PoNonLinearValueLegend3() {
  start = first;
  end = second;
}

PoNonLinearValueLegend3::~PoNonLinearValueLegend3() = default;

void PoNonLinearValueLegend3::rebuild() {
  preRebuild();
  drawOneBoxLegend(VAL_ALL, partOf(maxValueSize), lowerUpperBoxes.getValue());
  postRebuild();
}

// --- a box for each interval -----------------------------------------------------------------------------------------

PoNonLinearValueLegend1::PoNonLinearValueLegend1() {
  PO_KIT_CONSTRUCTOR(PoNonLinearValueLegend1);
  PO_KIT_ADD_FIELD(lessLevelString, ("<"));
  PO_KIT_ADD_FIELD(greaterLevelString, (">"));
  PO_KIT_ADD_FIELD(valueSeparatorString, (" _ "));
  PO_KIT_CONSTRUCTED(PoNonLinearValueLegend1);
  for (SoField* field : std::initializer_list<SoField*>{&lessLevelString, &greaterLevelString, &valueSeparatorString})
    watchField(*field);
  beginWatching();
}

PoNonLinearValueLegend1::PoNonLinearValueLegend1(const SbVec2f& first, const SbVec2f& second)
    : PoNonLinearValueLegend1() {
  start = first;
  end = second;
}

PoNonLinearValueLegend1::~PoNonLinearValueLegend1() = default;

void PoNonLinearValueLegend1::rebuild() {
  preRebuild();
  makeBoxes([&](const std::vector<float>& shown) {
    PiValueLegendState& v = values();
    const float mean =
        v.list.size() > 1 ? (v.list.back() - v.list.front()) / static_cast<float>(v.list.size()) : v.list.front();
    const auto text = [&](float value) { return SbString(v.textOf(value).c_str()); };
    addBox(shown.front() - mean, shown.front(), lessLevelString.getValue() + text(shown.front()), 1);
    for (size_t i = 1; i < shown.size(); ++i) {
      SbString both = text(shown[i - 1]);
      both += valueSeparatorString.getValue();
      both += text(shown[i]);
      addBox(shown[i - 1], shown[i], both, 1);
    }
    addBox(shown.back(), shown.back() + mean, greaterLevelString.getValue() + text(shown.back()), 1);
  });
  postRebuild();
}

// --- a box for each value --------------------------------------------------------------------------------------------

PoNonLinearValueLegend2::PoNonLinearValueLegend2() {
  PO_KIT_CONSTRUCTOR(PoNonLinearValueLegend2);
  PO_KIT_CONSTRUCTED(PoNonLinearValueLegend2);
  beginWatching();
}

PoNonLinearValueLegend2::PoNonLinearValueLegend2(const SbVec2f& first, const SbVec2f& second)
    : PoNonLinearValueLegend2() {
  start = first;
  end = second;
}

PoNonLinearValueLegend2::~PoNonLinearValueLegend2() = default;

void PoNonLinearValueLegend2::rebuild() {
  preRebuild();
  makeBoxes([&](const std::vector<float>& shown) {
    for (const float value : shown) addBox(value, value, values().textOf(value).c_str(), 0);
  });
  postRebuild();
}
