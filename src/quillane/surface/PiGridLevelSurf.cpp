#include "quillane/surface/PiGridLevelSurf.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "graph/frame/PiParallel.h"
#include "quillane/marching/PiFlatCases.h"
#include "quillane/surface/PiNodeSides.h"

/// How many points a cell has on the edges that begin at it, by case: on edges 0 to 3, and on edges 8 to 11. Member
/// functions capture it, so it can't be unnamed to other sources.
struct PiGridLevelSurfSteps {
  std::array<int, 4> across, along;
};

namespace {

using Steps = PiGridLevelSurfSteps;

constexpr int kRowsInBlock = 512;
constexpr std::uint16_t kMirrored = 256;

const std::array<Steps, 256>& stepsOfCases() {
  static const auto steps = [] {
    std::array<Steps, 256> made{};
    const PiFlatCases& cases = PiFlatCases::of(PiSolidKind::HEXAHEDRON, false, false);
    for (unsigned id = 0; id < 256; ++id)
      for (unsigned edge = 0; edge < 12; ++edge) {
        const auto& [a, b] = cases.ends(edge);
        const int isCut = static_cast<int>((id >> a ^ id >> b) & 1);
        if (edge < 4) made[id].across[edge] = isCut;
        if (edge >= 8) made[id].along[edge - 8] = isCut;
      }
    return made;
  }();
  return steps;
}

int bitAt(const PiBitRows::Word* row, int k) { return static_cast<int>(row[k >> 6] >> (k & 63) & 1); }

/// Two neighbouring bits of a row, the second as the fifth.
unsigned twoBitsAt(const PiBitRows::Word* row, int k) {
  const unsigned first = static_cast<unsigned>(row[k >> 6] >> (k & 63)) & 1;
  const unsigned second = static_cast<unsigned>(row[(k + 1) >> 6] >> ((k + 1) & 63)) & 1;
  return first | second << 4;
}

template <class Use>
void forEachBit(PiBitRows::Word word, int base, Use&& use) {
  for (; word != 0; word &= word - 1) use(base + std::countr_zero(word));
}

}  // namespace

// --- what the words of a row tell -----------------------------------------------------------------------------------

int PiGridLevelSurf::numBlocks() const { return (numRows() + kRowsInBlock - 1) / kRowsInBlock; }

template <class Use>
void PiGridLevelSurf::forRows(int block, Use&& use) const {
  const int end = std::min(numRows(), (block + 1) * kRowsInBlock);
  for (int row = block * kRowsInBlock; row < end; ++row) use(row);
}

/// The cells of a row of cells that have nodes on both sides.
PiGridLevelSurf::Word PiGridLevelSurf::mixedCells(int row, int word) const {
  const Word* const sides[4] = {m_sides.row(row), m_sides.row(row + m_shape.numY), m_sides.row(row + m_shape.numY + 1),
                                m_sides.row(row + 1)};
  const int numWords = m_sides.numWords();
  Word any = 0, all = ~Word{0};
  for (const Word* side : sides) {
    const Word next = PiBitRows::next(side, word, numWords);
    any |= side[word] | next;
    all &= side[word] & next;
  }
  return any & ~all & PiBitRows::mask(word, m_shape.numZ - 1);
}

PiGridLevelSurf::Word PiGridLevelSurf::cutAlongK(int row, int word) const {
  const Word* sides = m_sides.row(row);
  return (sides[word] ^ PiBitRows::next(sides, word, m_sides.numWords())) & PiBitRows::mask(word, m_shape.numZ - 1);
}

unsigned PiGridLevelSurf::caseOf(int row, int k) const {
  return twoBitsAt(m_sides.row(row), k) | twoBitsAt(m_sides.row(row + m_shape.numY), k) << 1 |
         twoBitsAt(m_sides.row(row + m_shape.numY + 1), k) << 2 | twoBitsAt(m_sides.row(row + 1), k) << 3;
}

bool PiGridLevelSurf::accepts(int i, int j, int k) const {
  if (m_isAnyNaN || m_input->isNodeFinite) {
    int nodes[8];
    m_shape.cellNodes(i, j, k, nodes);
    for (const int node : nodes)
      if (std::isnan(m_input->values[node]) || (m_input->isNodeFinite && !m_input->isNodeFinite(node))) return false;
  }
  return !m_input->accepts || m_input->accepts(m_shape.cell(i, j, k));
}

// --- passes ---------------------------------------------------------------------------------------------------------

void PiGridLevelSurf::make(const PiGridShape& shape, const PiLevelSurfInput& input,
                           const std::function<bool(int, int, int)>& isMirrored, PiLevelSurfOutput& output) {
  m_shape = shape;
  m_input = &input;
  m_isMirrored = &isMirrored;
  m_output = &output;
  output.iso = input.iso;
  m_totals = Totals();
  if (shape.hasCells()) {
    findSides();
    m_isMasked = m_isAnyNaN || input.accepts || input.isNodeFinite;
    if (m_isMasked) findUsed();
    countPoints();
    countFacets();
  }
  constexpr std::size_t kMost = std::numeric_limits<int>::max();
  const std::size_t numIndices = m_totals.indices + m_totals.quads / 2 * 5;
  int* indices = m_totals.points < kMost && numIndices < kMost ? output.indices(numIndices) : nullptr;
  if (!indices || m_totals.points == 0) {
    output.points.points().reset(0);
    output.cells.reset(0);
    output.indices(0);
    return;
  }
  writePoints();
  writeFacets(indices);
  finishLevelSurf(input.asStrips, indices, m_totals.indices, output);
}

void PiGridLevelSurf::findSides() {
  m_sides.setShape(numRows(), m_shape.numZ);
  const auto compare = [this] {
    std::vector<PiSidesSeen> seen(static_cast<std::size_t>(numBlocks()));
    PiParallel::run(numBlocks(), [&](int block) {
      forRows(block, [&](int row) {
        const auto num = static_cast<std::size_t>(m_shape.numZ);
        seen[static_cast<std::size_t>(block)].add(::findSides(m_input->values + static_cast<std::size_t>(row) * num,
                                                              num, m_output->iso, m_input->isToMax, m_sides.row(row)));
      });
    });
    PiSidesSeen all;
    for (const PiSidesSeen& part : seen) all.add(part);
    return all;
  };
  PiSidesSeen seen = compare();
  m_isAnyNaN = seen.isAnyNaN;
  if (!seen.isAnyEqual || !m_input->moveOff) return;
  m_input->moveOff(m_output->iso);
  if (m_output->iso != m_input->iso) compare();
}

/// Asks which mixed cells take part, on the caller's thread, and keeps the cut edges of those.
void PiGridLevelSurf::findUsed() {
  const int numWords = m_sides.numWords();
  for (PiBitRows* rows : {&m_accepted, &m_usedK, &m_usedJ, &m_usedI}) rows->setShape(numRows(), m_shape.numZ);
  for (int row = 0; row < numRows(); ++row) {
    for (int w = 0; w < numWords; ++w) {
      Word accepted = 0;
      if (hasCellRow(row))
        forEachBit(mixedCells(row, w), 0, [&](int bit) {
          if (accepts(row / m_shape.numY, row % m_shape.numY, 64 * w + bit)) accepted |= Word{1} << bit;
        });
      m_accepted.row(row)[w] = accepted;
    }
  }
  PiParallel::run(numBlocks(), [&](int block) {
    forRows(block, [&](int row) {
      // Rows of cells round a row of nodes, those outside the grid being empty.
      const int i = row / m_shape.numY, j = row % m_shape.numY;
      const Word* here = m_accepted.row(row);
      const Word* left = j > 0 ? m_accepted.row(row - 1) : nullptr;
      const Word* below = i > 0 ? m_accepted.row(row - m_shape.numY) : nullptr;
      const Word* leftBelow = i > 0 && j > 0 ? m_accepted.row(row - m_shape.numY - 1) : nullptr;
      const auto at = [](const Word* cells, int w) { return cells ? cells[w] : 0; };
      // Nodes of a word whose cell, or the one before it along k, is set.
      const auto beside = [&](const Word* cells, int w) {
        return at(cells, w) | at(cells, w) << 1 | (w > 0 ? at(cells, w - 1) >> 63 : 0);
      };
      const Word* sides = m_sides.row(row);
      for (int w = 0; w < numWords; ++w) {
        m_usedK.row(row)[w] = cutAlongK(row, w) & (at(here, w) | at(left, w) | at(below, w) | at(leftBelow, w));
        const bool hasJ = j + 1 < m_shape.numY, hasI = i + 1 < m_shape.numX;
        m_usedJ.row(row)[w] = hasJ ? (sides[w] ^ m_sides.row(row + 1)[w]) & (beside(here, w) | beside(below, w)) : 0;
        m_usedI.row(row)[w] =
            hasI ? (sides[w] ^ m_sides.row(row + m_shape.numY)[w]) & (beside(here, w) | beside(left, w)) : 0;
      }
    });
  });
}

/// Counts the points and the mixed cells of each row and numbers them.
void PiGridLevelSurf::countPoints() {
  m_rows.reset(static_cast<std::size_t>(numRows()));
  const int numWords = m_sides.numWords();
  PiParallel::run(numBlocks(), [&](int block) {
    forRows(block, [&](int row) {
      Row& counted = m_rows[static_cast<std::size_t>(row)];
      counted = Row{};
      const bool hasI = row / m_shape.numY + 1 < m_shape.numX, hasJ = (row + 1) % m_shape.numY != 0;
      const Word* sides = m_sides.row(row);
      for (int w = 0; w < numWords; ++w) {
        if (m_isMasked) {
          counted.pointK += PiBitRows::count(m_usedK.row(row)[w]);
          counted.pointJ += PiBitRows::count(m_usedJ.row(row)[w]);
          counted.pointI += PiBitRows::count(m_usedI.row(row)[w]);
        } else {
          counted.pointK += PiBitRows::count(cutAlongK(row, w));
          if (hasJ) counted.pointJ += PiBitRows::count(sides[w] ^ m_sides.row(row + 1)[w]);
          if (hasI) counted.pointI += PiBitRows::count(sides[w] ^ m_sides.row(row + m_shape.numY)[w]);
        }
        if (hasI && hasJ) counted.cell += PiBitRows::count(mixedCells(row, w));
      }
    });
  });
  for (Row& row : m_rows) {
    const Row counted = row;
    row.pointK = static_cast<int>(m_totals.points);
    row.pointJ = row.pointK + counted.pointK;
    row.pointI = row.pointJ + counted.pointJ;
    m_totals.points += static_cast<std::size_t>(counted.pointK) + static_cast<std::size_t>(counted.pointJ) +
                       static_cast<std::size_t>(counted.pointI);
    row.cell = static_cast<int>(m_totals.cells);
    m_totals.cells += static_cast<std::size_t>(counted.cell);
  }
}

/// Finds the case of each mixed cell, and counts what the rows will write.
void PiGridLevelSurf::countFacets() {
  m_cases.reset(m_totals.cells);
  const PiFlatCases* const tables[2] = {&PiFlatCases::of(PiSolidKind::HEXAHEDRON, m_input->asStrips, false),
                                        &PiFlatCases::of(PiSolidKind::HEXAHEDRON, m_input->asStrips, true)};
  std::vector<std::size_t> numQuads(static_cast<std::size_t>(numBlocks()));
  PiParallel::run(numBlocks(), [&](int block) {
    forRows(block, [&](int row) {
      Row& counted = m_rows[static_cast<std::size_t>(row)];
      if (!hasCellRow(row)) return;
      std::uint16_t* next = m_cases.data() + counted.cell;
      for (int w = 0; w < m_sides.numWords(); ++w)
        forEachBit(mixedCells(row, w), 64 * w, [&](int k) {
          if (m_isMasked && !bitAt(m_accepted.row(row), k)) {
            *next++ = 0;
            return;
          }
          const unsigned id = caseOf(row, k);
          const bool isMirrored = *m_isMirrored && (*m_isMirrored)(row / m_shape.numY, row % m_shape.numY, k);
          *next++ = static_cast<std::uint16_t>(id | (isMirrored ? kMirrored : 0));
          const PiFlatCase& flat = (*tables[isMirrored])[id];
          counted.index += flat.numEntries;
          counted.facet += flat.numFacets;
          numQuads[static_cast<std::size_t>(block)] += flat.numQuads;
        });
    });
  });
  for (Row& row : m_rows) {
    const Row counted = row;
    row.index = static_cast<int>(m_totals.indices);
    row.facet = static_cast<int>(m_totals.facets);
    m_totals.indices += static_cast<std::size_t>(counted.index);
    m_totals.facets += static_cast<std::size_t>(counted.facet);
  }
  for (const std::size_t num : numQuads) m_totals.quads += num;
}

void PiGridLevelSurf::writePoints() {
  PiGrowBuffer<PiSurfacePoint>& points = m_output->points.points();
  points.reset(m_totals.points);
  PiParallel::run(numBlocks(), [&](int block) {
    forRows(block, [&](int row) {
      const Row& starts = m_rows[static_cast<std::size_t>(row)];
      PiSurfacePoint* next[3] = {points.data() + starts.pointK, points.data() + starts.pointJ,
                                 points.data() + starts.pointI};
      const int steps[3] = {1, m_shape.stepJ(), m_shape.stepI()};
      const bool hasI = row / m_shape.numY + 1 < m_shape.numX, hasJ = (row + 1) % m_shape.numY != 0;
      const Word* sides = m_sides.row(row);
      const int firstNode = row * m_shape.numZ;
      for (int w = 0; w < m_sides.numWords(); ++w) {
        Word cuts[3];
        if (m_isMasked) {
          cuts[0] = m_usedK.row(row)[w];
          cuts[1] = m_usedJ.row(row)[w];
          cuts[2] = m_usedI.row(row)[w];
        } else {
          cuts[0] = cutAlongK(row, w);
          cuts[1] = hasJ ? sides[w] ^ m_sides.row(row + 1)[w] : 0;
          cuts[2] = hasI ? sides[w] ^ m_sides.row(row + m_shape.numY)[w] : 0;
        }
        for (int axis = 0; axis < 3; ++axis)
          forEachBit(cuts[axis], firstNode + 64 * w, [&](int node) { *next[axis]++ = {node, node + steps[axis], 0}; });
      }
    });
  });
}

/// Writes the facets of a row of cells. The points on the edges of a cell are those of its four rows of nodes that come
/// next: eight counters run along.
template <bool kIsMasked>
void PiGridLevelSurf::writeRow(int i, int j, int* indices, std::vector<Proposal>& proposals) const {
  const PiFlatCases* const tables[2] = {&PiFlatCases::of(PiSolidKind::HEXAHEDRON, m_input->asStrips, false),
                                        &PiFlatCases::of(PiSolidKind::HEXAHEDRON, m_input->asStrips, true)};
  const std::array<Steps, 256>& steps = stepsOfCases();
  const int row = rowOf(i, j), rows[4] = {row, row + m_shape.numY, row + m_shape.numY + 1, row + 1};
  const auto startsOf = [&](int r) -> const Row& { return m_rows[static_cast<std::size_t>(r)]; };
  const Row& starts = startsOf(row);
  // In the order of edges 0 to 3 and 8 to 11.
  std::array<int, 4> across = {starts.pointI, startsOf(rows[1]).pointJ, startsOf(rows[3]).pointI, starts.pointJ};
  std::array<int, 4> along = {starts.pointK, startsOf(rows[1]).pointK, startsOf(rows[2]).pointK,
                              startsOf(rows[3]).pointK};
  const Word* const usedAcross[4] = {
      kIsMasked ? m_usedI.row(rows[0]) : nullptr, kIsMasked ? m_usedJ.row(rows[1]) : nullptr,
      kIsMasked ? m_usedI.row(rows[3]) : nullptr, kIsMasked ? m_usedJ.row(rows[0]) : nullptr};

  const std::uint16_t* nextCase = m_cases.data() + starts.cell;
  int* out = indices + starts.index;
  int* outCells = m_output->cells.data() + starts.facet;
  const int firstCell = m_shape.cell(i, j, 0);
  std::array<int, 16> points;
  points[PiFlatCase::kEnd] = -1;
  for (int w = 0; w < m_sides.numWords(); ++w)
    forEachBit(mixedCells(row, w), 64 * w, [&](int k) {
      const unsigned found = *nextCase++;
      const unsigned id = found & 255;
      Steps step;
      if constexpr (kIsMasked) {
        for (unsigned e = 0; e < 4; ++e) {
          step.across[e] = bitAt(usedAcross[e], k);
          step.along[e] = bitAt(m_usedK.row(rows[e]), k);
        }
      } else {
        step = steps[id];
      }
      for (unsigned e = 0; e < 4; ++e) points[e] = across[e];
      for (unsigned e = 0; e < 4; ++e) across[e] += step.across[e];
      for (unsigned e = 0; e < 4; ++e) points[4 + e] = across[e];
      for (unsigned e = 0; e < 4; ++e) points[8 + e] = along[e];
      for (unsigned e = 0; e < 4; ++e) along[e] += step.along[e];

      const PiFlatCases& table = *tables[found / kMirrored];
      const PiFlatCase& flat = table[id];
      for (unsigned entry = 0; entry < flat.numEntries; ++entry) *out++ = points[flat.entries[entry]];
      for (unsigned facet = 0; facet < flat.numFacets; ++facet) *outCells++ = firstCell + k;
      const std::uint8_t* edges = table.quads(id);
      for (unsigned quad = 0; quad < flat.numQuads; ++quad, edges += 4)
        proposals.push_back({{points[edges[0]], points[edges[1]], points[edges[2]], points[edges[3]]}, firstCell + k});
    });
}

void PiGridLevelSurf::writeFacets(int* indices) {
  m_output->cells.reset(m_totals.facets + m_totals.quads / 2);
  m_output->cells.resize(m_totals.facets);
  if (m_proposals.size() < static_cast<std::size_t>(numBlocks()))
    m_proposals.resize(static_cast<std::size_t>(numBlocks()));
  PiParallel::run(numBlocks(), [&](int block) {
    std::vector<Proposal>& proposals = m_proposals[static_cast<std::size_t>(block)];
    proposals.clear();
    forRows(block, [&](int row) {
      if (!hasCellRow(row)) return;
      const int i = row / m_shape.numY, j = row % m_shape.numY;
      if (m_isMasked)
        writeRow<true>(i, j, indices, proposals);
      else
        writeRow<false>(i, j, indices, proposals);
    });
  });
  for (int block = 0; block < numBlocks(); ++block)
    for (const Proposal& proposal : m_proposals[static_cast<std::size_t>(block)])
      m_output->quadrangles.add(proposal.corners, proposal.cell);
}

std::size_t PiGridLevelSurf::memorySize() const {
  std::size_t size = m_rows.capacity() * sizeof(Row) + m_cases.capacity() * sizeof(std::uint16_t);
  for (const PiBitRows* rows : {&m_sides, &m_accepted, &m_usedK, &m_usedJ, &m_usedI}) size += rows->memorySize();
  for (const std::vector<Proposal>& proposals : m_proposals) size += proposals.capacity() * sizeof(Proposal);
  return size;
}
