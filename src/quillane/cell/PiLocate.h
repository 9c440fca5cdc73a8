#ifndef ORMELLE_PILOCATE_H
#define ORMELLE_PILOCATE_H

#include <Inventor/SbVec3f.h>

#include <algorithm>
#include <cmath>
#include <utility>

/// The power of two that brings a length near 1; 0 for a length that is 0 or not finite, which makes a cell degenerate.
/// Scaling by it is exact, so that determinants of very small and very large cells neither vanish nor overflow, and
/// those of other cells keep every bit.
inline float scaleToUnit(float length) {
  if (!(length > 0.0f) || !std::isfinite(length)) return 0.0f;
  return std::ldexp(1.0f, std::clamp(-std::ilogb(length), -126, 126));
}

inline float maxAbs(const SbVec3f& v) { return std::max({std::fabs(v[0]), std::fabs(v[1]), std::fabs(v[2])}); }

/// The axis of the largest component; of equal ones the first.
inline int dominantAxis(const SbVec3f& v) {
  int dominant = 0;
  for (int axis = 1; axis < 3; ++axis)
    if (std::fabs(v[axis]) > std::fabs(v[dominant])) dominant = axis;
  return dominant;
}

/// The two axes that are left when one is dropped, in rising order.
inline std::pair<int, int> remainingAxes(int dropped) { return {dropped == 0 ? 1 : 0, dropped == 2 ? 1 : 2}; }

inline float determinant(const float (&a)[2], const float (&b)[2]) { return a[0] * b[1] - a[1] * b[0]; }

inline float determinant(const float (&a)[3], const float (&b)[3], const float (&c)[3]) {
  return a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) + a[2] * (b[0] * c[1] - b[1] * c[0]);
}

/// Solves the system whose columns are `columns` by Cramer's rule; false if it is singular.
inline bool solveLinear(const float (&columns)[2][2], const float (&right)[2], float (&x)[2]) {
  const float det = determinant(columns[0], columns[1]);
  if (det == 0.0f) return false;
  x[0] = determinant(right, columns[1]) / det;
  x[1] = determinant(columns[0], right) / det;
  return true;
}

inline bool solveLinear(const float (&columns)[3][3], const float (&right)[3], float (&x)[3]) {
  const float det = determinant(columns[0], columns[1], columns[2]);
  if (det == 0.0f) return false;
  x[0] = determinant(right, columns[1], columns[2]) / det;
  x[1] = determinant(columns[0], right, columns[2]) / det;
  x[2] = determinant(columns[0], columns[1], right) / det;
  return true;
}

/// Inverts the shape functions of a cell by Newton's method: finds the `pcoord` whose weighted mean of `nodes` is the
/// origin. So the caller passes the nodes relative to the point it looks for, which also keeps the digits of a small
/// cell far from the origin of its mesh. Only the first `Shape::numParams` components are looked at; the other
/// components of `pcoord` become 0.
///
/// False if the point is outside the cell by more than `tolerance`, and if the Jacobian is singular or the iteration
/// doesn't converge; NaN and infinity never converge.
template <class Shape>
bool locateByNewton(SbVec3f (&nodes)[Shape::numNodes], float tolerance, SbVec3f& pcoord) {
  constexpr int kNumParams = Shape::numParams;
  constexpr int kMaxSteps = 10;
  constexpr float kConverged = 0.001f;

  float extent = 0.0f;
  for (const SbVec3f& node : nodes) extent = std::max(extent, maxAbs(node - nodes[0]));
  const float scale = scaleToUnit(extent);
  if (scale == 0.0f) return false;
  for (SbVec3f& node : nodes) node *= scale;

  pcoord.setValue(0.5f, 0.5f, kNumParams == 3 ? 0.5f : 0.0f);
  for (int step = 0; step < kMaxSteps; ++step) {
    float weights[Shape::numNodes], derivs[kNumParams * Shape::numNodes];
    Shape::weights(pcoord, weights);
    Shape::derivs(pcoord, derivs);
    float residual[kNumParams] = {}, tangents[kNumParams][kNumParams] = {};
    for (int node = 0; node < Shape::numNodes; ++node)
      for (int axis = 0; axis < kNumParams; ++axis) {
        residual[axis] += weights[node] * nodes[node][axis];
        for (int param = 0; param < kNumParams; ++param)
          tangents[param][axis] += derivs[param * Shape::numNodes + node] * nodes[node][axis];
      }
    float change[kNumParams];
    if (!solveLinear(tangents, residual, change)) return false;
    bool isConverged = true;
    for (int param = 0; param < kNumParams; ++param) {
      pcoord[param] -= change[param];
      isConverged = isConverged && std::fabs(change[param]) < kConverged;
    }
    if (isConverged) return Shape::isInside(pcoord, tolerance);
  }
  return false;
}

#endif
