#include "graph/toolkit/offscreen/PiPictureAction.h"

#include <Inventor/SbVec3f.h>
#include <Inventor/system/gl.h>

SO_ELEMENT_SOURCE(PiShiftedProjectionElement);
SO_ACTION_SOURCE(PiPictureAction);

SbVec2f PiShiftedProjectionElement::s_shift(0.0f, 0.0f);

void PiShiftedProjectionElement::initClass() {
  SO_ELEMENT_INIT_CLASS(PiShiftedProjectionElement, SoGLProjectionMatrixElement);
}

PiShiftedProjectionElement::~PiShiftedProjectionElement() = default;

void PiShiftedProjectionElement::setElt(const SbMatrix& matrix) {
  SoProjectionMatrixElement::setElt(matrix);
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
  enableElement(PiShiftedProjectionElement::getClassTypeId(), PiShiftedProjectionElement::getClassStackIndex());
}

PiPictureAction::PiPictureAction(const SbViewportRegion& viewport) : SoGLRenderAction(viewport) {
  SO_ACTION_CONSTRUCTOR(PiPictureAction);
}

PiPictureAction::~PiPictureAction() = default;
