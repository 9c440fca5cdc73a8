#include "graph/toolkit/SoAnnoText3.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/elements/SoModelMatrixElement.h>
#include <Inventor/elements/SoPolygonOffsetElement.h>
#include <Inventor/elements/SoShapeHintsElement.h>
#include <Inventor/misc/SoState.h>

#include <Ormelle/PoBase.h>

PO_NODE_SOURCE(SoAnnoText3)

namespace {

// Enough for the rounding of two transformations of one plane, too little to show through what is in front of it.
constexpr float kOffsetFactor = -1;
constexpr float kOffsetUnits = -8;

}  // namespace

SoAnnoText3::SoAnnoText3() {
  PO_NODE_CONSTRUCTOR(SoAnnoText3);
  PO_NODE_CONSTRUCTED(SoAnnoText3);
}

void* SoAnnoText3::operator new(std::size_t size) { return PoBase::operator new(size); }
void SoAnnoText3::operator delete(void* memory) { PoBase::operator delete(memory); }

// Drawn twice with the back faces left out, once turned: whichever side is seen, and however the transformations above
// mirror it, just the copy that reads correctly appears. Nothing here asks the camera, so the render caches above last.
void SoAnnoText3::GLRender(SoGLRenderAction* action) {
  if (!shouldGLRender(action)) return;
  SoState* state = action->getState();
  state->push();
  SoLazyElement::setLightModel(state, SoLazyElement::BASE_COLOR);
  SoPolygonOffsetElement::set(state, this, kOffsetFactor, kOffsetUnits, SoPolygonOffsetElement::FILLED, TRUE);
  SoShapeHintsElement::set(state, this, SoShapeHintsElement::COUNTERCLOCKWISE, SoShapeHintsElement::SOLID,
                           SoShapeHintsElement::UNKNOWN_FACE_TYPE);
  SoText3::GLRender(action);
  SbBox3f box;
  SbVec3f center;
  computeBBox(action, box, center);
  if (!box.isEmpty()) {
    // Half a turn about the middle, exact, so that both copies lie in the same plane.
    SbMatrix turn = SbMatrix::identity();
    turn[0][0] = turn[2][2] = -1;
    turn[3][0] = box.getMin()[0] + box.getMax()[0];
    SoModelMatrixElement::mult(state, this, turn);
    SoText3::GLRender(action);
  }
  state->pop();
}
