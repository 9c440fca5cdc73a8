#ifndef ORMELLE_POTUBE_H
#define ORMELLE_POTUBE_H

#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoChart.h>

/// The curve of a one-dimensional mesh as a tube, closed at its ends.
/// @code
/// separator->addChild(meshNode);
/// auto* profile = new PoSquareProfile;  // without one, the tube is round
/// profile->width = profile->height = 0.02f;
/// separator->addChild(profile);
/// separator->addChild(new PoTube);
/// @endcode
///
/// Its section is the profile on the state, whose x lies in the plane of the curve, to its left, and whose y along z;
/// without one a circle. Lengths are those of the picture: the section isn't distorted where the domain stretches the
/// curve. At bends the tube is mitred. Nodes that aren't finite or have no colour interrupt it.
///
/// Part behind those of PoBase: `tube`, SoGroup.
class ORMELLE_API PoTube : public PoChart {
  PO_KIT_HEADER(PoTube, PoChart);
  PO_KIT_CATALOG_ENTRY_HEADER(tube);

 public:
  /// Radius of the circle, 0.02 by default. One that isn't above 0 draws nothing.
  SoSFFloat radius;

  PoTube();

  void rebuild() override;

 protected:
  ~PoTube() override;

  void preRebuild() override;
  void addElementsAllCaches() override;
};

#endif
