#include "quillane/surface/PiPlaneCutter.h"

#include <algorithm>

void PiPlaneCutter::start(const PiSectionPlane& plane, const float* values) {
  m_section.clear();
  m_plane = plane;
  m_values = values;
  m_points.clear();
  m_faces.clear();
  m_behind.clear();
}

std::size_t PiPlaneCutter::memorySize() const {
  return m_points.pointMemorySize() + m_points.tableMemorySize() + m_faces.memorySize() +
         m_behind.capacity() * sizeof(FacetBehind);
}

bool PiPlaneCutter::areFinite(int numNodes, const float* distances) {
  return std::all_of(distances, distances + numNodes, [](float distance) { return std::isfinite(distance); });
}

bool PiPlaneCutter::hasValues(int numNodes, const int* nodes) const {
  return !m_values || std::none_of(nodes, nodes + numNodes, [this](int node) { return std::isnan(m_values[node]); });
}

int PiPlaneCutter::findCorners(const PiCellTopology& topology, const std::int8_t* edges, int num, unsigned on,
                               Corners& corners) {
  int numCorners = 0;
  for (int i = 0; i < num; ++i) {
    const auto& edge = topology.edges[static_cast<std::size_t>(edges[i])];
    const auto isOn = [on](int node) { return (on >> node & 1U) != 0; };
    const Corner corner = {isOn(edge[1]) ? edge[1] : edge[0], isOn(edge[0]) ? edge[0] : edge[1]};
    if (numCorners == 0 || !(corners[numCorners - 1] == corner)) corners[numCorners++] = corner;
  }
  while (numCorners > 1 && corners[numCorners - 1] == corners[0]) --numCorners;
  return numCorners;
}

// Turns the polygon from `first` on round if it faces the back, as it does in a cell that is itself turned inside out.
void PiPlaneCutter::orient(std::size_t first) {
  int* corners = m_section.coordIndices.data() + first;
  const std::size_t num = m_section.coordIndices.size() - first;
  const auto point = [&](std::size_t corner) -> const SbVec3f& {
    return m_section.points[static_cast<std::size_t>(corners[corner])];
  };
  float normal[3] = {0, 0, 0};
  const SbVec3f origin = point(0);
  SbVec3f from = point(1) - origin;
  for (std::size_t corner = 2; corner < num; ++corner) {
    const SbVec3f to = point(corner) - origin;
    normal[0] += from[1] * to[2] - from[2] * to[1];
    normal[1] += from[2] * to[0] - from[0] * to[2];
    normal[2] += from[0] * to[1] - from[1] * to[0];
    from = to;
  }
  if (m_plane.a * normal[0] + m_plane.b * normal[1] + m_plane.c * normal[2] < 0) std::reverse(corners, corners + num);
}

bool PiPlaneCutter::isFaceAlreadyFound(const PiCellTopology& topology, unsigned on, const Corner* corners, int num,
                                       const int* nodes) {
  if ((on & (on - 1)) == 0) return false;  // one node lies in no more than an edge
  unsigned atNodes = 0;
  for (int i = 0; i < num; ++i) atNodes |= corners[i].a == corners[i].b ? 1U << corners[i].a : ~0U;
  bool isFound = false;
  for (const PiFacet& facet : topology.facets) {
    int inPlane[4], numInPlane = 0;
    unsigned mask = 0;
    for (const int corner : facet.corners()) {
      if (!(on >> corner & 1U)) continue;
      inPlane[numInPlane++] = nodes[corner];
      mask |= 1U << corner;
    }
    if (numInPlane < 3) continue;
    int& numDrawn = m_faces.count(m_faces.add(PiNodeSets::keyOf({inPlane, static_cast<std::size_t>(numInPlane)})));
    if (num >= 3 && mask == atNodes) isFound = numDrawn++ > 0;
  }
  return isFound;
}

void PiPlaneCutter::append(const PiPlaneCutter& other) {
  const PiSection& from = other.m_section;
  m_renumbered.reset(from.points.size());
  for (std::size_t point = 0; point < from.points.size(); ++point) {
    const PiSurfacePoint& edge = other.points()[point];
    if (!m_points.add(edge.a, edge.b, m_renumbered[point])) continue;
    m_section.points.push_back(from.points[point]);
    if (m_values) m_section.values.push_back(from.values[point]);
  }
  const std::size_t numIndices = m_section.coordIndices.size(), numCells = m_section.cells.size();
  m_section.coordIndices.resize(numIndices + from.coordIndices.size());
  std::transform(from.coordIndices.begin(), from.coordIndices.end(), m_section.coordIndices.begin() + numIndices,
                 [this](int index) { return index < 0 ? index : m_renumbered[static_cast<std::size_t>(index)]; });
  m_section.cells.resize(numCells + from.cells.size());
  std::copy(from.cells.begin(), from.cells.end(), m_section.cells.begin() + numCells);
}

void PiPlaneCutter::finish() {
  for (const FacetBehind& facet : m_behind) {
    const std::size_t numFaces = m_faces.size();
    const std::size_t place = m_faces.add(PiNodeSets::keyOf({facet.nodes, static_cast<std::size_t>(facet.num)}));
    if (place < numFaces) continue;
    static constexpr Corner kCorners[] = {{0, 0}, {1, 1}, {2, 2}, {3, 3}};
    static constexpr float kOnPlane[4] = {0, 0, 0, 0};
    addPolygon(facet.cell, kCorners, facet.num, facet.nodes, kOnPlane,
               [&](int corner) { return facet.points[corner]; });
  }
}
