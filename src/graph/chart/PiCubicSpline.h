#ifndef ORMELLE_PICUBICSPLINE_H
#define ORMELLE_PICUBICSPLINE_H

#include <span>
#include <vector>

/// Cubic spline through points, with continuous first and second derivatives and natural ends (no curvature there).
///
/// Where the first coordinate rises or falls all along, it is the parameter, and the curve is a function of it that
/// never turns back. Otherwise the parameter is the length of the chords, with each coordinate measured by its extent,
/// so that the scales of the axes don't matter. Points equal to the one before them don't bend the curve.
///
/// Points with a non-finite coordinate part the curve into pieces, each a spline of its own. The points given next to
/// them, which belong to no piece, are NaN.
namespace PiCubicSpline {

/// The points and, between two of them, `subdivision` - 1 others at equal distances of the parameter: point i is
/// element i * `subdivision`, exactly. For `SbVec2f` and `SbVec3f`. Empty if there are no points. Linear cost.
/// @pre subdivision >= 1, and an int can count the result
template <class Vec>
std::vector<Vec> subdivide(std::span<const Vec> points, int subdivision);

}  // namespace PiCubicSpline

#endif
