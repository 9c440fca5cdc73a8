#ifndef ORMELLE_PILOGAXISSTATE_H
#define ORMELLE_PILOGAXISSTATE_H

#include <vector>

#include "graph/axis/PiLogGradations.h"
#include "graph/axis/PiLogText.h"
#include "graph/axis/PiMultiplier.h"

/// The working values of a logarithmic axis, beside those of every axis.
struct PiLogAxisState {
  int list[PoLogAxis::MAX_DECADE_LIST] = {};
  int numList = 0;
  PoLogAxis::DecadeListDef listDef = PoLogAxis::DECADE_LIST_AUTO;
  PiLogText::Choice choice;  ///< of representations: the fields until they are settled
  SbString fontName;
  float fontSize = 0;
  PiMultiplier multiplier;
  std::vector<PiLogGradation> digits;
};

#endif
