#ifndef ORMELLE_POPIECHART3D_H
#define ORMELLE_POPIECHART3D_H

#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFVec2f.h>

#include <Ormelle/PoPieChart.h>

/// A pie of solid slices between two heights; its annotations stand at the upper one.
///
/// @code
/// auto* pie = new PoPieChart3D;
/// const float values[] = {24.6f, 37.3f, 16.6f};
/// pie->sliceValue.setValues(0, 3, values);
/// pie->setSliceToTranslate(1, 0.1f);
/// root->addChild(pie);
/// @endcode
class ORMELLE_API PoPieChart3D : public PoPieChart {
  PO_KIT_HEADER(PoPieChart3D, PoPieChart);

 public:
  SoSFVec2f center;  ///< 0 0 by default
  SoSFFloat radius;  ///< 0.5 by default; 0, negative or not finite: there is no pie
  SoSFFloat zMin;    ///< 0 by default; may lie above the other
  SoSFFloat zMax;    ///< 0.1 by default

  PoPieChart3D();

 protected:
  ~PoPieChart3D() override;

  SbVec2f pieCenter() const override { return center.getValue(); }
  float pieRadius() const override { return radius.getValue(); }
  float annotationHeight() const override;
  void drawSlices() override;
};

#endif
