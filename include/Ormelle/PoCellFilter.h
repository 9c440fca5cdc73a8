#ifndef ORMELLE_POCELLFILTER_H
#define ORMELLE_POCELLFILTER_H

#include <Ormelle/PoNode.h>

/// Root of the nodes that say which cells of a mesh the kits behind them show; puts itself in PoCellFilterElement.
///
/// An application derives its own filter and says in acceptCell() what to keep. It must touch() the node when the
/// answers change. Such a filter isn't written to files, unless it overrides `write`; to be written or copied it needs
/// a type of its own, see PoSubNode.h.
/// @code
/// class EvenCells : public PoCellFilter {
///   int acceptCell(int cellIndex, float) const override { return cellIndex % 2 == 0; }
/// };
/// separator->insertChild(new EvenCells, 0);
/// @endcode
class ORMELLE_API PoCellFilter : public PoNode {
  PO_NODE_ABSTRACT_HEADER(PoCellFilter, PoNode);

 public:
  /// Whether the cell is shown. `value` is the kit's value of that cell, 0 if it has none. Called once or more for each
  /// cell that may come into sight, at each rebuild.
  virtual int acceptCell(int cellIndex, float value) const = 0;

  void doAction(SoAction* action) override;
  /// Writes nothing, but in binary form, where the number of nodes that follow is already written.
  void write(SoWriteAction* action) override;

 protected:
  PoCellFilter();
  const char* getFileFormatName() const override;
  ~PoCellFilter() override;
};

#endif
