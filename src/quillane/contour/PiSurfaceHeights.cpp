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

  /// Whether there may be a place in `rect`.
  bool areIn(const PiRect& rect) const {
    bool found = false;
    forEachList(rect, [&](std::size_t first, std::size_t last) { found = found || first < last; });
    return found;
  }
  /// Calls `use(number)` for all places in `rect`, and some beside it.
  template <class Use>
  void forEach(const PiRect& rect, Use&& use) const {
    forEachList(rect, [&](std::size_t first, std::size_t last) {
      for (std::size_t i = first; i < last; ++i) use(m_numbers[i]);
    });
  }

 private:
  static constexpr std::size_t kNumBoxes = 256;

  template <class Use>
  void forEachList(const PiRect& rect, Use&& use) const {
    if (!rect.overlaps(m_limit)) return;
    const std::size_t lastColumn = column(rect.maxX), firstRow = row(rect.minY), lastRow = row(rect.maxY);
    for (std::size_t c = column(rect.minX); c <= lastColumn; ++c) {
      const std::size_t* starts = m_starts.data() + c * kNumBoxes;
      use(starts[firstRow], starts[lastRow + 1]);
    }
  }

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

/// Raises the heights of the places to those of the cells, so many cells of a row of a grid at a time.
template <class View>
class HeightWalk {
 public:
  HeightWalk(const View& view, std::span<const SbVec2f> places, std::vector<float>& heights)
      : m_view(view), m_places(places), m_boxes(places), m_heights(heights) {}

  void run() {
    if constexpr (View::isGrid) {
      if (m_view.numCells() < 1) return;
      const int numY = m_view.numY();
      for (int i = 0; i + 1 < m_view.numX(); ++i) {
        for (int first = 0; first + 1 < numY; first += kRunLength) {
          const int last = std::min(first + kRunLength, numY - 1);
          PiRect rect;
          for (int j = first; j <= last; ++j) {
            extendInRow(rect, i, j);
            extendInRow(rect, i + 1, j);
          }
          if (!m_boxes.areIn(rect)) continue;
          for (int j = first; j < last; ++j) visit(m_view.cell(i, j));
        }
      }
    } else {
      m_view.forEachCell([this](const PiCellNodes& cell) { visit(cell); });
    }
  }

 private:
  static constexpr int kRunLength = 16;

  void extend(PiRect& rect, int node) const {
    const SbVec2f xy = m_view.node(node);
    rect.extendBy(xy[0], xy[1]);
  }
  void extendInRow(PiRect& rect, int i, int j) const {
    if constexpr (requires { m_view.node(i, j); }) {
      const SbVec2f xy = m_view.node(i, j);
      rect.extendBy(xy[0], xy[1]);
    } else {
      extend(rect, i * m_view.numY() + j);
    }
  }
  void visit(const PiCellNodes& cell) {
    PiRect rect;
    for (int c = 0; c < cell.num; ++c) extend(rect, cell.node[c]);
    m_boxes.forEach(rect, [&](std::size_t number) {
      SbVec3f corners[4];
      for (int c = 0; c < cell.num; ++c) corners[c] = m_view.point(cell.node[c]);
      raise(m_places[number], corners[0], corners[1], corners[2], m_heights[number]);
      if (cell.num == 4) raise(m_places[number], corners[0], corners[2], corners[3], m_heights[number]);
    });
  }

  const View& m_view;
  std::span<const SbVec2f> m_places;
  const PlaceBoxes m_boxes;
  std::vector<float>& m_heights;
};

}  // namespace

std::vector<float> PiSurfaceHeights::at(std::span<const SbVec2f> places) const {
  std::vector<float> heights(places.size(), std::numeric_limits<float>::quiet_NaN());
  if (!places.empty()) std::visit([&](const auto& view) { HeightWalk(view, places, heights).run(); }, m_surface->view);
  return heights;
}
