#include <Ormelle/PoSingleHistogram.h>

#include "graph/chart/PiHistogramState.h"
#include "graph/chart/PiHistogramTexts.h"

PO_KIT_SOURCE(PoSingleHistogram)

PoSingleHistogram::PoSingleHistogram() {
  PO_KIT_CONSTRUCTOR(PoSingleHistogram);
  PO_KIT_ADD_EMPTY_MFIELD(value);
  PO_KIT_ADD_EMPTY_MFIELD(name);
  PO_KIT_CONSTRUCTED(PoSingleHistogram);
  watchField(value);
  watchField(name);
  beginWatching();
}

PoSingleHistogram::~PoSingleHistogram() = default;

void PoSingleHistogram::rebuild() {
  preRebuild();
  setDefaultAttr();
  PiHistogramState& now = state();
  PiHistogramBars::Table table;
  table.values = value.getValues(0);
  table.numValues = value.getNum();
  table.isGroupedByRow = false;
  now.bars.compute(table, now.axis);
  if (!hasPlace() || now.bars.bars().empty()) {
    resetParts();
    postRebuild();
    return;
  }
  buildBars();

  PiHistogramTexts texts(*this, now, now.frame(*getDomain()));
  const float pitch = (now.axis.end - now.axis.start) / static_cast<float>(now.bars.numGroups());
  const std::vector<PiHistogramBars::Bar>& bars = now.bars.bars();
  if (PiHistogramTexts::isShown(nameVisibility, true)) {
    for (std::size_t i = 0; i < bars.size() && i < static_cast<std::size_t>(name.getNum()); ++i)
      texts.add(name[static_cast<int>(i)].getString(), bars[i].low, bars[i].high, bars[i].foot, bars[i].top,
                PiHistogramTexts::positionOf(namePosition, now.beyondFoot(bars[i].isBelow)));
    texts.build({"nameText", namePosition, namePath, nameFontName, nameFontSize}, pitch);
  } else {
    setPart("nameText", nullptr);
  }
  if (PiHistogramTexts::isShown(valueVisibility, true)) {
    const bool isAdded = PiHistogramTexts::isShown(valueAddStringVisibility, false);
    const std::vector<std::string> values =
        PiHistogramTexts::valueTexts(now, isAdded ? valueAddString.getValue().getString() : "");
    for (std::size_t i = 0; i < bars.size(); ++i)
      texts.add(values[i], bars[i].low, bars[i].high, bars[i].foot, bars[i].top,
                PiHistogramTexts::positionOf(valuePosition, now.beyondTop(bars[i].isBelow)));
    texts.build({"valueText", valuePosition, valuePath, valueFontName, valueFontSize}, pitch);
  } else {
    setPart("valueText", nullptr);
  }
  postRebuild();
}
