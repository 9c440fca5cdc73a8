#ifndef ORMELLE_PIPLANECUTTER_H
#define ORMELLE_PIPLANECUTTER_H

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "quillane/surface/PiNodeSets.h"
#include "quillane/surface/PiPairTable.h"
#include "quillane/surface/PiSection.h"
#include "quillane/surface/PiSectionCases.h"
#include "quillane/surface/PiSectionPlane.h"

/// Cuts cells with a plane, one by one, into the polygons of a section.
///
/// A node counts as in front if its distance is above 0, else as behind; a node exactly on the plane is itself a point
/// of the section. So a polygon is drawn by the cell in front of it where the plane runs along facets, and no other. A
/// facet in the plane that has a cell behind it only is added by finish().
///
///     PiPlaneCutter cutter(section);
///     cutter.start(plane, values);
///     for (each cell) cutter.cut(cases, cell, nodes, distances, pointOf);
///     cutter.finish();
class PiPlaneCutter {
 public:
  explicit PiPlaneCutter(PiSection& section) : m_section(section) {}

  /// Starts a section. `values` has one for each node of the mesh, or is null; a cell with a value that isn't a number
  /// is left out.
  void start(const PiSectionPlane& plane, const float* values);

  /// Adds what the plane cuts out of a cell. `nodes` are its nodes in the mesh, `distances` theirs from the plane, and
  /// `pointOf(local node)` gives the coordinates of one.
  template <class PointOf>
  void cut(const PiSectionCases& cases, int cell, const int* nodes, const float* distances, PointOf&& pointOf);

  /// Adds the facets in the plane that no cell in front has.
  void finish();

  /// Whether a cell with a facet in the plane has come by. Then it matters which cells are cut by one cutter.
  bool hasFacetsInPlane() const { return m_faces.size() > 0 || !m_behind.empty(); }
  /// The ends of the edge that each point is on.
  const PiGrowBuffer<PiSurfacePoint>& points() const { return m_points.points(); }
  /// Adds to the section that of another cutter, whose facets in the plane there are none. It is the same as if this
  /// cutter had cut the cells of the other.
  void append(const PiPlaneCutter& other);

  std::size_t memorySize() const;

 private:
  struct Sides {
    unsigned front = 0, on = 0;  ///< local nodes, as bits
    bool isFinite = true;
  };
  static Sides sidesOf(int numNodes, const float* distances) {
    Sides sides;
    float largest = 0;
    for (int node = 0; node < numNodes; ++node) {
      const float distance = distances[node];
      sides.front |= static_cast<unsigned>(distance > 0) << node;
      sides.on |= static_cast<unsigned>(distance == 0) << node;
      largest += std::fabs(distance);
    }
    // Finite distances may sum to more than the largest float, too; the next test tells.
    if (!(largest <= std::numeric_limits<float>::max())) sides.isFinite = areFinite(numNodes, distances);
    return sides;
  }
  static bool areFinite(int numNodes, const float* distances);
  bool hasValues(int numNodes, const int* nodes) const;

  /// A corner of a polygon: on an edge, or with a == b at a node. Local nodes.
  struct Corner {
    int a, b;
    bool operator==(const Corner&) const = default;
  };
  using Corners = Corner[12];
  /// Follows a polygon of the tables and lets the cuts of edges that end on the plane fall together in their nodes.
  static int findCorners(const PiCellTopology& topology, const std::int8_t* edges, int num, unsigned on,
                         Corners& corners);

  template <class PointOf>
  void addPolygon(int cell, const Corner* corners, int num, const int* nodes, const float* distances,
                  PointOf&& pointOf);
  template <class PointOf>
  int pointAt(const Corner& corner, const int* nodes, const float* distances, PointOf&& pointOf);
  void orient(std::size_t first);

  /// Remembers which facets of a cell in front lie in the plane, and tells whether another has had this polygon.
  bool isFaceAlreadyFound(const PiCellTopology& topology, unsigned on, const Corner* corners, int num,
                          const int* nodes);
  template <class PointOf>
  void keepFacetBehind(const PiSectionCases& cases, unsigned on, int cell, const int* nodes, PointOf&& pointOf);

  /// A facet in the plane, seen from a cell behind it.
  struct FacetBehind {
    int cell, num;
    int nodes[4];
    SbVec3f points[4];
  };

  PiSection& m_section;
  PiSectionPlane m_plane{0, 0, 1, 0};
  const float* m_values = nullptr;
  PiPairTable m_points;
  PiNodeSets m_faces;  // in the plane; counted if they are drawn
  std::vector<FacetBehind> m_behind;
  PiGrowBuffer<int> m_renumbered;  // points of another cutter
};

template <class PointOf>
void PiPlaneCutter::cut(const PiSectionCases& cases, int cell, const int* nodes, const float* distances,
                        PointOf&& pointOf) {
  const PiCellTopology& topology = cases.topology();
  const Sides sides = sidesOf(topology.numNodes, distances);
  if (sides.front == cases.wholeMask() || (sides.front == 0 && sides.on == 0) || !sides.isFinite ||
      !hasValues(topology.numNodes, nodes))
    return;
  const auto pointOfNode = [&](int node) { return pointOf(node); };
  if (sides.front == 0) {
    if (sides.on == cases.wholeMask()) return;  // a cell without volume
    keepFacetBehind(cases, sides.on, cell, nodes, pointOfNode);
    return;
  }
  const std::int8_t* cuts = cases.cuts(sides.front);
  if (sides.on == 0) {
    for (std::int8_t num = *cuts++; num > 0; cuts += num, num = *cuts++) {
      Corners corners;
      for (int i = 0; i < num; ++i) {
        const auto& edge = topology.edges[static_cast<std::size_t>(cuts[i])];
        corners[i] = {edge[0], edge[1]};
      }
      addPolygon(cell, corners, num, nodes, distances, pointOfNode);
    }
    return;
  }
  for (std::int8_t num = *cuts++; num > 0; cuts += num, num = *cuts++) {
    Corners corners;
    const int numCorners = findCorners(topology, cuts, num, sides.on, corners);
    if (isFaceAlreadyFound(topology, sides.on, corners, numCorners, nodes) || numCorners < 3) continue;
    addPolygon(cell, corners, numCorners, nodes, distances, pointOfNode);
  }
}

template <class PointOf>
void PiPlaneCutter::addPolygon(int cell, const Corner* corners, int num, const int* nodes, const float* distances,
                               PointOf&& pointOf) {
  const std::size_t first = m_section.coordIndices.size();
  for (int i = 0; i < num; ++i) m_section.coordIndices.push_back(pointAt(corners[i], nodes, distances, pointOf));
  orient(first);
  m_section.coordIndices.push_back(-1);
  m_section.cells.push_back(cell);
}

template <class PointOf>
int PiPlaneCutter::pointAt(const Corner& corner, const int* nodes, const float* distances, PointOf&& pointOf) {
  // From the smaller node to the greater, so that the point doesn't depend on the cell that makes it.
  const bool isTurned = nodes[corner.a] > nodes[corner.b];
  const int from = isTurned ? corner.b : corner.a, to = isTurned ? corner.a : corner.b;
  int index;
  if (!m_points.add(nodes[from], nodes[to], index)) return index;
  const float t = from == to ? 0 : distances[from] / (distances[from] - distances[to]);
  m_section.addInterpolated(pointOf(from), pointOf(to), m_values, nodes[from], nodes[to], t);
  return index;
}

template <class PointOf>
void PiPlaneCutter::keepFacetBehind(const PiSectionCases& cases, unsigned on, int cell, const int* nodes,
                                    PointOf&& pointOf) {
  for (const PiFacet& facet : cases.topology().facets) {
    FacetBehind found{cell, 0, {}, {}};
    for (const int corner : facet.corners()) {
      if (!(on >> corner & 1U)) continue;
      found.nodes[found.num] = nodes[corner];
      found.points[found.num++] = pointOf(corner);
    }
    if (found.num >= 3) m_behind.push_back(found);
  }
}

#endif
