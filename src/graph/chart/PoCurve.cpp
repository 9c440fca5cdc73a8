#include <Ormelle/PoCurve.h>

#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PoMesh1DHints.h>
#include <Ormelle/PoMiscTextAttrElement.h>

#include <algorithm>
#include <initializer_list>
#include <span>
#include <vector>

#include "graph/chart/PiCurveFill.h"
#include "graph/chart/PiCurvePath.h"
#include "graph/chart/PiCurveShapes.h"
#include "graph/chart/PiDomainStretch.h"
#include "graph/chart/PiFiniteRuns.h"
#include "graph/chart/PiPointFilter.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_SOURCE(PoCurve)

namespace {

constexpr float kMarkerSize = 0.03F;  ///< of the larger extent of the curve

/// Calls `use` with each input field of a curve.
template <class Curve, class Use>
void forEachCurveField(Curve& curve, Use&& use) {
  use(curve.point);
  use(curve.curveRep);
  use(curve.isCurveFilled);
  use(curve.fillingThreshold);
  use(curve.markerFilterType);
  use(curve.markerIndexPeriod);
  use(curve.markerIndexList);
  use(curve.markerXPeriod);
  use(curve.markerXList);
  use(curve.markerString);
  use(curve.raiseFilterType);
  use(curve.raiseIndexPeriod);
  use(curve.raiseIndexList);
  use(curve.raiseXPeriod);
  use(curve.raiseXList);
  use(curve.raiseThreshold);
}

/// The points as they are joined by other than straight lines.
std::vector<SbVec2f> joined(std::span<const SbVec2f> points, PoCurve::CurveRep rep) {
  std::vector<float> x(points.size()), y(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) points[i].getValue(x[i], y[i]);
  const PiCurvePath path =
      PiCurvePath::make(static_cast<PoMesh1DHints::GeomInterpretation>(rep - PoCurve::CURVE_POLYLINE), x, y, {});
  std::vector<SbVec2f> drawn(path.x.num());
  for (std::size_t i = 0; i < drawn.size(); ++i) drawn[i].setValue(path.x[i], path.y[i]);
  return drawn;
}

}  // namespace

PoCurve::PoCurve() {
  PO_KIT_CONSTRUCTOR(PoCurve);
  PO_KIT_ADD_TRIPLE(curveFilling);
  PO_KIT_ADD_TRIPLE(curvePoint);
  PO_KIT_ADD_TRIPLE(raisePoint);
  // The font in its appearance is the application's, unlike that of other triples.
  PO_KIT_ADD_CATALOG_ENTRY(markerSep, SoSeparator, alternateRep);
  PO_KIT_ADD_CATALOG_ENTRY(markerApp, SoAppearanceKit, markerSep);
  PO_KIT_ADD_CATALOG_ENTRY(marker, SoGroup, markerSep);
  ownPart(markerSep);
  ownPart(marker);

  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_NONE);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_POLYLINE);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_SMOOTH);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_X);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_Y);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_HISTO_X);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_HISTO_Y);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_2X);
  PO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_2Y);
  PO_KIT_DEFINE_ENUM_VALUE(FilterType, INACTIVE);
  PO_KIT_DEFINE_ENUM_VALUE(FilterType, ALL_POINTS);
  PO_KIT_DEFINE_ENUM_VALUE(FilterType, INDEX_PERIOD);
  PO_KIT_DEFINE_ENUM_VALUE(FilterType, INDEX_LIST);
  PO_KIT_DEFINE_ENUM_VALUE(FilterType, X_PERIOD);
  PO_KIT_DEFINE_ENUM_VALUE(FilterType, X_LIST);
  PO_KIT_ADD_EMPTY_MFIELD(point);
  PO_KIT_ADD_FIELD(curveRep, (CURVE_POLYLINE));
  PO_KIT_ADD_FIELD(isCurveFilled, (FALSE));
  PO_KIT_ADD_FIELD(fillingThreshold, (0));
  PO_KIT_ADD_FIELD(markerFilterType, (INACTIVE));
  PO_KIT_ADD_FIELD(markerIndexPeriod, (1));
  PO_KIT_ADD_EMPTY_MFIELD(markerIndexList);
  PO_KIT_ADD_FIELD(markerXPeriod, (1));
  PO_KIT_ADD_EMPTY_MFIELD(markerXList);
  PO_KIT_ADD_FIELD(markerString, ("+"));
  PO_KIT_ADD_FIELD(raiseFilterType, (INACTIVE));
  PO_KIT_ADD_FIELD(raiseIndexPeriod, (1));
  PO_KIT_ADD_EMPTY_MFIELD(raiseIndexList);
  PO_KIT_ADD_FIELD(raiseXPeriod, (1));
  PO_KIT_ADD_EMPTY_MFIELD(raiseXList);
  PO_KIT_ADD_FIELD(raiseThreshold, (0));
  PO_KIT_SET_ENUM_TYPE(curveRep, CurveRep);
  PO_KIT_SET_ENUM_TYPE(markerFilterType, FilterType);
  PO_KIT_SET_ENUM_TYPE(raiseFilterType, FilterType);
  PO_KIT_CONSTRUCTED(PoCurve);

  forEachCurveField(*this, [this](SoField& field) { watchField(field); });
  m_styleFields.append(&markerApp);
  createFieldSensorList(1, &m_styleSensors);
  beginWatching();
}

PoCurve::PoCurve(int n, const SbVec2f* points, CurveRep rep) : PoCurve() {
  if (n > 0 && points) point.setValues(0, n, points);
  curveRep = rep;
}

PoCurve::PoCurve(const PoCurve& other) : PoCurve() { *this = other; }

PoCurve& PoCurve::operator=(const PoCurve& other) {
  if (this == &other) return *this;
  std::vector<const SoField*> sources;
  forEachCurveField(other, [&](const SoField& field) { sources.push_back(&field); });
  std::size_t i = 0;
  forEachCurveField(*this, [&](SoField& field) { field.copyFrom(*sources[i++]); });
  return *this;
}

PoCurve::~PoCurve() { deleteFieldSensorList(&m_styleSensors); }

SbBool PoCurve::setUpConnections(SbBool onOff, SbBool doItAlways) {
  if (!doItAlways && onOff == connectionsSetUp) return onOff;
  if (!onOff) detachFieldSensorList(m_styleSensors);
  const SbBool result = inherited::setUpConnections(onOff, doItAlways);
  if (onOff) attachFieldSensorList(m_styleSensors, m_styleFields);
  return result;
}

void PoCurve::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoMiscTextAttrElement::get(getState());
}

void PoCurve::preRebuild() {
  inherited::preRebuild();
  const int index = PoMiscTextAttrElement::getClassStackIndex();
  if (isStateValid() && !isCacheValid() && getAllCache() && getState()->isElementEnabled(index))
    getAllCache()->addElement(getState()->getConstElement(index));
}

void PoCurve::rebuild() {
  preRebuild();
  const std::span<const SbVec2f> points(point.getValues(0), static_cast<std::size_t>(point.getNum()));
  const CurveRep rep = PiEnumField::get(curveRep, CURVE_STAIRS_2Y, CURVE_POLYLINE);
  std::vector<SbVec2f> added;
  if (rep > CURVE_POLYLINE) added = joined(points, rep);
  const std::span<const SbVec2f> drawn = rep > CURVE_POLYLINE ? added : points;
  SoGroup* filling = nullptr;
  if (isCurveFilled.getValue() && drawn.size() > 1)
    filling = PiCurveShapes::makeFilling(PiCurveFill::make(drawn, fillingThreshold.getValue()));
  setPart("curveFilling", filling);
  setPart("curvePoint", rep != CURVE_NONE ? PiCurveShapes::makeLines(drawn) : nullptr);
  drawRaisePoints(static_cast<int>(points.size()), points.data());
  drawMarkers(static_cast<int>(points.size()), points.data());
  postRebuild();
}

void PoCurve::drawRaisePoints(int n, const SbVec2f* points) {
  const PiPointFilter filter{
      PiEnumField::get(raiseFilterType, X_LIST, INACTIVE),
      raiseIndexPeriod.getValue(),
      {raiseIndexList.getValues(0), static_cast<std::size_t>(raiseIndexList.getNum())},
      raiseXPeriod.getValue(),
      {raiseXList.getValues(0), static_cast<std::size_t>(raiseXList.getNum())},
  };
  setPart("raisePoint", PiCurveShapes::makeRaisedLines(filter.select({points, static_cast<std::size_t>(n)}),
                                                       raiseThreshold.getValue()));
}

void PoCurve::drawMarkers(int n, const SbVec2f* points) {
  const std::span<const SbVec2f> curve(points, static_cast<std::size_t>(n));
  const PiPointFilter filter{
      PiEnumField::get(markerFilterType, X_LIST, INACTIVE),
      markerIndexPeriod.getValue(),
      {markerIndexList.getValues(0), static_cast<std::size_t>(markerIndexList.getNum())},
      markerXPeriod.getValue(),
      {markerXList.getValues(0), static_cast<std::size_t>(markerXList.getNum())},
  };
  const std::vector<SbVec2f> places = filter.select(curve);
  if (places.empty()) {
    setPart("marker", nullptr);
    return;
  }
  const SbVec3f stretch = PiDomainStretch::of(*getDomain(), isDomainTransformEnabled() != 0);
  PiCurveShapes::Marker look{markerString.getValue(), {}, 0, stretch};
  const auto* font = static_cast<const SoFont*>(getPart("markerApp.font", FALSE));
  if (font) {
    look.fontName = font->name.getValue().getString();
    look.fontSize = font->size.getValue();
  } else {
    const PbMiscTextAttr* attributes = isStateValid() ? PoMiscTextAttrElement::get(getState()) : nullptr;
    look.fontName = attributes ? attributes->getFontName() : PbMiscTextAttr().getFontName();
    look.fontSize = kMarkerSize * PiFiniteRuns::largestExtent(curve, stretch);
  }
  setPart("marker", PiCurveShapes::makeMarkers(places, look));
}

void PoCurve::calculateInterpolation(const SbVec2f& p1, const SbVec2f& p2, float x, float& y) {
  y = yOnSegment(p1, p2, x);
}

void PoCurve::calculateInterpolation2(const SbVec2f& p1, const SbVec2f& p2, float y, float& x) {
  x = xOnSegment(p1, p2, y);
}
