#ifndef ORMELLE_PISHAPEFUNCTIONS_H
#define ORMELLE_PISHAPEFUNCTIONS_H

#include <Inventor/SbVec3f.h>

#include <algorithm>
#include <iterator>

// The shape functions of each kind of cell at a parametric place (u, v, w): the weight of each node, and for the kinds
// that are located by iteration the derivatives of the weights, all nodes for u, then for v, then for w. Their `Map` is
// the same as polynomials, for one cell: it gives the weighted mean of the nodes and its derivatives with much less
// work. `isInside` is the test that ends a location; its bounds are inclusive and a NaN is outside. `clamp` takes a
// place to the nearest of the cell, roughly.

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

  static void clamp(double* p) {
    for (int param = 0; param < numParams; ++param) p[param] = std::clamp(p[param], 0.0, 1.0);
  }

  template <int kDim>
  class Map {
   public:
    explicit Map(const double (&nodes)[numNodes][kDim]) {
      for (int axis = 0; axis < kDim; ++axis) {
        m_origin[axis] = nodes[0][axis];
        m_alongU[axis] = nodes[1][axis] - nodes[0][axis];
        m_alongV[axis] = nodes[3][axis] - nodes[0][axis];
        m_twist[axis] = (nodes[2][axis] - nodes[3][axis]) - m_alongU[axis];
      }
    }
    void evaluate(const double* p, double (&value)[kDim], double (*tangents)[kDim]) const {
      for (int axis = 0; axis < kDim; ++axis) {
        tangents[0][axis] = m_alongU[axis] + p[1] * m_twist[axis];
        tangents[1][axis] = m_alongV[axis] + p[0] * m_twist[axis];
        value[axis] = m_origin[axis] + p[0] * tangents[0][axis] + p[1] * m_alongV[axis];
      }
    }

   private:
    double m_origin[kDim], m_alongU[kDim], m_alongV[kDim], m_twist[kDim];
  };

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

  static void clamp(double* p) {
    p[0] = std::clamp(p[0], 0.0, 1.0);
    p[1] = std::clamp(p[1], 0.0, 1.0);
    const double sum = p[0] + p[1];
    if (sum > 1) p[0] /= sum, p[1] /= sum;
  }

  template <int kDim>
  class Map {
   public:
    explicit Map(const double (&nodes)[numNodes][kDim]) {
      for (int axis = 0; axis < kDim; ++axis) {
        m_origin[axis] = nodes[0][axis];
        m_alongU[axis] = nodes[1][axis] - nodes[0][axis];
        m_alongV[axis] = nodes[2][axis] - nodes[0][axis];
      }
    }
    void evaluate(const double* p, double (&value)[kDim], double (*tangents)[kDim]) const {
      for (int axis = 0; axis < kDim; ++axis) {
        tangents[0][axis] = m_alongU[axis];
        tangents[1][axis] = m_alongV[axis];
        value[axis] = m_origin[axis] + p[0] * m_alongU[axis] + p[1] * m_alongV[axis];
      }
    }

   private:
    double m_origin[kDim], m_alongU[kDim], m_alongV[kDim];
  };

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

  static void clamp(double* p) {
    Base::clamp(p);
    p[2] = std::clamp(p[2], 0.0, 1.0);
  }

  template <int kDim>
  class Map {
   public:
    explicit Map(const double (&nodes)[numNodes][kDim]) : m_low(lowOf(nodes)), m_rise(riseOf(nodes)) {}
    void evaluate(const double* p, double (&value)[kDim], double (*tangents)[kDim]) const {
      double riseTangents[2][kDim];
      m_low.evaluate(p, value, tangents);
      m_rise.evaluate(p, tangents[2], riseTangents);
      for (int axis = 0; axis < kDim; ++axis) {
        tangents[0][axis] += p[2] * riseTangents[0][axis];
        tangents[1][axis] += p[2] * riseTangents[1][axis];
        value[axis] += p[2] * tangents[2][axis];
      }
    }

   private:
    using BaseMap = typename Base::template Map<kDim>;

    static BaseMap lowOf(const double (&nodes)[numNodes][kDim]) {
      double low[Base::numNodes][kDim];
      for (int node = 0; node < Base::numNodes; ++node)
        for (int axis = 0; axis < kDim; ++axis) low[node][axis] = nodes[node][axis];
      return BaseMap(low);
    }
    static BaseMap riseOf(const double (&nodes)[numNodes][kDim]) {
      double rise[Base::numNodes][kDim];
      for (int node = 0; node < Base::numNodes; ++node)
        for (int axis = 0; axis < kDim; ++axis)
          rise[node][axis] = nodes[Base::numNodes + node][axis] - nodes[node][axis];
      return BaseMap(rise);
    }

    BaseMap m_low, m_rise;
  };

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

  static void clamp(double* p) {
    PiQuadrangleShape::clamp(p);
    p[2] = std::clamp(p[2], 0.0, 1.0);
  }

  template <int kDim>
  class Map {
   public:
    explicit Map(const double (&nodes)[numNodes][kDim]) : m_base(baseOf(nodes)) {
      std::copy(nodes[4], nodes[4] + kDim, m_apex);
    }
    void evaluate(const double* p, double (&value)[kDim], double (*tangents)[kDim]) const {
      double fromApex[kDim];
      m_base.evaluate(p, fromApex, tangents);
      for (int axis = 0; axis < kDim; ++axis) {
        tangents[0][axis] *= 1 - p[2];
        tangents[1][axis] *= 1 - p[2];
        tangents[2][axis] = -fromApex[axis];
        value[axis] = m_apex[axis] + (1 - p[2]) * fromApex[axis];
      }
    }

   private:
    using BaseMap = PiQuadrangleShape::Map<kDim>;

    static BaseMap baseOf(const double (&nodes)[numNodes][kDim]) {
      double base[4][kDim];
      for (int node = 0; node < 4; ++node)
        for (int axis = 0; axis < kDim; ++axis) base[node][axis] = nodes[node][axis] - nodes[4][axis];
      return BaseMap(base);
    }

    BaseMap m_base;
    double m_apex[kDim];
  };

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
