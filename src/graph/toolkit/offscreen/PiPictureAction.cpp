#include "graph/toolkit/offscreen/PiPictureAction.h"

#include <Inventor/SbVec3f.h>
#include <Inventor/elements/SoFontSizeElement.h>
#include <Inventor/elements/SoLinePatternElement.h>
#include <Inventor/elements/SoLineWidthElement.h>
#include <Inventor/elements/SoPointSizeElement.h>
#include <Inventor/nodes/SoShape.h>
#include <Inventor/nodes/SoText2.h>
#include <Inventor/system/gl.h>

#include <algorithm>

SO_ELEMENT_SOURCE(PiShiftedProjectionElement);
SO_ACTION_SOURCE(PiPictureAction);

SbVec2f PiShiftedProjectionElement::s_shift(0.0f, 0.0f);
SbMatrix PiShiftedProjectionElement::s_tile = SbMatrix::identity();
float PiPictureAction::s_sizeFactor = 1.0f;

void PiShiftedProjectionElement::setTile(int column, int row, int count) {
  const auto size = static_cast<float>(count);
  s_tile = SbMatrix::identity();
  s_tile[0][0] = s_tile[1][1] = size;
  s_tile[3][0] = size - 1.0f - 2.0f * static_cast<float>(column);
  s_tile[3][1] = size - 1.0f - 2.0f * static_cast<float>(row);
}

void PiShiftedProjectionElement::initClass() {
  SO_ELEMENT_INIT_CLASS(PiShiftedProjectionElement, SoGLProjectionMatrixElement);
}

PiShiftedProjectionElement::~PiShiftedProjectionElement() = default;

void PiShiftedProjectionElement::setElt(const SbMatrix& matrix) {
  SoProjectionMatrixElement::setElt(matrix * s_tile);
  load();
}

void PiShiftedProjectionElement::pop(SoState* state, const SoElement*) {
  capture(state);
  load();
}

void PiShiftedProjectionElement::load() const {
  SbMatrix shift = SbMatrix::identity();
  shift.setTranslate(SbVec3f(s_shift[0], s_shift[1], 0.0f));
  const SbMatrix matrix = projectionMatrix * shift;
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixf(matrix[0]);
  glMatrixMode(GL_MODELVIEW);
}

void PiPictureAction::initClass() {
  if (getClassTypeId() != SoType::badType()) return;
  PiShiftedProjectionElement::initClass();
  SO_ACTION_INIT_CLASS(PiPictureAction, SoGLRenderAction);
  SO_ACTION_ADD_METHOD(SoShape, drawShape);
  enableElement(PiShiftedProjectionElement::getClassTypeId(), PiShiftedProjectionElement::getClassStackIndex());
}

PiPictureAction::PiPictureAction(const SbViewportRegion& viewport) : SoGLRenderAction(viewport) {
  SO_ACTION_CONSTRUCTOR(PiPictureAction);
}

PiPictureAction::~PiPictureAction() = default;

void PiPictureAction::drawShape(SoAction* action, SoNode* node) {
  if (s_sizeFactor == 1.0f) {
    SoNode::GLRenderS(action, node);
    return;
  }
  SoState* state = action->getState();
  state->push();
  SoLineWidthElement::set(state, node, std::max(SoLineWidthElement::get(state), 1.0f) * s_sizeFactor);
  SoPointSizeElement::set(state, node, std::max(SoPointSizeElement::get(state), 1.0f) * s_sizeFactor);
  const float pattern = static_cast<float>(SoLinePatternElement::getScaleFactor(state)) * s_sizeFactor;
  SoLinePatternElement::set(state, node, SoLinePatternElement::get(state),
                            std::clamp(static_cast<int32_t>(pattern + 0.5f), 1, 256));
  if (node->isOfType(SoText2::getClassTypeId()))
    SoFontSizeElement::set(state, node, SoFontSizeElement::get(state) * s_sizeFactor);
  SoNode::GLRenderS(action, node);
  state->pop();
}
