#ifndef ORMELLE_PIBOUNDARY_H
#define ORMELLE_PIBOUNDARY_H

#include <vector>

#include <Inventor/SbVec3f.h>
#include <Ormelle/PbArrayOfInt.h>

class PbMesh2D;

/// An unbroken piece of the boundary of a surface mesh: `points[k]` and `points[k + 1]` are the ends of the boundary
/// segment `segments[k]`. A whole contour ends at the point where it began.
struct PiBoundaryPiece {
  std::vector<SbVec3f> points;
  std::vector<int> segments;
};

/// The boundary of a mesh with the heights of a set of values. Contours are broken where a node isn't finite.
class PiBoundary {
 public:
  /// `heightsIndex` is a set with one value for each node, or -1 for the mesh's own heights.
  PiBoundary(PbMesh2D& mesh, int heightsIndex);

  const std::vector<PiBoundaryPiece>& pieces() const { return m_pieces; }
  /// The number of nodes of each contour, as the mesh tells it.
  const PbArrayOfInt& sizes() const { return m_sizes; }

 private:
  void addContour(const std::vector<SbVec3f>& points, int firstSegment);

  PbArrayOfInt m_sizes;
  std::vector<PiBoundaryPiece> m_pieces;
};

#endif
