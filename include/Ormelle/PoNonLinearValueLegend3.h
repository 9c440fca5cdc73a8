#ifndef ORMELLE_PONONLINEARVALUELEGEND3_H
#define ORMELLE_PONONLINEARVALUELEGEND3_H

#include <Ormelle/PoAutoValueLegend.h>

/// One long box in the colours of the data mapping, cut at all values, as a PoLinearValueLegend with `ALL_VALUES`.
class ORMELLE_API PoNonLinearValueLegend3 : public PoAutoValueLegend {
  PO_KIT_HEADER(PoNonLinearValueLegend3, PoAutoValueLegend);

 public:
  SoSFFloat maxValueSize;    ///< part of the room across that texts may take, 0 to 1; 0.6 by default
  SoSFBool lowerUpperBoxes;  ///< boxes for what lies beyond the values; TRUE by default

  PoNonLinearValueLegend3();
  PoNonLinearValueLegend3(const SbVec2f& start, const SbVec2f& end);

  void rebuild() override;

 protected:
  ~PoNonLinearValueLegend3() override;
};

#endif
