#ifndef ORMELLE_PIBOXTREE_H
#define ORMELLE_PIBOXTREE_H

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

/// Finds the boxes that hold a point: a grid over numbered boxes, whose bins are octrees where many boxes crowd.
///
/// Space is an integer cube of 2^16 units a side over the domain. The bins of the grid are about as large as the boxes;
/// a sort by counting fills them, so that building takes a few passes over the boxes. A box is listed in every leaf
/// that it overlaps, by rising number, so the leaf that holds a point lists every box that holds it. Beside the number
/// stands the box itself in units of a 128th of the leaf, by which all but a few boxes are passed over without a look
/// at the mesh. Neighbouring numbers whose boxes nearly coincide, such as those of the tetrahedra of one hexahedron,
/// are listed as one run.
///
/// The nodes of the octrees are split along those axes only along which splitting separates their boxes: thin or long
/// boxes then cost no more than cubes. The lists together never exceed kMaxGrowth entries a box.
class PiBoxTree {
 public:
  /// Minimum and maximum of x, y and z, in double so that no extent of floats overflows.
  struct Box {
    double min[3], max[3];
  };

  /// Lists the boxes 0 to `num - 1`: `boxOf(number, box)` fills in the box and returns true, or returns false to leave
  /// the number out. Infinite limits are allowed. What lies outside the domain counts as lying on its border.
  template <class BoxOf>
  void build(const Box& domain, int num, BoxOf&& boxOf) {
    setDomain(domain);
    std::vector<Run> runs;
    runs.reserve(static_cast<std::size_t>(num));
    for (int i = 0; i < num; ++i) {
      Box box;
      if (!boxOf(i, box)) continue;
      Run run;
      for (int a = 0; a < 3; ++a) {
        run.min[a] = toUnits(box.min[a], a);
        run.max[a] = toUnits(box.max[a], a);
      }
      run.first = static_cast<std::uint32_t>(i);
      if (runs.empty() || !runs.back().extendBy(run)) runs.push_back(run);
    }
    buildNodes(runs);
  }

  /// Calls `accept(number)` for the boxes round the point, by rising number, until it returns true; gives that number,
  /// or -1. A few boxes that end just beside the point, or have the number of a neighbour, are asked as well. Before,
  /// `announce(number)` is called for each run, by which the caller may prefetch.
  template <class Accept, class Announce>
  int findFirst(const float (&point)[3], Accept&& accept, Announce&& announce) const {
    if (m_nodes.empty()) return -1;
    std::array<unsigned, 3> p, bits = m_binBits;
    std::size_t bin = 0;
    for (unsigned a = 0; a < 3; ++a) {
      const unsigned units = toUnits(point[a], static_cast<int>(a)), i = binOf(units, a);
      bin = bin * m_numBins[a] + i;
      p[a] = units - m_binLow[a][i];
    }
    const Node* node = &m_nodes[bin];
    while (node->isSplit()) node = &m_nodes[node->first + childOf(node->splitAxes(), p, bits)];

    const std::uint64_t place = packPlace(p, bits);
    const std::uint32_t num = node->num();
    const std::uint32_t* boxes = m_entries.data() + node->first;
    const std::uint32_t* firsts = boxes + 2 * std::size_t(num);
    for (std::uint32_t line = 0; line < std::min(3 * num, 256U); line += 16) __builtin_prefetch(boxes + line);
    for (std::uint32_t begin = 0; begin < num; begin += 64) {
      const std::uint32_t numHere = std::min(num - begin, 64U);
      std::uint64_t inside = 0;
      for (std::uint32_t e = 0; e < numHere; ++e)
        inside |= std::uint64_t(isInside(place, boxAt(boxes, begin + e))) << e;
      for (std::uint64_t left = inside; left; left &= left - 1)
        announce(static_cast<int>(firsts[begin + static_cast<unsigned>(std::countr_zero(left))]));
      for (std::uint64_t left = inside; left; left &= left - 1) {
        const std::uint32_t e = begin + static_cast<unsigned>(std::countr_zero(left));
        const int first = static_cast<int>(firsts[e]), end = first + static_cast<int>(boxAt(boxes, e) >> kCountShift);
        for (int number = first; number < end; ++number)
          if (accept(number)) return number;
      }
    }
    return -1;
  }
  template <class Accept>
  int findFirst(const float (&point)[3], Accept&& accept) const {
    return findFirst(point, accept, [](int) {});
  }

  std::size_t numEntries() const { return m_entries.size() / 3; }
  std::size_t numNodes() const { return m_nodes.size(); }
  std::size_t memorySize() const { return m_nodes.size() * sizeof(Node) + m_entries.size() * sizeof(m_entries[0]); }

 private:
  static constexpr unsigned kBits = 16;      // of a coordinate
  static constexpr unsigned kBoxBits = 7;    // of a coordinate of a box in a leaf
  static constexpr int kLeafCapacity = 100;  // a larger leaf is split, if that separates its boxes
  static constexpr float kMaxGrowth = 12;
  static constexpr float kMaxShare = 0.6F;  // of boxes on both sides, for an axis to be worth a split
  static constexpr unsigned kCountShift = 48;

  // Numbers whose boxes nearly coincide, and a box round them in units.
  struct Run {
    std::uint16_t min[3], max[3];
    std::uint32_t first;
    std::uint32_t num = 1;

    /// Appends the next number, if the box grows little by it.
    bool extendBy(const Run& next) {
      if (next.first != first + num || num == kMaxRun) return false;
      Run sum = *this;
      for (int a = 0; a < 3; ++a) {
        sum.min[a] = std::min(min[a], next.min[a]);
        sum.max[a] = std::max(max[a], next.max[a]);
        const int size = std::min(max[a] - min[a], next.max[a] - next.min[a]);
        if (sum.max[a] - sum.min[a] > size + size / 4) return false;
      }
      ++sum.num;
      *this = sum;
      return true;
    }
    static constexpr std::uint32_t kMaxRun = 255;
  };
  // Inner node: index of the first child, and the axes as bits. Leaf: where its entries start, and their number.
  struct Node {
    static constexpr std::uint32_t kSplit = 0x80000000U;
    std::uint32_t first = 0;
    std::uint32_t meta = 0;
    bool isSplit() const { return meta & kSplit; }
    unsigned splitAxes() const { return meta & 7U; }
    std::uint32_t num() const { return meta; }
  };
  class Builder;
  class GridBuilder;

  void setDomain(const Box& domain);
  void buildNodes(const std::vector<Run>& runs);

  // Rising with c, so that a point inside a box is inside it in units too, whatever the rounding. NaN gives 0.
  std::uint16_t toUnits(double c, int axis) const {
    const double units = (c - m_min[axis]) * m_scale[axis];
    return !(units > 0) ? 0 : units < 65535.0 ? static_cast<std::uint16_t>(units) : std::uint16_t(65535);
  }
  unsigned binOf(unsigned units, unsigned axis) const { return (units * m_numBins[axis]) >> kBits; }
  // Which child holds the point; takes the bits that tell off `bits`.
  static unsigned childOf(unsigned axes, const std::array<unsigned, 3>& p, std::array<unsigned, 3>& bits) {
    if (axes == 7U) {
      const unsigned x = (p[0] >> --bits[0]) & 1U, y = (p[1] >> --bits[1]) & 1U, z = (p[2] >> --bits[2]) & 1U;
      return x | y << 1 | z << 2;
    }
    unsigned child = 0, place = 0;
    for (unsigned a = 0; a < 3; ++a)
      if (axes >> a & 1U) child |= ((p[a] >> --bits[a]) & 1U) << place++;
    return child;
  }
  // A coordinate of `bits` low bits, relative to its leaf, in kBoxBits.
  static std::uint64_t inLeaf(unsigned c, unsigned bits) { return bits > kBoxBits ? c >> (bits - kBoxBits) : c; }
  // Six bytes of 7 bits: min of a box, and the maximum from above; a point the same way. A point is inside when none of
  // its bytes is below that of the box, which one subtraction tells with the eighth bits as guards. Over them a box has
  // the number of boxes of its run.
  static std::uint64_t packPlace(const std::array<unsigned, 3>& p, const std::array<unsigned, 3>& bits) {
    std::uint64_t packed = kGuards;
    for (unsigned a = 0; a < 3; ++a) {
      const std::uint64_t c = inLeaf(p[a] & ((1U << bits[a]) - 1U), bits[a]);
      packed |= c << (8 * a) | (127U - c) << (8 * a + 24);
    }
    return packed;
  }
  // The part of a box along one axis, in the leaf that starts at `low` and has 2^bits units.
  static std::uint64_t packSide(const Run& box, unsigned axis, unsigned low, unsigned bits) {
    const unsigned last = low + (1U << bits) - 1U;
    const unsigned min = std::max<unsigned>(box.min[axis], low), max = std::min<unsigned>(box.max[axis], last);
    return inLeaf(min - low, bits) << (8 * axis) | (127U - inLeaf(max - low, bits)) << (8 * axis + 24);
  }
  static std::uint64_t boxAt(const std::uint32_t* boxes, std::uint32_t entry) {
    std::uint64_t box;
    std::memcpy(&box, boxes + 2 * std::size_t(entry), sizeof box);
    return box;
  }
  static bool isInside(std::uint64_t place, std::uint64_t box) { return ((place - box) & kGuards) == kGuards; }
  static constexpr std::uint64_t kGuards = 0x808080808080ULL;

  double m_min[3] = {0, 0, 0};
  double m_scale[3] = {0, 0, 0};
  // The grid: how many bins along each axis, where they start, and of how many bits a coordinate in a bin is.
  std::array<unsigned, 3> m_numBins{1, 1, 1}, m_binBits{kBits, kBits, kBits};
  std::array<std::vector<unsigned>, 3> m_binLow;
  std::vector<Node> m_nodes;  // those of the bins first
  // Leaf after leaf: the packed boxes, two words each, then the numbers. Behind each other they cost one miss of the
  // cache, not two.
  std::vector<std::uint32_t> m_entries;
};

#endif
