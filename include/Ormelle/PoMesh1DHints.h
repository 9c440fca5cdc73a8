#ifndef ORMELLE_POMESH1DHINTS_H
#define ORMELLE_POMESH1DHINTS_H

#include <Inventor/fields/SoSFEnum.h>

#include <Ormelle/PoNode.h>

/// Says how the charts behind it join the points of a one-dimensional mesh; puts it in PoMesh1DHintsElement.
///
/// In the names below, p and q are points one after the other and m is their middle.
/// @code
/// auto* hints = new PoMesh1DHints;
/// hints->geomInterpretation = PoMesh1DHints::STAIRS_X;
/// separator->addChild(meshNode);
/// separator->addChild(hints);
/// separator->addChild(curve);
/// @endcode
class ORMELLE_API PoMesh1DHints : public PoNode {
  PO_NODE_HEADER(PoMesh1DHints, PoNode);

 public:
  enum GeomInterpretation {
    AS_IS,      ///< straight from p to q
    SMOOTH,     ///< a cubic spline through all points
    STAIRS_X,   ///< along x from p, then along y to q
    STAIRS_Y,   ///< along y from p, then along x to q
    HISTO_X,    ///< along x at the height of m
    HISTO_Y,    ///< along y at the place of m
    STAIRS_2X,  ///< y, x, y, x: meets m half-way
    STAIRS_2Y   ///< x, y, x, y: meets m half-way
  };

  SoSFEnum geomInterpretation;  ///< a GeomInterpretation, `AS_IS` by default

  PoMesh1DHints();

  void doAction(SoAction* action) override;

 protected:
  ~PoMesh1DHints() override;
};

#endif
