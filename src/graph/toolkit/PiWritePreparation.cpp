#include "graph/toolkit/PiWritePreparation.h"

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoNode.h>

namespace {

// The output whose references are being counted. Values of node fields are counted by write actions of their own,
// which begin inside that of the whole scene and must not traverse again.
const SoOutput* s_counting = nullptr;

void writeNode(SoAction* action, SoNode* node) {
  auto* writeAction = static_cast<SoWriteAction*>(action);
  const SoOutput* out = writeAction->getOutput();
  if (out->getStage() != SoOutput::COUNT_REFS) {
    s_counting = nullptr;
  } else if (s_counting != out) {
    s_counting = out;
    SoCallbackAction prepare;
    prepare.setCallbackAll(TRUE);  // what is switched off is written too
    prepare.apply(node);
  }
  node->write(writeAction);
}

}  // namespace

void PiWritePreparation::install() { SoWriteAction::addMethod(SoNode::getClassTypeId(), &writeNode); }
