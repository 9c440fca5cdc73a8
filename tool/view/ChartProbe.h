#ifndef ORMELLE_TOOL_VIEW_CHARTPROBE_H
#define ORMELLE_TOOL_VIEW_CHARTPROBE_H

#include <Inventor/SbVec3f.h>

#include <functional>
#include <string>

#include "Surroundings.h"

class SoPickedPoint;

namespace view {

/// What a kit says of a point of it, and whether coordinates mean something there.
struct Answer {
  std::string text;  ///< begins with ", " unless it is empty
  bool hasCoordinates = true;
};

/// A point of a kit that was picked, in the coordinates of the kit's data, and what stands round the kit.
struct Question {
  const PoBase& kit;
  const SoPickedPoint& picked;
  const SbVec3f& point;
  const Surroundings& scene;
  const Surroundings::Kit* place;

  const PbMesh* mesh() const { return Surroundings::meshOf(place); }
  /// How numbers along a direction (0 x, 1 y, 2 z) are written.
  Scale scale(int direction) const { return scene.scaleOf(place, direction, point[direction]); }
};

/// Of bars and slices name and value, of curves the nearest point, of axes and legends what they are.
Answer tellChart(const Question& question);

/// Which of some points is nearest in a picture that stretches them to its own width and height; -1 if there is none.
int nearestPoint(int count, const std::function<SbVec3f(int)>& pointAt, const SbVec3f& point);

/// ", text "WORDS"" if a text was picked, else nothing.
std::string pickedText(const SoPickedPoint& picked);

}  // namespace view

#endif
