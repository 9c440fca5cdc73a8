#ifndef ORMELLE_PISIDESNORMALS_H
#define ORMELLE_PISIDESNORMALS_H

#include <Inventor/SbVec3f.h>

#include <algorithm>

/// Outward normals of the boundary segments of a rectangle of `numX` by `numY` nodes, in the order of its limit: the
/// sides of the first i, the last j, the last i and the first j. The caller frees the array by `delete[]`.
inline SbVec3f* makeSidesNormals(int numX, int numY, bool doesXFall, bool doesYFall) {
  const SbVec3f x(doesXFall ? -1.0F : 1.0F, 0, 0), y(0, doesYFall ? -1.0F : 1.0F, 0);
  SbVec3f* normals = new SbVec3f[2 * (numX - 1) + 2 * (numY - 1)];
  SbVec3f* side = std::fill_n(normals, numY - 1, -x);
  side = std::fill_n(side, numX - 1, y);
  side = std::fill_n(side, numY - 1, x);
  std::fill_n(side, numX - 1, -y);
  return normals;
}

#endif
