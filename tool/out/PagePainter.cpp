#include "out/PagePainter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "out/PageOutline.h"
#include "out/PageRaster.h"

namespace tool {

namespace {

constexpr double kSameDepth = 5e-7;           // of the depths -1 to 1, some steps of OpenGL's depth buffer
constexpr std::size_t kMostSorted = 6000;     // triangles in space; more of them become a bitmap
constexpr std::size_t kMostCorners = 400000;  // of outlines in a plane
constexpr double kSeamWidth = 1.2;            // covers every pixel that an edge runs through

uint32_t meanColor(uint32_t a, uint32_t b) {
  uint32_t mean = 0;
  for (int shift = 24; shift >= 0; shift -= 8) mean = mean << 8 | ((a >> shift & 255) + (b >> shift & 255) + 1) / 2;
  return mean;
}

int greatestDifference(uint32_t a, uint32_t b) {
  int greatest = 0;
  for (int shift = 24; shift >= 0; shift -= 8)
    greatest = std::max(greatest, std::abs(static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255)));
  return greatest;
}

PageVertex between(const PageVertex& a, const PageVertex& b, double part) {
  PageVertex out = a;
  out.x = static_cast<float>(static_cast<double>(a.x) + static_cast<double>(b.x - a.x) * part);
  out.y = static_cast<float>(static_cast<double>(a.y) + static_cast<double>(b.y - a.y) * part);
  out.z = a.z + (b.z - a.z) * part;
  out.color = 0;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const double from = a.color >> shift & 255;
    const double to = b.color >> shift & 255;
    out.color = out.color << 8 | static_cast<uint32_t>(from + (to - from) * part + 0.5);
  }
  return out;
}

double lengthOf(const PageVertex& a, const PageVertex& b) {
  return std::hypot(static_cast<double>(b.x - a.x), static_cast<double>(b.y - a.y));
}

// Joins segments into lines while colour and ends agree.
class LineChains {
 public:
  struct Chain {
    uint32_t color;
    double depth;  // of its middle
    Polyline line;
  };

  void add(const PageVertex& a, const PageVertex& b) {
    // A segment between colours becomes some pieces of one colour.
    const int difference = greatestDifference(a.color, b.color);
    const int pieces = std::clamp(std::min(difference / 12, static_cast<int>(lengthOf(a, b) / 2.0)), 1, 20);
    for (int i = 0; i < pieces; ++i) {
      const PageVertex from = i == 0 ? a : between(a, b, static_cast<double>(i) / pieces);
      const PageVertex to = i + 1 == pieces ? b : between(a, b, static_cast<double>(i + 1) / pieces);
      addPiece(from, to, meanColor(from.color, to.color));
    }
  }
  void breakOff() { m_isOpen = false; }
  std::vector<Chain>& chains() { return m_chains; }

 private:
  void addPiece(const PageVertex& a, const PageVertex& b, uint32_t color) {
    if (!m_isOpen || m_chains.back().color != color || !(m_chains.back().line.back() == a.place()))
      m_chains.push_back({color, 0.0, {a.place()}});
    m_isOpen = true;
    Chain& chain = m_chains.back();
    chain.line.push_back(b.place());
    const double count = static_cast<double>(chain.line.size() - 1);
    chain.depth += ((a.z + b.z) / 2.0 - chain.depth) / count;
  }

  std::vector<Chain> m_chains;
  bool m_isOpen = false;
};

Polyline squareRound(const PageVertex& p, double size) {
  const double x = static_cast<double>(p.x);
  const double y = static_cast<double>(p.y);
  const double h = size / 2.0;
  return {{x - h, y - h}, {x + h, y - h}, {x + h, y + h}, {x - h, y + h}};
}

class Painter {
 public:
  Painter(int width, int height, Canvas& canvas) : m_width(width), m_height(height), m_canvas(canvas) {}

  void paintInPlane(const std::vector<const PageBatch*>& group) {
    std::size_t i = 0;
    while (i < group.size()) {
      if (group[i]->kind != PageBatch::TRIANGLES) {
        paintOthers(*group[i++]);
      } else if (group[i]->isSmooth) {
        paintShaded(*group[i++]);
      } else {
        std::vector<const PageBatch*> areas;
        while (i < group.size() && group[i]->kind == PageBatch::TRIANGLES && !group[i]->isSmooth)
          areas.push_back(group[i++]);
        paintAreas(areas);
      }
    }
  }

  void paintInSpace(const std::vector<const PageBatch*>& group) {
    std::size_t triangles = 0;
    bool isSmooth = false;
    for (const PageBatch* batch : group) {
      if (batch->kind != PageBatch::TRIANGLES) continue;
      triangles += batch->vertices.size() / 3;
      isSmooth = isSmooth || batch->isSmooth;
    }
    const DepthMap depths(group, m_width, m_height);
    m_items.clear();
    // What is left of lines, points and texts is what nothing opaque hides: it may go before all triangles, unless some
    // of these let through what is behind them.
    double nearest = 2.0;
    double farthest = -2.0;
    bool isTransparent = false;
    for (const PageBatch* batch : group) {
      nearest = std::min(nearest, batch->nearest);
      farthest = std::max(farthest, batch->farthest);
      isTransparent = isTransparent || (batch->kind == PageBatch::TRIANGLES && batch->isTransparent);
    }
    m_forward = isTransparent ? 2e-3 * (farthest - nearest) : 4.0;
    if (isSmooth || triangles > kMostSorted) {
      paintBitmap(rasterised(group, m_width, m_height, false), {});
    } else {
      m_report.sortedTriangles += triangles;
      for (const PageBatch* batch : group) sortTriangles(*batch);
    }
    for (const PageBatch* batch : group) sortOthers(*batch, depths);
    std::stable_sort(m_items.begin(), m_items.end(), [](const Item& a, const Item& b) { return a.depth > b.depth; });
    for (const Item& item : m_items) paintItem(item);
  }

  const PaintReport& report() const { return m_report; }

 private:
  // Something in space, drawn after all that is farther.
  struct Item {
    double depth;
    const PageBatch* batch;
    const PageVertex* vertices;  // of a triangle or of a point
    const TextRun* text;
    Polyline line;
    uint32_t color;
  };

  void paintBitmap(const PlacedBitmap& placed, const std::vector<Polyline>& clip) {
    if (placed.bitmap.rgba.empty()) return;
    ++m_report.bitmaps;
    m_canvas.image(placed.bitmap, placed.corner, placed.pixel, clip);
  }

  void paintAreas(const std::vector<const PageBatch*>& batches) {
    OutlineMerge merge;
    for (const PageBatch* batch : batches) {
      merge.next();
      for (std::size_t i = 0; i + 2 < batch->vertices.size(); i += 3)
        merge.add(&batch->vertices[i], batch->vertices[i].color);
    }
    const std::vector<OutlineMerge::Area> areas = merge.areas();
    std::size_t corners = 0;
    for (const OutlineMerge::Area& area : areas)
      for (const Polyline& line : area.outlines) corners += line.size();
    if (corners > kMostCorners) {
      for (const PageBatch* batch : batches) paintBitmap(rasterised({batch}, m_width, m_height, false), {});
      return;
    }
    // Two areas that meet leave a hairline between them when each softens its edge: lay their line below first.
    LineStyle seam;
    seam.width = kSeamWidth;
    const bool isOpaque =
        std::none_of(batches.begin(), batches.end(), [](const PageBatch* b) { return b->isTransparent; });
    if (isOpaque)
      for (const auto& [color, lines] : merge.seams()) m_canvas.stroke(lines, seam, color);
    for (const OutlineMerge::Area& area : areas)
      if ((area.color & 255) != 0) m_canvas.fill(area.outlines, area.color, 0.0);
  }

  // Shades and textures as pixels, within an outline that stays sharp.
  void paintShaded(const PageBatch& batch) {
    OutlineMerge merge;
    for (std::size_t i = 0; i + 2 < batch.vertices.size(); i += 3) merge.add(&batch.vertices[i], 0);
    std::vector<Polyline> outline;
    for (const OutlineMerge::Area& area : merge.areas())
      outline.insert(outline.end(), area.outlines.begin(), area.outlines.end());
    std::size_t corners = 0;
    for (const Polyline& line : outline) corners += line.size();
    const bool isCut = corners <= kMostCorners;
    paintBitmap(rasterised({&batch}, m_width, m_height, isCut), isCut ? outline : std::vector<Polyline>());
  }

  void paintOthers(const PageBatch& batch) {
    if (batch.kind == PageBatch::LINES) {
      LineChains chains;
      for (std::size_t i = 0; i + 1 < batch.vertices.size(); i += 2)
        chains.add(batch.vertices[i], batch.vertices[i + 1]);
      // One path for lines that follow each other in one colour.
      std::vector<Polyline> lines;
      std::vector<LineChains::Chain>& all = chains.chains();
      for (std::size_t i = 0; i < all.size(); ++i) {
        lines.push_back(std::move(all[i].line));
        if (i + 1 < all.size() && all[i + 1].color == all[i].color && (all[i].color & 255) == 255) continue;
        m_canvas.stroke(lines, batch.style, all[i].color);
        lines.clear();
      }
    } else if (batch.kind == PageBatch::POINTS) {
      std::vector<Polyline> squares;
      for (std::size_t i = 0; i < batch.vertices.size(); ++i) {
        squares.push_back(squareRound(batch.vertices[i], batch.style.width));
        if (i + 1 < batch.vertices.size() && batch.vertices[i + 1].color == batch.vertices[i].color) continue;
        m_canvas.fill(squares, batch.vertices[i].color, 0.0);
        squares.clear();
      }
    } else {
      for (const TextRun& run : batch.texts) m_canvas.text(run);
    }
  }

  void sortTriangles(const PageBatch& batch) {
    if (batch.kind != PageBatch::TRIANGLES) return;
    for (std::size_t i = 0; i + 2 < batch.vertices.size(); i += 3) {
      const PageVertex* v = &batch.vertices[i];
      const double setBack = batch.isSetBack ? kSameDepth : 0.0;
      m_items.push_back({(v[0].z + v[1].z + v[2].z) / 3.0 + setBack, &batch, v, nullptr, {}, v->color});
    }
  }

  void sortOthers(const PageBatch& batch, const DepthMap& depths) {
    const double forward = m_forward;
    if (batch.kind == PageBatch::LINES) {
      LineChains chains;
      for (std::size_t i = 0; i + 1 < batch.vertices.size(); i += 2)
        addVisible(batch.vertices[i], batch.vertices[i + 1], depths, chains);
      for (LineChains::Chain& chain : chains.chains())
        m_items.push_back({chain.depth - forward, &batch, nullptr, nullptr, std::move(chain.line), chain.color});
    } else if (batch.kind == PageBatch::POINTS) {
      for (const PageVertex& v : batch.vertices)
        if (depths.isVisible(v)) m_items.push_back({v.z - forward, &batch, &v, nullptr, {}, v.color});
    } else if (batch.kind == PageBatch::TEXTS) {
      for (std::size_t i = 0; i < batch.texts.size(); ++i)
        if (depths.isVisible(batch.anchors[i]))
          m_items.push_back({batch.anchors[i].z - forward, &batch, nullptr, &batch.texts[i], {}, batch.texts[i].color});
    }
  }

  // Adds the parts of a segment that nothing hides, to about a pixel.
  static void addVisible(const PageVertex& a, const PageVertex& b, const DepthMap& depths, LineChains& chains) {
    const int steps = std::clamp(static_cast<int>(std::ceil(lengthOf(a, b))), 1, 20000);
    int start = -1;
    for (int i = 0; i <= steps; ++i) {
      const bool isVisible = i < steps && depths.isVisible(between(a, b, (i + 0.5) / steps));
      if (isVisible && start < 0) start = i;
      if (isVisible || start < 0) continue;
      chains.add(start == 0 ? a : between(a, b, static_cast<double>(start) / steps),
                 i == steps ? b : between(a, b, static_cast<double>(i) / steps));
      start = -1;
    }
  }

  void paintItem(const Item& item) {
    if (item.text) {
      m_canvas.text(*item.text);
    } else if (!item.line.empty()) {
      m_canvas.stroke({item.line}, item.batch->style, item.color);
    } else if (item.batch->kind == PageBatch::POINTS) {
      m_canvas.fill({squareRound(*item.vertices, item.batch->style.width)}, item.color, 0.0);
    } else {
      const PageVertex* v = item.vertices;
      m_canvas.fill({{v[0].place(), v[1].place(), v[2].place()}}, item.color, (item.color & 255) == 255 ? 0.5 : 0.0);
    }
  }

  int m_width;
  int m_height;
  Canvas& m_canvas;
  PaintReport m_report;
  std::vector<Item> m_items;
  double m_forward = 0.0;  // how far lines, points and texts go towards the viewer
};

}  // namespace

PaintReport paint(const std::vector<PageBatch>& batches, int width, int height, Canvas& canvas) {
  Painter painter(width, height, canvas);
  std::vector<const PageBatch*> all;
  std::vector<const PageBatch*> overlay;
  for (const PageBatch& batch : batches) (batch.isOverlay ? overlay : all).push_back(&batch);

  // Groups of batches whose depths overlap, the farthest group first.
  std::stable_sort(all.begin(), all.end(),
                   [](const PageBatch* a, const PageBatch* b) { return a->farthest > b->farthest; });
  for (std::size_t start = 0; start < all.size();) {
    double nearest = all[start]->nearest;
    std::size_t end = start + 1;
    while (end < all.size() && all[end]->farthest >= nearest - kSameDepth)
      nearest = std::min(nearest, all[end++]->nearest);
    std::vector<const PageBatch*> group(all.begin() + static_cast<std::ptrdiff_t>(start),
                                        all.begin() + static_cast<std::ptrdiff_t>(end));
    const double depth = group.front()->farthest - nearest;
    // By order of the scene again; what a polygon offset sets back comes first.
    std::sort(group.begin(), group.end(), [](const PageBatch* a, const PageBatch* b) {
      return a->isSetBack != b->isSetBack ? a->isSetBack : a < b;
    });
    if (depth <= 8.0 * kSameDepth)
      painter.paintInPlane(group);
    else
      painter.paintInSpace(group);
    start = end;
  }
  painter.paintInPlane(overlay);
  return painter.report();
}

}  // namespace tool
