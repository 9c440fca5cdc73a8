#include "quillane/search/PiRectTree.h"

#include <cstdint>
#include <utility>

namespace {

/// The 16 low bits of `units` with a gap before each.
std::uint32_t spreadBits(std::uint32_t units) {
  units = (units | units << 8) & 0x00FF00FFU;
  units = (units | units << 4) & 0x0F0F0F0FU;
  units = (units | units << 2) & 0x33333333U;
  return (units | units << 1) & 0x55555555U;
}

/// Where the middle of a side from `min` to `max` stands along `all`, in 16 bits.
std::uint32_t placeOnAxis(double min, double max, double allMin, double allExtent) {
  const double share = allExtent > 0 ? (min / 2 + max / 2 - allMin) / allExtent : 0;
  return static_cast<std::uint32_t>(std::clamp(share, 0.0, 1.0) * 65535);
}

}  // namespace

PiRectTree::PiRectTree(const std::vector<PiRect>& rects) {
  if (rects.empty()) return;
  PiRect all;
  for (const PiRect& rect : rects) all.extendBy(rect);
  std::vector<std::pair<std::uint32_t, std::size_t>> order;
  order.reserve(rects.size());
  for (std::size_t i = 0; i < rects.size(); ++i) {
    const PiRect& rect = rects[i];
    const std::uint32_t code = spreadBits(placeOnAxis(rect.minX, rect.maxX, all.minX, all.width())) |
                               spreadBits(placeOnAxis(rect.minY, rect.maxY, all.minY, all.height())) << 1;
    order.emplace_back(code, i);
  }
  std::sort(order.begin(), order.end());

  m_numbers.reserve(rects.size());
  m_levels.emplace_back();
  m_levels.back().reserve(rects.size());
  for (const auto& [code, number] : order) {
    m_numbers.push_back(number);
    m_levels.back().push_back(rects[number]);
  }
  while (m_levels.back().size() > kFanOut) {
    const std::vector<PiRect>& below = m_levels.back();
    std::vector<PiRect> level((below.size() + kFanOut - 1) / kFanOut);
    for (std::size_t i = 0; i < below.size(); ++i) level[i / kFanOut].extendBy(below[i]);
    m_levels.push_back(std::move(level));
  }
}
