#include "quillane/surface/PiCrossContour.h"

#include <algorithm>
#include <cmath>

#include <Ormelle/PbCell.h>
#include <Ormelle/PbGrid3D.h>

#include "graph/data/PiFinite.h"
#include "quillane/surface/PiMeshSkin.h"

void PiCrossContour::cut(const PbMesh3D& mesh, const PiSectionPlane& plane, const float* values,
                         const PoCellFilter* filter, int filterValuesIndex) {
  section.clear();
  m_mesh = &mesh;
  m_plane = plane;
  m_values = values;
  m_points.clear();
  m_edges.clear();
  m_edgesInPlane.clear();
  const auto* grid = dynamic_cast<const PbGrid3D*>(&mesh);
  if (grid && !filter)
    cutSides(*grid);
  else
    cutSkin(mesh, filter, filterValuesIndex);
  finish();
}

std::size_t PiCrossContour::memorySize() const {
  return section.memorySize() + m_points.pointMemorySize() + m_points.tableMemorySize() + m_edges.memorySize() +
         m_edgesInPlane.capacity() * sizeof(EdgeInPlane) + m_distances.capacity() * sizeof(float);
}

void PiCrossContour::cutSkin(const PbMesh3D& mesh, const PoCellFilter* filter, int filterValuesIndex) {
  unsigned int id;
  const PiMeshSkin& skin = *mesh.getSkinTopology(filter, filterValuesIndex, id);
  for (int facet = 0; facet < skin.getNumFacets(); ++facet) {
    const std::span<const int> nodes = skin.getNodes(facet);
    SbVec3f points[4];
    float distances[4];
    for (std::size_t n = 0; n < nodes.size(); ++n) {
      points[n] = mesh.getNodeCoord(nodes[n]);
      distances[n] = m_plane.distance(points[n][0], points[n][1], points[n][2]);
    }
    cutFacet(skin.getCell(facet), nodes, distances, [&](int corner) { return points[corner]; });
  }
}

void PiCrossContour::cutSides(const PbGrid3D& grid) {
  int num[3];
  grid.getDim(num[0], num[1], num[2]);
  if (grid.getNumCells() < 1) return;
  for (int across = 0; across < 3; ++across)
    for (const bool isLast : {false, true}) {
      const int row = (across + 1) % 3, column = (across + 2) % 3;
      const auto at = [&](int r, int c) {
        std::array<int, 3> index{};
        index[static_cast<std::size_t>(across)] = isLast ? num[across] - 1 : 0;
        index[static_cast<std::size_t>(row)] = r;
        index[static_cast<std::size_t>(column)] = c;
        return index;
      };
      const auto place = [&](int r, int c) {
        return static_cast<std::size_t>(r) * static_cast<std::size_t>(num[column]) + static_cast<std::size_t>(c);
      };
      m_distances.resize(place(num[row], 0));
      for (int r = 0; r < num[row]; ++r)
        for (int c = 0; c < num[column]; ++c) {
          const auto [i, j, k] = at(r, c);
          const SbVec3f point = grid.getNodeCoord(i, j, k);
          m_distances[place(r, c)] = m_plane.distance(point[0], point[1], point[2]);
        }
      static constexpr int kRow[4] = {0, 1, 1, 0}, kColumn[4] = {0, 0, 1, 1};
      for (int r = 0; r + 1 < num[row]; ++r)
        for (int c = 0; c + 1 < num[column]; ++c) {
          float distances[4];
          for (int n = 0; n < 4; ++n) distances[n] = m_distances[place(r + kRow[n], c + kColumn[n])];
          const auto [least, greatest] = std::minmax_element(distances, distances + 4);
          if (*least > 0 || *greatest < 0) continue;
          int nodes[4];
          for (int n = 0; n < 4; ++n) {
            const auto [i, j, k] = at(r + kRow[n], c + kColumn[n]);
            nodes[n] = grid.getNodeIndex(i, j, k);
          }
          auto cell = at(r, c);
          if (isLast) --cell[static_cast<std::size_t>(across)];
          cutFacet(grid.getCellIndex(cell[0], cell[1], cell[2]), nodes, distances, [&](int corner) {
            const auto [i, j, k] = at(r + kRow[corner], c + kColumn[corner]);
            return grid.getNodeCoord(i, j, k);
          });
        }
    }
}

template <class PointOf>
void PiCrossContour::cutFacet(int cell, std::span<const int> nodes, const float* distances, PointOf&& pointOf) {
  const PiSectionCases& cases = PiSectionCases::of(nodes.size() == 3 ? PiTopology::kTriangle : PiTopology::kQuadrangle);
  const int num = static_cast<int>(nodes.size());
  unsigned front = 0, on = 0;
  for (int n = 0; n < num; ++n) {
    if (!std::isfinite(distances[n])) return;
    front |= static_cast<unsigned>(distances[n] > 0) << n;
    on |= static_cast<unsigned>(distances[n] == 0) << n;
  }
  if (front == cases.wholeMask() || (front == 0 && on == 0)) return;
  const auto isOn = [on](int n) { return (on >> n & 1U) != 0; };
  if (front == 0) {
    // Behind the plane: only an edge may lie in it.
    int edge = -1, numInPlane = 0;
    for (int n = 0; n < num; ++n)
      if (isOn(n) && isOn((n + 1) % num)) edge = n, ++numInPlane;
    if (numInPlane != 1 || !isDrawn(cell)) return;
    const auto next = static_cast<std::size_t>((edge + 1) % num);
    addEdgeInPlane(cell, nodes[static_cast<std::size_t>(edge)], nodes[next], pointOf(edge),
                   pointOf(static_cast<int>(next)), false);
    return;
  }
  if (!isDrawn(cell)) return;
  const std::int8_t* cuts = cases.cuts(front);
  for (std::int8_t numCorners = *cuts++; numCorners > 0; cuts += numCorners, numCorners = *cuts++) {
    int ends[2][2];
    for (int i = 0; i < 2; ++i) {
      const auto& edge = cases.topology().edges[static_cast<std::size_t>(cuts[i])];
      ends[i][0] = isOn(edge[1]) ? edge[1] : edge[0];
      ends[i][1] = isOn(edge[0]) ? edge[0] : edge[1];
    }
    const bool areNodes = ends[0][0] == ends[0][1] && ends[1][0] == ends[1][1];
    const int from = ends[0][0], to = ends[1][0];
    if (areNodes && from == to) continue;
    if (areNodes && ((from + 1) % num == to || (to + 1) % num == from)) {
      addEdgeInPlane(cell, nodes[static_cast<std::size_t>(from)], nodes[static_cast<std::size_t>(to)], pointOf(from),
                     pointOf(to), true);
      continue;
    }
    int points[2];
    for (int i = 0; i < 2; ++i)
      points[i] = addPoint(nodes[static_cast<std::size_t>(ends[i][0])], nodes[static_cast<std::size_t>(ends[i][1])],
                           pointOf(ends[i][0]), pointOf(ends[i][1]), distances[ends[i][0]], distances[ends[i][1]]);
    addSegment(cell, points);
  }
}

void PiCrossContour::addEdgeInPlane(int cell, int a, int b, const SbVec3f& pointA, const SbVec3f& pointB,
                                    bool isFront) {
  const int ends[2] = {a, b};
  const std::size_t place = m_edges.add(PiNodeSets::keyOf(ends));
  if (place == m_edgesInPlane.size()) m_edgesInPlane.push_back({cell, a, b, pointA, pointB, 0, 0});
  ++(isFront ? m_edgesInPlane[place].numFront : m_edgesInPlane[place].numBehind);
}

// Two facets on the same side of an edge in the plane are a ridge or a valley that touches it. The section ends at the
// edge if it has one on each side, or if the other lies in the plane.
void PiCrossContour::finish() {
  for (const EdgeInPlane& edge : m_edgesInPlane) {
    if (edge.numFront % 2 == 0 && edge.numBehind % 2 == 0) continue;
    const int points[2] = {addPoint(edge.a, edge.a, edge.pointA, edge.pointA, 0, 0),
                           addPoint(edge.b, edge.b, edge.pointB, edge.pointB, 0, 0)};
    addSegment(edge.cell, points);
  }
}

void PiCrossContour::addSegment(int cell, const int (&points)[2]) {
  section.coordIndices.push_back(points[0]);
  section.coordIndices.push_back(points[1]);
  section.coordIndices.push_back(-1);
  section.cells.push_back(cell);
}

int PiCrossContour::addPoint(int a, int b, const SbVec3f& pointA, const SbVec3f& pointB, float distanceA,
                             float distanceB) {
  if (a > b) return addPoint(b, a, pointB, pointA, distanceB, distanceA);
  int index;
  if (!m_points.add(a, b, index)) return index;
  section.addInterpolated(pointA, pointB, m_values, a, b, a == b ? 0 : distanceA / (distanceA - distanceB));
  return index;
}

// Asked for the few cells that are cut at the outside.
bool PiCrossContour::isDrawn(int cell) const {
  const PbCell* topology = m_mesh->getTopoCell(cell);
  if (!topology) return false;
  for (int n = 0; n < topology->getNumNodes(); ++n) {
    const int node = topology->getNodeIndex(n);
    if ((m_values && std::isnan(m_values[node])) || !isFinitePoint(m_mesh->getNodeCoord(node))) return false;
  }
  return true;
}
