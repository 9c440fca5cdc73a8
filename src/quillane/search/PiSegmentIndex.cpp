#include "quillane/search/PiSegmentIndex.h"

PiSegmentIndex::PiSegmentIndex(std::span<const PiPolyline> lines) {
  std::vector<PiRect> rects;
  for (std::size_t line = 0; line < lines.size(); ++line) {
    const PiPolyline& points = lines[line];
    for (std::size_t first = 0; first + 1 < points.size(); first += kRunLength) {
      const std::size_t num = std::min(kRunLength, points.size() - 1 - first);
      m_runs.push_back({points.data() + first, num, line});
      PiRect rect;
      for (std::size_t i = 0; i <= num; ++i) rect.extendBy(points[first + i]);
      rects.push_back(rect);
    }
  }
  m_tree = PiRectTree(rects);
}
