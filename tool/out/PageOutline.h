#ifndef ORMELLE_TOOL_OUT_PAGEOUTLINE_H
#define ORMELLE_TOOL_OUT_PAGEOUTLINE_H

#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

#include "out/PageScene.h"

namespace tool {

/// Joins triangles of a few colours into areas with outlines, and finds the lines along which areas of different
/// colours meet.
class OutlineMerge {
 public:
  /// An area: the triangles of one colour that were added between two calls of next().
  struct Area {
    uint32_t color;
    std::vector<Polyline> outlines;
  };

  /// What is added from now on belongs to other areas than what was added before.
  void next() { m_areaOfColor.clear(); }
  /// Adds a triangle of a colour; `sameColor` is that of all of them if the colours don't count.
  void add(const PageVertex* corners, uint32_t color);

  /// The areas in the order in which they began.
  std::vector<Area> areas() const;
  /// The lines where two areas meet, each with the colour of one of them.
  std::vector<std::pair<uint32_t, std::vector<Polyline>>> seams() const;

 private:
  struct Edge {
    uint32_t from;
    uint32_t to;
    bool operator==(const Edge&) const = default;
  };
  struct EdgeHash {
    std::size_t operator()(const Edge& e) const {
      return static_cast<std::size_t>((static_cast<uint64_t>(e.from) << 32 | e.to) * 0x9E3779B97F4A7C15u >> 20);
    }
  };
  struct Side {
    uint32_t area;
    Edge edge;
  };

  uint32_t pointOf(const PageVertex& v);
  std::vector<Polyline> chained(const std::vector<Edge>& edges, bool isClosed) const;
  std::unordered_map<Edge, std::vector<uint32_t>, EdgeHash> areasByEdge() const;

  std::vector<PagePoint> m_points;
  std::unordered_map<uint64_t, uint32_t> m_pointIndex;
  std::vector<uint32_t> m_colors;  // by area
  std::map<uint32_t, uint32_t> m_areaOfColor;
  std::vector<Side> m_sides;
};

}  // namespace tool

#endif
