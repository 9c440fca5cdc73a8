#ifndef ORMELLE_POCARTESIANAXIS_H
#define ORMELLE_POCARTESIANAXIS_H

#include <Inventor/fields/SoSFVec3f.h>

#include <Ormelle/PoAxis.h>

class SoMatrixTransform;
struct PiMultiplier;

/// An axis along one of the coordinate directions.
class ORMELLE_API PoCartesianAxis : public PoAxis {
  PO_KIT_ABSTRACT_HEADER(PoCartesianAxis, PoAxis);

 public:
  /// The first letter is the direction of the axis, the second that in which gradations, ticks and title are offset.
  enum Type { XY = 0, XZ = 1, YX = 2, YZ = 3, ZX = 4, ZY = 5 };

  SoSFVec3f start;  ///< where the axis starts; 0 0 0 by default
  SoSFFloat end;    ///< the coordinate of its end along its own direction; 1 by default
  SoSFEnum type;    ///< a Type, `XY` by default

 protected:
  PoCartesianAxis();
  ~PoCartesianAxis() override;

  /// Fills `out` with the transform from the coordinates of the axis (x its own coordinate, y across it) to those of
  /// the scene, and gives the sides of the domain along and across the axis. A type that isn't one counts as `XY`.
  void computeTransfo(const SbVec3f& start, SoMatrixTransform* out, float& ref1, float& ref2);

  Type getType() const;

  /// The steps of a rebuild up to the part `transform`. Says 0 if there is no axis: its ends are equal, or not finite.
  int beginAxis(float& axisStart, float& axisEnd);

  /// Where the power of ten of an axis is written, by two fields of the subclass.
  static PiMultiplier multiplierOf(const SoSFEnum& position, const SoSFFloat& distAxis);
  /// Part `multFactor` with its font; empty for a power of 0.
  void buildMultiplierPart(int power, PiMultiplier& multiplier);
};

#endif
