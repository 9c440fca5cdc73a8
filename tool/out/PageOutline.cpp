#include "out/PageOutline.h"

#include <algorithm>
#include <cmath>

namespace tool {

namespace {

constexpr double kGrid = 200.0;  // points closer than a 200th of a pixel are one

// Drops points on a straight line between their neighbours.
void straighten(Polyline& line, bool isClosed) {
  Polyline out;
  const std::size_t count = line.size();
  for (std::size_t i = 0; i < count; ++i) {
    if (!isClosed && (i == 0 || i + 1 == count)) {
      out.push_back(line[i]);
      continue;
    }
    const PagePoint& before = out.empty() ? line[(i + count - 1) % count] : out.back();
    const PagePoint& after = line[(i + 1) % count];
    const double ax = line[i].x - before.x;
    const double ay = line[i].y - before.y;
    const double bx = after.x - line[i].x;
    const double by = after.y - line[i].y;
    const double lengths = std::hypot(ax, ay) * std::hypot(bx, by);
    if (std::abs(ax * by - ay * bx) > 1e-6 * lengths || ax * bx + ay * by < 0.0) out.push_back(line[i]);
  }
  if (out.size() >= (isClosed ? 3u : 2u)) line = std::move(out);
}

}  // namespace

uint32_t OutlineMerge::pointOf(const PageVertex& v) {
  const auto x = static_cast<int64_t>(std::llround(static_cast<double>(v.x) * kGrid));
  const auto y = static_cast<int64_t>(std::llround(static_cast<double>(v.y) * kGrid));
  const uint64_t key = static_cast<uint64_t>(static_cast<uint32_t>(x)) << 32 | static_cast<uint32_t>(y);
  const auto [entry, isNew] = m_pointIndex.try_emplace(key, static_cast<uint32_t>(m_points.size()));
  if (isNew) m_points.push_back({static_cast<double>(x) / kGrid, static_cast<double>(y) / kGrid});
  return entry->second;
}

void OutlineMerge::add(const PageVertex* corners, uint32_t color) {
  std::array<uint32_t, 3> p{pointOf(corners[0]), pointOf(corners[1]), pointOf(corners[2])};
  if (p[0] == p[1] || p[1] == p[2] || p[2] == p[0]) return;
  const auto [entry, isNew] = m_areaOfColor.try_emplace(color, static_cast<uint32_t>(m_colors.size()));
  if (isNew) m_colors.push_back(color);
  const PagePoint& a = m_points[p[0]];
  const PagePoint& b = m_points[p[1]];
  const PagePoint& c = m_points[p[2]];
  if ((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y) < 0.0) std::swap(p[1], p[2]);
  for (std::size_t i = 0; i < 3; ++i) m_sides.push_back({entry->second, {p[i], p[(i + 1) % 3]}});
}

// Lines along the edges. Where several edges leave a point, a line goes on along any of them.
std::vector<Polyline> OutlineMerge::chained(const std::vector<Edge>& edges, bool isClosed) const {
  std::unordered_map<uint32_t, std::vector<uint32_t>> leaving;
  std::unordered_map<uint32_t, int> arriving;
  for (std::size_t i = 0; i < edges.size(); ++i) {
    leaving[edges[i].from].push_back(static_cast<uint32_t>(i));
    ++arriving[edges[i].to];
  }
  std::vector<bool> isUsed(edges.size());
  std::vector<Polyline> lines;
  const auto follow = [&](std::size_t first) {
    Polyline line{m_points[edges[first].from]};
    std::size_t edge = first;
    while (true) {
      isUsed[edge] = true;
      const uint32_t end = edges[edge].to;
      if (isClosed && end == edges[first].from) break;
      line.push_back(m_points[end]);
      std::vector<uint32_t>& choices = leaving[end];
      while (!choices.empty() && isUsed[choices.back()]) choices.pop_back();
      if (choices.empty()) break;
      edge = choices.back();
    }
    straighten(line, isClosed);
    lines.push_back(std::move(line));
  };
  // Open lines begin where nothing arrives.
  for (std::size_t i = 0; !isClosed && i < edges.size(); ++i)
    if (!isUsed[i] && arriving.find(edges[i].from) == arriving.end()) follow(i);
  for (std::size_t i = 0; i < edges.size(); ++i)
    if (!isUsed[i]) follow(i);
  return lines;
}

std::vector<OutlineMerge::Area> OutlineMerge::areas() const {
  // Two triangles of an area that share a side run along it in opposite directions: neither belongs to the outline.
  std::vector<std::unordered_map<Edge, int, EdgeHash>> counts(m_colors.size());
  for (const Side& side : m_sides) {
    const bool isForward = side.edge.from < side.edge.to;
    const Edge key = isForward ? side.edge : Edge{side.edge.to, side.edge.from};
    counts[side.area][key] += isForward ? 1 : -1;
  }
  std::vector<std::vector<Edge>> outlines(m_colors.size());
  for (const Side& side : m_sides) {  // in the order of the sides, so that the result doesn't depend on hashes
    const bool isForward = side.edge.from < side.edge.to;
    int& count = counts[side.area][isForward ? side.edge : Edge{side.edge.to, side.edge.from}];
    if (isForward ? count > 0 : count < 0) {
      outlines[side.area].push_back(side.edge);
      count -= isForward ? 1 : -1;
    }
  }
  std::vector<Area> areas;
  for (std::size_t i = 0; i < m_colors.size(); ++i)
    if (!outlines[i].empty()) areas.push_back({m_colors[i], chained(outlines[i], true)});
  return areas;
}

std::vector<std::pair<uint32_t, std::vector<Polyline>>> OutlineMerge::seams() const {
  if (m_colors.size() < 2) return {};
  std::unordered_map<Edge, uint32_t, EdgeHash> owner;
  std::map<uint32_t, std::vector<Edge>> byColor;
  for (const Side& side : m_sides) {
    const auto opposite = owner.find({side.edge.to, side.edge.from});
    if (opposite != owner.end() && opposite->second != side.area) byColor[m_colors[side.area]].push_back(side.edge);
    owner.emplace(side.edge, side.area);
  }
  std::vector<std::pair<uint32_t, std::vector<Polyline>>> out;
  out.reserve(byColor.size());
  for (const auto& [color, edges] : byColor) out.emplace_back(color, chained(edges, false));
  return out;
}

}  // namespace tool
