#ifndef ORMELLE_POLINEARVALUELEGEND_H
#define ORMELLE_POLINEARVALUELEGEND_H

#include <Ormelle/PoAutoValueLegend.h>

/// One long box in the colours of a data mapping, with values beside it.
/// @code
/// auto* legend = new PoLinearValueLegend(SbVec2f(1.1F, 0), SbVec2f(1.3F, 1), PoLinearValueLegend::LINEAR_VALUES);
/// separator->addChild(mapping);  // a PoLinearDataMapping
/// separator->addChild(legend);
/// @endcode
/// With `valuePosition` `POS_RIGHT` or `POS_LEFT` the box is upright, else it lies. It shows every colour that the
/// mapping gives between its first and last value, steps and kinks too. Below and above it, if `lowerUpperBoxes` is
/// set, stand boxes for what lies beyond.
class ORMELLE_API PoLinearValueLegend : public PoAutoValueLegend {
  PO_KIT_HEADER(PoLinearValueLegend, PoAutoValueLegend);

 public:
  enum ValueDistribution {
    ALL_VALUES = 0,     ///< the values, as `firstValue`, `lastValue` and `periodValue` say
    LINEAR_VALUES = 1,  ///< round values at equal steps
    MIN_MAX_VALUES = 2  ///< the first and the last value
  };

  SoSFEnum valueDistribution;  ///< a ValueDistribution, `ALL_VALUES` by default
  SoSFFloat maxValueSize;      ///< part of the room across that texts may take, 0 to 1; 0.6 by default
  SoSFBool lowerUpperBoxes;    ///< TRUE by default

  PoLinearValueLegend();
  PoLinearValueLegend(const SbVec2f& start, const SbVec2f& end, ValueDistribution distribution);

  void rebuild() override;

 protected:
  ~PoLinearValueLegend() override;
};

#endif
