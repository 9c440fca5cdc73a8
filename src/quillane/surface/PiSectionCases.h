#ifndef ORMELLE_PISECTIONCASES_H
#define ORMELLE_PISECTIONCASES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "quillane/cell/PiCellTopology.h"

/// Where a plane cuts the cells of one kind, for each way in which their nodes can lie in front of it or not.
///
/// In every facet the cuts of the edges are joined by chords that cut off what is behind the plane, so that the two
/// cells beside a facet join them alike, whether or not the facet is flat. The chords of all facets of a solid close to
/// polygons, seen counterclockwise from the front if the ordering of the cell is 1.
///
/// The tables are made from facets and edges of the topology, of whatever kind.
class PiSectionCases {
 public:
  explicit PiSectionCases(const PiCellTopology& topology);
  /// The tables of a kind that PiTopology names.
  static const PiSectionCases& of(const PiCellTopology& topology);

  const PiCellTopology& topology() const { return *m_topology; }
  /// The mask of a cell that is wholly in front.
  unsigned wholeMask() const { return (1U << m_topology->numNodes) - 1U; }

  /// The polygons of a solid whose local nodes in the bits of `front` are in front, or the chords of a surface cell:
  /// for each the number of corners, 2 for a chord, and the edges that they are on. A 0 ends the list.
  const std::int8_t* cuts(unsigned front) const { return &m_cuts[m_starts[front]]; }

 private:
  using NextEdge = std::array<std::int8_t, 12>;
  NextEdge joinEdges(unsigned front) const;
  int edgeBetween(int from, int to) const;

  const PiCellTopology* m_topology;
  std::vector<std::uint16_t> m_starts;
  std::vector<std::int8_t> m_cuts;
};

#endif
