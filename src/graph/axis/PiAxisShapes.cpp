#include "graph/axis/PiAxisShapes.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>

#include <algorithm>
#include <cmath>

namespace PiAxisShapes {

namespace {

template <class Shape>
void addShape(int numPoints, const SbVec3f* points, SoGroup* group) {
  auto* coordinates = new SoCoordinate3;
  group->addChild(coordinates);
  coordinates->point.setValues(0, numPoints, points);
  auto* shape = new Shape;
  group->addChild(shape);
  shape->numVertices = numPoints;
}

}  // namespace

void addLine(float start, float end, float origin, SoGroup* group) {
  if (!std::isfinite(start) || !std::isfinite(end)) return;
  const SbVec3f points[] = {SbVec3f(start - origin, 0, 0), SbVec3f(end - origin, 0, 0)};
  addShape<SoLineSet>(2, points, group);
}

void addLinesAcross(std::span<const float> coords, float from, float to, float origin, SoGroup* group) {
  if (!std::isfinite(from) || !std::isfinite(to)) return;
  const auto num =
      static_cast<int>(std::count_if(coords.begin(), coords.end(), [](float x) { return std::isfinite(x); }));
  if (num == 0) return;
  auto* coordinates = new SoCoordinate3;
  group->addChild(coordinates);
  auto* lines = new SoLineSet;
  group->addChild(lines);
  coordinates->point.setNum(2 * num);
  lines->numVertices.setNum(num);
  SbVec3f* point = coordinates->point.startEditing();
  int32_t* numVertices = lines->numVertices.startEditing();
  for (const float x : coords) {
    if (!std::isfinite(x)) continue;
    point++->setValue(x - origin, from, 0);
    point++->setValue(x - origin, to, 0);
    *numVertices++ = 2;
  }
  coordinates->point.finishEditing();
  lines->numVertices.finishEditing();
}

void addArrow(float end, float tip, float height, float origin, SoGroup* group) {
  if (!std::isfinite(end) || !std::isfinite(tip) || !std::isfinite(height)) return;
  const SbVec3f points[] = {SbVec3f(end - origin, height / 2, 0), SbVec3f(end - origin, -height / 2, 0),
                            SbVec3f(tip - origin, 0, 0)};
  addShape<SoFaceSet>(3, points, group);
}

}  // namespace PiAxisShapes
