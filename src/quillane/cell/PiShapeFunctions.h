#ifndef ORMELLE_PISHAPEFUNCTIONS_H
#define ORMELLE_PISHAPEFUNCTIONS_H

#include <Inventor/SbVec3f.h>

#include <algorithm>
#include <iterator>

// The shape functions of each kind of cell at a parametric place (u, v, w): the weight of each node, and for the kinds
// that are located by iteration the derivatives of the weights, all nodes for u, then for v, then for w. `isInside` is
// the test that ends a location; its bounds are inclusive and a NaN is outside.

/// Tells whether a parametric coordinate lies in [-tolerance, 1 + tolerance].
inline bool isInUnitInterval(float coordinate, float tolerance) {
  return coordinate >= -tolerance && coordinate <= 1.0f + tolerance;
}

/// What float arithmetic may leave of a coordinate that should be 0, relative to the size of the cell.
constexpr float kInversionError = 1e-6f;

/// isInUnitInterval for a coordinate that comes out of a matrix inversion: a point exactly on a facet, for which it
/// should be 0 or 1, is to be inside at tolerance 0 in spite of the few rounding errors that the inversion leaves.
inline bool isNearUnitInterval(float coordinate, float tolerance) {
  return isInUnitInterval(coordinate, tolerance + kInversionError);
}

struct PiQuadrangleShape {
  static constexpr int numNodes = 4;
  static constexpr int numParams = 2;

  static void weights(const SbVec3f& p, float* weight) {
    const float u = p[0], v = p[1];
    weight[0] = (1 - u) * (1 - v);
    weight[1] = u * (1 - v);
    weight[2] = u * v;
    weight[3] = (1 - u) * v;
  }

  static void derivs(const SbVec3f& p, float* deriv) {
    const float u = p[0], v = p[1];
    float* du = deriv;
    du[0] = -(1 - v);
    du[1] = 1 - v;
    du[2] = v;
    du[3] = -v;
    float* dv = deriv + numNodes;
    dv[0] = -(1 - u);
    dv[1] = -u;
    dv[2] = u;
    dv[3] = 1 - u;
  }

  static bool isInside(const SbVec3f& p, float tolerance) {
    return isNearUnitInterval(p[0], tolerance) && isNearUnitInterval(p[1], tolerance);
  }
};

struct PiTriangleShape {
  static constexpr int numNodes = 3;

  static void weights(const SbVec3f& p, float* weight) {
    weight[0] = 1 - p[0] - p[1];
    weight[1] = p[0];
    weight[2] = p[1];
  }

  static void derivs(const SbVec3f&, float* deriv) {
    constexpr float kDerivs[2 * numNodes] = {-1, 1, 0, -1, 0, 1};
    std::copy(std::begin(kDerivs), std::end(kDerivs), deriv);
  }

  static bool isInside(const SbVec3f& p, float tolerance) {
    return isNearUnitInterval(p[0], tolerance) && isNearUnitInterval(p[1], tolerance) &&
           isNearUnitInterval(1 - p[0] - p[1], tolerance);
  }
};

struct PiTetrahedronShape {
  static constexpr int numNodes = 4;

  static void weights(const SbVec3f& p, float* weight) {
    weight[0] = 1 - p[0] - p[1] - p[2];
    weight[1] = p[0];
    weight[2] = p[1];
    weight[3] = p[2];
  }

  static bool isInside(const SbVec3f& p, float tolerance) {
    return isNearUnitInterval(p[0], tolerance) && isNearUnitInterval(p[1], tolerance) &&
           isNearUnitInterval(p[2], tolerance) && isNearUnitInterval(1 - p[0] - p[1] - p[2], tolerance);
  }
};

/// A surface kind swept along w: its nodes at w = 0, then its nodes at w = 1.
template <class Base>
struct PiSweptShape {
  static constexpr int numNodes = 2 * Base::numNodes;
  static constexpr int numParams = 3;

  static void weights(const SbVec3f& p, float* weight) {
    Base::weights(p, weight);
    for (int node = 0; node < Base::numNodes; ++node) {
      weight[Base::numNodes + node] = weight[node] * p[2];
      weight[node] *= 1 - p[2];
    }
  }

  static void derivs(const SbVec3f& p, float* deriv) {
    constexpr int n = Base::numNodes;
    float base[3 * n];
    Base::derivs(p, base);
    Base::weights(p, base + 2 * n);
    for (int node = 0; node < n; ++node) {
      for (int param = 0; param < 2; ++param) {
        deriv[2 * n * param + node] = base[n * param + node] * (1 - p[2]);
        deriv[2 * n * param + n + node] = base[n * param + node] * p[2];
      }
      deriv[4 * n + node] = -base[2 * n + node];
      deriv[5 * n + node] = base[2 * n + node];
    }
  }

  static bool isInside(const SbVec3f& p, float tolerance) {
    return Base::isInside(p, tolerance) && isNearUnitInterval(p[2], tolerance);
  }
};

using PiHexahedronShape = PiSweptShape<PiQuadrangleShape>;
using PiWedgeShape = PiSweptShape<PiTriangleShape>;

/// A quadrangle that shrinks to the apex, node 4, at w = 1.
struct PiPyramidShape {
  static constexpr int numNodes = 5;
  static constexpr int numParams = 3;

  static void weights(const SbVec3f& p, float* weight) {
    PiQuadrangleShape::weights(p, weight);
    for (int node = 0; node < 4; ++node) weight[node] *= 1 - p[2];
    weight[4] = p[2];
  }

  static void derivs(const SbVec3f& p, float* deriv) {
    float base[12];
    PiQuadrangleShape::derivs(p, base);
    PiQuadrangleShape::weights(p, base + 8);
    for (int node = 0; node < 4; ++node) {
      deriv[node] = base[node] * (1 - p[2]);
      deriv[5 + node] = base[4 + node] * (1 - p[2]);
      deriv[10 + node] = -base[8 + node];
    }
    deriv[4] = deriv[9] = 0;
    deriv[14] = 1;
  }

  static bool isInside(const SbVec3f& p, float tolerance) {
    return PiQuadrangleShape::isInside(p, tolerance) && isNearUnitInterval(p[2], tolerance);
  }
};

#endif
