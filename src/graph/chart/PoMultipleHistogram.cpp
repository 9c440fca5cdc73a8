#include <Ormelle/PoMultipleHistogram.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>

#include "graph/chart/PiHistogramState.h"
#include "graph/chart/PiHistogramTexts.h"
#include "graph/chart/PiPieSlices.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_SOURCE(PoMultipleHistogram)

namespace {

std::string nameAt(const SoMFString& names, int index) {
  return index < names.getNum() ? names[index].getString() : "";
}

/// How far a group of bars reaches, along the axis and across.
struct GroupExtent {
  float low = 0;
  float high = 0;
  float bottom = 0;
  float top = 0;
  bool isEmpty = true;

  void add(const PiHistogramBars::Bar& bar) {
    if (isEmpty) {
      low = bar.low;
      high = bar.high;
      bottom = std::min(bar.foot, bar.top);
      top = std::max(bar.foot, bar.top);
      isEmpty = false;
      return;
    }
    const bool isForward = bar.high >= bar.low;
    low = isForward ? std::min(low, bar.low) : std::max(low, bar.low);
    high = isForward ? std::max(high, bar.high) : std::min(high, bar.high);
    bottom = std::min({bottom, bar.foot, bar.top});
    top = std::max({top, bar.foot, bar.top});
  }
};

/// The percentages of the bars in their groups, as they are shown.
std::vector<std::string> percentTexts(const PiHistogramBars& bars) {
  std::vector<std::vector<std::size_t>> members(static_cast<std::size_t>(bars.numGroups()));
  for (std::size_t i = 0; i < bars.bars().size(); ++i)
    members[static_cast<std::size_t>(bars.bars()[i].group)].push_back(i);
  std::vector<std::string> texts(bars.bars().size());
  for (const std::vector<std::size_t>& group : members) {
    std::vector<double> parts;
    double sum = 0;
    for (const std::size_t i : group) {
      parts.push_back(bars.bars()[i].value);
      sum += parts.back();
    }
    if (!(sum > 0)) continue;
    const std::vector<long long> shares = PiPieSlices::apportion(parts, sum, 100);
    for (std::size_t k = 0; k < group.size(); ++k)
      if (bars.bars()[group[k]].isDefined) texts[group[k]] = std::to_string(shares[k]) + "%";
  }
  return texts;
}

}  // namespace

PoMultipleHistogram::PoMultipleHistogram() {
  PO_KIT_CONSTRUCTOR(PoMultipleHistogram);
  PO_KIT_ADD_TRIPLE(sumText);
  PO_KIT_ADD_TRIPLE(barNameText);
  PO_KIT_DEFINE_ENUM_VALUE(Representation, JUXTAPOSED);
  PO_KIT_DEFINE_ENUM_VALUE(Representation, ACCUMULATED);
  PO_KIT_DEFINE_ENUM_VALUE(Representation, PERCENTAGE);
  PO_KIT_DEFINE_ENUM_VALUE(HistogPath, ROW_COLUMN);
  PO_KIT_DEFINE_ENUM_VALUE(HistogPath, COLUMN_ROW);
  PO_KIT_ADD_FIELD(numRows, (1));
  PO_KIT_ADD_EMPTY_MFIELD(value);
  PO_KIT_ADD_EMPTY_MFIELD(rowName);
  PO_KIT_ADD_EMPTY_MFIELD(columnName);
  PO_KIT_ADD_FIELD(representation, (JUXTAPOSED));
  PO_KIT_ADD_FIELD(histogPath, (ROW_COLUMN));
  PO_KIT_ADD_FIELD(barHeight, (1));
  PO_KIT_ADD_FIELD(sumVisibility, (PoAxis::VISIBILITY_DEPEND));
  PO_KIT_ADD_FIELD(sumPosition, (POS_DEPEND));
  PO_KIT_ADD_FIELD(sumPath, (PoAxis::PATH_DEPEND));
  PO_KIT_ADD_FIELD(sumFontSize, (0));
  PO_KIT_ADD_FIELD(sumFontName, (""));
  PO_KIT_SET_ENUM_TYPE(representation, Representation);
  PO_KIT_SET_ENUM_TYPE(histogPath, HistogPath);
  PO_KIT_SET_ENUM_TYPE(sumVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(sumPosition, Position);
  PO_KIT_SET_ENUM_TYPE(sumPath, TextPath);
  PO_KIT_CONSTRUCTED(PoMultipleHistogram);
  for (SoField* field :
       std::initializer_list<SoField*>{&numRows, &value, &rowName, &columnName, &representation, &histogPath,
                                       &barHeight, &sumVisibility, &sumPosition, &sumPath, &sumFontSize, &sumFontName})
    watchField(*field);
  beginWatching();
}

PoMultipleHistogram::~PoMultipleHistogram() = default;

void PoMultipleHistogram::resetParts() {
  inherited::resetParts();
  setPart("sumText", nullptr);
  setPart("barNameText", nullptr);
}

int PoMultipleHistogram::colorIndex(int index) const {
  return color.getNum() >= value.getNum() ? index : state().bars.bars()[static_cast<std::size_t>(index)].member;
}

void PoMultipleHistogram::rebuild() {
  preRebuild();
  setDefaultAttr();
  PiHistogramBars::Table table;
  table.values = value.getValues(0);
  table.numValues = value.getNum();
  table.numRows = numRows.getValue();
  table.isGroupedByRow = histogPath.getValue() != COLUMN_ROW;
  table.representation =
      static_cast<PiHistogramBars::Representation>(PiEnumField::get(representation, PERCENTAGE, JUXTAPOSED));
  table.percentageHeight = std::isfinite(barHeight.getValue()) ? barHeight.getValue() : 1;
  state().bars.compute(table, state().axis);
  if (!hasPlace() || state().bars.bars().empty()) {
    resetParts();
  } else {
    buildBars();
    buildTexts();
  }
  postRebuild();
}

void PoMultipleHistogram::buildTexts() {
  const PiHistogramState& now = state();
  const std::vector<PiHistogramBars::Bar>& bars = now.bars.bars();
  const auto shape = PiEnumField::get(representation, PERCENTAGE, JUXTAPOSED);
  const bool isStacked = shape != JUXTAPOSED;
  const bool isByRow = histogPath.getValue() != COLUMN_ROW;
  const SoMFString& groupNames = isByRow ? rowName : columnName;
  const SoMFString& memberNames = isByRow ? columnName : rowName;
  const float pitch = (now.axis.end - now.axis.start) / static_cast<float>(now.bars.numGroups());
  const float barWidth = bars.front().high - bars.front().low;

  std::vector<GroupExtent> groups(static_cast<std::size_t>(now.bars.numGroups()));
  for (const PiHistogramBars::Bar& each : bars) groups[static_cast<std::size_t>(each.group)].add(each);
  const auto beside = now.isAlongX ? POS_RIGHT_OUT : POS_TOP_OUT;

  PiHistogramTexts texts(*this, now, now.frame(*getDomain()));
  setPart("barNameText", nullptr);
  setPart("nameText", nullptr);
  if (PiHistogramTexts::isShown(nameVisibility, true)) {
    float foot = now.axis.base;
    if (memberNames.getNum() > 0) {
      for (const PiHistogramBars::Bar& each : bars) {
        const std::string text = nameAt(memberNames, each.member);
        if (!isStacked)
          texts.add(text, each.low, each.high, each.foot, each.top,
                    PiHistogramTexts::positionOf(namePosition, now.beyondFoot(each.isBelow)));
        else if (each.group == now.bars.numGroups() - 1)
          texts.add(text, each.low, each.high, each.foot, each.top, beside);
      }
      // Beside stacks there is all the room that names want.
      const float foundFoot =
          texts.build({"barNameText", namePosition, namePath, nameFontName, nameFontSize}, isStacked ? 0 : barWidth);
      if (!isStacked) foot = std::min(foot, foundFoot);
    }
    for (std::size_t i = 0; i < groups.size(); ++i) {
      const float bottom = std::min(foot, groups[i].bottom);
      texts.add(nameAt(groupNames, static_cast<int>(i)), groups[i].low, groups[i].high, bottom,
                std::max(bottom, groups[i].top), PiHistogramTexts::positionOf(namePosition, now.beyondFoot(false)));
    }
    texts.build({"nameText", namePosition, namePath, nameFontName, nameFontSize}, pitch);
  }

  setPart("sumText", nullptr);
  if (PiHistogramTexts::isShown(sumVisibility, shape == ACCUMULATED)) {
    const std::vector<std::string> sums = PiHistogramTexts::sumTexts(now);
    for (std::size_t i = 0; i < groups.size(); ++i)
      texts.add(sums[i], groups[i].low, groups[i].high, groups[i].bottom, groups[i].top,
                PiHistogramTexts::positionOf(sumPosition, now.beyondTop(false)));
    texts.build({"sumText", sumPosition, sumPath, sumFontName, sumFontSize}, pitch);
  }

  setPart("valueText", nullptr);
  if (PiHistogramTexts::isShown(valueVisibility, true)) {
    const bool isAdded = PiHistogramTexts::isShown(valueAddStringVisibility, false);
    const std::vector<std::string> shown =
        shape == PERCENTAGE ? percentTexts(now.bars)
                            : PiHistogramTexts::valueTexts(now, isAdded ? valueAddString.getValue().getString() : "");
    for (std::size_t i = 0; i < bars.size(); ++i)
      texts.add(shown[i], bars[i].low, bars[i].high, bars[i].foot, bars[i].top,
                PiHistogramTexts::positionOf(valuePosition, isStacked ? POS_CENTER : now.beyondTop(bars[i].isBelow)),
                isStacked);
    texts.build({"valueText", valuePosition, valuePath, valueFontName, valueFontSize}, barWidth);
  }
}
