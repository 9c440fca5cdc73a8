#ifndef ORMELLE_PILOCATE_H
#define ORMELLE_PILOCATE_H

/// @file
/// Where in a cell a point is: the inversion of the shape functions of each kind of cell. All is computed in double
/// from coordinates relative to the point, so that determinants of very small and very large cells neither vanish nor
/// overflow, and a small cell far from the origin of its mesh keeps its digits.
///
/// `nodes` are the places of the nodes in cell order. A point is inside if each parametric coordinate lies in
/// [-tolerance, 1 + tolerance]; NaN and infinity are nowhere.

#include <Inventor/SbVec3f.h>

#include <span>

/// What is known of a point: nothing (the cell is degenerate, or the iteration doesn't converge), or that `pcoord` is
/// its place, outside the cell or inside.
enum class PiPlace { UNKNOWN, OUTSIDE, INSIDE };

/// Directly.
PiPlace locateInTetrahedron(const SbVec3f* nodes, const SbVec3f& point, float tolerance, SbVec3f& pcoord);

/// Directly, in the projection along the dominant axis of the normal. A triangle whose nodes have one z doesn't look at
/// the z of the point; any other wants the point nearer to its plane than a third of the mean length of its edges.
PiPlace locateInTriangle(const SbVec3f* nodes, const SbVec3f& point, float tolerance, SbVec3f& pcoord);

/// By Newton's method in two dimensions. A quadrangle whose nodes have one z doesn't look at the z of the point; any
/// other wants it nearer to its mean plane than a third of the mean length of its diagonals.
PiPlace locateInQuadrangle(const SbVec3f* nodes, const SbVec3f& point, float tolerance, SbVec3f& pcoord);

/// A box along the first `numAxes` axes; sizes may be below 0.
PiPlace locateInBox(const SbVec3f& origin, const SbVec3f& size, int numAxes, const SbVec3f& point, float tolerance,
                    SbVec3f& pcoord);

/// Of PiHexahedronShape, PiWedgeShape or PiPyramidShape, by Newton's method from the middle of the cell: at most 10
/// steps, until one is below 0.001. Where a degenerate edge or the apex of a pyramid makes the steps singular, a point
/// is inside if it is nearer to the cell than 1e-6 of its size.
template <class Shape>
PiPlace locateByNewton(const SbVec3f* nodes, const SbVec3f& point, float tolerance, SbVec3f& pcoord);

/// Length of the longest of the edges, of which each has two local nodes. Those that aren't finite don't count.
float longestEdgeOf(std::span<const int[2]> edges, const SbVec3f* nodes);

#endif
