#ifndef ORMELLE_PITRIANGULATION_H
#define ORMELLE_PITRIANGULATION_H

#include <vector>

/// Delaunay triangulation of nodes in the plane: the one place that knows the library Triangle, which may be left out
/// of a build.
namespace PiTriangulation {

/// More nodes than this overflow the sizes that Triangle computes.
inline constexpr int kMaxNodes = 20000000;

/// Whether this build has Triangle.
bool isAvailable();

/// Three nodes a triangle, counter-clockwise, as PbTriangleMesh2D::setGeometry() tells it. Without a triangle when the
/// nodes span none, and, with an error posted, when this build can't or there are too many nodes.
std::vector<int> triangulate(int numNodes, const float* x, const float* y);

}  // namespace PiTriangulation

#endif
