#ifndef ORMELLE_POCURVE_H
#define ORMELLE_POCURVE_H

#include <Inventor/SbVec2f.h>
#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFInt32.h>
#include <Inventor/fields/SoMFVec2f.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>
#include <Inventor/fields/SoSFString.h>

#include <Ormelle/PoTavernel.h>

/// A curve through points of the plane z = 0: joined in one of several ways, filled down to a threshold, with lines
/// raised to points and a text as a marker on points.
/// @code
/// auto* curve = new PoCurve(365, temperatures, PoCurve::CURVE_SMOOTH);
/// curve->isCurveFilled = TRUE;
/// curve->markerFilterType = PoCurve::INDEX_PERIOD;
/// curve->markerIndexPeriod = 30;
/// curve->set("curvePointApp.drawStyle", "lineWidth 2");
/// curve->set("curveFillingApp.material", "diffuseColor 1 0.8 0.6");
/// separator->addChild(curve);
/// @endcode
///
/// Points that aren't finite part the curve: there is no line, no filling and no marker.
///
/// Catalog behind that of PoBase, each with its `...Sep` and `...App` (see PoTavernel), empty where there is nothing to
/// show:
/// @code
/// curveFilling  SoGroup  polygon offset, shape hints, SoCoordinate3, SoFaceSet
/// curvePoint    SoGroup  SoCoordinate3, SoLineSet
/// raisePoint    SoGroup  SoCoordinate3, SoLineSet
/// marker        SoGroup  an SoTranslation and a text for each marker
/// @endcode
/// `markerApp.font` is the font of the markers. Without it they have the font of PoMiscTextAttrElement and 3 % of the
/// curve's larger extent as their size. Their middle stands on the point, and they look as their font does, even where
/// the domain stretches the curve.
class ORMELLE_API PoCurve : public PoTavernel {
  PO_KIT_HEADER(PoCurve, PoTavernel);
  PO_KIT_TRIPLE_HEADER(curveFilling);
  PO_KIT_TRIPLE_HEADER(curvePoint);
  PO_KIT_TRIPLE_HEADER(raisePoint);
  PO_KIT_TRIPLE_HEADER(marker);

 public:
  /// How points are joined, as PoMesh1DHints::GeomInterpretation says. A new point equal to the one before it isn't
  /// added.
  enum CurveRep {
    CURVE_NONE,      ///< no line; a filling is that of `CURVE_POLYLINE`
    CURVE_POLYLINE,  ///< straight
    CURVE_SMOOTH,    ///< by a cubic spline, with 10 segments between two points
    CURVE_STAIRS_X,
    CURVE_STAIRS_Y,
    CURVE_HISTO_X,
    CURVE_HISTO_Y,
    CURVE_STAIRS_2X,
    CURVE_STAIRS_2Y
  };
  /// Which points get a marker or a raised line. Indices and x are those of `point`, not of what is drawn between.
  enum FilterType {
    INACTIVE,      ///< none
    ALL_POINTS,    ///< all
    INDEX_PERIOD,  ///< every so many, from the first; a period below 1 acts as 1
    INDEX_LIST,    ///< those listed, as far as they exist
    X_PERIOD,      ///< places at equal distances of x, from the least; none if the period isn't above 0
    X_LIST         ///< places at the x listed, as far as the points reach there
  };

  /// The points in the order in which they are joined; none by default.
  SoMFVec2f point;
  /// A CurveRep, `CURVE_POLYLINE` by default.
  SoSFEnum curveRep;
  /// Whether the area between the curve and y = `fillingThreshold` is filled; FALSE by default. It is closed along the
  /// threshold from the first and from the last point. What is above and what is below the threshold are polygons of
  /// their own; or slices of them, one a segment, where the toolkit can't be trusted with whole ones: with many
  /// corners, and with steps straight up or down.
  SoSFBool isCurveFilled;
  /// 0 by default.
  SoSFFloat fillingThreshold;

  /// @name Markers
  /// A FilterType, `INACTIVE` by default, and for each type what it needs; periods are 1 by default, lists empty. Of
  /// places by x no more than 1048576 are taken.
  /// @{
  SoSFEnum markerFilterType;
  SoSFInt32 markerIndexPeriod;
  SoMFInt32 markerIndexList;
  SoSFFloat markerXPeriod;
  SoMFFloat markerXList;
  /// The text of each marker, "+" by default.
  SoSFString markerString;
  /// @}

  /// @name Raised lines
  /// From (x, `raiseThreshold`) to (x, y), for places chosen as those of the markers are.
  /// @{
  SoSFEnum raiseFilterType;
  SoSFInt32 raiseIndexPeriod;
  SoMFInt32 raiseIndexList;
  SoSFFloat raiseXPeriod;
  SoMFFloat raiseXList;
  SoSFFloat raiseThreshold;
  /// @}

  PoCurve();
  /// Copies `n` points.
  PoCurve(int n, const SbVec2f* points, CurveRep rep = CURVE_POLYLINE);
  /// Copy the fields above, not the parts.
  /// @{
  PoCurve(const PoCurve& other);
  PoCurve& operator=(const PoCurve& other);
  /// @}

  void rebuild() override;

  /// The point of the segment from p1 to p2, or of the line through them, at a given x or at a given y. Where there is
  /// no single one, the coordinate of p1.
  /// @{
  static void calculateInterpolation(const SbVec2f& p1, const SbVec2f& p2, float x, float& y);
  static void calculateInterpolation2(const SbVec2f& p1, const SbVec2f& p2, float y, float& x);
  /// @}

 protected:
  ~PoCurve() override;

  void preRebuild() override;
  void addElementsAllCaches() override;
  SbBool setUpConnections(SbBool onOff, SbBool doItAlways = FALSE) override;

 private:
  void drawRaisePoints(int n, const SbVec2f* points);
  void drawMarkers(int n, const SbVec2f* points);

  // The style of the markers, which is written in each format: its font decides where they stand.
  SoFieldList m_styleFields;
  FieldSensorList m_styleSensors;
};

#endif
