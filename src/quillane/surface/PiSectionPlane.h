#ifndef ORMELLE_PISECTIONPLANE_H
#define ORMELLE_PISECTIONPLANE_H

#include <Inventor/SbPlane.h>

/// The plane a*x + b*y + c*z = d, whose normal (a, b, c) points to its front.
struct PiSectionPlane {
  float a, b, c, d;

  PiSectionPlane(float normalX, float normalY, float normalZ, float distance)
      : a(normalX), b(normalY), c(normalZ), d(distance) {}
  explicit PiSectionPlane(const SbPlane& plane)
      : PiSectionPlane(plane.getNormal()[0], plane.getNormal()[1], plane.getNormal()[2],
                       plane.getDistanceFromOrigin()) {}

  /// The signed distance, positive in front. Each step of it rounds to a result that rises with its operands, so that
  /// what lies between two points on every axis has a distance between theirs, exactly.
  float distance(float x, float y, float z) const { return a * x + b * y + c * z - d; }
};

#endif
