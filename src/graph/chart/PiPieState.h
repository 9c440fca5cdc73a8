#ifndef ORMELLE_PIPIESTATE_H
#define ORMELLE_PIPIESTATE_H

#include <string>
#include <vector>

#include <Inventor/SbBox2f.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNumericDisplayFormat.h>

#include "graph/chart/PiPieSlices.h"
#include "graph/frame/PiDataInput.h"

/// The data objects of a pie, and what its rebuild found.
struct PiPieState {
  explicit PiPieState(const PoBase* kit) : slots(kit) {}

  PiConnectedSlots slots;
  PiDataInput<PbMiscTextAttr> textInput{slots};
  PiDataInput<PbNumericDisplayFormat> formatInput{slots};

  PbMiscTextAttr text;
  const PbNumericDisplayFormat* format = nullptr;  ///< of the rebuild under way; null: automatic
  float reference = 1;                             ///< the width of the domain
  SbBox2f frame;                                   ///< the domain, if the pie lies inside

  PiPieSlices slices;
  /// One entry a displayed slice.
  std::vector<float> pulled;
  std::vector<std::string> names;
  std::vector<std::string> texts;
  std::vector<std::string> values;
  std::vector<std::string> percents;
};

#endif
