#ifndef ORMELLE_TOOL_OUT_SHAPESTATE_H
#define ORMELLE_TOOL_OUT_SHAPESTATE_H

class SoCallbackAction;

namespace tool {

/// What the toolkit makes of the hints about a shape.
struct ShapeSides {
  bool isClockwise = false;  ///< corners turn to the right as seen from the front
  bool isSolid = false;      ///< only the front is drawn
  bool isTwoSided = false;   ///< the back is lit as if turned round
};

ShapeSides shapeSidesOf(const SoCallbackAction& action);

/// Whether the end of the action's path belongs to an annotation, which is drawn over everything else.
bool isInAnnotation(SoCallbackAction& action);

}  // namespace tool

#endif
