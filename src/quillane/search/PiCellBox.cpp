#include "quillane/search/PiCellBox.h"

#include <Inventor/SbVec3d.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "quillane/cell/PiPlainCell.h"

namespace {

// How far a cell reaches beyond its nodes, as a share of its extent, when parametric coordinates may leave [0, 1] by
// `t`: the weights of a hexahedron, of which none is larger than those of the other kinds, then sum to (1 + 2 t)^3 in
// absolute value, and half of what exceeds 1 pulls beyond.
double reachOf(double t) { return 3 * t + 6 * t * t + 4 * t * t * t; }

// The nodes of a cell, and their box.
struct Nodes {
  explicit Nodes(const PiPlainCell& cell) : num(cell.numNodes()) {
    float sum = 0;  // becomes NaN when a coordinate isn't finite
    for (int n = 0; n < num; ++n) {
      const SbVec3f& node = cell.point(n);
      for (int a = 0; a < 3; ++a) {
        coords[n][a] = node[a];
        low[a] = n == 0 ? node[a] : std::min(low[a], node[a]);
        high[a] = n == 0 ? node[a] : std::max(high[a], node[a]);
        sum += node[a] * 0;
      }
    }
    isFinite = num > 0 && sum == 0;
  }

  double extent(int a) const { return double(high[a]) - low[a]; }
  // The inversion of a cell stops at steps below 0.001, which leaves second-order errors of the extent, and computes in
  // float, which leaves a few last bits of the coordinates.
  double roundingMargin() const {
    double largest = 0;
    for (int a = 0; a < 3; ++a) largest = std::max({largest, std::fabs(double(low[a])), std::fabs(double(high[a]))});
    return 1e-5 * (extent(0) + extent(1) + extent(2)) + 1e-6 * largest;
  }

  int num;
  float coords[8][3];
  float low[3], high[3];
  bool isFinite;
};

void widen(const Nodes& nodes, double tolerance, PiBoxTree::Box& box) {
  const double margin = nodes.roundingMargin();
  for (int a = 0; a < 3; ++a) {
    const double reach = reachOf(tolerance) * nodes.extent(a) + margin;
    box.min[a] = nodes.low[a] - reach;
    box.max[a] = nodes.high[a] + reach;
  }
}

SbVec3d vectorTo(const Nodes& nodes, int from, int to) {
  SbVec3d v;
  for (int a = 0; a < 3; ++a) v[a] = double(nodes.coords[to][a]) - nodes.coords[from][a];
  return v;
}

// A quadrangle accepts what lies over or under its nodes' projection along the normal of its diagonals, nearer to their
// mean than a third of the mean length of the diagonals. A triangle accepts what lies over or under it along the
// largest component of its normal, nearer along the normal than a third of the mean length of its edges.
void raise(const Nodes& nodes, double tolerance, PiBoxTree::Box& box) {
  const bool isTriangle = nodes.num == 3;
  const SbVec3d u = isTriangle ? vectorTo(nodes, 0, 1) : vectorTo(nodes, 0, 2);
  const SbVec3d v = isTriangle ? vectorTo(nodes, 0, 2) : vectorTo(nodes, 1, 3);
  const SbVec3d normal = u.cross(v);
  const double length = normal.length();
  double distance = (u.length() + v.length()) / 6;
  if (isTriangle) distance = (u.length() + v.length() + (v - u).length()) / 9;
  double rise[3];
  if (!(length > 1e-5 * u.length() * v.length())) {
    // A cell that is hardly more than a line may find its normal anywhere.
    std::fill(rise, rise + 3, (1 + reachOf(tolerance)) * 2 * (u.length() + v.length()));
  } else {
    double largest = 0;
    for (int a = 0; a < 3; ++a) largest = std::max(largest, std::fabs(normal[a] / length));
    // The nodes of a warped quadrangle lie alternately over and under its mean plane.
    const double warp = std::fabs(normal.dot(vectorTo(nodes, 0, 1))) / length * (1 + reachOf(tolerance));
    for (int a = 0; a < 3; ++a) {
      const double slope = std::fabs(normal[a] / length);
      if (!isTriangle)
        rise[a] = slope * (distance + warp);
      else  // of components that are equal but for rounding the cell may choose another
        rise[a] = slope < largest * (1 - 1e-5) ? 0 : distance / largest * (1 + 1e-5);
    }
  }
  for (int a = 0; a < 3; ++a) {
    box.min[a] -= rise[a];
    box.max[a] += rise[a];
  }
}

}  // namespace

bool findCellBox(const PiPlainCell& cell, double tolerance, PiBoxTree::Box& box) {
  const Nodes nodes(cell);
  if (!nodes.isFinite) return false;
  widen(nodes, tolerance, box);
  if (!cell.isSurface()) return true;
  if (nodes.low[2] < nodes.high[2]) {
    raise(nodes, tolerance, box);
  } else {
    box.min[2] = -std::numeric_limits<double>::infinity();
    box.max[2] = std::numeric_limits<double>::infinity();
  }
  return true;
}
