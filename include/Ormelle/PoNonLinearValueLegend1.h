#ifndef ORMELLE_PONONLINEARVALUELEGEND1_H
#define ORMELLE_PONONLINEARVALUELEGEND1_H

#include <Ormelle/PoAutoValueLegend.h>

/// A box for each interval between values, and one each for what is below and above all of them: "< 1", "1 _ 2", "> 2".
/// Each box runs from the colour of its lower value to that of its upper one.
class ORMELLE_API PoNonLinearValueLegend1 : public PoAutoValueLegend {
  PO_KIT_HEADER(PoNonLinearValueLegend1, PoAutoValueLegend);

 public:
  SoSFString lessLevelString;       ///< before the first value; "<" by default
  SoSFString greaterLevelString;    ///< before the last value; ">" by default
  SoSFString valueSeparatorString;  ///< between two values; " _ " by default

  PoNonLinearValueLegend1();
  PoNonLinearValueLegend1(const SbVec2f& start, const SbVec2f& end);

  void rebuild() override;

 protected:
  ~PoNonLinearValueLegend1() override;
};

#endif
