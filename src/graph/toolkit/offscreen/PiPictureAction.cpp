#include "graph/toolkit/offscreen/PiPictureAction.h"

#include <Inventor/elements/SoCacheElement.h>
#include <Inventor/nodes/SoCamera.h>
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
  addMethod(SoCamera::getClassTypeId(), &PiPictureAction::drawCamera);
}

PiPictureAction::PiPictureAction(const SbViewportRegion& viewport) : SoGLRenderAction(viewport) {
  SO_ACTION_CONSTRUCTOR(PiPictureAction);
}

PiPictureAction::~PiPictureAction() = default;

void PiPictureAction::drawCamera(SoAction* action, SoNode* node) {
  const auto* self = static_cast<PiPictureAction*>(action);
  if (self->m_onlyCamera && self->m_onlyCamera != node) return;
  // A render cache round a camera would keep the shift of the pass that made it.
  SoCacheElement::invalidate(action->getState());
  node->GLRender(static_cast<SoGLRenderAction*>(action));
}
