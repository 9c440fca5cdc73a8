#ifndef ORMELLE_PIRECTTREE_H
#define ORMELLE_PIRECTTREE_H

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include <Inventor/SbVec3f.h>

/// A rectangle along the axes of the plane, to which its sides belong; at first an empty one.
struct PiRect {
  static constexpr double kInfinity = std::numeric_limits<double>::infinity();

  double minX = kInfinity, minY = kInfinity, maxX = -kInfinity, maxY = -kInfinity;

  void extendBy(double x, double y) {
    minX = std::min(minX, x), maxX = std::max(maxX, x);
    minY = std::min(minY, y), maxY = std::max(maxY, y);
  }
  void extendBy(const SbVec3f& point) { extendBy(point[0], point[1]); }
  void extendBy(const PiRect& rect) {
    minX = std::min(minX, rect.minX), maxX = std::max(maxX, rect.maxX);
    minY = std::min(minY, rect.minY), maxY = std::max(maxY, rect.maxY);
  }
  bool overlaps(const PiRect& rect) const {
    return minX <= rect.maxX && rect.minX <= maxX && minY <= rect.maxY && rect.minY <= maxY;
  }
  double width() const { return maxX - minX; }
  double height() const { return maxY - minY; }
};

/// Finds the rectangles of a fixed set that overlap another: a packed R-tree, whose leaves are sorted along the curve
/// of Morton through their middles. A search visits about the logarithm of their number besides what it finds.
class PiRectTree {
 public:
  PiRectTree() = default;
  /// Of finite rectangles, numbered as they come.
  explicit PiRectTree(const std::vector<PiRect>& rects);

  /// Calls `accept(number)` for the rectangles that overlap `region`, in no particular order, until one is accepted;
  /// then true. A region, such as a rectangle, tells by `overlaps(rect)`.
  template <class Region, class Accept>
  bool any(const Region& region, Accept&& accept) const {
    return !m_levels.empty() && anyOf(m_levels.size() - 1, 0, m_levels.back().size(), region, accept);
  }

 private:
  static constexpr std::size_t kFanOut = 8;

  template <class Region, class Accept>
  bool anyOf(std::size_t level, std::size_t first, std::size_t last, const Region& region, Accept& accept) const {
    for (std::size_t i = first; i < last; ++i) {
      if (!region.overlaps(m_levels[level][i])) continue;
      if (level == 0) {
        if (accept(m_numbers[i])) return true;
        continue;
      }
      const std::size_t below = i * kFanOut;
      if (anyOf(level - 1, below, std::min(below + kFanOut, m_levels[level - 1].size()), region, accept)) return true;
    }
    return false;
  }

  std::vector<std::size_t> m_numbers;         // of the rectangles of level 0
  std::vector<std::vector<PiRect>> m_levels;  // entry i holds entries kFanOut * i and behind of the level below
};

#endif
