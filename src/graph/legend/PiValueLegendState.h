#ifndef ORMELLE_PIVALUELEGENDSTATE_H
#define ORMELLE_PIVALUELEGENDSTATE_H

#include <string>
#include <vector>

#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoValueLegend.h>

#include "graph/format/PiNumericFormat.h"
#include "graph/frame/PiDataInput.h"
#include "graph/legend/PiLegendColors.h"

/// The working values of a value legend.
struct PiValueLegendState {
  explicit PiValueLegendState(PiConnectedSlots& slots)
      : mappingInput(slots), isovaluesInput(slots), formatInput(slots) {}

  PiDataInput<PbDataMapping> mappingInput;
  PiDataInput<PbIsovaluesList> isovaluesInput;
  PiDataInput<PbNumericDisplayFormat> formatInput;

  // In use by the running rebuild; null for none.
  const PbDataMapping* mapping = nullptr;
  const PbIsovaluesList* isovalues = nullptr;
  const PbNumericDisplayFormat* format = nullptr;

  std::vector<float> list;  ///< the values, ascending
  bool isFromList = false;  ///< they are isovalues
  bool hasLower = false;    ///< a threshold of the mapping, which the values come from, cuts off what is below them
  bool hasUpper = false;

  PiNumericFormat numbers;
  int tenPower = 0;  ///< what the multiplier says; 0 for none

  struct Box {
    enum Kind { NO_COLOR = -1, NO_DATA = 0, ONE_COLOR = 1, TWO_COLORS = 2 };
    Kind kind = NO_COLOR;
    float value1 = 0, value2 = 0;
    std::vector<PiLegendColors::Piece> pieces;
    SbString text;
  };
  std::vector<Box> boxes;

  /// Which values are shown.
  struct Range {
    int first = 0, last = -1, period = 1;
  };
  static Range rangeOf(const PoValueLegend& legend, int num);

  /// Chooses a format in which neighbours among `shown` read differently.
  void chooseFormat(const std::vector<float>& shown);
  std::string textOf(float value) const;
};

#endif
