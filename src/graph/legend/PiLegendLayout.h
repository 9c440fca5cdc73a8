#ifndef ORMELLE_PILEGENDLAYOUT_H
#define ORMELLE_PILEGENDLAYOUT_H

#include <functional>
#include <span>
#include <vector>

#include <Inventor/SbVec2f.h>
#include <Ormelle/Plimit.h>
#include <Ormelle/PoLegend.h>

/// Where the elements of a legend stand and how large they are: numbers only. Text is measured at font size 1.
namespace PiLegendLayout {

/// In font sizes.
constexpr float BOX_HEIGHT = 0.975F;
constexpr float TEXT_GAP = 0.65F;     ///< from a box to its text
constexpr float TEXT_LINE = 1.3F;     ///< a line of text with the room about it
constexpr float COLUMN_GAP = 1.3F;    ///< least room between two columns
constexpr float ROW_GAP = 0.975F;     ///< and two rows
constexpr float VALUE_MARGIN = 0.8F;  ///< room that a text needs beyond its letters
constexpr float MULTIPLIER_HEIGHT = 1.115F;
constexpr float MULTIPLIER_GAP = 0.975F;
constexpr float MULTIPLIER_LETTERS = 1.25F;  ///< from its base line to the upper side of its exponent

struct Frame {
  SbVec2f origin = SbVec2f(0, 0);  ///< the lower left corner
  float width = 0;
  float height = 0;
};

struct Margins {
  PoLegend::MarginType type = PoLegend::REL_MARGIN;
  float left = 0, right = 0, bottom = 0, top = 0;
};
Frame withoutMargins(const Margins& margins, const Frame& frame);

inline bool isAside(PoLegend::Position position) {
  return position == PoLegend::POS_RIGHT || position == PoLegend::POS_LEFT;
}

/// The font size of a title on this side of a rectangle, at most `size`; `extent` is the size of the title at 1.
float fitTitle(PoLegend::Position position, float width, float height, const SbVec2f& extent, float size);

/// Takes a strip away from the limits and gives its middle.
SbVec2f takeStrip(Plimit& limits, PoLegend::Position side, float width, float height);

/// Separate boxes in rows and columns, each with a text.
struct Grid {
  int numBoxes = 0;
  int numRows = 1, numColumns = 1;
  float boxWidth = BOX_HEIGHT, boxHeight = BOX_HEIGHT;  ///< in font sizes
  PoLegend::Position valuePosition = PoLegend::POS_RIGHT;
  PoLegend::IncrementType increment = PoLegend::VERTICAL_INCREMENT;
  bool isFromTop = false;
  std::vector<float> columnWidths;  ///< of the texts, at size 1 until fit(), then in coordinates
  float size = 0;                   ///< of the font, in coordinates
  SbVec2f gaps = SbVec2f(0, 0);

  /// Room for a multiplier, in font sizes: beside the boxes, above them, and the least that all need in the other
  /// direction.
  float moreAcross = 0, moreDown = 0, least = 0;

  /// Chooses size and gaps, so that boxes and texts fill the rectangle.
  void fit(float width, float height);

  struct Cell {
    int box = 0;
    SbVec2f origin;  ///< the lower left corner of the box
    SbVec2f text;    ///< the point of the box's side that the text stands at, half its height being there
  };
  void forEachCell(const Plimit& limits, const std::function<void(const Cell&)>& visit) const;
};

/// One long box that is cut at values, with a text at some of the cuts. All lengths run along the box from the first
/// value to the last.
struct OneBox {
  struct Text {
    float place = 0;   ///< 0 at the first value to 1 at the last; below and above: the boxes before and behind
    float extent = 0;  ///< along the box, in font sizes, with the room that it needs
  };

  bool hasEnds = false;    ///< boxes below the first value and above the last
  float endLength = 0.5F;  ///< length of each, as a part of the long box; with one value there are only they
  bool isSingle = false;
  std::vector<Text> texts;  ///< by place
  float reserve = 0;        ///< along the box, in font sizes
  float maxSize = 0;        ///< from the room across

  // Found by fit():
  float size = 0;                   ///< of the font
  float lowerStart = 0, start = 0;  ///< where the box below, the long box,
  float end = 0, upperEnd = 0;      ///< and the box above start and end

  /// The largest font at which no text overlaps its neighbour or sticks out of `length`.
  void fit(float length);
  float at(float place) const { return start + (end - start) * place; }
  /// Where a text stands.
  float placeOf(const Text& text) const;

 private:
  bool place(float length, float size);
};

}  // namespace PiLegendLayout

#endif
