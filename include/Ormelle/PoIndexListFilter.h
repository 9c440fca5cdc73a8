#ifndef ORMELLE_POINDEXLISTFILTER_H
#define ORMELLE_POINDEXLISTFILTER_H

#include <Inventor/fields/SoMFInt32.h>

#include <Ormelle/PoMesh1DFilter.h>

/// Picks the nodes of a curve that a list names.
/// @code
/// auto* filter = new PoIndexListFilter;
/// filter->index.setValues(0, 3, peaks);
/// separator->addChild(filter);
/// separator->addChild(labels);
/// @endcode
class ORMELLE_API PoIndexListFilter : public PoMesh1DFilter {
  PO_NODE_HEADER(PoIndexListFilter, PoMesh1DFilter);

 public:
  SoMFInt32 index;  ///< used in the order of the list; empty by default; those outside the mesh are left out

  PoIndexListFilter();

  int isIndexFilter() const override { return 1; }
  void getIndices(int numNodes, PbArrayOfInt& indices) const override;

 protected:
  ~PoIndexListFilter() override;
};

#endif
