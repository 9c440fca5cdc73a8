#ifndef ORMELLE_PIFINITE_H
#define ORMELLE_PIFINITE_H

#include <Inventor/SbVec3f.h>

#include <cmath>

/// Whether all three coordinates are finite numbers.
inline bool isFinitePoint(const SbVec3f& p) {
  return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

#endif
