#ifndef ORMELLE_PONONLINEARVALUELEGEND2_H
#define ORMELLE_PONONLINEARVALUELEGEND2_H

#include <Ormelle/PoAutoValueLegend.h>

/// A box for each value, in its colour. Beside bands of isovalues it shows each band by its lower isovalue.
class ORMELLE_API PoNonLinearValueLegend2 : public PoAutoValueLegend {
  PO_KIT_HEADER(PoNonLinearValueLegend2, PoAutoValueLegend);

 public:
  PoNonLinearValueLegend2();
  PoNonLinearValueLegend2(const SbVec2f& start, const SbVec2f& end);

  void rebuild() override;

 protected:
  ~PoNonLinearValueLegend2() override;
};

#endif
