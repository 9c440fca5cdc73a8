#ifndef ORMELLE_PICELLTOPOLOGY_H
#define ORMELLE_PICELLTOPOLOGY_H

#include <span>

/// A facet as a closed polygon of local nodes. Those of a solid whose ordering is 1 are counterclockwise from outside.
struct PiFacet {
  int numNodes;
  int nodes[4];

  constexpr std::span<const int> corners() const { return {nodes, static_cast<std::size_t>(numNodes)}; }
};

/// The numbering of nodes, edges and facets of one kind of cell.
struct PiCellTopology {
  int dimension;  ///< 3 for solids, 2 for surface cells
  int numNodes;
  std::span<const int[2]> edges;
  std::span<const PiFacet> facets;
  /// Nodes a, b, c of the triple product (a - node 0) x (b - node 0) . (c - node 0) that tells the ordering of a solid.
  int ordering[3];
};

namespace PiTopology {

inline constexpr int kHexahedronEdges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                                {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
inline constexpr PiFacet kHexahedronFacets[] = {{4, {0, 3, 7, 4}}, {4, {1, 5, 6, 2}}, {4, {0, 4, 5, 1}},
                                                {4, {3, 2, 6, 7}}, {4, {0, 1, 2, 3}}, {4, {4, 7, 6, 5}}};
inline constexpr PiCellTopology kHexahedron{3, 8, kHexahedronEdges, kHexahedronFacets, {3, 1, 4}};

inline constexpr int kTetrahedronEdges[6][2] = {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}};
inline constexpr PiFacet kTetrahedronFacets[] = {
    {3, {0, 1, 2, -1}}, {3, {0, 2, 3, -1}}, {3, {0, 3, 1, -1}}, {3, {1, 3, 2, -1}}};
inline constexpr PiCellTopology kTetrahedron{3, 4, kTetrahedronEdges, kTetrahedronFacets, {2, 1, 3}};

inline constexpr int kWedgeEdges[9][2] = {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5}, {5, 3}, {0, 3}, {1, 4}, {2, 5}};
inline constexpr PiFacet kWedgeFacets[] = {
    {3, {0, 1, 2, -1}}, {3, {3, 5, 4, -1}}, {4, {0, 2, 5, 3}}, {4, {1, 4, 5, 2}}, {4, {0, 3, 4, 1}}};
inline constexpr PiCellTopology kWedge{3, 6, kWedgeEdges, kWedgeFacets, {2, 1, 3}};

inline constexpr int kPyramidEdges[8][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 4}, {1, 4}, {2, 4}, {3, 4}};
inline constexpr PiFacet kPyramidFacets[] = {
    {4, {0, 1, 2, 3}}, {3, {0, 4, 1, -1}}, {3, {1, 4, 2, -1}}, {3, {2, 4, 3, -1}}, {3, {3, 4, 0, -1}}};
inline constexpr PiCellTopology kPyramid{3, 5, kPyramidEdges, kPyramidFacets, {3, 1, 4}};

inline constexpr int kQuadrangleEdges[4][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}};
inline constexpr PiFacet kQuadrangleFacets[] = {{4, {0, 1, 2, 3}}};
inline constexpr PiCellTopology kQuadrangle{2, 4, kQuadrangleEdges, kQuadrangleFacets, {}};

inline constexpr int kTriangleEdges[3][2] = {{0, 1}, {1, 2}, {2, 0}};
inline constexpr PiFacet kTriangleFacets[] = {{3, {0, 1, 2, -1}}};
inline constexpr PiCellTopology kTriangle{2, 3, kTriangleEdges, kTriangleFacets, {}};

}  // namespace PiTopology

#endif
