#ifndef ORMELLE_POPIECHART2D_H
#define ORMELLE_POPIECHART2D_H

#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFVec2f.h>

#include <Ormelle/PoPieChart.h>

/// A flat pie in the plane z = 0.
///
/// @code
/// auto* pie = new PoPieChart2D;
/// const float values[] = {24.6f, 37.3f, 16.6f};
/// pie->sliceValue.setValues(0, 3, values);
/// pie->intAnnotPercentVisibility = PoAxis::VISIBILITY_ON;
/// root->addChild(pie);
/// @endcode
class ORMELLE_API PoPieChart2D : public PoPieChart {
  PO_KIT_HEADER(PoPieChart2D, PoPieChart);

 public:
  SoSFVec2f center;  ///< 0 0 by default
  SoSFFloat radius;  ///< 0.5 by default; 0, negative or not finite: there is no pie

  PoPieChart2D();

 protected:
  ~PoPieChart2D() override;

  SbVec2f pieCenter() const override { return center.getValue(); }
  float pieRadius() const override { return radius.getValue(); }
  void drawSlices() override;
};

#endif
