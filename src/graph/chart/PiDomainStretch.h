#ifndef ORMELLE_PIDOMAINSTRETCH_H
#define ORMELLE_PIDOMAINSTRETCH_H

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3f.h>
#include <Ormelle/PbDomain.h>

#include <cmath>

/// How much longer the transform of a domain makes lengths along x, y and z: all above 0, to be divided by.
namespace PiDomainStretch {

inline SbVec3f of(const PbDomain& domain, bool isTransformed) {
  SbVec3f stretch(1, 1, 1);
  if (!isTransformed) return stretch;
  const SbMatrix matrix = domain.getMatrix();
  for (int axis = 0; axis < 3; ++axis) {
    const float factor = std::fabs(matrix[axis][axis]);
    if (factor > 0 && std::isfinite(1 / factor)) stretch[axis] = factor;
  }
  return stretch;
}

}  // namespace PiDomainStretch

#endif
