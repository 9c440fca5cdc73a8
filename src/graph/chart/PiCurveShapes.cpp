#include "graph/chart/PiCurveShapes.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoScale.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTranslation.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "graph/chart/PiCurveFill.h"
#include "graph/chart/PiFiniteRuns.h"
#include "graph/format/PiText.h"
#include "graph/toolkit/PiNodeRef.h"

namespace {

SbVec3f* startPoints(SoGroup* group, std::size_t num, SoCoordinate3*& coordinate) {
  coordinate = new SoCoordinate3;
  group->addChild(coordinate);
  coordinate->point.setNum(static_cast<int>(num));
  return coordinate->point.startEditing();
}

void setCounts(SoMFInt32& field, const std::vector<std::int32_t>& counts) {
  field.setNum(static_cast<int>(counts.size()));
  std::copy(counts.begin(), counts.end(), field.startEditing());
  field.finishEditing();
}

SbVec3f inSpace(const SbVec2f& point) { return SbVec3f(point[0], point[1], 0); }
const SbVec3f& inSpace(const SbVec3f& point) { return point; }

template <class Vec>
SoGroup* makePolylines(std::span<const Vec> points) {
  std::vector<std::int32_t> counts;
  std::size_t num = 0;
  PiFiniteRuns::forEach(points, [&](std::span<const Vec> run) {
    counts.push_back(static_cast<std::int32_t>(run.size()));
    num += run.size();
  });
  if (num == 0) return nullptr;
  auto* group = new SoGroup;
  SoCoordinate3* coordinate;
  SbVec3f* out = startPoints(group, num, coordinate);
  PiFiniteRuns::forEach(points, [&](std::span<const Vec> run) {
    for (const Vec& point : run) *out++ = inSpace(point);
  });
  coordinate->point.finishEditing();
  auto* lines = new SoLineSet;
  group->addChild(lines);
  setCounts(lines->numVertices, counts);
  return group;
}

}  // namespace

void PiCurveShapes::addOffset(SoGroup& group) {
  auto* offset = new SoPolygonOffset;
  group.addChild(offset);
  // By what the plane goes back over the half of a line some pixels wide, where it is seen at a slant.
  offset->factor = 3;
}

SoGroup* PiCurveShapes::makeLines(std::span<const SbVec2f> points) { return makePolylines(points); }

SoGroup* PiCurveShapes::makeLines(std::span<const SbVec3f> points) { return makePolylines(points); }

SoGroup* PiCurveShapes::makeRaisedLines(std::span<const SbVec2f> places, float threshold) {
  if (places.empty() || !std::isfinite(threshold)) return nullptr;
  auto* group = new SoGroup;
  SoCoordinate3* coordinate;
  SbVec3f* out = startPoints(group, 2 * places.size(), coordinate);
  for (const SbVec2f& place : places) {
    *out++ = SbVec3f(place[0], threshold, 0);
    *out++ = SbVec3f(place[0], place[1], 0);
  }
  coordinate->point.finishEditing();
  auto* lines = new SoLineSet;
  group->addChild(lines);
  setCounts(lines->numVertices, std::vector<std::int32_t>(places.size(), 2));
  return group;
}

SoGroup* PiCurveShapes::makeFilling(PiCurveFill fill) {
  if (fill.numCorners.empty()) return nullptr;
  auto* group = new SoGroup;
  addOffset(*group);
  auto* hints = new SoShapeHints;
  group->addChild(hints);
  hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;  // light on either side
  // Unless told, the toolkit takes all polygons for convex.
  hints->faceType = fill.areSlices ? SoShapeHints::CONVEX : SoShapeHints::UNKNOWN_FACE_TYPE;
  if (fill.areSlices) {
    // The toolkit would look for normals, which takes time with the square of the number of faces.
    auto* binding = new SoNormalBinding;
    group->addChild(binding);
    binding->value = SoNormalBinding::OVERALL;
    auto* normal = new SoNormal;
    group->addChild(normal);
    normal->vector.setValue(0, 0, 1);
  }
  auto* coordinate = new SoCoordinate3;
  group->addChild(coordinate);
  const auto num = static_cast<int>(fill.points.num());
  coordinate->point.setValuesPointer(num, fill.points.release());
  coordinate->point.enableDeleteValues();
  auto* faces = new SoFaceSet;
  group->addChild(faces);
  setCounts(faces->numVertices, fill.numCorners);
  return group;
}

SoGroup* PiCurveShapes::makeMarkers(std::span<const SbVec2f> places, const Marker& marker) {
  if (places.empty()) return nullptr;
  const PiNodeRef<SoSeparator> text(new SoSeparator);
  auto* scale = new SoScale;
  text->addChild(scale);
  scale->scaleFactor.setValue(1 / marker.stretch[0], 1 / marker.stretch[1], 1 / marker.stretch[2]);
  PiText writer;
  writer.setFont(marker.fontName, marker.fontSize);
  writer.setAlignment(PiText::CENTER, PiText::HALF);
  writer.setGroup(text.get());
  if (writer.build(marker.text.getString()) == 0) return nullptr;

  auto* group = new SoGroup;
  // Each place is told from where the one before it came to lie, or rounding would add up from marker to marker.
  SbVec2f at(0, 0);
  for (const SbVec2f& place : places) {
    auto* translation = new SoTranslation;
    group->addChild(translation);
    const SbVec2f way = place - at;
    translation->translation.setValue(way[0], way[1], 0);
    at += way;
    group->addChild(text.get());
  }
  return group;
}
