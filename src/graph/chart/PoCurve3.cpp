#include <Ormelle/PoCurve3.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMarkerSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoMesh1DHints.h>

#include <span>
#include <vector>

#include "graph/chart/PiCurvePath.h"
#include "graph/chart/PiCurveShapes.h"
#include "graph/chart/PiFiniteRuns.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_SOURCE(PoCurve3)

namespace {

SoGroup* makePointMarkers(std::span<const SbVec3f> points) {
  std::vector<SbVec3f> places;
  for (const SbVec3f& point : points)
    if (PiFiniteRuns::isFinite(point)) places.push_back(point);
  if (places.empty()) return nullptr;
  auto* group = new SoGroup;
  auto* coordinate = new SoCoordinate3;
  group->addChild(coordinate);
  coordinate->point.setValues(0, static_cast<int>(places.size()), places.data());
  auto* markers = new SoMarkerSet;
  group->addChild(markers);
  markers->markerIndex = SoMarkerSet::CIRCLE_FILLED_7_7;
  return group;
}

std::vector<SbVec3f> joinedInSpace(std::span<const SbVec3f> points, PoCurve::CurveRep rep) {
  std::vector<float> x(points.size()), y(points.size()), z(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) points[i].getValue(x[i], y[i], z[i]);
  const PiCurvePath path =
      PiCurvePath::makeInSpace(static_cast<PoMesh1DHints::GeomInterpretation>(rep - PoCurve::CURVE_POLYLINE), x, y, z);
  std::vector<SbVec3f> drawn(path.x.num());
  for (std::size_t i = 0; i < drawn.size(); ++i) drawn[i].setValue(path.x[i], path.y[i], path.z[i]);
  return drawn;
}

}  // namespace

PoCurve3::PoCurve3() {
  PO_KIT_CONSTRUCTOR(PoCurve3);
  PO_KIT_ADD_TRIPLE(curvePoint);
  PO_KIT_ADD_TRIPLE(marker);
  using enum PoCurve::CurveRep;
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_NONE);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_POLYLINE);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_SMOOTH);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_X);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_Y);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_HISTO_X);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_HISTO_Y);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_2X);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_2Y);
  PO_KIT_ADD_EMPTY_MFIELD(point);
  PO_KIT_ADD_FIELD(curveRep, (CURVE_POLYLINE));
  PO_KIT_ADD_FIELD(isMarkerVisible, (FALSE));
  PO_KIT_SET_ENUM_TYPE(curveRep, CurveRep);
  PO_KIT_CONSTRUCTED(PoCurve3);
  watchField(point);
  watchField(curveRep);
  watchField(isMarkerVisible);
  beginWatching();
}

PoCurve3::PoCurve3(int n, const SbVec3f* points, PoCurve::CurveRep rep) : PoCurve3() {
  if (n > 0 && points) point.setValues(0, n, points);
  curveRep = rep;
}

PoCurve3::PoCurve3(const PoCurve3& other) : PoCurve3() { *this = other; }

PoCurve3& PoCurve3::operator=(const PoCurve3& other) {
  if (this == &other) return *this;
  point = other.point;
  curveRep = other.curveRep;
  isMarkerVisible = other.isMarkerVisible;
  return *this;
}

PoCurve3::~PoCurve3() = default;

void PoCurve3::rebuild() {
  preRebuild();
  const std::span<const SbVec3f> points(point.getValues(0), static_cast<std::size_t>(point.getNum()));
  const PoCurve::CurveRep rep = PiEnumField::get(curveRep, PoCurve::CURVE_STAIRS_2Y, PoCurve::CURVE_POLYLINE);
  SoGroup* lines = nullptr;
  if (rep == PoCurve::CURVE_POLYLINE)
    lines = PiCurveShapes::makeLines(points);
  else if (rep != PoCurve::CURVE_NONE)
    lines = PiCurveShapes::makeLines(joinedInSpace(points, rep));
  setPart("curvePoint", lines);
  setPart("marker", isMarkerVisible.getValue() ? makePointMarkers(points) : nullptr);
  postRebuild();
}
