#include <Ormelle/PoCellFilter.h>

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoIntervalCellFilter.h>

PO_NODE_ABSTRACT_SOURCE(PoCellFilter)
PO_NODE_SOURCE(PoIntervalCellFilter)

PoCellFilter::PoCellFilter() {
  PO_NODE_CONSTRUCTOR(PoCellFilter);
  PO_NODE_CONSTRUCTED(PoCellFilter);
}

PoCellFilter::~PoCellFilter() = default;

void PoCellFilter::doAction(SoAction* action) { PoCellFilterElement::set(action->getState(), this, this); }

// Nobody could read back a class of the application. But in binary form the group around it has counted it, see
// PoNode::write().
void PoCellFilter::write(SoWriteAction* action) {
  if (action->getOutput()->isBinary()) PoNode::write(action);
}

// The name of this class would be an error for the reader, so a class without a type of its own stands there as a node
// that means nothing.
const char* PoCellFilter::getFileFormatName() const {
  return getTypeId().canCreateInstance() ? inherited::getFileFormatName() : "Info";
}

PoIntervalCellFilter::PoIntervalCellFilter() {
  PO_NODE_CONSTRUCTOR(PoIntervalCellFilter);
  PO_NODE_ADD_FIELD(min, (0));
  PO_NODE_ADD_FIELD(max, (1));
  PO_NODE_ADD_FIELD(in, (TRUE));
  PO_NODE_CONSTRUCTED(PoIntervalCellFilter);
}

PoIntervalCellFilter::~PoIntervalCellFilter() = default;

int PoIntervalCellFilter::acceptCell(int /*cellIndex*/, float value) const {
  const float lower = min.getValue(), upper = max.getValue();
  return in.getValue() ? lower < value && value < upper : value <= lower || value >= upper;
}

// Unlike a filter in general, whose rule is code, this one can be written.
void PoIntervalCellFilter::write(SoWriteAction* action) { PoNode::write(action); }
