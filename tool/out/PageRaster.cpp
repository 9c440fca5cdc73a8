#include "out/PageRaster.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tool {

namespace {

constexpr double kMostPixels = 12e6;
constexpr double kFinest = 2.0;  // pixels of a bitmap to one of the page: 192 an inch for a page of 96
constexpr int kSamples = 2;      // across and down

struct Triangle {
  const PageVertex* v;
  const ShapeTexture* texture;
  double depth;
  bool isTransparent;
};

// Calls `mark(column, row, depth, weights)` for every sample that the triangle covers, samples lying in the middles of
// cells of 1 / scale page pixels from `corner`; rows from `firstRow` to before `endRow`.
template <class Mark>
void cover(const PageVertex* v, const PagePoint& corner, double scale, int columns, int firstRow, int endRow,
           Mark mark) {
  double x[3];
  double y[3];
  for (int i = 0; i < 3; ++i) {
    x[i] = (static_cast<double>(v[i].x) - corner.x) * scale - 0.5;
    y[i] = (static_cast<double>(v[i].y) - corner.y) * scale - 0.5;
  }
  const double area = (x[1] - x[0]) * (y[2] - y[0]) - (x[2] - x[0]) * (y[1] - y[0]);
  if (!(std::abs(area) > 1e-12)) return;
  const double top = std::min({y[0], y[1], y[2]});
  const double bottom = std::max({y[0], y[1], y[2]});
  const int first =
      static_cast<int>(std::clamp(std::ceil(top), static_cast<double>(firstRow), static_cast<double>(endRow)));
  const int last = static_cast<int>(
      std::clamp(std::floor(bottom), static_cast<double>(firstRow) - 1.0, static_cast<double>(endRow) - 1.0));
  for (int row = first; row <= last; ++row) {
    double left = std::numeric_limits<double>::max();
    double right = std::numeric_limits<double>::lowest();
    for (int i = 0; i < 3; ++i) {
      const int j = (i + 1) % 3;
      const double low = std::min(y[i], y[j]);
      const double high = std::max(y[i], y[j]);
      if (row < low || row > high) continue;
      if (high - low < 1e-12) {
        left = std::min({left, x[i], x[j]});
        right = std::max({right, x[i], x[j]});
        continue;
      }
      const double at = x[i] + (x[j] - x[i]) * (row - y[i]) / (y[j] - y[i]);
      left = std::min(left, at);
      right = std::max(right, at);
    }
    if (left > right) continue;
    const int from = static_cast<int>(std::clamp(std::ceil(left), 0.0, static_cast<double>(columns)));
    const int to = static_cast<int>(std::clamp(std::floor(right), -1.0, static_cast<double>(columns) - 1.0));
    for (int column = from; column <= to; ++column) {
      double w[3];
      w[1] = ((column - x[0]) * (y[2] - y[0]) - (x[2] - x[0]) * (row - y[0])) / area;
      w[2] = ((x[1] - x[0]) * (row - y[0]) - (column - x[0]) * (y[1] - y[0])) / area;
      w[0] = 1.0 - w[1] - w[2];
      mark(column, row, w[0] * v[0].z + w[1] * v[1].z + w[2] * v[2].z, w);
    }
  }
}

uint32_t colorAt(const Triangle& triangle, const double (&w)[3]) {
  const PageVertex* v = triangle.v;
  uint32_t color = 0;
  for (int shift = 24; shift >= 0; shift -= 8) {
    double channel = 0.0;
    for (int i = 0; i < 3; ++i) channel += w[i] * (v[i].color >> shift & 255);
    color = color << 8 | static_cast<uint32_t>(std::clamp(channel, 0.0, 255.0) + 0.5);
  }
  if (!triangle.texture) return color;
  const auto mean = [&](float a, float b, float c) {
    return static_cast<float>(w[0] * static_cast<double>(a) + w[1] * static_cast<double>(b) +
                              w[2] * static_cast<double>(c));
  };
  return triangle.texture->combined(color, SbVec2f(mean(v[0].s, v[1].s, v[2].s), mean(v[0].t, v[1].t, v[2].t)), true);
}

// The rows of samples that make some rows of pixels, and what they hold so far, colours premultiplied.
struct Strip {
  int columns;
  int firstRow;
  int endRow;
  std::vector<std::array<float, 4>> colors;
  std::vector<double> depths;

  void clear(int first, int end) {
    firstRow = first;
    endRow = end;
    const std::size_t size = static_cast<std::size_t>(columns) * static_cast<std::size_t>(end - first);
    colors.assign(size, {0.0f, 0.0f, 0.0f, 0.0f});
    depths.assign(size, std::numeric_limits<double>::max());
  }

  void draw(const Triangle& triangle, const PagePoint& corner, double scale) {
    cover(triangle.v, corner, scale, columns, firstRow, endRow,
          [&](int column, int row, double z, const double(&w)[3]) {
            const std::size_t i = static_cast<std::size_t>(row - firstRow) * static_cast<std::size_t>(columns) +
                                  static_cast<std::size_t>(column);
            if (z > depths[i]) return;
            const uint32_t color = colorAt(triangle, w);
            const float alpha = static_cast<float>(color & 255) / 255.0f;
            if (alpha >= 1.0f) depths[i] = z;
            for (int c = 0; c < 4; ++c) {
              const float channel = c == 3 ? 1.0f : static_cast<float>(color >> (24 - 8 * c) & 255) / 255.0f;
              float& out = colors[i][static_cast<std::size_t>(c)];
              out = channel * alpha + out * (1.0f - alpha);
            }
          });
  }
};

// Fills pixels that nothing covers from covered neighbours, a few times over.
void spread(Bitmap& bitmap) {
  const int width = bitmap.width;
  const int height = bitmap.height;
  for (int round = 0; round < 3; ++round) {
    const std::vector<uint8_t> before = bitmap.rgba;
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) {
        const auto at = [&](int column, int row) {
          return 4 *
                 (static_cast<std::size_t>(row) * static_cast<std::size_t>(width) + static_cast<std::size_t>(column));
        };
        if (before[at(x, y) + 3] != 0) continue;
        std::array<uint32_t, 4> sum{};
        uint32_t count = 0;
        for (int row = std::max(y - 1, 0); row <= std::min(y + 1, height - 1); ++row)
          for (int column = std::max(x - 1, 0); column <= std::min(x + 1, width - 1); ++column) {
            if (before[at(column, row) + 3] == 0) continue;
            ++count;
            for (std::size_t c = 0; c < 4; ++c) sum[c] += before[at(column, row) + c];
          }
        for (std::size_t c = 0; count > 0 && c < 4; ++c)
          bitmap.rgba[at(x, y) + c] = static_cast<uint8_t>((sum[c] + count / 2) / count);
      }
  }
}

bool isOpaque(const PageVertex* v) { return (v[0].color & v[1].color & v[2].color & 255) == 255; }

}  // namespace

PlacedBitmap rasterised(const std::vector<const PageBatch*>& batches, int width, int height, bool isSpread) {
  std::vector<Triangle> triangles;
  double left = width;
  double right = 0.0;
  double top = height;
  double bottom = 0.0;
  for (const PageBatch* batch : batches) {
    if (batch->kind != PageBatch::TRIANGLES) continue;
    for (std::size_t i = 0; i + 2 < batch->vertices.size(); i += 3) {
      const PageVertex* v = &batch->vertices[i];
      triangles.push_back(
          {v, batch->texture ? &*batch->texture : nullptr, std::max({v[0].z, v[1].z, v[2].z}), !isOpaque(v)});
      for (int k = 0; k < 3; ++k) {
        left = std::min(left, static_cast<double>(v[k].x));
        right = std::max(right, static_cast<double>(v[k].x));
        top = std::min(top, static_cast<double>(v[k].y));
        bottom = std::max(bottom, static_cast<double>(v[k].y));
      }
    }
  }
  left = std::floor(std::max(left, 0.0)) - 1.0;
  top = std::floor(std::max(top, 0.0)) - 1.0;
  right = std::ceil(std::min(right, static_cast<double>(width))) + 1.0;
  bottom = std::ceil(std::min(bottom, static_cast<double>(height))) + 1.0;
  PlacedBitmap out;
  if (right - left <= 2.0 || bottom - top <= 2.0) return out;
  // Opaque ones first, then the others from far to near.
  std::stable_sort(triangles.begin(), triangles.end(), [](const Triangle& a, const Triangle& b) {
    if (a.isTransparent != b.isTransparent) return !a.isTransparent;
    return a.isTransparent && a.depth > b.depth;
  });

  const double scale = std::min(kFinest, std::sqrt(kMostPixels / ((right - left) * (bottom - top))));
  out.corner = {left, top};
  out.pixel = 1.0 / scale;
  out.bitmap.width = std::max(1, static_cast<int>(std::ceil((right - left) * scale)));
  out.bitmap.height = std::max(1, static_cast<int>(std::ceil((bottom - top) * scale)));
  out.bitmap.rgba.assign(4 * static_cast<std::size_t>(out.bitmap.width) * static_cast<std::size_t>(out.bitmap.height),
                         0);

  constexpr int kRows = 64;
  Strip strip{out.bitmap.width * kSamples, 0, 0, {}, {}};
  for (int first = 0; first < out.bitmap.height; first += kRows) {
    const int end = std::min(first + kRows, out.bitmap.height);
    strip.clear(first * kSamples, end * kSamples);
    const double upper = top + first / scale;
    const double lower = top + end / scale;
    for (const Triangle& triangle : triangles) {
      const PageVertex* v = triangle.v;
      if (static_cast<double>(std::max({v[0].y, v[1].y, v[2].y})) < upper ||
          static_cast<double>(std::min({v[0].y, v[1].y, v[2].y})) > lower)
        continue;
      strip.draw(triangle, out.corner, scale * kSamples);
    }
    for (int y = first; y < end; ++y)
      for (int x = 0; x < out.bitmap.width; ++x) {
        std::array<float, 4> sum{};
        for (int row = 0; row < kSamples; ++row)
          for (int column = 0; column < kSamples; ++column) {
            const std::size_t i =
                static_cast<std::size_t>((y - first) * kSamples + row) * static_cast<std::size_t>(strip.columns) +
                static_cast<std::size_t>(x * kSamples + column);
            for (std::size_t c = 0; c < 4; ++c) sum[c] += strip.colors[i][c];
          }
        uint8_t* pixel =
            out.bitmap.rgba.data() + 4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(out.bitmap.width) +
                                          static_cast<std::size_t>(x));
        const float alpha = sum[3];
        if (!(alpha > 0.0f)) continue;
        for (std::size_t c = 0; c < 3; ++c)
          pixel[c] = static_cast<uint8_t>(std::clamp(sum[c] / alpha * 255.0f + 0.5f, 0.0f, 255.0f));
        const float whole = isSpread && alpha > 0.0f && isOpaque(triangles.front().v) && !triangles.back().isTransparent
                                ? 1.0f
                                : alpha / (kSamples * kSamples);
        pixel[3] = static_cast<uint8_t>(std::clamp(whole * 255.0f + 0.5f, 0.0f, 255.0f));
      }
  }
  if (isSpread) spread(out.bitmap);
  return out;
}

DepthMap::DepthMap(const std::vector<const PageBatch*>& batches, int width, int height) {
  m_scale = std::min(1.0, std::sqrt(4e6 / (static_cast<double>(width) * height)));
  m_columns = std::max(1, static_cast<int>(std::ceil(width * m_scale)));
  m_rows = std::max(1, static_cast<int>(std::ceil(height * m_scale)));
  m_depths.assign(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows), 2.0f);
  double nearest = 2.0;
  double farthest = -2.0;
  for (const PageBatch* batch : batches) {
    nearest = std::min(nearest, batch->nearest);
    farthest = std::max(farthest, batch->farthest);
    if (batch->kind != PageBatch::TRIANGLES) continue;
    for (std::size_t i = 0; i + 2 < batch->vertices.size(); i += 3) {
      const PageVertex* v = &batch->vertices[i];
      if (!isOpaque(v)) continue;
      cover(v, PagePoint(), m_scale, m_columns, 0, m_rows, [&](int column, int row, double z, const double(&)[3]) {
        float& depth = m_depths[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns) +
                                static_cast<std::size_t>(column)];
        depth = std::min(depth, static_cast<float>(z));
      });
    }
  }
  m_tolerance = 2e-3 * std::max(farthest - nearest, 0.0) + 1e-6;
}

// Seen if it is in front at any of the nine places round it: what lies on a steep surface, or ends at its edge, is.
bool DepthMap::isVisible(const PageVertex& vertex) const {
  const int column = static_cast<int>(std::floor(static_cast<double>(vertex.x) * m_scale));
  const int row = static_cast<int>(std::floor(static_cast<double>(vertex.y) * m_scale));
  for (int y = row - 1; y <= row + 1; ++y)
    for (int x = column - 1; x <= column + 1; ++x) {
      if (x < 0 || y < 0 || x >= m_columns || y >= m_rows) return true;
      const float depth =
          m_depths[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_columns) + static_cast<std::size_t>(x)];
      if (vertex.z <= static_cast<double>(depth) + m_tolerance) return true;
    }
  return false;
}

}  // namespace tool
