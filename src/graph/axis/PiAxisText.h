#ifndef ORMELLE_PIAXISTEXT_H
#define ORMELLE_PIAXISTEXT_H

#include <string_view>

#include <Ormelle/PoAxis.h>

#include "graph/format/PiText.h"

class PbMiscTextAttr;
class SoGroup;

/// A box in axis coordinates about the place where a text stands, for font size 1. One without a width is empty.
struct PiTextBox {
  float xmin = 0;
  float xmax = 0;
  float ymin = 0;
  float ymax = 0;

  bool isEmpty() const { return !(xmax > xmin); }
};

/// Which point of a text stands at its place; the values of PiText.
struct PiTextAlignment {
  int horizontal = PiText::CENTER;
  int vertical = PiText::BASE;

  /// Of texts beside an axis.
  static PiTextAlignment beside(PoAxis::TextPath path, bool isAbove);
  /// Of a text beyond the end of an axis that has increasing coordinates, or decreasing ones.
  static PiTextAlignment beyond(PoAxis::TextPath path, bool isIncreasing);
};

/// Up to three pieces of text in one line: a power of ten is two of them, "10" and its exponent.
struct PiTextRun {
  static constexpr int MAX_PIECES = 3;
  struct Piece {
    const char* text = nullptr;
    bool isExponent = false;  ///< smaller, and raised
  };

  Piece pieces[MAX_PIECES];
  int num = 0;

  PiTextRun() = default;
  explicit PiTextRun(const char* text) { add(text); }
  /// Empty texts add nothing.
  /// @{
  void add(const char* text) { addPiece({text, false}); }
  void addExponent(const char* text) { addPiece({text, true}); }
  /// @}

 private:
  void addPiece(const Piece& piece) {
    if (piece.text && *piece.text && num < MAX_PIECES) pieces[num++] = piece;
  }
};

/// The texts of one element of an axis, which share font, direction and alignment.
class PiAxisText {
 public:
  static constexpr float EXPONENT_RAISED = 0.5F;  ///< base line above that of the text, in font sizes
  static constexpr float EXPONENT_SCALE = 0.7F;   ///< its size, in font sizes

  /// `attributes` must live as long as this.
  PiAxisText(const SbString& fontName, const PbMiscTextAttr& attributes, PoAxis::TextPath path,
             const PiTextAlignment& alignment);

  static bool isVertical(PoAxis::TextPath path) { return path == PoAxis::PATH_UP || path == PoAxis::PATH_DOWN; }
  /// Letters, not bytes.
  static int countLetters(std::string_view text);

  /// Texts of several lines, as the attributes break them. Not at first.
  void setWrapped(bool isWrapped) { m_isWrapped = isWrapped; }

  PiTextBox measure(const PiTextRun& run);
  /// How long `text` is along its direction at font size 1.
  float measureLength(const char* text);
  /// Adds the text to `group` without a font: that stands before the group.
  void build(const PiTextRun& run, float x, float y, float size, SoGroup* group);

 private:
  struct PlacedPiece;
  template <class Use>
  void forPieces(const PiTextRun& run, float size, Use use);

  const SbString m_fontName;
  const PoAxis::TextPath m_path;
  const PiTextAlignment m_alignment;
  SbVec3f m_direction, m_up;
  bool m_isWrapped = false;
  PiText m_text;
};

#endif
