#ifndef ORMELLE_POCURVELINE_H
#define ORMELLE_POCURVELINE_H

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>

#include <Ormelle/PoChart.h>

/// The curve of a one-dimensional mesh as a line, of one thickness or of one that a set of values gives.
/// @code
/// separator->addChild(meshNode);
/// separator->addChild(hints);  // how the nodes are joined
/// auto* line = new PoCurveLine;
/// line->colorBinding = PoChart::PER_VERTEX;
/// line->thicknessIndex = 1;
/// line->thicknessFactor = 0.01f;
/// separator->addChild(line);
/// @endcode
///
/// Without a set of thicknesses it is a line of the toolkit, as thick as the draw style says. With one it is a flat
/// strip, `thicknessFactor` times the value wide in lengths of the picture: also where the domain stretches the curve.
/// Nodes that aren't finite, have no colour, or no thickness, interrupt it; a negative thickness is 0. A filter on the
/// state doesn't thin the curve out.
///
/// Part behind those of PoBase: `curveLine`, SoGroup.
class ORMELLE_API PoCurveLine : public PoChart {
  PO_KIT_HEADER(PoCurveLine, PoChart);
  PO_KIT_CATALOG_ENTRY_HEADER(curveLine);

 public:
  enum ThicknessBinding {
    PER_PART_THICKNESS = 0,   ///< one thickness from each node to the next, that of the former
    PER_VERTEX_THICKNESS = 1  ///< a thickness at each node, changing evenly in between
  };

  /// A ThicknessBinding, `PER_VERTEX_THICKNESS` by default.
  SoSFEnum thicknessBinding;
  /// 1 by default.
  SoSFFloat thicknessFactor;
  /// Index of the set of values that gives thicknesses; below 0, the default, there is none.
  SoSFInt32 thicknessIndex;

  PoCurveLine();

  void rebuild() override;

 protected:
  ~PoCurveLine() override;
};

#endif
