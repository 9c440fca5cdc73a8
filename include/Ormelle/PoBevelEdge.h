#ifndef ORMELLE_POBEVELEDGE_H
#define ORMELLE_POBEVELEDGE_H

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoNode.h>

/// Asks the solids behind it to round off their edges; puts it in PoBevelEdgeElement.
///
/// The node has no effect while `radius` or `bevelAngle` is ignored.
/// @code
/// auto* bevel = new PoBevelEdge;
/// bevel->radiusFlag = PoBevelEdge::PERCENTAGE_RADIUS;
/// bevel->radius = 10;
/// separator->addChild(bevel);
/// separator->addChild(bars);
/// @endcode
class ORMELLE_API PoBevelEdge : public PoNode {
  PO_NODE_HEADER(PoBevelEdge, PoNode);

 public:
  enum RadiusFlag {
    ABSOLUTE_RADIUS,   ///< `radius` is a length
    PERCENTAGE_RADIUS  ///< `radius` is a percentage of the size of the solid
  };

  SoSFFloat radius;      ///< of the rounding, 0.05 by default
  SoSFEnum radiusFlag;   ///< a RadiusFlag, `ABSOLUTE_RADIUS` by default
  SoSFFloat bevelAngle;  ///< edges whose facets meet at a greater angle are rounded; radians, pi/6 by default

  PoBevelEdge();

  void doAction(SoAction* action) override;

 protected:
  ~PoBevelEdge() override;
};

#endif
