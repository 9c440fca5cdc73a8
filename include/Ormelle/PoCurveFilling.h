#ifndef ORMELLE_POCURVEFILLING_H
#define ORMELLE_POCURVEFILLING_H

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoChart.h>

/// The area between the curve of a one-dimensional mesh and a threshold, with the colours of the curve.
/// @code
/// separator->addChild(meshNode);
/// separator->addChild(new PoLinearDataMapping);
/// auto* filling = new PoCurveFilling;
/// filling->colorBinding = PoChart::PER_VERTEX;
/// filling->threshold = 340;
/// separator->addChild(filling);
/// @endcode
///
/// Nodes that aren't finite or have no colour interrupt it.
///
/// Part behind those of PoBase: `curveFilling`, SoGroup.
class ORMELLE_API PoCurveFilling : public PoChart {
  PO_KIT_HEADER(PoCurveFilling, PoChart);
  PO_KIT_CATALOG_ENTRY_HEADER(curveFilling);

 public:
  enum Orientation {
    FILL_TO_X = 0,  ///< sideways, up to the line x = threshold
    FILL_TO_Y = 1   ///< up or down, to the line y = threshold
  };
  /// What is filled. A colour that one side shall not have needs two kits.
  enum Side {
    BOTH_SIDES = 0,
    ABOVE_THRESHOLD = 1,  ///< where the curve is beyond the threshold
    BELOW_THRESHOLD = 2   ///< where it is short of it
  };

  /// An Orientation, `FILL_TO_Y` by default.
  SoSFEnum orientation;
  /// 0 by default.
  SoSFFloat threshold;
  /// A Side, `BOTH_SIDES` by default.
  SoSFEnum side;

  PoCurveFilling();

  void rebuild() override;

 protected:
  ~PoCurveFilling() override;
};

#endif
