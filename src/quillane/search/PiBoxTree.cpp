#include "quillane/search/PiBoxTree.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace {

// For axes that are split and sides of the middle that a box touches (bits 0 to 2: the low side of x, y and z; bits 3
// to 5: the high side), the children that the box overlaps, as bits.
using ChildTable = std::array<std::array<std::uint8_t, 64>, 8>;

constexpr ChildTable makeChildTable() {
  ChildTable table{};
  for (unsigned axes = 1; axes < 8; ++axes)
    for (unsigned sides = 0; sides < 64; ++sides)
      for (unsigned child = 0; child < 1U << std::popcount(axes); ++child) {
        bool isTouched = true;
        unsigned place = 0;
        for (unsigned a = 0; a < 3; ++a)
          if (axes >> a & 1U) isTouched = isTouched && (sides >> (a + (child >> place++ & 1U) * 3) & 1U);
        if (isTouched) table[axes][sides] |= static_cast<std::uint8_t>(1U << child);
      }
  return table;
}
constexpr ChildTable kChildren = makeChildTable();

}  // namespace

// Builds the octree of a bin depth first. The lists of the nodes on the way from the root, with those of their
// brothers, lie behind each other in one array.
class PiBoxTree::Builder {
 public:
  Builder(PiBoxTree& tree, const std::vector<Run>& runs) : m_tree(tree), m_runs(runs) {}

  /// Builds at the node the octree of the runs of these indices. `low` and `bits` are those of the node.
  void build(std::size_t node, const std::uint32_t* begin, const std::uint32_t* end, const std::array<unsigned, 3>& low,
             const std::array<unsigned, 3>& bits, float growth) {
    m_lists.assign(begin, end);
    buildNode(node, 0, m_lists.size(), low, bits, growth);
  }

 private:
  // The node's list starts at `begin`; the node is the part of the cube at `low` with `bits` bits of each coordinate
  // free. `growth` tells how many times as long the lists became on the way from the root.
  void buildNode(std::size_t node, std::size_t begin, std::size_t end, std::array<unsigned, 3> low,
                 std::array<unsigned, 3> bits, float growth) {
    const std::size_t num = end - begin;
    const unsigned axes = num > kLeafCapacity ? chooseAxes(begin, end, low, bits, growth) : 0;
    if (axes == 0) {
      makeLeaf(node, begin, end, low, bits);
      return;
    }

    const auto& childrenOf = kChildren[axes];
    const unsigned numChildren = 1U << std::popcount(axes);
    std::array<std::size_t, 9> starts{};
    for (std::size_t e = 0; e < num; ++e)
      for (unsigned left = childrenOf[m_sides[e]]; left; left &= left - 1) ++starts[std::countr_zero(left) + 1];
    starts[0] = m_lists.size();
    for (unsigned c = 0; c < numChildren; ++c) starts[c + 1] += starts[c];
    m_lists.resize(starts[numChildren]);
    auto ends = starts;
    for (std::size_t e = 0; e < num; ++e)
      for (unsigned left = childrenOf[m_sides[e]]; left; left &= left - 1)
        m_lists[ends[std::countr_zero(left)]++] = m_lists[begin + e];

    const std::size_t first = m_tree.m_nodes.size();
    m_tree.m_nodes.resize(first + numChildren);
    m_tree.m_nodes[node] = {static_cast<std::uint32_t>(first), Node::kSplit | axes};
    for (unsigned a = 0; a < 3; ++a)
      if (axes >> a & 1U) --bits[a];
    for (unsigned c = 0; c < numChildren; ++c) {
      std::array<unsigned, 3> childLow = low;
      unsigned place = 0;
      for (unsigned a = 0; a < 3; ++a)
        if (axes >> a & 1U) childLow[a] += (c >> place++ & 1U) << bits[a];
      buildNode(first + c, starts[c], starts[c + 1], childLow, bits, growth);
    }
    m_lists.resize(starts[0]);
  }

  // Notes the sides that each box touches, and chooses the axes that separate the boxes best: as many as pay. Adds what
  // they cost to `growth`.
  unsigned chooseAxes(std::size_t begin, std::size_t end, const std::array<unsigned, 3>& low,
                      const std::array<unsigned, 3>& bits, float& growth) {
    unsigned middle[3];
    for (unsigned a = 0; a < 3; ++a) middle[a] = bits[a] > 0 ? low[a] + (1U << (bits[a] - 1)) : 0;
    const std::size_t num = end - begin;
    if (m_sides.size() < num) m_sides.resize(num);
    std::size_t numBoth[3] = {0, 0, 0};
    for (std::size_t e = 0; e < num; ++e) {
      const Run& box = m_runs[m_lists[begin + e]];
      unsigned sides = 0;
      for (unsigned a = 0; a < 3; ++a) {
        const unsigned isLow = box.min[a] < middle[a], isHigh = box.max[a] >= middle[a];
        sides |= isLow << a | isHigh << (a + 3);
        numBoth[a] += isLow & isHigh;
      }
      m_sides[e] = static_cast<std::uint8_t>(sides);
    }

    std::array<unsigned, 3> order = {0, 1, 2};
    std::stable_sort(order.begin(), order.end(), [&](unsigned a, unsigned b) { return numBoth[a] < numBoth[b]; });
    unsigned axes = 0;
    for (const unsigned a : order) {
      const float share = static_cast<float>(numBoth[a]) / static_cast<float>(num);
      if (bits[a] == 0 || share > kMaxShare || growth * (1 + share) > kMaxGrowth) continue;
      axes |= 1U << a;
      growth *= 1 + share;
    }
    return axes;
  }

  void makeLeaf(std::size_t node, std::size_t begin, std::size_t end, const std::array<unsigned, 3>& low,
                const std::array<unsigned, 3>& bits) {
    m_tree.m_nodes[node] = {static_cast<std::uint32_t>(m_tree.m_entries.size()),
                            static_cast<std::uint32_t>(end - begin)};
    auto& entries = m_tree.m_entries;
    for (std::size_t e = begin; e < end; ++e) {
      const Run& run = m_runs[m_lists[e]];
      std::uint64_t packed = std::uint64_t(run.num) << kCountShift;
      for (unsigned a = 0; a < 3; ++a) packed |= packSide(run, a, low[a], bits[a]);
      std::uint32_t words[2];
      std::memcpy(words, &packed, sizeof packed);
      entries.insert(entries.end(), words, words + 2);
    }
    for (std::size_t e = begin; e < end; ++e) entries.push_back(m_runs[m_lists[e]].first);
  }

  PiBoxTree& m_tree;
  const std::vector<Run>& m_runs;
  std::vector<std::uint32_t> m_lists;
  std::vector<std::uint8_t> m_sides;  // of the list being split
};

// Chooses the grid and sorts the runs into its bins.
class PiBoxTree::GridBuilder {
 public:
  GridBuilder(PiBoxTree& tree, const std::vector<Run>& runs) : m_tree(tree), m_runs(runs) {}

  void build() {
    const float growth = chooseGrid();
    setBins();
    count();
    place();
    fill();
    Builder builder(m_tree, m_runs);
    for (const Crowd& crowd : m_crowds)
      builder.build(crowd.bin, m_crowded.data() + crowd.first, m_crowded.data() + crowd.first + crowd.num, crowd.low,
                    m_tree.m_binBits, growth);
  }

 private:
  // A bin of more boxes than a leaf takes: its list is in m_crowded.
  struct Crowd {
    std::size_t bin;
    std::array<unsigned, 3> low;
    std::size_t first;
    std::uint32_t num;
  };

  // Gives the mean number of bins of a run.
  float chooseGrid() {
    const std::size_t step = m_runs.size() / kSampleSize + 1;
    double extents[3] = {0, 0, 0}, num = 0;
    for (std::size_t r = 0; r < m_runs.size(); r += step, ++num)
      for (int a = 0; a < 3; ++a) extents[a] += m_runs[r].max[a] - m_runs[r].min[a] + 1;
    double bins[3], product = 1;
    for (int a = 0; a < 3; ++a) {
      bins[a] = std::clamp(65536 * num / (kBinSize * extents[a]), 1.0, 65536.0);
      product *= bins[a];
    }
    double growth = 1;
    for (double most = std::max<double>(1, static_cast<double>(m_runs.size()) / kRunsPerBin);; most /= 2) {
      // Fewer bins along the axes that have many.
      while (product > most) {
        *std::max_element(bins, bins + 3) /= 1.1;
        product = bins[0] * bins[1] * bins[2];
      }
      for (unsigned a = 0; a < 3; ++a) m_tree.m_numBins[a] = std::max(1U, static_cast<unsigned>(bins[a]));
      growth = 0;
      for (std::size_t r = 0; r < m_runs.size(); r += step) {
        double overlapped = 1;
        for (unsigned a = 0; a < 3; ++a)
          overlapped *= m_tree.binOf(m_runs[r].max[a], a) - m_tree.binOf(m_runs[r].min[a], a) + 1;
        growth += overlapped;
      }
      growth /= num;
      if (growth <= kMaxGridGrowth || product <= 1) break;
    }
    return static_cast<float>(growth);
  }

  void setBins() {
    for (unsigned a = 0; a < 3; ++a) {
      const unsigned num = m_tree.m_numBins[a], width = ((1U << kBits) + num - 1) / num;
      m_tree.m_binBits[a] = static_cast<unsigned>(std::bit_width(width - 1));
      m_tree.m_binLow[a].resize(num);
      for (unsigned i = 0; i < num; ++i) m_tree.m_binLow[a][i] = ((i << kBits) + num - 1) / num;
    }
    const auto& num = m_tree.m_numBins;
    m_tree.m_nodes.assign(std::size_t(num[0]) * num[1] * num[2], Node());
  }

  // Calls `use(bin, i, j, k)` for the bins that the run overlaps.
  template <class Use>
  void forEachBin(const Run& run, Use&& use) const {
    unsigned from[3], to[3];
    for (unsigned a = 0; a < 3; ++a) {
      from[a] = m_tree.binOf(run.min[a], a);
      to[a] = m_tree.binOf(run.max[a], a);
    }
    const auto& num = m_tree.m_numBins;
    for (unsigned i = from[0]; i <= to[0]; ++i)
      for (unsigned j = from[1]; j <= to[1]; ++j) {
        const std::size_t row = (std::size_t(i) * num[1] + j) * num[2];
        for (unsigned k = from[2]; k <= to[2]; ++k) use(row + k, i, j, k);
      }
  }

  void count() {
    for (const Run& run : m_runs)
      forEachBin(run, [&](std::size_t bin, unsigned, unsigned, unsigned) { ++m_tree.m_nodes[bin].meta; });
  }

  // Lays out the entries of the bins, and the lists of those that are to become octrees.
  void place() {
    std::size_t numWords = 0, numCrowded = 0, bin = 0;
    for (const unsigned x : m_tree.m_binLow[0])
      for (const unsigned y : m_tree.m_binLow[1])
        for (const unsigned z : m_tree.m_binLow[2]) {
          Node& node = m_tree.m_nodes[bin];
          if (node.meta > kBinCapacity) {
            m_crowds.push_back({bin, {x, y, z}, numCrowded, 0});
            numCrowded += node.meta;
            node = {static_cast<std::uint32_t>(m_crowds.size() - 1), Node::kSplit};
          } else {
            node.first = static_cast<std::uint32_t>(numWords);
            numWords += 3 * std::size_t(node.meta);
          }
          ++bin;
        }
    m_tree.m_entries.resize(numWords);
    m_crowded.resize(numCrowded);
    m_filled.assign(m_tree.m_nodes.size(), 0);
  }

  void fill() {
    const auto& low = m_tree.m_binLow;
    const auto& bits = m_tree.m_binBits;
    for (const Run& run : m_runs) {
      const std::uint64_t count = std::uint64_t(run.num) << kCountShift;
      forEachBin(run, [&](std::size_t bin, unsigned i, unsigned j, unsigned k) {
        const Node& node = m_tree.m_nodes[bin];
        if (node.isSplit()) {
          Crowd& crowd = m_crowds[node.first];
          m_crowded[crowd.first + crowd.num++] = static_cast<std::uint32_t>(&run - m_runs.data());
          return;
        }
        const std::uint64_t box = count | packSide(run, 0, low[0][i], bits[0]) | packSide(run, 1, low[1][j], bits[1]) |
                                  packSide(run, 2, low[2][k], bits[2]);
        const std::uint32_t entry = m_filled[bin]++;
        std::uint32_t* words = m_tree.m_entries.data() + node.first;
        std::memcpy(words + 2 * std::size_t(entry), &box, sizeof box);
        words[2 * std::size_t(node.num()) + entry] = run.first;
      });
    }
  }

  static constexpr std::size_t kSampleSize = 1 << 16;
  static constexpr double kBinSize = 1.5;   // in mean extents of a run
  static constexpr double kRunsPerBin = 1;  // at least
  static constexpr double kMaxGridGrowth = 6;
  static constexpr std::uint32_t kBinCapacity = 128;

  PiBoxTree& m_tree;
  const std::vector<Run>& m_runs;
  std::vector<Crowd> m_crowds;
  std::vector<std::uint32_t> m_crowded;
  std::vector<std::uint32_t> m_filled;  // entries of each bin so far
};

void PiBoxTree::setDomain(const Box& domain) {
  for (int a = 0; a < 3; ++a) {
    const double extent = domain.max[a] - domain.min[a];
    m_min[a] = domain.min[a];
    m_scale[a] = extent > 0 ? 65536.0 / extent : 0;
  }
}

void PiBoxTree::buildNodes(const std::vector<Run>& runs) {
  m_nodes.clear();
  m_entries.clear();
  if (!runs.empty()) GridBuilder(*this, runs).build();
}
