#include "quillane/search/PiBoxTree.h"

#include <algorithm>
#include <bit>

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

// Builds depth first. The lists of the nodes on the way from the root, with those of their brothers, lie behind each
// other in one array.
class PiBoxTree::Builder {
 public:
  Builder(PiBoxTree& tree, const std::vector<UnitBox>& boxes, const std::vector<int>& numbers)
      : m_tree(tree), m_boxes(boxes), m_lists(numbers), m_sides(numbers.size()) {}

  // The node's list starts at `begin`; the node is the part of the cube at `low` with `bits` bits of each coordinate
  // free. `growth` tells how many times as long the lists became on the way from the root.
  void build(std::size_t node, std::size_t begin, std::size_t end, std::array<unsigned, 3> low,
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
      build(first + c, starts[c], starts[c + 1], childLow, bits, growth);
    }
    m_lists.resize(starts[0]);
  }

 private:
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
      const UnitBox& box = m_boxes[m_lists[begin + e]];
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
      const UnitBox& box = m_boxes[m_lists[e]];
      std::uint64_t packed = 0;
      for (unsigned a = 0; a < 3; ++a) {
        const unsigned last = low[a] + (1U << bits[a]) - 1U;
        const unsigned min = std::max<unsigned>(box.min[a], low[a]), max = std::min<unsigned>(box.max[a], last);
        packed |= inLeaf(min - low[a], bits[a]) << (8 * a) | (127U - inLeaf(max - low[a], bits[a])) << (8 * a + 24);
      }
      std::uint32_t words[2];
      std::memcpy(words, &packed, sizeof packed);
      entries.insert(entries.end(), words, words + 2);
    }
    for (std::size_t e = begin; e < end; ++e) entries.push_back(static_cast<std::uint32_t>(m_lists[e]));
  }

  PiBoxTree& m_tree;
  const std::vector<UnitBox>& m_boxes;
  std::vector<int> m_lists;
  std::vector<std::uint8_t> m_sides;  // of the list being split
};

void PiBoxTree::setDomain(const Box& domain) {
  for (int a = 0; a < 3; ++a) {
    const double extent = domain.max[a] - domain.min[a];
    m_min[a] = domain.min[a];
    m_scale[a] = extent > 0 ? 65536.0 / extent : 0;
  }
}

void PiBoxTree::buildNodes(const std::vector<UnitBox>& boxes, const std::vector<int>& numbers) {
  m_nodes.assign(1, Node());
  m_entries.clear();
  // What cells of a common shape come to; memory that is reserved and not touched costs nothing.
  m_entries.reserve(numbers.size() * 9);
  Builder(*this, boxes, numbers).build(0, 0, numbers.size(), {0, 0, 0}, {kBits, kBits, kBits}, 1);
}
