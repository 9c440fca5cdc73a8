#ifndef ORMELLE_PILEGENDSTATE_H
#define ORMELLE_PILEGENDSTATE_H

#include <Inventor/SbString.h>
#include <Inventor/SbVec2f.h>
#include <Ormelle/PbMiscTextAttr.h>

#include "graph/format/PiText.h"
#include "graph/frame/PiDataInput.h"
#include "graph/legend/PiLegendLayout.h"

/// The working values of a legend: what the last rebuild took from the fields and found.
struct PiLegendState {
  explicit PiLegendState(const PoBase* kit) : slots(kit) {}

  /// All data objects of the kit, those of derived classes too.
  PiConnectedSlots slots;
  PiDataInput<PbMiscTextAttr> textInput{slots};
  PbMiscTextAttr defaultText;

  PbMiscTextAttr text;  ///< a copy of the attributes in use
  SbString titleFontName;
  SbString valueFontName;
  float titleSize = 0;     ///< as it was fitted
  float valueSize = 0;     ///< the unit of the layout
  bool isFromTop = false;  ///< the order of rows is reverted
  SbVec2f scale{1, 1};     ///< what the domain stretches the legend by
  PoLegend::Position valuePosition = PoLegend::POS_RIGHT;
  PiText measuring;  ///< of value texts, at size 1
};

#endif
