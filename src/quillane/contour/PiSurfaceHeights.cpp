#include "quillane/contour/PiSurfaceHeights.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "quillane/contour/PiContourSurface.h"
#include "quillane/search/PiRectTree.h"

namespace {

/// The places in a grid of boxes, as a list for each box.
class PlaceBoxes {
 public:
  explicit PlaceBoxes(std::span<const SbVec2f> places) : m_starts(kNumBoxes * kNumBoxes + 1), m_numbers(places.size()) {
    for (const SbVec2f& place : places)
      if (std::isfinite(place[0]) && std::isfinite(place[1])) m_limit.extendBy(place[0], place[1]);
    std::vector<std::size_t> boxes;
    for (const SbVec2f& place : places) {
      boxes.push_back(column(place[0]) * kNumBoxes + row(place[1]));
      ++m_starts[boxes.back() + 1];
    }
    for (std::size_t box = 1; box < m_starts.size(); ++box) m_starts[box] += m_starts[box - 1];
    std::vector<std::size_t> ends(m_starts.begin(), m_starts.end() - 1);
    for (std::size_t i = 0; i < places.size(); ++i) m_numbers[ends[boxes[i]]++] = i;
  }

  /// Calls `use(number)` for all places in `rect`, and some beside it.
  template <class Use>
  void forEach(const PiRect& rect, Use&& use) const {
    if (!rect.overlaps(m_limit)) return;
    const std::size_t lastColumn = column(rect.maxX), firstRow = row(rect.minY), lastRow = row(rect.maxY);
    for (std::size_t c = column(rect.minX); c <= lastColumn; ++c) {
      const std::size_t* starts = m_starts.data() + c * kNumBoxes;
      for (std::size_t i = starts[firstRow]; i < starts[lastRow + 1]; ++i) use(m_numbers[i]);
    }
  }

 private:
  static constexpr std::size_t kNumBoxes = 256;

  static std::size_t place(double offset, double extent) {
    // NaN goes to the first.
    const double share = extent > 0 ? offset / extent * kNumBoxes : 0;
    return share > 0 ? std::min(static_cast<std::size_t>(std::min(share, 1e6)), kNumBoxes - 1) : 0;
  }
  std::size_t column(double x) const { return place(x - m_limit.minX, m_limit.width()); }
  std::size_t row(double y) const { return place(y - m_limit.minY, m_limit.height()); }

  PiRect m_limit;
  std::vector<std::size_t> m_starts, m_numbers;
};

/// Raises `height` to that of the triangle at the place, if it is there.
void raise(const SbVec2f& place, const SbVec3f& a, const SbVec3f& b, const SbVec3f& c, float& height) {
  const auto area = [](double ax, double ay, double bx, double by) { return ax * by - ay * bx; };
  const double abX = double(b[0]) - a[0], abY = double(b[1]) - a[1], acX = double(c[0]) - a[0],
               acY = double(c[1]) - a[1], apX = double(place[0]) - a[0], apY = double(place[1]) - a[1];
  const double whole = area(abX, abY, acX, acY);
  const double ofB = area(apX, apY, acX, acY) / whole, ofC = area(abX, abY, apX, apY) / whole;
  constexpr double kRounding = -1e-9;
  if (!(ofB >= kRounding && ofC >= kRounding && ofB + ofC <= 1 - kRounding)) return;
  const auto found = static_cast<float>(a[2] + ofB * (double(b[2]) - a[2]) + ofC * (double(c[2]) - a[2]));
  if (std::isfinite(found) && !(height >= found)) height = found;
}

}  // namespace

std::vector<float> PiSurfaceHeights::at(std::span<const SbVec2f> places) const {
  std::vector<float> heights(places.size(), std::numeric_limits<float>::quiet_NaN());
  if (places.empty()) return heights;
  const PlaceBoxes boxes(places);
  std::visit(
      [&](const auto& view) {
        view.forEachCell([&](const PiCellNodes& cell) {
          PiRect rect;
          for (int c = 0; c < cell.num; ++c) {
            const SbVec2f node = view.node(cell.node[c]);
            rect.extendBy(node[0], node[1]);
          }
          boxes.forEach(rect, [&](std::size_t number) {
            SbVec3f corners[4];
            for (int c = 0; c < cell.num; ++c) corners[c] = view.point(cell.node[c]);
            raise(places[number], corners[0], corners[1], corners[2], heights[number]);
            if (cell.num == 4) raise(places[number], corners[0], corners[2], corners[3], heights[number]);
          });
        });
      },
      m_surface->view);
  return heights;
}
