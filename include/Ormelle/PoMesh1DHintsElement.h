#ifndef ORMELLE_POMESH1DHINTSELEMENT_H
#define ORMELLE_POMESH1DHINTSELEMENT_H

#include <Ormelle/PoMesh1DHints.h>
#include <Ormelle/PoSubElement.h>

/// How the points of a one-dimensional mesh are joined, set by PoMesh1DHints; `AS_IS` where there is none.
class ORMELLE_API PoMesh1DHintsElement : public SoReplacedElement {
  PO_ELEMENT_HEADER(PoMesh1DHintsElement);

 public:
  static void set(SoState* state, SoNode* node, PoMesh1DHints::GeomInterpretation geomInterpretation);
  static PoMesh1DHints::GeomInterpretation get(SoState* state);

 private:
  PoMesh1DHints::GeomInterpretation m_geomInterpretation = PoMesh1DHints::AS_IS;
};

#endif
