#ifndef ORMELLE_PIBOXTREE_H
#define ORMELLE_PIBOXTREE_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

/// Finds the boxes that hold a point: an octree over numbered boxes.
///
/// Space is an integer cube of 2^16 units a side over the domain. A box is listed in every leaf that it overlaps, by
/// rising number, so the leaf that holds a point lists every box that holds it. Beside the number stands the box itself
/// in units of a 128th of the leaf, by which all but a few boxes are passed over without a look at the mesh.
///
/// A node is split along those axes only along which splitting separates its boxes: thin or long boxes then cost no
/// more than cubes. The lists together never exceed kMaxGrowth entries a box.
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
    std::vector<UnitBox> boxes(num);
    std::vector<int> numbers;
    numbers.reserve(num);
    for (int i = 0; i < num; ++i) {
      Box box;
      if (!boxOf(i, box)) continue;
      for (int a = 0; a < 3; ++a) {
        boxes[i].min[a] = toUnits(box.min[a], a);
        boxes[i].max[a] = toUnits(box.max[a], a);
      }
      numbers.push_back(i);
    }
    buildNodes(boxes, numbers);
  }

  /// Calls `accept(number)` for the boxes round the point, by rising number, until it returns true; gives that number,
  /// or -1. A few boxes that end just beside the point are asked as well.
  template <class Accept>
  int findFirst(const float (&point)[3], Accept&& accept) const {
    if (m_nodes.empty()) return -1;
    const std::array<unsigned, 3> p = {toUnits(point[0], 0), toUnits(point[1], 1), toUnits(point[2], 2)};
    std::array<unsigned, 3> bits = {kBits, kBits, kBits};
    const Node* node = m_nodes.data();
    while (node->isSplit()) node = &m_nodes[node->first + childOf(node->splitAxes(), p, bits)];
    const std::uint64_t place = packPlace(p, bits);
    const std::uint32_t num = node->num();
    const std::uint32_t* boxes = m_entries.data() + node->first;
    const std::uint32_t* numbers = boxes + 2 * std::size_t(num);
    for (std::uint32_t line = 0; line < std::min(3 * num, 256U); line += 16) __builtin_prefetch(boxes + line);
    for (std::uint32_t e = 0; e < num; ++e) {
      std::uint64_t box;
      std::memcpy(&box, boxes + 2 * std::size_t(e), sizeof box);
      if (!isInside(place, box)) continue;
      const int number = static_cast<int>(numbers[e]);
      if (accept(number)) return number;
    }
    return -1;
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

  struct UnitBox {
    std::uint16_t min[3], max[3];
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

  void setDomain(const Box& domain);
  void buildNodes(const std::vector<UnitBox>& boxes, const std::vector<int>& numbers);

  // Rising with c, so that a point inside a box is inside it in units too, whatever the rounding. NaN gives 0.
  std::uint16_t toUnits(double c, int axis) const {
    const double units = (c - m_min[axis]) * m_scale[axis];
    return !(units > 0) ? 0 : units < 65535.0 ? static_cast<std::uint16_t>(units) : std::uint16_t(65535);
  }
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
  // its bytes is below that of the box, which one subtraction tells with the eighth bits as guards.
  static std::uint64_t packPlace(const std::array<unsigned, 3>& p, const std::array<unsigned, 3>& bits) {
    std::uint64_t packed = kGuards;
    for (unsigned a = 0; a < 3; ++a) {
      const std::uint64_t c = inLeaf(p[a] & ((1U << bits[a]) - 1U), bits[a]);
      packed |= c << (8 * a) | (127U - c) << (8 * a + 24);
    }
    return packed;
  }
  static bool isInside(std::uint64_t place, std::uint64_t box) { return ((place - box) & kGuards) == kGuards; }

  static constexpr std::uint64_t kGuards = 0x808080808080ULL;

  double m_min[3] = {0, 0, 0};
  double m_scale[3] = {0, 0, 0};
  std::vector<Node> m_nodes;
  // Leaf after leaf: the packed boxes, two words each, then the numbers. Behind each other they cost one miss of the
  // cache, not two.
  std::vector<std::uint32_t> m_entries;
};

#endif
