#include "out/ShapeState.h"

#include <Inventor/SoFullPath.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoShapeHintsElement.h>
#include <Inventor/nodes/SoAnnotation.h>

namespace tool {

ShapeSides shapeSidesOf(const SoCallbackAction& action) {
  SoShapeHintsElement::VertexOrdering ordering;
  SoShapeHintsElement::ShapeType shapeType;
  SoShapeHintsElement::FaceType faceType;
  SoShapeHintsElement::get(action.getState(), ordering, shapeType, faceType);
  ShapeSides sides;
  if (ordering == SoShapeHintsElement::UNKNOWN_ORDERING) return sides;
  sides.isClockwise = ordering == SoShapeHintsElement::CLOCKWISE;
  sides.isSolid = shapeType == SoShapeHintsElement::SOLID;
  sides.isTwoSided = !sides.isSolid;
  return sides;
}

bool isInAnnotation(SoCallbackAction& action) {
  const auto* path = static_cast<const SoFullPath*>(action.getCurPath());
  for (int i = 0; i < path->getLength(); ++i)
    if (path->getNode(i)->isOfType(SoAnnotation::getClassTypeId())) return true;
  return false;
}

}  // namespace tool
