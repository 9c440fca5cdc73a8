#include "quillane/surface/PiSectionCases.h"

#include <cassert>
#include <utility>

namespace {

constexpr std::int8_t kNoEdge = -1;

}  // namespace

PiSectionCases::PiSectionCases(const PiCellTopology& topology) : m_topology(&topology) {
  assert(topology.edges.size() <= NextEdge().size() && "room for the edges of every kind of cell");
  for (unsigned front = 0; front <= wholeMask(); ++front) {
    m_starts.push_back(static_cast<std::uint16_t>(m_cuts.size()));
    NextEdge next = joinEdges(front);
    for (std::size_t first = 0; first < topology.edges.size(); ++first) {
      if (next[first] == kNoEdge) continue;
      const std::size_t count = m_cuts.size();
      m_cuts.push_back(0);
      // Once round, or to the other end of a chord.
      auto edge = static_cast<std::int8_t>(first);
      do {
        m_cuts.push_back(edge);
        ++m_cuts[count];
        edge = std::exchange(next[static_cast<std::size_t>(edge)], kNoEdge);
      } while (edge != kNoEdge && edge != static_cast<std::int8_t>(first));
    }
    m_cuts.push_back(0);
  }
}

const PiSectionCases& PiSectionCases::of(const PiCellTopology& topology) {
  static const PiSectionCases s_triangle(PiTopology::kTriangle), s_quadrangle(PiTopology::kQuadrangle),
      s_tetrahedron(PiTopology::kTetrahedron), s_pyramid(PiTopology::kPyramid), s_wedge(PiTopology::kWedge),
      s_hexahedron(PiTopology::kHexahedron);
  for (const PiSectionCases* cases : {&s_tetrahedron, &s_hexahedron, &s_wedge, &s_pyramid, &s_quadrangle, &s_triangle})
    if (cases->m_topology == &topology) return *cases;
  assert(!"a kind of cell that PiTopology names");
  return s_tetrahedron;
}

// For each edge that is cut, the one to which a chord leads from it. Going round a facet, a chord leads from where one
// comes behind the plane to where one comes out again; the facet beside an edge goes along it the other way, and so
// takes up where a chord ends.
PiSectionCases::NextEdge PiSectionCases::joinEdges(unsigned front) const {
  NextEdge next;
  next.fill(kNoEdge);
  const auto isFront = [front](int node) { return (front >> node & 1U) != 0; };
  for (const PiFacet& facet : m_topology->facets) {
    const std::span<const int> corners = facet.corners();
    const std::size_t num = corners.size();
    for (std::size_t start = 0; start < num; ++start) {
      if (!isFront(corners[start]) || isFront(corners[(start + 1) % num])) continue;
      std::size_t end = start + 1;
      while (!isFront(corners[(end + 1) % num])) ++end;
      const int from = edgeBetween(corners[start], corners[(start + 1) % num]);
      const int to = edgeBetween(corners[end % num], corners[(end + 1) % num]);
      next[static_cast<std::size_t>(from)] = static_cast<std::int8_t>(to);
    }
  }
  return next;
}

int PiSectionCases::edgeBetween(int from, int to) const {
  const auto& edges = m_topology->edges;
  for (std::size_t edge = 0; edge < edges.size(); ++edge)
    if ((edges[edge][0] == from && edges[edge][1] == to) || (edges[edge][0] == to && edges[edge][1] == from))
      return static_cast<int>(edge);
  assert(!"the corners of a facet are joined by edges");
  return 0;
}
