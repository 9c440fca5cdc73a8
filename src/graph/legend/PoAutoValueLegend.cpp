#include <Ormelle/PoAutoValueLegend.h>

#include <Inventor/nodes/SoGroup.h>

#include <algorithm>
#include <cmath>

#include "graph/axis/PiLinearGradations.h"
#include "graph/legend/PiLegendShapes.h"
#include "graph/legend/PiLegendState.h"
#include "graph/legend/PiValueLegendState.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_ABSTRACT_SOURCE(PoAutoValueLegend)

using PiLegendShapes::Direction;

PoAutoValueLegend::PoAutoValueLegend() {
  PO_KIT_CONSTRUCTOR(PoAutoValueLegend);
  PO_KIT_ADD_FIELD(start, (0, 0));
  PO_KIT_ADD_FIELD(end, (1, 1));
  PO_KIT_CONSTRUCTED(PoAutoValueLegend);
  watchField(start);
  watchField(end);
}

PoAutoValueLegend::~PoAutoValueLegend() = default;

// The rectangle in the coordinates of the legend; false if it isn't one.
bool PoAutoValueLegend::beginLegend(SbVec2f& origin, float& width, float& height) {
  const SbVec2f stretch = state().scale;
  const SbVec2f first(start.getValue()[0] * stretch[0], start.getValue()[1] * stretch[1]);
  const SbVec2f second(end.getValue()[0] * stretch[0], end.getValue()[1] * stretch[1]);
  origin.setValue(std::min(first[0], second[0]), std::min(first[1], second[1]));
  width = std::abs(second[0] - first[0]);
  height = std::abs(second[1] - first[1]);
  setRevertOrder(first[1], second[1]);
  return width > 0 && height > 0 && std::isfinite(width) && std::isfinite(height);
}

void PoAutoValueLegend::drawFrame(const SbVec2f& origin, float width, float height, Plimit& limits) {
  SbVec2f inner;
  float innerWidth, innerHeight, titleWidth, titleHeight;
  computeMarginA(origin, width, height, inner, innerWidth, innerHeight);
  computeTitleSizeA(innerWidth, innerHeight, titleWidth, titleHeight);
  drawBackgroundA(origin, width, height);
  limits = {inner[0], inner[0] + innerWidth, inner[1], inner[1] + innerHeight};
  drawTitleA(titleWidth, titleHeight, limits);
}

// --- separate boxes --------------------------------------------------------------------------------------------------

void PoAutoValueLegend::drawBoxLegendBoxesA(SoGroup* boxes, SoGroup* borders, const SbVec2f& origin, float width,
                                            float height, int boxIndex) {
  const SbVec2f max = origin + SbVec2f(width, height);
  const PiValueLegendState::Box& shown = values().boxes[static_cast<size_t>(boxIndex)];
  PiLegendShapes::addFilled(origin, max, isRevertOrder() ? Direction::DOWN : Direction::UP, shown.pieces, boxes);
  PiLegendShapes::addBorder(origin, max, borders);
}

// The multiplier has a line of its own above upright legends, and stands beside lying ones.
void PoAutoValueLegend::computeGraphicSizeForValues(float& across, float& down, float& least) {
  const PiValueLegendState& v = values();
  if (v.tenPower == 0) return;
  float letters = 0;
  for (const std::string& text : {std::string("x 10"), std::to_string(v.tenPower)}) {
    const SbBox3f& extents = state().measuring.measure(text.c_str());
    if (!extents.isEmpty()) letters += extents.getMax()[0];
  }
  if (PiLegendLayout::isAside(state().valuePosition)) {
    down += PiLegendLayout::MULTIPLIER_HEIGHT + PiLegendLayout::MULTIPLIER_GAP;
    least = letters;
  } else {
    across += letters + PiLegendLayout::MULTIPLIER_GAP;
    least = PiLegendLayout::MULTIPLIER_LETTERS;
  }
}

void PoAutoValueLegend::makeBoxes(const std::function<void(const std::vector<float>& shown)>& make) {
  setDefaultAttr();
  computeValuesList();
  PiValueLegendState& v = values();
  deleteBoxRepresentationList();
  v.tenPower = 0;
  if (!v.list.empty()) {
    std::vector<float> shown;
    const PiValueLegendState::Range range = PiValueLegendState::rangeOf(*this, static_cast<int>(v.list.size()));
    for (int i = range.first; i <= range.last; i += range.period) shown.push_back(v.list[static_cast<size_t>(i)]);
    v.chooseFormat(shown);
    if (v.hasLower) {
      v.boxes.emplace_back();
      computeUndefBoxRepresentation(0, -1);
    }
    make(shown);
    if (v.hasUpper) {
      v.boxes.emplace_back();
      computeUndefBoxRepresentation(-1, static_cast<int>(v.boxes.size()) - 1);
    }
  }
  std::vector<SbString> texts;
  for (const PiValueLegendState::Box& made : v.boxes) texts.push_back(made.text);
  drawBoxesLegend(static_cast<int>(texts.size()), texts.data());
}

void PoAutoValueLegend::addBox(float value1, float value2, const SbString& text, int twoValues) {
  PiValueLegendState::Box& made = values().boxes.emplace_back();
  made.value1 = value1;
  made.value2 = value2;
  made.text = text;
  if (valueAddStringVisibility.getValue()) made.text += valueAddString.getValue();
  computeBoxColors(static_cast<int>(values().boxes.size()) - 1, twoValues);
}

void PoAutoValueLegend::drawBoxesLegend(int numBoxes, const SbString* texts) {
  SbVec2f origin;
  float width, height;
  if (!beginLegend(origin, width, height)) return;
  Plimit limits;
  drawFrame(origin, width, height, limits);
  PiLegendState& s = state();
  if (PiEnumField::get(valueVisibility, VISIBILITY_ON, VISIBILITY_OFF) == VISIBILITY_OFF || numBoxes == 0) {
    texts = nullptr;
    values().tenPower = 0;
  }

  PiLegendLayout::Grid grid;
  grid.numBoxes = numBoxes;
  grid.numColumns = std::clamp<int>(numColumns.getValue(), 1, std::max(1, numBoxes));
  grid.numRows = std::max(1, (numBoxes + grid.numColumns - 1) / grid.numColumns);
  const float ratio = boxRatio.getValue() > 0 && std::isfinite(boxRatio.getValue()) ? boxRatio.getValue() : 1;
  grid.boxWidth = ratio * PiLegendLayout::BOX_HEIGHT;
  grid.valuePosition = s.valuePosition;
  const bool isByRow =
      PiEnumField::get(incrementType, HORIZONTAL_INCREMENT, VERTICAL_INCREMENT) == HORIZONTAL_INCREMENT;
  grid.columnWidths.assign(static_cast<size_t>(grid.numColumns), 0);
  for (int i = 0; texts && i < numBoxes; ++i) {
    const SbBox3f& text = s.measuring.measure(texts[i].getString());
    float& widest = grid.columnWidths[static_cast<size_t>(isByRow ? i % grid.numColumns : i / grid.numRows)];
    if (!text.isEmpty()) widest = std::max(widest, text.getMax()[0]);
  }
  computeGraphicSizeForValues(grid.moreAcross, grid.moreDown, grid.least);
  grid.fit(limits.xmax - limits.xmin, limits.ymax - limits.ymin);
  s.valueSize = grid.size;
  drawMultFactor(limits);
  drawBoxesLegendBoxesA(numBoxes, grid.boxWidth, grid.boxHeight, grid.numRows, grid.numColumns, numBoxes - 1,
                        grid.columnWidths.data(), grid.gaps, limits);
  PiText text;
  text.setAttributes(&s.text);
  drawValuesLegendBoxesA(grid.numRows, grid.numColumns, texts ? numBoxes : 0, texts, grid.columnWidths.data(),
                         grid.gaps, limits, text);
}

// --- one long box ----------------------------------------------------------------------------------------------------

namespace {

struct ShownText {
  PiLegendLayout::OneBox::Text layout;
  SbString text;
};

// Which values are written; `keep` of them, evenly, always the first.
std::vector<float> writtenValues(const std::vector<float>& list, PoAutoValueLegend::ValDistrib distribution,
                                 const PoValueLegend& legend, int keepEvery) {
  std::vector<float> written;
  const auto num = static_cast<int>(list.size());
  if (distribution == PoAutoValueLegend::VAL_MIN_MAX && num > 1) return {list.front(), list.back()};
  if (distribution == PoAutoValueLegend::VAL_LINEAR && num > 1) {
    PiLinearGradations::make(true, list.front(), list.back(), 0).values(list.back(), written);
  } else {
    const PiValueLegendState::Range range = PiValueLegendState::rangeOf(legend, num);
    for (int i = range.first; i <= range.last; i += range.period) written.push_back(list[static_cast<size_t>(i)]);
  }
  std::vector<float> kept;
  for (size_t i = 0; i < written.size(); i += static_cast<size_t>(keepEvery)) kept.push_back(written[i]);
  return kept;
}

}  // namespace

void PoAutoValueLegend::drawOneBoxLegend(ValDistrib distribution, float maxValueSize, int lowerUpperBoxes) {
  setDefaultAttr();
  computeValuesList();
  SbVec2f origin;
  float width, height;
  if (!beginLegend(origin, width, height)) return;
  if (!PiLegendLayout::isAside(state().valuePosition)) setRevertOrder(start.getValue()[0], end.getValue()[0]);
  Plimit limits;
  drawFrame(origin, width, height, limits);
  drawOneBox(distribution, maxValueSize, lowerUpperBoxes, limits);
}

void PoAutoValueLegend::drawOneBox(ValDistrib distribution, float maxValueSize, int lowerUpperBoxes, Plimit limits) {
  PiLegendState& s = state();
  PiValueLegendState& v = values();
  const bool isUpright = PiLegendLayout::isAside(s.valuePosition);
  const float across = isUpright ? limits.xmax - limits.xmin : limits.ymax - limits.ymin;
  const float length = isUpright ? limits.ymax - limits.ymin : limits.xmax - limits.xmin;
  const auto num = static_cast<int>(v.list.size());
  const bool isShown = PiEnumField::get(valueVisibility, VISIBILITY_ON, VISIBILITY_OFF) == VISIBILITY_ON && num > 0;
  const auto widthOf = [&](const char* text) {
    const SbBox3f& extents = s.measuring.measure(text);
    return extents.isEmpty() ? 0 : extents.getMax()[0];
  };

  PiLegendLayout::OneBox one;
  one.isSingle = num == 1;
  one.hasEnds = num > 1 && lowerUpperBoxes;
  one.endLength = num > 1 ? 1.0F / static_cast<float>(num - 1) : 0.5F;
  std::vector<SbString> texts;
  // Where texts would become illegible, fewer are written.
  constexpr float illegible = 0.012F;
  int keepEvery = 1;
  for (const int step : {1, 2, 5, 10, 20, 50, 100, 200, 500, 1000}) {
    keepEvery = step;
    texts.clear();
    one.texts.clear();
    float widest = 0;
    const auto add = [&](float place, const SbString& text) {
      const float textWidth = widthOf(text.getString());
      widest = std::max(widest, textWidth);
      one.texts.push_back({place, isUpright ? PiLegendLayout::TEXT_LINE : textWidth + PiLegendLayout::VALUE_MARGIN});
      texts.push_back(text);
    };
    v.tenPower = 0;
    if (isShown) {
      const std::vector<float> written = writtenValues(v.list, distribution, *this, keepEvery);
      v.chooseFormat(written);
      const bool hasUndef = one.hasEnds || one.isSingle;
      if (v.hasLower && hasUndef) add(-1, lowerUndefString.getValue());
      for (const float value : written) {
        SbString text(v.textOf(value).c_str());
        if (valueAddStringVisibility.getValue()) text += valueAddString.getValue();
        add(num > 1 ? (value - v.list.front()) / (v.list.back() - v.list.front()) : 0.5F, text);
      }
      if (v.hasUpper && hasUndef) add(2, upperUndefString.getValue());
    }
    const float need = isUpright ? widest + PiLegendLayout::VALUE_MARGIN : PiLegendLayout::TEXT_LINE;
    one.maxSize = texts.empty() ? 0 : maxValueSize * across / need;
    one.reserve = 0;
    if (v.tenPower != 0) {
      float more = 0, down = 0, least = 0;
      computeGraphicSizeForValues(more, down, least);
      one.reserve = isUpright ? down : more;
      one.maxSize = std::min(one.maxSize, across / least);
    }
    one.fit(length);
    if (one.size >= std::min(illegible * std::max(length, across), 0.99F * one.maxSize) || texts.size() < 4) break;
  }
  s.valueSize = one.size;
  drawMultFactor(limits);

  // From places along the box and from its near side to points of the legend.
  const float strip = one.texts.empty() ? 0
                      : isUpright       ? one.size *
                                        [&] {
                                          float widest = 0;
                                          for (const SbString& text : texts)
                                            widest = std::max(widest, widthOf(text.getString()));
                                          return widest + PiLegendLayout::VALUE_MARGIN;
                                        }()
                                  : one.size * PiLegendLayout::TEXT_LINE;
  const bool isTextBefore = s.valuePosition == POS_LEFT || s.valuePosition == POS_BOTTOM;
  const float near = (isUpright ? limits.xmin : limits.ymin) + (isTextBefore ? strip : 0);
  const float far = (isUpright ? limits.xmax : limits.ymax) - (isTextBefore ? 0 : strip);
  const auto alongOf = [&](float place) {
    const float low = isUpright ? limits.ymin : limits.xmin, high = isUpright ? limits.ymax : limits.xmax;
    return isRevertOrder() ? high - place : low + place;
  };
  const auto pointOf = [&](float place, float side) {
    return isUpright ? SbVec2f(side, alongOf(place)) : SbVec2f(alongOf(place), side);
  };
  const Direction direction = isUpright ? (isRevertOrder() ? Direction::DOWN : Direction::UP)
                                        : (isRevertOrder() ? Direction::LEFT : Direction::RIGHT);

  SoGroup* boxes = newGroup("box");
  SoGroup* borders = newGroup("boxBorder");
  PiLegendShapes::beginFilled(boxes);
  const auto drawBox = [&](float from, float to, const PiValueLegendState::Box& shown) {
    const SbVec2f a = pointOf(from, near), b = pointOf(to, far);
    const SbVec2f min(std::min(a[0], b[0]), std::min(a[1], b[1])), max(std::max(a[0], b[0]), std::max(a[1], b[1]));
    PiLegendShapes::addFilled(min, max, direction, shown.pieces, boxes);
    PiLegendShapes::addBorder(min, max, borders);
  };
  if (num > 0) makeOneBox(one.hasEnds || one.isSingle);
  size_t next = 0;
  if (one.hasEnds || one.isSingle) drawBox(one.lowerStart, one.start, v.boxes[next++]);
  for (int i = 1; i < num; ++i) {
    const auto placeOf = [&](int k) {
      return one.at((v.list[static_cast<size_t>(k)] - v.list.front()) / (v.list.back() - v.list.front()));
    };
    drawBox(placeOf(i - 1), placeOf(i), v.boxes[next++]);
  }
  if (one.hasEnds || one.isSingle) drawBox(one.end, one.upperEnd, v.boxes[next]);
  styleBoxBorders();

  SoGroup* group = newGroup("valueText");
  setElementFont("valueText", !texts.empty() && one.size > 0, s.valueFontName, one.size);
  PiText text;
  text.setAttributes(&s.text);
  text.setFont("", one.size);
  text.setGroup(group);
  text.setAlignment(!isUpright ? PiText::CENTER : isTextBefore ? PiText::RIGHT : PiText::LEFT, PiText::HALF);
  const float side =
      isTextBefore ? near - PiLegendLayout::TEXT_GAP * one.size : far + PiLegendLayout::TEXT_GAP * one.size;
  for (size_t i = 0; i < texts.size(); ++i) {
    const SbVec2f point = pointOf(one.placeOf(one.texts[i]), side);
    text.setPosition(SbVec3f(point[0], point[1], 0));
    text.build(texts[i].getString());
  }
}

// The records of the boxes of one long one: from value to value, and before and behind them what lies beyond.
void PoAutoValueLegend::makeOneBox(bool hasEnds) {
  PiValueLegendState& v = values();
  const auto num = static_cast<int>(v.list.size());
  newBoxRepresentationList(num - 1 + (hasEnds ? 2 : 0));
  const int first = hasEnds ? 1 : 0, last = static_cast<int>(v.boxes.size()) - 1;
  for (int i = 0; i + 1 < num; ++i) {
    PiValueLegendState::Box& shown = v.boxes[static_cast<size_t>(first + i)];
    shown.value1 = v.list[static_cast<size_t>(i)];
    shown.value2 = v.list[static_cast<size_t>(i + 1)];
    computeBoxColors(first + i, 1);
  }
  if (!hasEnds) return;
  const float step = num > 1 ? (v.list.back() - v.list.front()) / static_cast<float>(num - 1)
                             : std::max(1.0F, std::abs(v.list.front()));
  if (v.hasLower) {
    computeUndefBoxRepresentation(0, -1);
  } else {
    v.boxes[0].value1 = v.list.front() - step;
    v.boxes[0].value2 = v.list.front();
    computeBoxColors(0, 1);
  }
  if (v.hasUpper) {
    computeUndefBoxRepresentation(-1, last);
  } else {
    v.boxes[static_cast<size_t>(last)].value1 = v.list.back();
    v.boxes[static_cast<size_t>(last)].value2 = v.list.back() + step;
    computeBoxColors(last, 1);
  }
}
