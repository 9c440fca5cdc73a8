#ifndef ORMELLE_POPERIODFILTER_H
#define ORMELLE_POPERIODFILTER_H

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoMesh1DFilter.h>

/// Picks places of a curve at even distances along an axis, from the curve's lowest coordinate on.
///
/// At most 1048576 places are picked, however short the period.
/// @code
/// auto* filter = new PoPeriodFilter;
/// filter->period = 0.5f;
/// separator->addChild(filter);
/// separator->addChild(markers);
/// @endcode
class ORMELLE_API PoPeriodFilter : public PoMesh1DFilter {
  PO_NODE_HEADER(PoPeriodFilter, PoMesh1DFilter);

 public:
  SoSFFloat period;  ///< 1 by default; one that isn't positive picks nothing
  SoSFEnum axis;     ///< an Axis, `X` by default

  PoPeriodFilter();

  int isIndexFilter() const override { return 0; }
  Axis getAxis() const override;
  void getCoordinates(float min, float max, PbArrayOfFloat& coordinates) const override;

 protected:
  ~PoPeriodFilter() override;
};

#endif
