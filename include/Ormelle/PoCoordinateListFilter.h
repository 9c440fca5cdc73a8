#ifndef ORMELLE_POCOORDINATELISTFILTER_H
#define ORMELLE_POCOORDINATELISTFILTER_H

#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoSFEnum.h>

#include <Ormelle/PoMesh1DFilter.h>

/// Picks the places of a curve whose coordinates a list names.
/// @code
/// auto* filter = new PoCoordinateListFilter;
/// filter->coord.setValues(0, 2, dates);
/// separator->addChild(filter);
/// separator->addChild(labels);
/// @endcode
class ORMELLE_API PoCoordinateListFilter : public PoMesh1DFilter {
  PO_NODE_HEADER(PoCoordinateListFilter, PoMesh1DFilter);

 public:
  SoMFFloat coord;  ///< used in the order of the list; empty by default; those beyond the curve are left out
  SoSFEnum axis;    ///< an Axis, `X` by default

  PoCoordinateListFilter();

  int isIndexFilter() const override { return 0; }
  Axis getAxis() const override;
  void getCoordinates(float min, float max, PbArrayOfFloat& coordinates) const override;

 protected:
  ~PoCoordinateListFilter() override;
};

#endif
