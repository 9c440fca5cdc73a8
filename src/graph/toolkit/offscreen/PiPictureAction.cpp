#include "graph/toolkit/offscreen/PiPictureAction.h"

#include <Inventor/SbVec3f.h>
#include <Inventor/system/gl.h>

#include <algorithm>

SO_ELEMENT_SOURCE(PiShiftedProjectionElement);
SO_ELEMENT_SOURCE(PiScaledLineWidthElement);
SO_ELEMENT_SOURCE(PiScaledPointSizeElement);
SO_ELEMENT_SOURCE(PiScaledLinePatternElement);
SO_ACTION_SOURCE(PiPictureAction);

SbVec2f PiShiftedProjectionElement::s_shift(0.0f, 0.0f);
SbMatrix PiShiftedProjectionElement::s_tile = SbMatrix::identity();
float PiPixelScale::s_factor = 1.0f;

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

void PiScaledLineWidthElement::initClass() { SO_ELEMENT_INIT_CLASS(PiScaledLineWidthElement, SoGLLineWidthElement); }

PiScaledLineWidthElement::~PiScaledLineWidthElement() = default;

// What OpenGL begins with is set by the drawer.
void PiScaledLineWidthElement::init(SoState* stateOfAction) {
  SoGLLineWidthElement::init(stateOfAction);
  data = PiPixelScale::scaled(data);
}

void PiScaledLineWidthElement::setElt(float width) { SoGLLineWidthElement::setElt(PiPixelScale::scaled(width)); }

void PiScaledPointSizeElement::initClass() { SO_ELEMENT_INIT_CLASS(PiScaledPointSizeElement, SoGLPointSizeElement); }

PiScaledPointSizeElement::~PiScaledPointSizeElement() = default;

void PiScaledPointSizeElement::init(SoState* stateOfAction) {
  SoGLPointSizeElement::init(stateOfAction);
  data = PiPixelScale::scaled(data);
}

void PiScaledPointSizeElement::setElt(float size) { SoGLPointSizeElement::setElt(PiPixelScale::scaled(size)); }

void PiScaledLinePatternElement::initClass() {
  SO_ELEMENT_INIT_CLASS(PiScaledLinePatternElement, SoGLLinePatternElement);
}

PiScaledLinePatternElement::~PiScaledLinePatternElement() = default;

// The upper half of the number is how many pixels a bit of the pattern lasts.
void PiScaledLinePatternElement::setElt(int32_t pattern) {
  const float length = PiPixelScale::scaled(static_cast<float>(pattern >> 16));
  const auto whole = static_cast<int32_t>(std::clamp(length + 0.5f, 1.0f, 256.0f));
  SoGLLinePatternElement::setElt((pattern & 0xffff) | whole << 16);
}

void PiPictureAction::initClass() {
  if (getClassTypeId() != SoType::badType()) return;
  PiShiftedProjectionElement::initClass();
  SO_ACTION_INIT_CLASS(PiPictureAction, SoGLRenderAction);
  PiScaledLineWidthElement::initClass();
  PiScaledPointSizeElement::initClass();
  PiScaledLinePatternElement::initClass();
  enableElement(PiScaledLineWidthElement::getClassTypeId(), PiScaledLineWidthElement::getClassStackIndex());
  enableElement(PiScaledPointSizeElement::getClassTypeId(), PiScaledPointSizeElement::getClassStackIndex());
  enableElement(PiScaledLinePatternElement::getClassTypeId(), PiScaledLinePatternElement::getClassStackIndex());
  enableElement(PiShiftedProjectionElement::getClassTypeId(), PiShiftedProjectionElement::getClassStackIndex());
}

PiPictureAction::PiPictureAction(const SbViewportRegion& viewport) : SoGLRenderAction(viewport) {
  SO_ACTION_CONSTRUCTOR(PiPictureAction);
}

PiPictureAction::~PiPictureAction() = default;
