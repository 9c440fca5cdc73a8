#include <Ormelle/PoPieChart.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <unordered_map>

#include <Inventor/SoPath.h>
#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PoMiscTextAttrElement.h>
#include <Ormelle/PoNumericDisplayFormatElement.h>

#include "graph/chart/PiChartColors.h"
#include "graph/chart/PiChartFormat.h"
#include "graph/chart/PiPieSliceParts.h"
#include "graph/chart/PiPieState.h"

PO_KIT_ABSTRACT_SOURCE(PoPieChart)

namespace {

constexpr char kSliceName[] = "Slice";

float finiteOrZero(float value) { return std::isfinite(value) ? value : 0; }

}  // namespace

PoPieChart::PoPieChart() : m_pieState(std::make_unique<PiPieState>(this)) {
  PO_KIT_CONSTRUCTOR(PoPieChart);
  PO_KIT_ADD_TRIPLE(slice);
  PO_KIT_ADD_TRIPLE(sliceBorder);
  PO_KIT_ADD_TRIPLE(intAnnotBox);
  PO_KIT_ADD_TRIPLE(intAnnotBoxBorder);
  PO_KIT_ADD_TRIPLE(intAnnotText);
  PO_KIT_ADD_TRIPLE(intAnnotValue);
  PO_KIT_ADD_TRIPLE(intAnnotPercent);
  PO_KIT_ADD_TRIPLE(extAnnotBox);
  PO_KIT_ADD_TRIPLE(extAnnotBoxBorder);
  PO_KIT_ADD_TRIPLE(extAnnotText);
  PO_KIT_ADD_TRIPLE(extAnnotValue);
  PO_KIT_ADD_TRIPLE(extAnnotPercent);

  using enum PoAxis::Visibility;
  PO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_OFF);
  PO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_ON);
  PO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_DEPEND);
  PO_KIT_DEFINE_ENUM_VALUE(PercentStatus, ABSOLUTE);
  PO_KIT_DEFINE_ENUM_VALUE(PercentStatus, PERCENTAGE);
  PO_KIT_DEFINE_ENUM_VALUE(IntAnnotPosition, RADIAL_INT_POS);
  PO_KIT_DEFINE_ENUM_VALUE(IntAnnotPosition, HOR_INT_POS);
  PO_KIT_DEFINE_ENUM_VALUE(ExtAnnotPosition, RADIAL_EXT_POS);
  PO_KIT_DEFINE_ENUM_VALUE(ExtAnnotPosition, HOR_EXT_POS);
  PO_KIT_DEFINE_ENUM_VALUE(ExtAnnotPosition, HOR_ALIGNED_EXT_POS);
  PO_KIT_DEFINE_ENUM_VALUE(ExtAnnotPosition, VERT_ALIGNED_EXT_POS);
  PO_KIT_DEFINE_ENUM_VALUE(ExtAnnotPosition, SQUARE_ALIGNED_EXT_POS);
  PO_KIT_DEFINE_ENUM_VALUE(Alignment, LEFT_ALIGN);
  PO_KIT_DEFINE_ENUM_VALUE(Alignment, CENTER_ALIGN);
  PO_KIT_DEFINE_ENUM_VALUE(Alignment, RIGHT_ALIGN);
  PO_KIT_DEFINE_ENUM_VALUE(Alignment, INWARDS_ALIGN);
  PO_KIT_DEFINE_ENUM_VALUE(Alignment, OUTWARDS_ALIGN);

  PO_KIT_ADD_EMPTY_MFIELD(sliceValue);
  PO_KIT_ADD_EMPTY_MFIELD(sliceText);
  PO_KIT_ADD_EMPTY_MFIELD(sliceColor);
  PO_KIT_ADD_EMPTY_MFIELD(sliceToTranslateNumber);
  PO_KIT_ADD_EMPTY_MFIELD(sliceToTranslateValue);
  PO_KIT_ADD_FIELD(sliceGroupActive, (FALSE));
  PO_KIT_ADD_FIELD(sliceGroupMinValue, (0));
  PO_KIT_ADD_FIELD(sliceGroupFlagMin, (ABSOLUTE));
  PO_KIT_ADD_FIELD(sliceGroupString, ("Others"));
  PO_KIT_ADD_FIELD(sliceAngleStep, (0.05f));
  PO_KIT_ADD_FIELD(intAnnotPosition, (HOR_INT_POS));
  PO_KIT_ADD_FIELD(extAnnotPosition, (HOR_EXT_POS));
  PO_KIT_ADD_FIELD(intAnnotAlignment, (CENTER_ALIGN));
  PO_KIT_ADD_FIELD(extAnnotAlignment, (INWARDS_ALIGN));
  PO_KIT_ADD_FIELD(intAnnotTextVisibility, (VISIBILITY_OFF));
  PO_KIT_ADD_FIELD(intAnnotValueVisibility, (VISIBILITY_OFF));
  PO_KIT_ADD_FIELD(intAnnotPercentVisibility, (VISIBILITY_OFF));
  PO_KIT_ADD_FIELD(intAnnotAddStringVisibility, (VISIBILITY_OFF));
  PO_KIT_ADD_FIELD(extAnnotTextVisibility, (VISIBILITY_OFF));
  PO_KIT_ADD_FIELD(extAnnotValueVisibility, (VISIBILITY_OFF));
  PO_KIT_ADD_FIELD(extAnnotPercentVisibility, (VISIBILITY_OFF));
  PO_KIT_ADD_FIELD(extAnnotAddStringVisibility, (VISIBILITY_OFF));
  PO_KIT_ADD_FIELD(intAnnotTextFontName, (""));
  PO_KIT_ADD_FIELD(intAnnotTextFontSize, (0));
  PO_KIT_ADD_FIELD(intAnnotValueFontName, (""));
  PO_KIT_ADD_FIELD(intAnnotValueFontSize, (0));
  PO_KIT_ADD_FIELD(intAnnotPercentFontName, (""));
  PO_KIT_ADD_FIELD(intAnnotPercentFontSize, (0));
  PO_KIT_ADD_FIELD(extAnnotTextFontName, (""));
  PO_KIT_ADD_FIELD(extAnnotTextFontSize, (0));
  PO_KIT_ADD_FIELD(extAnnotValueFontName, (""));
  PO_KIT_ADD_FIELD(extAnnotValueFontSize, (0));
  PO_KIT_ADD_FIELD(extAnnotPercentFontName, (""));
  PO_KIT_ADD_FIELD(extAnnotPercentFontSize, (0));
  PO_KIT_ADD_FIELD(intAnnotAddString, (""));
  PO_KIT_ADD_FIELD(extAnnotAddString, (""));
  PO_KIT_ADD_FIELD(intAnnotDistance, (0));
  PO_KIT_ADD_FIELD(extAnnotDistance1, (0));
  PO_KIT_ADD_FIELD(extAnnotDistance2, (0));
  PO_KIT_ADD_FIELD(extAnnotDistance3, (0));
  PO_KIT_ADD_FIELD(arrowWidth, (0));

  PO_KIT_SET_ENUM_TYPE(intAnnotTextVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(intAnnotValueVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(intAnnotPercentVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(intAnnotAddStringVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(extAnnotTextVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(extAnnotValueVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(extAnnotPercentVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(extAnnotAddStringVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(sliceGroupFlagMin, PercentStatus);
  PO_KIT_SET_ENUM_TYPE(intAnnotPosition, IntAnnotPosition);
  PO_KIT_SET_ENUM_TYPE(extAnnotPosition, ExtAnnotPosition);
  PO_KIT_SET_ENUM_TYPE(intAnnotAlignment, Alignment);
  PO_KIT_SET_ENUM_TYPE(extAnnotAlignment, Alignment);
  PO_KIT_CONSTRUCTED(PoPieChart);

  for (SoField* field : std::initializer_list<SoField*>{&sliceValue,
                                                        &sliceText,
                                                        &sliceColor,
                                                        &sliceToTranslateNumber,
                                                        &sliceToTranslateValue,
                                                        &sliceGroupActive,
                                                        &sliceGroupMinValue,
                                                        &sliceGroupFlagMin,
                                                        &sliceGroupString,
                                                        &sliceAngleStep,
                                                        &intAnnotPosition,
                                                        &extAnnotPosition,
                                                        &intAnnotAlignment,
                                                        &extAnnotAlignment,
                                                        &intAnnotTextVisibility,
                                                        &intAnnotValueVisibility,
                                                        &intAnnotPercentVisibility,
                                                        &intAnnotAddStringVisibility,
                                                        &extAnnotTextVisibility,
                                                        &extAnnotValueVisibility,
                                                        &extAnnotPercentVisibility,
                                                        &extAnnotAddStringVisibility,
                                                        &intAnnotTextFontName,
                                                        &intAnnotTextFontSize,
                                                        &intAnnotValueFontName,
                                                        &intAnnotValueFontSize,
                                                        &intAnnotPercentFontName,
                                                        &intAnnotPercentFontSize,
                                                        &extAnnotTextFontName,
                                                        &extAnnotTextFontSize,
                                                        &extAnnotValueFontName,
                                                        &extAnnotValueFontSize,
                                                        &extAnnotPercentFontName,
                                                        &extAnnotPercentFontSize,
                                                        &intAnnotAddString,
                                                        &extAnnotAddString,
                                                        &intAnnotDistance,
                                                        &extAnnotDistance1,
                                                        &extAnnotDistance2,
                                                        &extAnnotDistance3,
                                                        &arrowWidth})
    watchField(*field);
}

PoPieChart::~PoPieChart() = default;

// --- data ------------------------------------------------------------------------------------------------------------

void PoPieChart::setMiscTextAttr(PbMiscTextAttr* attributes) {
  state().textInput.give(attributes);
  touchKit();
}

const PbMiscTextAttr* PoPieChart::getMiscTextAttr() const {
  if (const PbMiscTextAttr* given = m_pieState->textInput.given()) return given;
  return isStateValid() ? PoMiscTextAttrElement::get(getState()) : nullptr;
}

void PoPieChart::setFormat(PbNumericDisplayFormat* format) {
  state().formatInput.give(format);
  touchKit();
}

const PbNumericDisplayFormat* PoPieChart::getFormat() const {
  if (const PbNumericDisplayFormat* given = m_pieState->formatInput.given()) return given;
  return isStateValid() ? PoNumericDisplayFormatElement::get(getState()) : nullptr;
}

void PoPieChart::basicObjectChange(PbBase* object) {
  inherited::basicObjectChange(object);
  if (!state().slots.holds(object)) return;
  if (object->getChangeType() == PbBase::OBJECT_DELETED) {
    state().slots.forget(object);
    state().format = nullptr;
  }
  PbBase* held = object;
  manageBasicObjectChange(object, &held);
}

void PoPieChart::setSliceToTranslate(int number, float distance) {
  const int found = sliceToTranslateNumber.find(number, FALSE);
  const int at = found >= 0 ? found : sliceToTranslateNumber.getNum();
  if (found < 0) sliceToTranslateNumber.set1Value(at, number);
  sliceToTranslateValue.set1Value(at, distance);
}

float PoPieChart::getSliceToTranslate(int number) const {
  for (int i = 0; i < std::min(sliceToTranslateNumber.getNum(), sliceToTranslateValue.getNum()); ++i)
    if (sliceToTranslateNumber[i] == number) return finiteOrZero(sliceToTranslateValue[i]);
  return 0;
}

int PoPieChart::getPickedSliceNumber(const SoPath* path, int& number) const {
  if (!path) return 0;
  const auto* full = static_cast<const SoFullPath*>(path);
  for (int i = full->getLength() - 1; i >= 0; --i) {
    const char* name = full->getNode(i)->getName().getString();
    if (std::strncmp(name, kSliceName, sizeof kSliceName - 1) != 0) continue;
    const char* digits = name + sizeof kSliceName - 1;
    char* end = nullptr;
    const long value = std::strtol(digits, &end, 10);
    if (end == digits || *end != 0 || value < -1 || value > 0x7fffffffL) continue;
    number = static_cast<int>(value);
    return 1;
  }
  return 0;
}

// --- rebuild ---------------------------------------------------------------------------------------------------------

void PoPieChart::preRebuild() {
  inherited::preRebuild();
  if (!isStateValid() || isCacheValid() || !getAllCache()) return;
  for (const int index :
       {PoMiscTextAttrElement::getClassStackIndex(), PoNumericDisplayFormatElement::getClassStackIndex()})
    if (getState()->isElementEnabled(index)) getAllCache()->addElement(getState()->getConstElement(index));
}

void PoPieChart::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoMiscTextAttrElement::get(getState());
  PoNumericDisplayFormatElement::get(getState());
}

void PoPieChart::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  inherited::copyContents(from, copyConnections);
  const auto* other = static_cast<const PoPieChart*>(from);
  state().textInput.give(other->m_pieState->textInput.given());
  state().formatInput.give(other->m_pieState->formatInput.given());
}

void PoPieChart::rebuild() {
  preRebuild();
  savePieChartAttr();
  computeSlicePartValuesToDisplay();
  if (state().slices.displayed().empty() || !(pieRadius() > 0) || !std::isfinite(pieRadius()) ||
      !std::isfinite(pieCenter()[0]) || !std::isfinite(pieCenter()[1])) {
    resetAllPart();
  } else {
    computeSliceNames();
    computeStringsToDisplay();
    drawSlices();
    drawInternalAnnotations();
    drawExternalAnnotations();
  }
  postRebuild();
}

void PoPieChart::savePieChartAttr() {
  PiPieState& pie = state();
  const PbMiscTextAttr* attributes = pie.textInput.resolve(isStateValid(), getMiscTextAttr());
  pie.text = attributes ? *attributes : PbMiscTextAttr();
  pie.format = pie.formatInput.resolve(isStateValid(), getFormat());
  pie.reference = getDomain()->getDeltaX();

  // A domain that isn't meant to hold the pie doesn't bound its annotations.
  SbBox2f domain;
  getDomain()->getDomain(domain);
  const SbVec2f reach(pieRadius(), pieRadius());
  pie.frame.makeEmpty();
  if (domain.intersect(pieCenter() - reach) && domain.intersect(pieCenter() + reach)) pie.frame = domain;
}

void PoPieChart::computeSlicePartValuesToDisplay() {
  PiPieState& pie = state();
  PiPieSlices::Grouping grouping;
  grouping.isActive = sliceGroupActive.getValue() != FALSE;
  grouping.isPercentage = sliceGroupFlagMin.getValue() == PERCENTAGE;
  grouping.limit = sliceGroupMinValue.getValue();
  pie.slices.compute(sliceValue.getNum(), sliceValue.getValues(0), grouping);
  std::unordered_map<int, float> distances;
  for (int i = 0; i < std::min(sliceToTranslateNumber.getNum(), sliceToTranslateValue.getNum()); ++i)
    distances.emplace(sliceToTranslateNumber[i], finiteOrZero(sliceToTranslateValue[i]));
  pie.pulled.clear();
  for (const PiPieSlices::Slice& shown : pie.slices.displayed()) {
    const auto found = distances.find(shown.index());
    pie.pulled.push_back(found == distances.end() ? 0 : found->second);
  }
}

void PoPieChart::computeSliceNames() {
  state().names.clear();
  for (const PiPieSlices::Slice& shown : state().slices.displayed())
    state().names.push_back(kSliceName + std::to_string(shown.index()));
}

void PoPieChart::computeStringsToDisplay() {
  PiPieState& pie = state();
  std::vector<float> numbers;
  for (const PiPieSlices::Slice& shown : pie.slices.displayed()) numbers.push_back(static_cast<float>(shown.value));
  const PiChartFormat format(pie.format, numbers);
  const bool hasOwnDecimals = pie.formatInput.given() && format.format().isFloatingPointFormat();
  pie.percents = pie.slices.percentTexts(hasOwnDecimals ? format.format().getNumDecimal() : 0);
  pie.texts.clear();
  pie.values.clear();
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const PiPieSlices::Slice& shown = pie.slices.displayed()[i];
    pie.values.push_back(format.text(numbers[i]));
    if (shown.isGroup())
      pie.texts.emplace_back(sliceGroupString.getValue().getString());
    else
      pie.texts.emplace_back(shown.index() < sliceText.getNum() ? sliceText[shown.index()].getString() : "");
  }
}

void PoPieChart::buildSlices(bool isSolid, float zMin, float zMax) {
  std::vector<SbColor> colors;
  for (const PiPieSlices::Slice& shown : state().slices.displayed())
    colors.push_back(PiChartColors::of(sliceColor, shown.index()));
  PiPieSliceParts::Input input{state().slices, state().pulled};
  input.names = &state().names;
  input.colors = &colors;
  input.center = pieCenter();
  input.radius = pieRadius();
  input.angleStep = sliceAngleStep.getValue();
  input.isSolid = isSolid;
  input.zMin = zMin;
  input.zMax = zMax;
  const PiPieSliceParts parts(input);
  setPart("slice", parts.slices());
  setPart("sliceBorder", parts.borders());
}

void PoPieChart::resetAllPart() {
  for (const char* part :
       {"slice", "sliceBorder", "intAnnotBox", "intAnnotBoxBorder", "intAnnotText", "intAnnotValue", "intAnnotPercent",
        "extAnnotBox", "extAnnotBoxBorder", "extAnnotText", "extAnnotValue", "extAnnotPercent"})
    setPart(part, nullptr);
}
