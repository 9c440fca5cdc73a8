#ifndef ORMELLE_POCURVE3_H
#define ORMELLE_POCURVE3_H

#include <Inventor/SbVec3f.h>
#include <Inventor/fields/SoMFVec3f.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>

#include <Ormelle/PoCurve.h>
#include <Ormelle/PoTavernel.h>

/// A curve through points of space, joined as PoCurve joins them, where z goes with y: seen along y as well as along z,
/// stairs are stairs.
/// @code
/// auto* track = new PoCurve3(numFixes, fixes, PoCurve::CURVE_SMOOTH);
/// track->isMarkerVisible = TRUE;
/// separator->addChild(track);
/// @endcode
///
/// Points that aren't finite part the curve.
///
/// Catalog behind that of PoBase, each with its `...Sep` and `...App` (see PoTavernel):
/// @code
/// curvePoint  SoGroup  SoCoordinate3, SoLineSet
/// marker      SoGroup  SoCoordinate3, SoMarkerSet
/// @endcode
class ORMELLE_API PoCurve3 : public PoTavernel {
  PO_KIT_HEADER(PoCurve3, PoTavernel);
  PO_KIT_TRIPLE_HEADER(curvePoint);
  PO_KIT_TRIPLE_HEADER(marker);

 public:
  /// The points in the order in which they are joined; none by default.
  SoMFVec3f point;
  /// A PoCurve::CurveRep, `CURVE_POLYLINE` by default.
  SoSFEnum curveRep;
  /// Whether each point has a marker, which always faces the viewer; FALSE by default.
  SoSFBool isMarkerVisible;

  PoCurve3();
  /// Copies `n` points.
  PoCurve3(int n, const SbVec3f* points, PoCurve::CurveRep rep = PoCurve::CURVE_POLYLINE);
  /// Copy the fields above, not the parts.
  /// @{
  PoCurve3(const PoCurve3& other);
  PoCurve3& operator=(const PoCurve3& other);
  /// @}

  void rebuild() override;

 protected:
  ~PoCurve3() override;
};

#endif
