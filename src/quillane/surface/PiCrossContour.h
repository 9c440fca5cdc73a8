#ifndef ORMELLE_PICROSSCONTOUR_H
#define ORMELLE_PICROSSCONTOUR_H

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "quillane/surface/PiNodeSets.h"
#include "quillane/surface/PiPairTable.h"
#include "quillane/surface/PiSection.h"
#include "quillane/surface/PiSectionCases.h"
#include "quillane/surface/PiSectionPlane.h"

class PbGrid3D;
class PbMesh3D;
class PoCellFilter;

/// Cuts the outside of volume meshes with planes: the outline of the section by the same plane, as segments. It keeps
/// its memory from one outline to the next.
///
/// Facets are cut as PiSectionCases cuts them, so that segments are edges of the polygons that PiMeshSection finds. An
/// edge of the mesh that lies in the plane is drawn once, unless the outside only touches the plane along it.
///
///     PiCrossContour contour;
///     contour.cut(mesh, plane, values, nullptr, -1);
///     use(contour.section.points, contour.section.coordIndices);
class PiCrossContour {
 public:
  /// Replaces `section` by the outline for `plane`. `values`, one for each node, are interpolated; they may be null. A
  /// grid without a filter is cut on its six sides, all else on the skin of the cells that the filter, given the set of
  /// values `filterValuesIndex`, accepts. Facets of cells that PiMeshSection leaves out have no part.
  void cut(const PbMesh3D& mesh, const PiSectionPlane& plane, const float* values, const PoCellFilter* filter,
           int filterValuesIndex);

  std::size_t memorySize() const;

  PiSection section;

 private:
  void cutSides(const PbGrid3D& grid);
  void cutSkin(const PbMesh3D& mesh, const PoCellFilter* filter, int filterValuesIndex);
  template <class PointOf>
  void cutFacet(int cell, std::span<const int> nodes, const float* distances, PointOf&& pointOf);
  void addEdgeInPlane(int cell, int a, int b, const SbVec3f& pointA, const SbVec3f& pointB, bool isFront);
  void addSegment(int cell, const int (&points)[2]);
  int addPoint(int a, int b, const SbVec3f& pointA, const SbVec3f& pointB, float distanceA, float distanceB);
  bool isDrawn(int cell) const;
  void finish();

  /// An edge of the mesh in the plane, and how many facets have it that lie in front of the plane, and behind it.
  struct EdgeInPlane {
    int cell, a, b;
    SbVec3f pointA, pointB;
    int numFront, numBehind;
  };

  const PbMesh3D* m_mesh = nullptr;
  PiSectionPlane m_plane{1, 0, 0, 0};
  const float* m_values = nullptr;
  PiPairTable m_points;
  PiNodeSets m_edges;
  std::vector<EdgeInPlane> m_edgesInPlane;  // by their places in m_edges
  std::vector<float> m_distances;           // of a side
};

#endif
