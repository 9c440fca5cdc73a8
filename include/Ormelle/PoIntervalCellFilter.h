#ifndef ORMELLE_POINTERVALCELLFILTER_H
#define ORMELLE_POINTERVALCELLFILTER_H

#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoCellFilter.h>

/// Keeps the cells whose value lies inside an interval, or those whose value doesn't.
///
/// The ends lie outside, so that the two settings of `in` part all numbers between them. A value that is no number is
/// never kept.
/// @code
/// auto* filter = new PoIntervalCellFilter;
/// filter->min = 10;
/// filter->max = 20;
/// separator->addChild(filter);
/// separator->addChild(skin);
/// @endcode
class ORMELLE_API PoIntervalCellFilter : public PoCellFilter {
  PO_NODE_HEADER(PoIntervalCellFilter, PoCellFilter);

 public:
  SoSFFloat min;  ///< 0 by default
  SoSFFloat max;  ///< 1 by default
  SoSFBool in;    ///< TRUE, the default, keeps min < value < max; FALSE keeps the others

  PoIntervalCellFilter();

  int acceptCell(int cellIndex, float value) const override;
  /// Writes the node as any other attribute node.
  void write(SoWriteAction* action) override;

 protected:
  ~PoIntervalCellFilter() override;
};

#endif
