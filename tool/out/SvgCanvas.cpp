// Scalable vector graphics, written as they are: text stays text, in the fonts of whoever looks at it.

#include <algorithm>
#include <charconv>
#include <cmath>
#include <sstream>

#include "graph/toolkit/offscreen/PiPicture.h"
#include "out/Base64.h"
#include "out/Canvas.h"

namespace tool {

namespace {

// A number with at most `decimals` digits behind the point and no zeros at its end.
std::string number(double value, int decimals) {
  char digits[64];
  if (!std::isfinite(value)) value = 0.0;
  value = std::clamp(value, -1e9, 1e9);
  const auto result = std::to_chars(digits, digits + sizeof(digits), value, std::chars_format::fixed, decimals);
  std::string text(digits, result.ptr);
  if (text.find('.') != std::string::npos) {
    while (text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string escaped(const std::string& text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

// The font asked for, and what stands in for it.
std::string familyList(const std::string& family) {
  if (family == "sans-serif" || family == "serif" || family == "monospace") return family;
  std::string quoted;
  for (const char c : family)
    if (c != '\'' && c != '\\') quoted += c;
  return escaped("'" + quoted + "', sans-serif");
}

std::string colorText(uint32_t color) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text = "#";
  for (int shift = 28; shift >= 8; shift -= 4) text += kDigits[color >> shift & 15];
  return text;
}

// An attribute for the opacity; empty for full opacity.
std::string opacity(const char* name, uint32_t color) {
  const uint32_t alpha = color & 255;
  return alpha == 255 ? "" : std::string(" ") + name + "=\"" + number(alpha / 255.0, 3) + "\"";
}

// The data of a path. Places are hundredths of a pixel, told as steps from one to the next.
class PathText {
 public:
  void add(const Polyline& line, bool isClosed) {
    if (line.empty()) return;
    const Place start = placeOf(line.front());
    m_text += m_text.empty() ? "M" : "m";
    step(start.x - m_last.x, start.y - m_last.y, true);
    m_last = start;
    bool isFirst = true;
    for (std::size_t i = 1; i < line.size(); ++i) {
      const Place place = placeOf(line[i]);
      if (place.x == m_last.x && place.y == m_last.y && line.size() > 2) continue;
      if (isFirst) m_text += 'l';
      step(place.x - m_last.x, place.y - m_last.y, isFirst);
      isFirst = false;
      m_last = place;
    }
    if (isClosed) {
      m_text += 'z';
      m_last = start;
    }
  }
  const std::string& text() const { return m_text; }

 private:
  struct Place {
    int64_t x = 0;
    int64_t y = 0;
  };
  static Place placeOf(const PagePoint& p) { return {std::llround(p.x * 100.0), std::llround(p.y * 100.0)}; }
  void step(int64_t x, int64_t y, bool isFirst) {
    const std::string across = number(static_cast<double>(x) / 100.0, 2);
    if (!isFirst && across.front() != '-') m_text += ' ';
    m_text += across;
    const std::string down = number(static_cast<double>(y) / 100.0, 2);
    if (down.front() != '-') m_text += ' ';
    m_text += down;
  }

  std::string m_text;
  Place m_last;
};

std::string pathOf(const std::vector<Polyline>& lines, bool isClosed) {
  PathText path;
  for (const Polyline& line : lines) path.add(line, isClosed);
  return path.text();
}

class SvgCanvas : public Canvas {
 public:
  SvgCanvas(int width, int height, double dpi) {
    const bool isUsual = dpi == 96.0;
    const auto length = [&](int pixels) {
      return isUsual ? std::to_string(pixels) : number(static_cast<double>(pixels) / dpi, 5) + "in";
    };
    m_body << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           << R"(<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" width=")"
           << length(width) << "\" height=\"" << length(height) << "\" viewBox=\"0 0 " << width << ' ' << height
           << "\">\n";
  }

  void fill(const std::vector<Polyline>& outlines, uint32_t color, double rim) override {
    const std::string path = pathOf(outlines, true);
    if (path.empty()) return;
    m_body << "<path d=\"" << path << "\" fill=\"" << colorText(color) << '"' << opacity("fill-opacity", color);
    if (rim > 0.0)
      m_body << " stroke=\"" << colorText(color) << "\" stroke-width=\"" << number(rim, 2)
             << "\" stroke-linejoin=\"round\"";
    m_body << "/>\n";
  }

  void stroke(const std::vector<Polyline>& lines, const LineStyle& style, uint32_t color) override {
    const std::string path = pathOf(lines, false);
    if (path.empty()) return;
    m_body << "<path d=\"" << path << "\" fill=\"none\" stroke=\"" << colorText(color) << "\" stroke-width=\""
           << number(style.width, 3) << '"' << opacity("stroke-opacity", color) << " stroke-linejoin=\"round\"";
    if (style.isRound) m_body << " stroke-linecap=\"round\"";
    if (!style.dashes.empty()) {
      m_body << " stroke-dasharray=\"";
      for (std::size_t i = 0; i < style.dashes.size(); ++i) m_body << (i > 0 ? " " : "") << number(style.dashes[i], 2);
      m_body << '"';
    }
    m_body << "/>\n";
  }

  void text(const TextRun& run) override {
    // Sizes of a few pixels at least: viewers round fonts that are smaller than one.
    const double unit = std::max(std::hypot(run.matrix[2], run.matrix[3]), 1e-9);
    m_body << "<text transform=\"matrix(";
    for (std::size_t i = 0; i < 6; ++i)
      m_body << (i > 0 ? " " : "") << (i < 4 ? number(run.matrix[i] / unit, 5) : number(run.matrix[i], 2));
    m_body << ")\" font-family=\"" << familyList(run.family) << "\" font-size=\"" << number(run.size * unit, 3) << '"';
    if (run.isBold) m_body << " font-weight=\"bold\"";
    if (run.isItalic) m_body << " font-style=\"italic\"";
    if (run.width > 0.0)
      m_body << " textLength=\"" << number(run.width * unit, 3) << "\" lengthAdjust=\"spacingAndGlyphs\"";
    if (run.outline > 0.0)
      m_body << " fill=\"none\" stroke=\"" << colorText(run.color) << "\" stroke-width=\"" << number(run.outline, 3)
             << "\" stroke-linejoin=\"round\"" << opacity("stroke-opacity", run.color) << " aria-hidden=\"true\"";
    else
      m_body << " fill=\"" << colorText(run.color) << '"' << opacity("fill-opacity", run.color);
    m_body << " xml:space=\"preserve\">" << escaped(run.text) << "</text>\n";
  }

  void image(const Bitmap& bitmap, const PagePoint& corner, double pixel, const std::vector<Polyline>& clip) override {
    if (!clip.empty())
      m_body << "<clipPath id=\"c" << ++m_clips << "\"><path d=\"" << pathOf(clip, true) << "\"/></clipPath>\n";
    PiPicture picture{bitmap.width, bitmap.height, bitmap.rgba};
    std::vector<uint8_t> png;
    const std::string problem = picture.encodePng(png);
    if (!problem.empty()) {
      if (m_problem.empty()) m_problem = problem;
      return;
    }
    m_body << "<image x=\"" << number(corner.x, 3) << "\" y=\"" << number(corner.y, 3) << "\" width=\""
           << number(bitmap.width * pixel, 3) << "\" height=\"" << number(bitmap.height * pixel, 3)
           << "\" preserveAspectRatio=\"none\"";
    if (!clip.empty()) m_body << " clip-path=\"url(#c" << m_clips << ")\"";
    m_body << " xlink:href=\"data:image/png;base64," << base64(png) << "\"/>\n";
  }

  std::string write(std::FILE* stream) override {
    m_body << "</svg>\n";
    const std::string all = m_body.str();
    std::fwrite(all.data(), 1, all.size(), stream);
    return m_problem;
  }

 private:
  std::ostringstream m_body;
  std::string m_problem;
  int m_clips = 0;
};

}  // namespace

std::unique_ptr<Canvas> makeSvgCanvas(int width, int height, double dpi) {
  return std::make_unique<SvgCanvas>(width, height, dpi);
}

}  // namespace tool
