#include "quillane/mesh/PiLimits.h"

#include <Ormelle/PbArrayOfInt.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <vector>

#include "quillane/mesh/PiConnectivity.h"

namespace {

// An edge of the boundary as the contour runs: against the cell that has it.
struct Edge {
  int from, to;
};

// Calls `use(from, to)` for the edges of a cell, in the order of its perimeter. An edge between equal nodes is none,
// and one that the cell runs to and fro bounds nothing.
template <class Use>
void forEachEdge(std::span<const int> cell, Use&& use) {
  const std::size_t num = cell.size();
  const auto next = [num](std::size_t n) { return n + 1 < num ? n + 1 : 0; };
  bool areDistinct = cell[0] != cell[1] && cell[0] != cell[2] && cell[1] != cell[2];
  if (num == 4) areDistinct = areDistinct && cell[3] != cell[0] && cell[3] != cell[1] && cell[3] != cell[2];
  for (std::size_t n = 0; n < num; ++n) {
    const int from = cell[n], to = cell[next(n)];
    bool isEdge = from != to;
    for (std::size_t other = 0; !areDistinct && isEdge && other < num; ++other)
      isEdge = !(cell[other] == to && cell[next(other)] == from);
    if (isEdge) use(from, to);
  }
}

// The edges that one cell has, by rising lower node and then by rising upper node. Edges are sorted by their lower node
// with a count, and in the short list of each such node by the upper one: as good as linear.
std::vector<Edge> boundaryEdges(const PiConnectivity& cells) {
  std::vector<int> first(static_cast<std::size_t>(cells.numNodes()) + 1, 0);
  cells.forEachWhole([&](int, std::span<const int> cell) {
    forEachEdge(cell, [&](int from, int to) { ++first[static_cast<std::size_t>(std::min(from, to)) + 1]; });
  });
  for (std::size_t node = 1; node < first.size(); ++node) first[node] += first[node - 1];

  // The upper node, and in the lowest bit whether the contour runs from the upper to the lower one.
  std::vector<std::uint32_t> uppers(static_cast<std::size_t>(first.back()));
  std::vector<int> end(first.begin(), first.end() - 1);
  cells.forEachWhole([&](int, std::span<const int> cell) {
    forEachEdge(cell, [&](int from, int to) {
      const bool runsUp = from < to;
      const int place = end[static_cast<std::size_t>(runsUp ? from : to)]++;
      uppers[static_cast<std::size_t>(place)] = static_cast<std::uint32_t>(runsUp ? to : from) * 2 + runsUp;
    });
  });

  std::vector<Edge> edges;
  for (int lower = 0; lower < cells.numNodes(); ++lower) {
    const auto begin = uppers.begin() + first[static_cast<std::size_t>(lower)];
    const auto last = uppers.begin() + first[static_cast<std::size_t>(lower) + 1];
    std::sort(begin, last);
    for (auto edge = begin; edge != last;) {
      auto next = edge + 1;
      while (next != last && *next / 2 == *edge / 2) ++next;
      const int upper = static_cast<int>(*edge / 2);
      if (next == edge + 1) edges.push_back(*edge % 2 ? Edge{upper, lower} : Edge{lower, upper});
      edge = next;
    }
  }
  return edges;
}

// Joins edges to contours. Every edge is run once; where a path comes back to a node it is on, the loop is taken off.
class Linker {
 public:
  Linker(const std::vector<Edge>& edges, int numNodes)
      : m_edges(edges),
        m_isRun(edges.size(), false),
        m_place(static_cast<std::size_t>(numNodes), -1),
        m_leaving(edges, numNodes, &Edge::from),
        m_coming(edges, numNodes, &Edge::to) {}

  void run() {
    // A chain has its ends where an odd number of edges meet: it is run from there, before the contours that close.
    for (std::size_t edge = 0; edge < m_edges.size(); ++edge)
      for (const int end : {m_edges[edge].from, m_edges[edge].to})
        if (!m_isRun[edge] && (m_leaving.numAt(end) + m_coming.numAt(end)) % 2) walk(end);
    for (std::size_t edge = 0; edge < m_edges.size(); ++edge)
      if (!m_isRun[edge]) walk(m_edges[edge].from);
    std::stable_sort(m_contours.begin(), m_contours.end(),
                     [this](const Contour& a, const Contour& b) { return m_nodes[a.first] < m_nodes[b.first]; });
  }
  void give(PbArrayOfInt& sizes, PbArrayOfInt& indices) const {
    indices.setCapacity(static_cast<int>(m_nodes.size()), 0);
    for (const Contour& contour : m_contours) {
      sizes.add(static_cast<int>(contour.num));
      indices.add(static_cast<int>(contour.num), m_nodes.data() + contour.first);
    }
  }

 private:
  struct Contour {
    std::size_t first, num;
  };
  // The edges at each node, by rising number.
  struct EdgesAtNode {
    EdgesAtNode(const std::vector<Edge>& edges, int numNodes, int Edge::*end)
        : first(static_cast<std::size_t>(numNodes) + 1, 0), numbers(edges.size()) {
      for (const Edge& edge : edges) ++first[static_cast<std::size_t>(edge.*end) + 1];
      for (std::size_t node = 1; node < first.size(); ++node) first[node] += first[node - 1];
      next.assign(first.begin(), first.end() - 1);
      for (std::size_t e = 0; e < edges.size(); ++e)
        numbers[static_cast<std::size_t>(next[static_cast<std::size_t>(edges[e].*end)]++)] = static_cast<int>(e);
      next.assign(first.begin(), first.end() - 1);
    }
    int numAt(int node) const {
      return first[static_cast<std::size_t>(node) + 1] - first[static_cast<std::size_t>(node)];
    }

    std::vector<int> first, numbers;
    std::vector<int> next;  // the first that may not have been run yet
  };

  // An edge at the node that wasn't run yet, or -1.
  int takeFrom(EdgesAtNode& edges, int node) {
    int& next = edges.next[static_cast<std::size_t>(node)];
    for (const int last = edges.first[static_cast<std::size_t>(node) + 1]; next < last;) {
      const int edge = edges.numbers[static_cast<std::size_t>(next++)];
      if (m_isRun[static_cast<std::size_t>(edge)]) continue;
      m_isRun[static_cast<std::size_t>(edge)] = true;
      return edge;
    }
    return -1;
  }
  // The other end of an edge not run yet, along its sense if there is such an edge; -1 if all have been run.
  int step(int node) {
    int edge = takeFrom(m_leaving, node);
    if (edge >= 0) return m_edges[static_cast<std::size_t>(edge)].to;
    edge = takeFrom(m_coming, node);
    return edge >= 0 ? m_edges[static_cast<std::size_t>(edge)].from : -1;
  }

  void walk(int start) {
    push(start);
    for (int node = step(start); node >= 0; node = step(node)) {
      const int place = m_place[static_cast<std::size_t>(node)];
      if (place < 0)
        push(node);
      else
        closeAt(static_cast<std::size_t>(place));
    }
    // What is left has no way on at its end: a chain, which its ends close.
    if (m_path.size() > 1) closeAt(0);
    for (const int node : m_path) m_place[static_cast<std::size_t>(node)] = -1;
    m_path.clear();
  }
  void push(int node) {
    m_place[static_cast<std::size_t>(node)] = static_cast<int>(m_path.size());
    m_path.push_back(node);
  }
  // Takes the end of the path off as a contour, all but the node at which it closes.
  void closeAt(std::size_t place) {
    const auto begin = m_path.begin() + static_cast<std::ptrdiff_t>(place);
    m_contours.push_back({m_nodes.size(), m_path.size() - place});
    std::rotate_copy(begin, std::min_element(begin, m_path.end()), m_path.end(), std::back_inserter(m_nodes));
    for (auto node = begin + 1; node != m_path.end(); ++node) m_place[static_cast<std::size_t>(*node)] = -1;
    m_path.erase(begin + 1, m_path.end());
  }

  const std::vector<Edge>& m_edges;
  std::vector<bool> m_isRun;
  std::vector<int> m_place;  // of a node on the path, -1 if it isn't
  EdgesAtNode m_leaving, m_coming;
  std::vector<int> m_path;
  std::vector<int> m_nodes;  // of the contours
  std::vector<Contour> m_contours;
};

}  // namespace

void findLimits(const PiConnectivity& cells, PbArrayOfInt& sizes, PbArrayOfInt& indices) {
  sizes.empty();
  indices.empty();
  const std::vector<Edge> edges = boundaryEdges(cells);
  if (edges.empty()) return;
  Linker linker(edges, cells.numNodes());
  linker.run();
  linker.give(sizes, indices);
}
