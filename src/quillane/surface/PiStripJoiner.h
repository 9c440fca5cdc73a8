#ifndef ORMELLE_PISTRIPJOINER_H
#define ORMELLE_PISTRIPJOINER_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "quillane/surface/PiGrowBuffer.h"

/// Joins polygons to long triangle strips: what a renderer takes fastest, where one strip a cell is what it takes
/// slowest.
///
/// Polygons are taken in turn. One that has an edge where a strip ends carries it on, zigzag from that edge to the
/// opposite one; another begins a strip, towards the edge whose points are the newest, as what lies there has likely
/// not been yet. Only the ends of late are remembered, in a table of fixed size, so the time is proportional to the
/// number of polygons. No triangle is added and none is turned.
class PiStripJoiner {
 public:
  /// `polygons` holds convex polygons of at least three corners that all run the same way round, each ended by -1. They
  /// must stay until write().
  void join(std::span<const int> polygons);
  /// How many indices the strips have, with a -1 behind each.
  std::size_t numIndices() const { return m_numIndices; }
  void write(int* indices) const;

  std::size_t memorySize() const;

 private:
  /// Where a polygon stands and how it lies in its strip.
  struct Link {
    std::uint32_t first;    ///< of its corners
    std::int32_t next;      ///< the polygon that carries the strip on, or -1
    std::uint16_t corners;  ///< how many
    std::uint16_t entry;    ///< the corner with which the strip enters it
    bool isOdd;             ///< the strip enters it after an odd number of triangles
    bool isStart;
  };
  /// A directed edge with which a polygon carries on the strip that ends with polygon `last`.
  struct End {
    int from = -1, to = -1, last = -1;
  };

  std::size_t joinBlock(std::size_t begin, std::size_t end, PiGrowBuffer<End>& ends);

  std::span<const int> m_polygons;
  PiGrowBuffer<Link> m_links;
  std::vector<PiGrowBuffer<End>> m_ends;    // of each block
  std::vector<std::size_t> m_blockIndices;  // how many each block has, then where they begin
  std::size_t m_numIndices = 0;
};

#endif
