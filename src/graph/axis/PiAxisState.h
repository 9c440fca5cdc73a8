#ifndef ORMELLE_PIAXISSTATE_H
#define ORMELLE_PIAXISSTATE_H

#include <vector>

#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/Plimit.h>

#include "graph/axis/PiAxisAttributes.h"
#include "graph/frame/PiDataInput.h"

/// The working values of an axis: what the last rebuild resolved and found. Kept between rebuilds, so that rebuilds
/// reuse the memory.
struct PiAxisState {
  explicit PiAxisState(const PoBase* kit) : slots(kit) {}

  /// All data objects of the kit, those of derived classes too.
  PiConnectedSlots slots;
  PiDataInput<PbMiscTextAttr> textInput{slots};
  PbMiscTextAttr defaultText;

  bool isSaved = false;  ///< a rebuild has come as far as the attributes
  PiAxisAttributes attributes;
  PbMiscTextAttr text;  ///< a copy of the attributes of texts in use
  float along = 1;      ///< the reference length: the side of the domain along the axis
  float across = 1;     ///< the side of the domain across it
  Plimit limits;        ///< of what was built, in axis coordinates
  float origin = 0;     ///< the coordinate that nodes of the axis count from: 0 but far from 0
  float axisStart = 0;  ///< the ends of the axis line
  float axisEnd = 0;
  bool isLegible = false;        ///< whether the last pass over gradation texts runs
  long firstMultiple = 0;        ///< which multiple of the step the first main gradation is; thinning keeps 0 if it can
  std::vector<float> allCoords;  ///< before they are split
  std::vector<float> mainCoords;
  std::vector<int> mainIndices;  ///< which of all gradations the main ones are
  std::vector<float> subCoords;
  std::vector<const char*> mainStrings;  ///< one for each main gradation; slots of PoAxis::allocGradString()
};

#endif
