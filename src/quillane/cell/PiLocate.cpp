#include "quillane/cell/PiLocate.h"

#include <Inventor/SbVec3d.h>

#include <algorithm>
#include <cmath>

#include "quillane/cell/PiShapeFunctions.h"

namespace {

template <int kNum>
using Vector = double[kNum];

double determinant(const Vector<2>& a, const Vector<2>& b) { return a[0] * b[1] - a[1] * b[0]; }

void cross(const Vector<3>& a, const Vector<3>& b, Vector<3>& product) {
  product[0] = a[1] * b[2] - a[2] * b[1];
  product[1] = a[2] * b[0] - a[0] * b[2];
  product[2] = a[0] * b[1] - a[1] * b[0];
}

double dot(const Vector<3>& a, const Vector<3>& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

/// Solves the system whose columns are `columns` by Cramer's rule; `x` is good unless the determinant, which it
/// returns, is 0.
double solveLinear(const Vector<2> (&columns)[2], const Vector<2>& right, Vector<2>& x) {
  const double det = determinant(columns[0], columns[1]), scale = 1 / det;
  x[0] = determinant(right, columns[1]) * scale;
  x[1] = determinant(columns[0], right) * scale;
  return det;
}

double solveLinear(const Vector<3> (&columns)[3], const Vector<3>& right, Vector<3>& x) {
  Vector<3> normal, across;
  cross(columns[1], columns[2], normal);
  cross(columns[0], right, across);
  const double det = dot(columns[0], normal), scale = 1 / det;
  x[0] = dot(right, normal) * scale;
  x[1] = dot(columns[2], across) * scale;
  x[2] = -dot(columns[1], across) * scale;
  return det;
}

/// Inverts the shape functions by Newton's method: finds the place whose weighted mean of `nodes` is the origin.
template <class Shape>
PiPlace invert(const Vector<Shape::numParams> (&nodes)[Shape::numNodes], float tolerance, SbVec3f& pcoord) {
  constexpr int kNumParams = Shape::numParams;
  constexpr int kMaxSteps = 10;
  constexpr double kConverged = 1e-3;
  // The error left is about the square of the last step. Below this it doesn't show in a float; above, one more step is
  // taken, so that a point on the facet between two cells is in one of them at least.
  constexpr double kExact = 1e-4;
  // Determinants relative to that in the middle of the cell: zero but for rounding; and near a degenerate edge.
  constexpr double kSingular = 1e-24, kNearlySingular = 1e-4;

  const typename Shape::template Map<kNumParams> map(nodes);
  Vector<kNumParams> place, residual, tangents[kNumParams], change;
  std::fill(place, place + kNumParams, 0.5);
  double middleDet = 0, det = 0;
  bool isConverged = false;
  for (int step = 0; step < kMaxSteps; ++step) {
    map.evaluate(place, residual, tangents);
    det = std::fabs(solveLinear(tangents, residual, change));
    if (step == 0) middleDet = det;
    if (!(det > kSingular * middleDet)) break;
    double largest = 0;
    for (int param = 0; param < kNumParams; ++param) {
      place[param] -= change[param];
      largest = std::max(largest, std::fabs(change[param]));
    }
    const bool isExact = isConverged || largest < kExact;
    isConverged = largest < kConverged;
    if (isConverged && isExact) break;
  }

  pcoord.setValue(0.0F, 0.0F, 0.0F);
  for (int param = 0; param < kNumParams; ++param) pcoord[param] = static_cast<float>(place[param]);
  if (isConverged && Shape::isInside(pcoord, tolerance)) return PiPlace::INSIDE;
  if (middleDet > 0 && det <= kNearlySingular * middleDet) {
    // All places along a degenerate edge are one point, of which the iteration may find any.
    Shape::clamp(place);
    map.evaluate(place, residual, tangents);
    double extent = 0, distance = 0;
    for (int axis = 0; axis < kNumParams; ++axis) {
      for (const auto& node : nodes) extent = std::max(extent, std::fabs(node[axis] - nodes[0][axis]));
      distance = std::max(distance, std::fabs(residual[axis]));
    }
    if (distance <= double(kInversionError) * extent) {
      for (int param = 0; param < kNumParams; ++param) pcoord[param] = static_cast<float>(place[param]);
      return Shape::isInside(pcoord, tolerance) ? PiPlace::INSIDE : PiPlace::OUTSIDE;
    }
  }
  return isConverged ? PiPlace::OUTSIDE : PiPlace::UNKNOWN;
}

/// The axis of the largest component; of equal ones the first.
int dominantAxis(const SbVec3d& v) {
  int dominant = 0;
  for (int axis = 1; axis < 3; ++axis)
    if (std::fabs(v[axis]) > std::fabs(v[dominant])) dominant = axis;
  return dominant;
}

/// The two axes that are left when one is dropped, in rising order.
std::pair<int, int> remainingAxes(int dropped) { return {dropped == 0 ? 1 : 0, dropped == 2 ? 1 : 2}; }

}  // namespace

template <class Shape>
PiPlace locateByNewton(const SbVec3f* nodes, const SbVec3f& point, float tolerance, SbVec3f& pcoord) {
  Vector<3> fromPoint[Shape::numNodes];
  for (int node = 0; node < Shape::numNodes; ++node)
    for (int axis = 0; axis < 3; ++axis) fromPoint[node][axis] = double(nodes[node][axis]) - double(point[axis]);
  return invert<Shape>(fromPoint, tolerance, pcoord);
}

template PiPlace locateByNewton<PiHexahedronShape>(const SbVec3f*, const SbVec3f&, float, SbVec3f&);
template PiPlace locateByNewton<PiWedgeShape>(const SbVec3f*, const SbVec3f&, float, SbVec3f&);
template PiPlace locateByNewton<PiPyramidShape>(const SbVec3f*, const SbVec3f&, float, SbVec3f&);

PiPlace locateInTetrahedron(const SbVec3f* nodes, const SbVec3f& point, float tolerance, SbVec3f& pcoord) {
  Vector<3> edges[3], right, place;
  for (int axis = 0; axis < 3; ++axis) {
    const double origin = nodes[0][axis];
    for (int edge = 0; edge < 3; ++edge) edges[edge][axis] = double(nodes[edge + 1][axis]) - origin;
    right[axis] = double(point[axis]) - origin;
  }
  const double det = solveLinear(edges, right, place);
  if (det == 0 || !std::isfinite(det)) return PiPlace::UNKNOWN;
  for (int param = 0; param < 3; ++param) pcoord[param] = static_cast<float>(place[param]);
  return PiTetrahedronShape::isInside(pcoord, tolerance) ? PiPlace::INSIDE : PiPlace::OUTSIDE;
}

PiPlace locateInTriangle(const SbVec3f* nodes, const SbVec3f& point, float tolerance, SbVec3f& pcoord) {
  const SbVec3d origin(nodes[0]), offset = SbVec3d(point) - origin;
  const SbVec3d edges[2] = {SbVec3d(nodes[1]) - origin, SbVec3d(nodes[2]) - origin};
  const SbVec3d normal = edges[0].cross(edges[1]);
  const auto [axis0, axis1] = remainingAxes(dominantAxis(normal));
  const Vector<2> columns[2] = {{edges[0][axis0], edges[0][axis1]}, {edges[1][axis0], edges[1][axis1]}};
  Vector<2> place;
  const double det = solveLinear(columns, {offset[axis0], offset[axis1]}, place);
  if (det == 0 || !std::isfinite(det)) return PiPlace::UNKNOWN;
  pcoord.setValue(static_cast<float>(place[0]), static_cast<float>(place[1]), 0.0F);
  if (!PiTriangleShape::isInside(pcoord, tolerance)) return PiPlace::OUTSIDE;
  if (edges[0][2] == 0 && edges[1][2] == 0) return PiPlace::INSIDE;
  const double perimeter = edges[0].length() + edges[1].length() + (edges[1] - edges[0]).length();
  const double distance = std::fabs(offset.dot(normal)) / normal.length();
  return distance < perimeter / 9 ? PiPlace::INSIDE : PiPlace::OUTSIDE;
}

PiPlace locateInQuadrangle(const SbVec3f* nodes, const SbVec3f& point, float tolerance, SbVec3f& pcoord) {
  Vector<2> projected[4];
  if (nodes[1][2] == nodes[0][2] && nodes[2][2] == nodes[0][2] && nodes[3][2] == nodes[0][2]) {
    for (int node = 0; node < 4; ++node)
      for (int axis = 0; axis < 2; ++axis) projected[node][axis] = double(nodes[node][axis]) - double(point[axis]);
    return invert<PiQuadrangleShape>(projected, tolerance, pcoord);
  }

  // The normal of the mean plane is that of the two diagonals.
  SbVec3d fromPoint[4];
  for (int node = 0; node < 4; ++node) fromPoint[node] = SbVec3d(nodes[node]) - SbVec3d(point);
  const SbVec3d diagonals[2] = {fromPoint[2] - fromPoint[0], fromPoint[3] - fromPoint[1]};
  SbVec3d normal = diagonals[0].cross(diagonals[1]);
  const double length = normal.length();
  if (!(length > 0)) return PiPlace::UNKNOWN;
  normal /= length;
  // Point and nodes go along the normal onto one plane. The nodes of a warped cell must go, too: only then does the
  // image of a point of the cell have the pcoord of that point.
  const auto [axis0, axis1] = remainingAxes(dominantAxis(normal));
  for (int node = 0; node < 4; ++node) {
    const SbVec3d onPlane = fromPoint[node] - normal * fromPoint[node].dot(normal);
    projected[node][0] = onPlane[axis0];
    projected[node][1] = onPlane[axis1];
  }
  const PiPlace place = invert<PiQuadrangleShape>(projected, tolerance, pcoord);
  if (place != PiPlace::INSIDE) return place;
  const SbVec3d center = (fromPoint[0] + fromPoint[1] + fromPoint[2] + fromPoint[3]) / 4;
  const double reach = (diagonals[0].length() + diagonals[1].length()) / 6;
  return std::fabs(center.dot(normal)) < reach ? PiPlace::INSIDE : PiPlace::OUTSIDE;
}

PiPlace locateInBox(const SbVec3f& origin, const SbVec3f& size, int numAxes, const SbVec3f& point, float tolerance,
                    SbVec3f& pcoord) {
  for (int axis = 0; axis < numAxes; ++axis)
    if (size[axis] == 0.0F || !std::isfinite(size[axis])) return PiPlace::UNKNOWN;
  bool isInside = true;
  for (int axis = 0; axis < 3; ++axis) {
    pcoord[axis] = axis < numAxes ? (point[axis] - origin[axis]) / size[axis] : 0.0F;
    isInside = isInside && isInUnitInterval(pcoord[axis], tolerance);
  }
  return isInside ? PiPlace::INSIDE : PiPlace::OUTSIDE;
}

float longestEdgeOf(std::span<const int[2]> edges, const SbVec3f* nodes) {
  double longest = 0;  // squared, in double: it neither vanishes nor overflows
  for (const auto& [first, second] : edges) {
    double squared = 0;
    for (int axis = 0; axis < 3; ++axis) {
      const double side = double(nodes[second][axis]) - double(nodes[first][axis]);
      squared += side * side;
    }
    if (std::isfinite(squared)) longest = std::max(longest, squared);
  }
  return static_cast<float>(std::sqrt(longest));
}
