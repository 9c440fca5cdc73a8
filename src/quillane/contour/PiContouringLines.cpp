#include "quillane/contour/PiContouringLines.h"

#include <Ormelle/PbIsovaluesList.h>

#include <vector>

#include "quillane/contour/PiContourSurface.h"
#include "quillane/contour/PiContourWalk.h"

/// Joins the pieces of lines in the cells. Gets the cells from a PiContourWalk.
struct PiContouringLines::Chains {
  static constexpr bool kWantsWholeCells = false;

  void clear() {
    scratch.cuts.clear();
    m_links.clear();
    m_points.clear();
    m_lines.clear();
  }
  void cut(const PiCutCell& cell) {
    makeLinks();
    forEachCrossing(cell, scratch.cuts, [&](int level, int edge1, int edge2) {
      const int cut1 = cell.cutPoint(edge1, level), cut2 = cell.cutPoint(edge2, level);
      link(cut1).add(cut2);
      link(cut2).add(cut1);
    });
  }
  std::span<const PiIsoline> join(const PbIsovaluesList* list);

  std::size_t memorySize() const {
    return scratch.memorySize() + m_links.capacity() * sizeof(Link) + m_points.capacity() * sizeof(SbVec3f) +
           m_lines.capacity() * sizeof(PiIsoline);
  }

  PiContourScratch scratch;

 private:
  // The neighbours of a cut point on its line, one in each of the cells that share its edge; -1 for none. A point that
  // stands in a line already has lost both.
  struct Link {
    int neighbor[2];
    void add(int cut) { neighbor[neighbor[0] >= 0] = cut; }
    bool isEnd() const { return neighbor[0] >= 0 && neighbor[1] < 0; }
    bool isUsed() const { return neighbor[0] < 0; }
  };

  static constexpr Link kUnlinked{{-1, -1}};

  Link& link(int cut) { return m_links[static_cast<std::size_t>(cut)]; }
  void makeLinks() {
    const std::size_t num = m_links.size(), numMore = static_cast<std::size_t>(scratch.cuts.num()) - num;
    std::fill_n(m_links.room(numMore), numMore, kUnlinked);
    m_links.addWritten(numMore);
  }
  void addLine(int cut, bool isClosed, const float* isovalues);
  void addPoint(std::size_t first, int cut) {
    const SbVec3f& point = scratch.cuts.point(cut);
    if (m_points.size() == first || m_points[m_points.size() - 1] != point) m_points.push_back(point);
  }

  PiGrowBuffer<Link> m_links;
  PiGrowBuffer<SbVec3f> m_points;
  std::vector<PiIsoline> m_lines;
};

std::span<const PiIsoline> PiContouringLines::Chains::join(const PbIsovaluesList* list) {
  if (scratch.cuts.num() == 0) return {};
  int numIsovalues, isRegular;
  float min, max, step;
  const float* isovalues = list->getIsoList(numIsovalues, min, max, step, isRegular);
  const int num = static_cast<int>(m_links.size());
  // What is left when every line with ends is taken are loops.
  for (int cut = 0; cut < num; ++cut)
    if (link(cut).isEnd()) addLine(cut, false, isovalues);
  for (int cut = 0; cut < num; ++cut)
    if (!link(cut).isUsed()) addLine(cut, true, isovalues);
  const SbVec3f* points = m_points.data();
  for (PiIsoline& line : m_lines) {
    line.points = {points, line.points.size()};
    points += line.points.size();
  }
  return m_lines;
}

void PiContouringLines::Chains::addLine(int cut, bool isClosed, const float* isovalues) {
  const std::size_t first = m_points.size();
  const int start = cut, level = scratch.levels.listIndex(scratch.cuts.level(cut));
  for (int before = -1; cut >= 0;) {
    addPoint(first, cut);
    const Link from = link(cut);
    link(cut) = kUnlinked;
    const int next = from.neighbor[from.neighbor[0] == before && before >= 0];
    before = cut;
    cut = next >= 0 && link(next).isUsed() ? -1 : next;
  }
  if (isClosed) addPoint(first, start);
  // Rounding may leave nothing of a loop round a node.
  const std::size_t num = m_points.size() - first;
  if (num < 2)
    m_points.resize(first);
  else
    m_lines.push_back({level, isovalues[level], isClosed, std::span(m_points.data(), num)});
}

PiContouringLines::PiContouringLines() : m_chains(std::make_unique<Chains>()) {}
PiContouringLines::~PiContouringLines() = default;

std::span<const PiIsoline> PiContouringLines::extract(const float* values) {
  m_chains->clear();
  PiContourScratch& scratch = m_chains->scratch;
  std::visit(
      [&](const auto& view) {
        const int numNodes = values && m_list ? view.numNodes() : 0;
        if (numNodes == 0) return;
        scratch.levels.findBands(m_list, values, numNodes, scratch.bands);
        hideNonFiniteNodes(view, scratch.bands.data());
        PiContourWalk(view, values, scratch, *m_chains).run();
      },
      m_surface->view);
  return m_chains->join(m_list);
}

std::size_t PiContouringLines::memorySize() const { return PiContouring::memorySize() + m_chains->memorySize(); }
