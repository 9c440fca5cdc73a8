#ifndef ORMELLE_PISTREAMSTRIP_H
#define ORMELLE_PISTREAMSTRIP_H

#include <span>
#include <vector>

#include <Inventor/SbVec3f.h>

/// Joins neighbouring polylines by triangles, as the paths of a rake are joined to a surface.
namespace PiStreamStrip {

/// How many times as far apart as at the start, or as the steps are long, two lines may be.
constexpr float kParting = 4;

/// Appends the triangles between two lines, three indices each, to `triangles`. Point i of a line has the index
/// `firstLeft` + i, or `firstRight` + i. Seen with the lines running upwards and the left one on the left, triangles
/// are counterclockwise. At each step the shorter of the two diagonals decides which line goes on. The strip ends with
/// either line, and where the lines part (see kParting) or run against each other. None, or a single point, is no line.
void join(std::span<const SbVec3f> left, int firstLeft, std::span<const SbVec3f> right, int firstRight,
          std::vector<int>& triangles);

/// A unit normal for each point: the mean of those of its triangles, weighted by their areas. (0, 0, 1) for points
/// without one.
std::vector<SbVec3f> normalsOf(std::span<const SbVec3f> points, std::span<const int> triangles);

}  // namespace PiStreamStrip

#endif
