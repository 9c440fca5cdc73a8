#ifndef ORMELLE_TOOL_VIEW_CHARTPROBE_H
#define ORMELLE_TOOL_VIEW_CHARTPROBE_H

#include <Inventor/SbVec3f.h>

#include <functional>
#include <string>

class PbMesh;
class PoBase;
class SoPickedPoint;

namespace view {

/// What a kit says of a point of it, and whether coordinates mean something there.
struct Answer {
  std::string text;  ///< begins with ", " unless it is empty
  bool hasCoordinates = true;
};

/// Of bars and slices name and value, of curves the nearest point, of axes and legends what they are. `mesh` is the one
/// that the kit finds, or null; `point` is in the coordinates of the kit's data.
Answer tellChart(const PoBase& kit, const SoPickedPoint& picked, const SbVec3f& point, const PbMesh* mesh);

/// Which of some points is nearest in a picture that stretches them to its own width and height; -1 if there is none.
int nearestPoint(int count, const std::function<SbVec3f(int)>& pointAt, const SbVec3f& point);

/// ", text "WORDS"" if a text was picked, else nothing.
std::string pickedText(const SoPickedPoint& picked);

/// `name` in quotes, or "KIND INDEX" if it is empty.
std::string nameOr(const std::string& name, const char* kind, int index);

/// What printf makes of it, up to 255 bytes.
[[gnu::format(printf, 1, 2)]] std::string print(const char* format, ...);

}  // namespace view

#endif
