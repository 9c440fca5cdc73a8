#ifndef ORMELLE_TOOL_OUT_CANVAS_H
#define ORMELLE_TOOL_OUT_CANVAS_H

#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace tool {

/// A place on the page: pixels to the right and down from its upper left corner.
struct PagePoint {
  double x = 0.0;
  double y = 0.0;
  bool operator==(const PagePoint&) const = default;
};
using Polyline = std::vector<PagePoint>;

struct LineStyle {
  double width = 1.0;          ///< in pixels
  std::vector<double> dashes;  ///< lengths drawn and left out in turn, in pixels; empty for a full line
  bool isRound = false;        ///< whether corners and ends are round, else corners alone
};

/// One line of text.
struct TextRun {
  std::string text;  ///< UTF-8, without control characters
  std::string family;
  bool isBold = false;
  bool isItalic = false;
  double size = 1.0;   ///< of the font, in the text's own units
  double width = 0.0;  ///< how far the text shall advance; 0 leaves it to the font
  std::array<double, 6> matrix{
      1, 0, 0, 1, 0, 0};        ///< from the text's units, y downwards, to the page: x' = ax + cy + e, y' = bx + dy + f
  uint32_t color = 0x000000ff;  ///< 0xrrggbbaa
  double outline = 0.0;         ///< above 0, only the outlines of the letters, so many pixels wide
};

/// Pixels, red, green, blue and opacity, not premultiplied, the top row first.
struct Bitmap {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> rgba;
};

/// A page of a vector picture. What is drawn later covers what was drawn before.
class Canvas {
 public:
  virtual ~Canvas() = default;
  /// Fills what is inside any of the closed lines (by the non-zero rule). A `rim` above 0 strokes them too, so many
  /// pixels wide in the same colour.
  virtual void fill(const std::vector<Polyline>& outlines, uint32_t color, double rim) = 0;
  virtual void stroke(const std::vector<Polyline>& lines, const LineStyle& style, uint32_t color) = 0;
  virtual void text(const TextRun& run) = 0;
  /// A bitmap whose pixels are squares of `pixel` page pixels; only inside `clip`, if there is one.
  virtual void image(const Bitmap& bitmap, const PagePoint& corner, double pixel,
                     const std::vector<Polyline>& clip) = 0;
  /// Ends the page and writes the file. Returns what went wrong; empty if nothing did. (A failure of the stream shows
  /// in its error flag.)
  virtual std::string write(std::FILE* stream) = 0;
};

/// A page of `width` by `height` pixels, `dpi` of them an inch.
std::unique_ptr<Canvas> makeSvgCanvas(int width, int height, double dpi);
/// The same for PDF; null if the tool was built without Cairo.
std::unique_ptr<Canvas> makePdfCanvas(int width, int height, double dpi);

}  // namespace tool

#endif
