#include "quillane/rep/PiBoundary.h"

#include <algorithm>
#include <cmath>
#include <span>

#include <Ormelle/PbMesh2D.h>

#include "graph/data/PiFinite.h"

namespace {

/// Draws the heights of a mesh from a set of values for as long as it lives.
class PushedHeights {
 public:
  PushedHeights(PbMesh2D& mesh, int index) : m_mesh(mesh) { m_mesh.pushZCoord(index); }
  ~PushedHeights() { m_mesh.popZCoord(); }
  PushedHeights(const PushedHeights&) = delete;
  PushedHeights& operator=(const PushedHeights&) = delete;

 private:
  PbMesh2D& m_mesh;
};

}  // namespace

PiBoundary::PiBoundary(PbMesh2D& mesh, int heightsIndex) {
  PbArrayOfInt indices;
  mesh.getLimitIndices(m_sizes, indices);
  const PushedHeights pushed(mesh, heightsIndex);
  int first = 0;
  std::vector<SbVec3f> points;
  for (int contour = 0; contour < m_sizes.getNum(); ++contour) {
    const int last = std::min(first + m_sizes.get(contour), indices.getNum());
    points.clear();
    for (int i = first; i < last; ++i) points.push_back(mesh.getNodeCoord(indices.get(i)));
    addContour(points, first);
    first = last;
  }
}

void PiBoundary::addContour(const std::vector<SbVec3f>& points, int firstSegment) {
  const int num = static_cast<int>(points.size());
  const auto isBroken = [&points](int node) { return !isFinitePoint(points[static_cast<std::size_t>(node)]); };
  int start = 0;
  while (start < num && !isBroken(start)) ++start;
  const bool isWhole = start == num;
  if (num < 2) return;
  if (isWhole) start = 0;

  // Round the contour from a broken node, or from the first, and back to it.
  PiBoundaryPiece piece;
  const auto finish = [&piece, this] {
    if (!piece.segments.empty()) m_pieces.push_back(piece);
    piece = PiBoundaryPiece();
  };
  for (int step = 0; step <= num; ++step) {
    const int node = (start + step) % num;
    if (isBroken(node)) {
      finish();
      continue;
    }
    if (!piece.points.empty()) piece.segments.push_back(firstSegment + (node + num - 1) % num);
    piece.points.push_back(points[static_cast<std::size_t>(node)]);
  }
  finish();
}
