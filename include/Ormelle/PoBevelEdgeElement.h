#ifndef ORMELLE_POBEVELEDGEELEMENT_H
#define ORMELLE_POBEVELEDGEELEMENT_H

#include <Ormelle/PoBevelEdge.h>
#include <Ormelle/PoSubElement.h>

/// How the edges of solids are rounded off, set by PoBevelEdge; where there is none, they aren't.
class ORMELLE_API PoBevelEdgeElement : public SoReplacedElement {
  PO_ELEMENT_HEADER(PoBevelEdgeElement);

 public:
  static void set(SoState* state, SoNode* node, float radius, PoBevelEdge::RadiusFlag radiusFlag, float bevelAngle);
  /// Returns 0 if edges aren't rounded off; the radius is 0 then.
  static int get(SoState* state, float& radius, PoBevelEdge::RadiusFlag& radiusFlag, float& bevelAngle);

 private:
  int m_isOn = 0;
  float m_radius = 0;
  PoBevelEdge::RadiusFlag m_radiusFlag = PoBevelEdge::ABSOLUTE_RADIUS;
  float m_bevelAngle = 0;
};

#endif
