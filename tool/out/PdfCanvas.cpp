// PDF by Cairo, which embeds the fonts that the machine has; text stays text.

#include "out/Canvas.h"

#ifdef ORMELLE_HAS_CAIRO

#include <cairo-pdf.h>
#include <cairo.h>

#include <algorithm>
#include <cmath>

namespace tool {

namespace {

class PdfCanvas : public Canvas {
 public:
  PdfCanvas(int width, int height, double dpi) {
    const double unit = 72.0 / dpi;
    m_surface = cairo_pdf_surface_create_for_stream(&PdfCanvas::keep, this, width * unit, height * unit);
    m_cairo = cairo_create(m_surface);
    cairo_scale(m_cairo, unit, unit);
    cairo_set_line_join(m_cairo, CAIRO_LINE_JOIN_ROUND);
    cairo_set_fill_rule(m_cairo, CAIRO_FILL_RULE_WINDING);
  }
  ~PdfCanvas() override {
    cairo_destroy(m_cairo);
    cairo_surface_destroy(m_surface);
  }
  PdfCanvas(const PdfCanvas&) = delete;
  PdfCanvas& operator=(const PdfCanvas&) = delete;

  void fill(const std::vector<Polyline>& outlines, uint32_t color, double rim) override {
    setColor(color);
    addPath(outlines, true);
    if (rim > 0.0) {
      cairo_fill_preserve(m_cairo);
      cairo_set_line_width(m_cairo, rim);
      cairo_stroke(m_cairo);
    } else {
      cairo_fill(m_cairo);
    }
  }

  void stroke(const std::vector<Polyline>& lines, const LineStyle& style, uint32_t color) override {
    setColor(color);
    addPath(lines, false);
    cairo_set_line_width(m_cairo, style.width);
    cairo_set_line_cap(m_cairo, style.isRound ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
    cairo_set_dash(m_cairo, style.dashes.data(), static_cast<int>(style.dashes.size()), 0.0);
    cairo_stroke(m_cairo);
    cairo_set_dash(m_cairo, nullptr, 0, 0.0);
    cairo_set_line_cap(m_cairo, CAIRO_LINE_CAP_BUTT);
  }

  void text(const TextRun& run) override {
    const double determinant = run.matrix[0] * run.matrix[3] - run.matrix[1] * run.matrix[2];
    if (!(std::abs(determinant) > 1e-30)) return;  // seen edge-on; a matrix without an inverse would end the drawing
    setColor(run.color);
    cairo_save(m_cairo);
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, run.matrix[0], run.matrix[1], run.matrix[2], run.matrix[3], run.matrix[4],
                      run.matrix[5]);
    cairo_transform(m_cairo, &matrix);
    cairo_select_font_face(m_cairo, run.family.c_str(),
                           run.isItalic ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                           run.isBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(m_cairo, run.size);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_set_font_options(m_cairo, options);
    cairo_font_options_destroy(options);
    cairo_text_extents_t extents;
    cairo_text_extents(m_cairo, run.text.c_str(), &extents);
    if (run.width > 0.0 && extents.x_advance > 0.0) {
      const double stretch = std::clamp(run.width / extents.x_advance, 0.2, 5.0);
      cairo_scale(m_cairo, stretch, 1.0);
    }
    cairo_move_to(m_cairo, 0.0, 0.0);
    if (run.outline > 0.0) {
      cairo_text_path(m_cairo, run.text.c_str());
      cairo_restore(m_cairo);
      cairo_set_line_width(m_cairo, run.outline);
      cairo_stroke(m_cairo);
      return;
    }
    cairo_show_text(m_cairo, run.text.c_str());
    cairo_new_path(m_cairo);
    cairo_restore(m_cairo);
  }

  void image(const Bitmap& bitmap, const PagePoint& corner, double pixel, const std::vector<Polyline>& clip) override {
    cairo_surface_t* pixels = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, bitmap.width, bitmap.height);
    if (cairo_surface_status(pixels) != CAIRO_STATUS_SUCCESS) {
      if (m_problem.empty()) m_problem = cairo_status_to_string(cairo_surface_status(pixels));
      cairo_surface_destroy(pixels);
      return;
    }
    cairo_surface_flush(pixels);
    unsigned char* data = cairo_image_surface_get_data(pixels);
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(pixels));
    for (int y = 0; y < bitmap.height; ++y)
      for (int x = 0; x < bitmap.width; ++x) {
        const uint8_t* in =
            bitmap.rgba.data() +
            4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(bitmap.width) + static_cast<std::size_t>(x));
        const uint32_t alpha = in[3];
        const auto premultiplied = [&](int c) { return (in[c] * alpha + 127) / 255; };
        auto* out = reinterpret_cast<uint32_t*>(data + static_cast<std::size_t>(y) * stride) + x;
        *out = alpha << 24 | premultiplied(0) << 16 | premultiplied(1) << 8 | premultiplied(2);
      }
    cairo_surface_mark_dirty(pixels);
    cairo_save(m_cairo);
    if (!clip.empty()) {
      addPath(clip, true);
      cairo_clip(m_cairo);
    }
    cairo_translate(m_cairo, corner.x, corner.y);
    cairo_scale(m_cairo, pixel, pixel);
    cairo_set_source_surface(m_cairo, pixels, 0.0, 0.0);
    cairo_paint(m_cairo);
    cairo_restore(m_cairo);
    cairo_surface_destroy(pixels);
  }

  std::string write(std::FILE* stream) override {
    cairo_show_page(m_cairo);
    cairo_surface_finish(m_surface);
    for (const cairo_status_t status : {cairo_status(m_cairo), cairo_surface_status(m_surface)})
      if (m_problem.empty() && status != CAIRO_STATUS_SUCCESS) m_problem = cairo_status_to_string(status);
    std::fwrite(m_bytes.data(), 1, m_bytes.size(), stream);
    return m_problem;
  }

 private:
  static cairo_status_t keep(void* self, const unsigned char* bytes, unsigned int count) {
    auto& all = static_cast<PdfCanvas*>(self)->m_bytes;
    all.insert(all.end(), bytes, bytes + count);
    return CAIRO_STATUS_SUCCESS;
  }

  void setColor(uint32_t color) {
    cairo_set_source_rgba(m_cairo, (color >> 24 & 255) / 255.0, (color >> 16 & 255) / 255.0, (color >> 8 & 255) / 255.0,
                          (color & 255) / 255.0);
  }

  void addPath(const std::vector<Polyline>& lines, bool isClosed) {
    for (const Polyline& line : lines) {
      for (std::size_t i = 0; i < line.size(); ++i) {
        const double x = std::clamp(line[i].x, -1e6, 1e6);
        const double y = std::clamp(line[i].y, -1e6, 1e6);
        if (i == 0)
          cairo_move_to(m_cairo, x, y);
        else
          cairo_line_to(m_cairo, x, y);
      }
      if (isClosed && !line.empty()) cairo_close_path(m_cairo);
    }
  }

  cairo_surface_t* m_surface = nullptr;
  cairo_t* m_cairo = nullptr;
  std::vector<unsigned char> m_bytes;
  std::string m_problem;
};

}  // namespace

std::unique_ptr<Canvas> makePdfCanvas(int width, int height, double dpi) {
  return std::make_unique<PdfCanvas>(width, height, dpi);
}

}  // namespace tool

#else

namespace tool {

std::unique_ptr<Canvas> makePdfCanvas(int, int, double) { return nullptr; }

}  // namespace tool

#endif
