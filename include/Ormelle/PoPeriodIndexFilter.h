#ifndef ORMELLE_POPERIODINDEXFILTER_H
#define ORMELLE_POPERIODINDEXFILTER_H

#include <Inventor/fields/SoSFInt32.h>

#include <Ormelle/PoMesh1DFilter.h>

/// Picks every so many nodes of a curve, from the first: as many as whole periods fit into the number of nodes.
/// @code
/// auto* filter = new PoPeriodIndexFilter;
/// filter->period = 12;
/// separator->addChild(filter);
/// separator->addChild(markers);
/// @endcode
class ORMELLE_API PoPeriodIndexFilter : public PoMesh1DFilter {
  PO_NODE_HEADER(PoPeriodIndexFilter, PoMesh1DFilter);

 public:
  SoSFInt32 period;  ///< 1 by default; one below 1 acts as 1

  PoPeriodIndexFilter();

  int isIndexFilter() const override { return 1; }
  void getIndices(int numNodes, PbArrayOfInt& indices) const override;

 protected:
  ~PoPeriodIndexFilter() override;
};

#endif
