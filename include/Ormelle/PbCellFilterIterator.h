#ifndef ORMELLE_PBCELLFILTERITERATOR_H
#define ORMELLE_PBCELLFILTERITERATOR_H

#include <Ormelle/PbCellIterator.h>

class PoCellFilter;

/// Walks those cells of a mesh that a filter accepts.
class ORMELLE_API PbCellFilterIterator : public PbCellIterator {
 public:
  /// A null filter accepts all cells. The filter is given the cell's element of the value set `set_index`, or 0 if the
  /// set is unknown or has no element for the cell.
  PbCellFilterIterator(const PbMesh* mesh, const PoCellFilter* filter, int set_index = -1);

  void first() override;
  void next() override;

 private:
  void skipRefused();

  const PoCellFilter* m_filter;
  const float* m_values = nullptr;
  int m_numValues = 0;
};

#endif
