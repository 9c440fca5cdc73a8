#include "quillane/mesh/PiTriangulation.h"

#include <Ormelle/PoDebugError.h>

#include <cmath>
#include <cstddef>
#include <cstdlib>

#ifdef ORMELLE_HAS_TRIANGLE
#include <triangle.h>
#endif

namespace PiTriangulation {

namespace {

constexpr char kMethod[] = "PbTriangleMesh2D::setGeometry";

#ifdef ORMELLE_HAS_TRIANGLE

// The finite nodes as Triangle takes them, and the number of each in the mesh.
struct Points {
  std::vector<double> coords;
  std::vector<int> nodes;
};

Points finitePoints(int numNodes, const float* x, const float* y) {
  Points points;
  points.coords.reserve(2 * static_cast<std::size_t>(numNodes));
  points.nodes.reserve(static_cast<std::size_t>(numNodes));
  for (int n = 0; n < numNodes; ++n) {
    if (!std::isfinite(x[n]) || !std::isfinite(y[n])) continue;
    points.coords.push_back(double(x[n]));
    points.coords.push_back(double(y[n]));
    points.nodes.push_back(n);
  }
  return points;
}

// With fewer than three distinct points Triangle ends the process.
bool areThreeDistinct(const Points& points) {
  const double *first = points.coords.data(), *second = nullptr;
  const auto areSame = [](const double* a, const double* b) { return a[0] == b[0] && a[1] == b[1]; };
  for (std::size_t n = 1; n < points.nodes.size(); ++n) {
    const double* point = first + 2 * n;
    if (areSame(point, first)) continue;
    if (!second)
      second = point;
    else if (!areSame(point, second))
      return true;
  }
  return false;
}

// Triangle also ends the process when memory runs out. What it takes for a point comes to less than this: two triangles
// of 48 bytes, a vertex, places in lists, and the result.
bool isMemoryThere(std::size_t numPoints) {
  void* memory = std::malloc(256 * numPoints);
  std::free(memory);
  return memory != nullptr;
}

#endif

}  // namespace

#ifdef ORMELLE_HAS_TRIANGLE

bool isAvailable() { return true; }

std::vector<int> triangulate(int numNodes, const float* x, const float* y) {
  if (numNodes < 3 || !x || !y) return {};
  if (numNodes > kMaxNodes) {
    PoDebugError::post(kMethod, "%d nodes are more than can be triangulated (%d)", numNodes, kMaxNodes);
    return {};
  }
  Points points = finitePoints(numNodes, x, y);
  if (!areThreeDistinct(points)) return {};
  if (!isMemoryThere(points.nodes.size())) {
    PoDebugError::post(kMethod, "there is no memory to triangulate %d nodes", numNodes);
    return {};
  }

  triangulateio in{}, out{};
  in.pointlist = points.coords.data();
  in.numberofpoints = static_cast<int>(points.nodes.size());
  // Count from 0, keep quiet, and give triangles only: no nodes and no marks of the boundary.
  char switches[] = "zQNB";
  ::triangulate(switches, &in, &out, nullptr);

  // Coordinates that are exact in double keep Triangle's tests of position exact as well.
  std::vector<int> triangles(out.trianglelist,
                             out.trianglelist + 3 * static_cast<std::ptrdiff_t>(out.numberoftriangles));
  if (out.trianglelist) trifree(out.trianglelist);
  for (int& node : triangles) node = points.nodes[static_cast<std::size_t>(node)];
  return triangles;
}

#else

bool isAvailable() { return false; }

std::vector<int> triangulate(int, const float*, const float*) {
  PoDebugError::post(
      kMethod, "this build of the library can't compute the triangles between nodes: it was made without Triangle");
  return {};
}

#endif

}  // namespace PiTriangulation
