#ifndef ORMELLE_PIAXISTRANSFORM_H
#define ORMELLE_PIAXISTRANSFORM_H

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3f.h>
#include <Ormelle/PoCartesianAxis.h>

/// From the coordinates of an axis to those of the scene. x of the axis is the coordinate along it; lengths across it
/// are scaled so that they look as long as those along it once the domain is transformed.
struct PiAxisTransform {
  SbMatrix matrix;
  float along = 1;   ///< the side of the domain along the axis
  float across = 1;  ///< the side of the domain across it

  /// `deltas` are the sides of the domain.
  static PiAxisTransform make(PoCartesianAxis::Type type, const SbVec3f& start, const SbVec3f& deltas);
  /// Far from 0 the numbers of a graphics card leave little of an axis: then its nodes count from its start, and the
  /// way there is the matrix's alone. Returns where the nodes count from, 0 if that isn't needed.
  static float moveOrigin(PoCartesianAxis::Type type, float start, float end, SbMatrix& matrix);
  /// The coordinate that the axis runs along: 0 x, 1 y, 2 z.
  static int direction(PoCartesianAxis::Type type);
};

#endif
