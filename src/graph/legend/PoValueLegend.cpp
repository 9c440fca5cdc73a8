#include <Ormelle/PoValueLegend.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping2.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoIsovaluesListElement.h>
#include <Ormelle/PoNumericDisplayFormatElement.h>

#include <algorithm>
#include <cmath>

#include "graph/axis/PiGradFormat.h"
#include "graph/axis/PiGradStrings.h"
#include "graph/axis/PiLinearGradations.h"
#include "graph/legend/PiLegendState.h"
#include "graph/legend/PiValueLegendState.h"

PO_KIT_ABSTRACT_SOURCE(PoValueLegend)

PoValueLegend::PoValueLegend() : m_values(std::make_unique<PiValueLegendState>(state().slots)) {
  PO_KIT_CONSTRUCTOR(PoValueLegend);
  PO_KIT_ADD_TRIPLE(multFactor);
  PO_KIT_ADD_FIELD(upperUndefString, ("UNDEF>"));
  PO_KIT_ADD_FIELD(lowerUndefString, ("UNDEF<"));
  PO_KIT_ADD_FIELD(periodValue, (1));
  PO_KIT_ADD_FIELD(firstValue, (1));
  PO_KIT_ADD_FIELD(lastValue, (32767));
  PO_KIT_CONSTRUCTED(PoValueLegend);
  for (SoField* field :
       std::initializer_list<SoField*>{&upperUndefString, &lowerUndefString, &periodValue, &firstValue, &lastValue})
    watchField(*field);
}

PoValueLegend::~PoValueLegend() = default;

void PoValueLegend::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  inherited::copyContents(from, copyConnections);
  const PiValueLegendState& source = static_cast<const PoValueLegend*>(from)->values();
  values().mappingInput.give(source.mappingInput.given());
  values().isovaluesInput.give(source.isovaluesInput.given());
  values().formatInput.give(source.formatInput.given());
}

// --- data objects ----------------------------------------------------------------------------------------------------

void PoValueLegend::setDataMapping(PbDataMapping* mapping) {
  values().mappingInput.give(mapping);
  touchKit();
}

void PoValueLegend::setIsovaluesList(PbIsovaluesList* isovalues) {
  values().isovaluesInput.give(isovalues);
  touchKit();
}

void PoValueLegend::setFormat(PbNumericDisplayFormat* format) {
  values().formatInput.give(format);
  touchKit();
}

const PbDataMapping* PoValueLegend::getDataMapping() const {
  if (const PbDataMapping* given = values().mappingInput.given()) return given;
  return isStateValid() ? PoDataMappingElement::get(getState()) : nullptr;
}

const PbIsovaluesList* PoValueLegend::getIsovaluesList() const {
  if (const PbIsovaluesList* given = values().isovaluesInput.given()) return given;
  return isStateValid() ? PoIsovaluesListElement::get(getState()) : nullptr;
}

const PbNumericDisplayFormat* PoValueLegend::getFormat() const {
  if (const PbNumericDisplayFormat* given = values().formatInput.given()) return given;
  return isStateValid() ? PoNumericDisplayFormatElement::get(getState()) : nullptr;
}

void PoValueLegend::preRebuild() {
  inherited::preRebuild();
  PiValueLegendState& v = values();
  const bool isTraversed = isStateValid() != 0;
  v.mapping = v.mappingInput.resolve(isTraversed, isTraversed ? PoDataMappingElement::get(getState()) : nullptr);
  v.isovalues = v.isovaluesInput.resolve(isTraversed, isTraversed ? PoIsovaluesListElement::get(getState()) : nullptr);
  v.format = v.formatInput.resolve(isTraversed, isTraversed ? PoNumericDisplayFormatElement::get(getState()) : nullptr);
  if (!v.mappingInput.given()) dependOn(PoDataMappingElement::getClassStackIndex());
  if (!v.isovaluesInput.given()) dependOn(PoIsovaluesListElement::getClassStackIndex());
  if (!v.formatInput.given()) dependOn(PoNumericDisplayFormatElement::getClassStackIndex());
}

void PoValueLegend::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
  PoIsovaluesListElement::get(getState());
  PoNumericDisplayFormatElement::get(getState());
}

// --- values and boxes ------------------------------------------------------------------------------------------------

void PoValueLegend::computeValuesList() {
  constexpr size_t maxValues = 1024;
  PiValueLegendState& v = values();
  v.list.clear();
  v.isFromList = v.isovalues != nullptr;
  v.hasLower = v.hasUpper = false;
  int hasMin = 0, hasMax = 0;
  float minThreshold = 0, maxThreshold = 0;
  if (v.mapping) {
    v.mapping->thresholdsEnabled(hasMin, hasMax);
    v.mapping->getMinRGBThreshold(minThreshold);
    v.mapping->getMaxRGBThreshold(maxThreshold);
  }
  if (v.isovalues) {
    int num = 0, isRegular = 0;
    float min, max, step;
    const float* list = v.isovalues->getIsoList(num, min, max, step, isRegular);
    // Some of a list of millions are enough.
    const size_t stride = list ? std::max<size_t>(1, static_cast<size_t>(num) / maxValues) : 1;
    for (size_t i = 0; list && i < static_cast<size_t>(num); i += stride) v.list.push_back(list[i]);
  } else if (v.mapping && v.mapping->getClassType() == PbDataMapping::LINEAR) {
    SbColor color;
    float first = 0, last = 0;
    static_cast<const PbLinearDataMapping*>(v.mapping)->getValues(first, color, last, color);
    float low = std::min(first, last), high = std::max(first, last);
    if (hasMin && minThreshold > low) low = minThreshold;
    if (hasMax && maxThreshold < high) high = maxThreshold;
    if (std::isfinite(low) && std::isfinite(high) && low < high)
      PiLinearGradations::make(true, low, high, 0).values(high, v.list);
    else if (std::isfinite(low))
      v.list.push_back(low);
  } else if (v.mapping && v.mapping->getClassType() == PbDataMapping::NON_LINEAR2) {
    int num = 0;
    const float* levels = static_cast<const PbNonLinearDataMapping2*>(v.mapping)->getValuesList(num);
    v.list.assign(levels, levels + num);
  }
  std::erase_if(v.list, [](float value) { return !std::isfinite(value); });
  std::sort(v.list.begin(), v.list.end());
  v.list.erase(std::unique(v.list.begin(), v.list.end()), v.list.end());
  if (v.list.size() > maxValues) {
    const size_t stride = v.list.size() / maxValues + 1;
    std::vector<float> some;
    for (size_t i = 0; i < v.list.size(); i += stride) some.push_back(v.list[i]);
    v.list = some;
  }
  if (v.isFromList || v.list.empty()) return;
  v.hasLower = hasMin != 0;
  v.hasUpper = hasMax != 0;
}

void PoValueLegend::newBoxRepresentationList(int n) {
  values().boxes.assign(static_cast<size_t>(std::max(0, n)), PiValueLegendState::Box());
}

void PoValueLegend::deleteBoxRepresentationList() { values().boxes.clear(); }

void PoValueLegend::computeUndefBoxRepresentation(int lower, int upper) {
  PiValueLegendState& v = values();
  using Box = PiValueLegendState::Box;
  const auto fill = [&](int index, const SoSFString& text, bool isLower) {
    if (index < 0 || index >= static_cast<int>(v.boxes.size())) return;
    Box& made = v.boxes[static_cast<size_t>(index)];
    made.text = text.getValue();
    made.kind = Box::NO_COLOR;
    if (!v.mapping) return;
    float threshold = 0, transparency = 0;
    const SbColor* color = isLower ? v.mapping->getMinRGBThreshold(threshold, transparency)
                                   : v.mapping->getMaxRGBThreshold(threshold, transparency);
    made.kind = color ? Box::ONE_COLOR : Box::NO_DATA;
    if (color) made.pieces = PiLegendColors::single(*v.mapping, threshold);
  };
  fill(lower, lowerUndefString, true);
  fill(upper, upperUndefString, false);
}

void PoValueLegend::computeBoxColors(int index, int twoValues) {
  PiValueLegendState& v = values();
  using Box = PiValueLegendState::Box;
  Box& made = v.boxes[static_cast<size_t>(index)];
  if (!v.mapping) return;
  made.pieces = twoValues ? PiLegendColors::pieces(*v.mapping, made.value1, made.value2)
                          : PiLegendColors::single(*v.mapping, made.value1);
  made.kind = made.pieces.empty() ? Box::NO_DATA : twoValues ? Box::TWO_COLORS : Box::ONE_COLOR;
}

PiValueLegendState::Range PiValueLegendState::rangeOf(const PoValueLegend& legend, int num) {
  Range range;
  range.last = legend.lastValue.getValue() - 1;
  if (range.last < 0 || range.last >= num) range.last = num - 1;
  range.first = legend.firstValue.getValue() - 1;
  if (range.first < 0 || range.first > range.last) range.first = 0;
  range.period = std::max<int>(1, legend.periodValue.getValue());
  return range;
}

void PiValueLegendState::chooseFormat(const std::vector<float>& shown) {
  const auto num = static_cast<int>(shown.size());
  numbers = PiNumericFormat();
  numbers.setFormat(format, num, shown.data(), 1);
  PbNumericDisplayFormat::FormatType type = PbNumericDisplayFormat::AUTO_FORMAT;
  int power = 0, decimals = 0;
  if (format) format->getFormat(type, power, decimals);
  if (type == PbNumericDisplayFormat::AUTO_FORMAT && num > 1) {
    PiGradStrings strings;
    char** slots = strings.alloc(num);
    PiGradFormat::write(numbers, shown, slots);
    PiGradFormat::addDecimals(numbers, shown, slots);
  }
  tenPower = num > 0 ? numbers.getTenPower() : 0;
}

std::string PiValueLegendState::textOf(float value) const {
  char text[PiNumericFormat::TEXT_SIZE];
  numbers.getString(value, text);
  return text;
}

void PoValueLegend::drawMultFactor(Plimit& limits) {
  PiLegendState& s = state();
  const PiValueLegendState& v = values();
  const bool isShown = v.tenPower != 0 && s.valueSize > 0;
  SoGroup* group = newGroup("multFactor");
  setElementFont("multFactor", isShown, s.valueFontName, s.valueSize);
  if (!isShown) return;
  const std::string exponent = std::to_string(v.tenPower);
  const float size = s.valueSize;
  const auto widthOf = [&](const char* text) {
    const SbBox3f& extents = s.measuring.measure(text);
    return extents.isEmpty() ? 0 : extents.getMax()[0] * size;
  };
  const float base = widthOf("x 10"), all = base + widthOf(exponent.c_str());
  const bool isOnTop = PiLegendLayout::isAside(s.valuePosition);
  const float gap = PiLegendLayout::MULTIPLIER_GAP * size;
  SbVec2f middle = isOnTop
                       ? PiLegendLayout::takeStrip(limits, POS_TOP, 0, PiLegendLayout::MULTIPLIER_HEIGHT * size + gap)
                       : PiLegendLayout::takeStrip(limits, POS_RIGHT, all + gap, 0);
  middle += isOnTop ? SbVec2f(0, gap / 2) : SbVec2f(gap / 2, 0);
  PiText text;
  text.setAttributes(&s.text);
  text.setFont("", size);
  text.setAlignment(PiText::LEFT, PiText::BASE);
  text.setGroup(group);
  // On top, the gap below has room for what the exponent is too high for its strip.
  const float over = PiLegendLayout::MULTIPLIER_LETTERS - PiLegendLayout::MULTIPLIER_HEIGHT;
  const float y = middle[1] - size * (isOnTop ? PiLegendLayout::MULTIPLIER_HEIGHT / 2 + over
                                              : PiLegendLayout::MULTIPLIER_LETTERS / 2);
  text.setPosition(SbVec3f(middle[0] - all / 2, y, 0));
  text.build("x 10");
  text.setPosition(SbVec3f(middle[0] - all / 2 + base, y + 0.5F * size, 0));
  text.build(exponent.c_str());
}
