#ifndef ORMELLE_PITEXT_H
#define ORMELLE_PITEXT_H

#include <memory>
#include <string>
#include <vector>

#include <Inventor/SbBox3f.h>
#include <Inventor/SbMatrix.h>
#include <Inventor/SbString.h>
#include <Inventor/SbVec3f.h>

class PbMiscTextAttr;
class SoGetBoundingBoxAction;
class SoGroup;
class SoSeparator;

/// Places, measures and builds one text after another.
///
/// Text reads along the direction vector, with its upright along the up vector, and the alignments say which of its
/// points stands at the position. All lengths are in the coordinates of the group that it is added to.
///
/// The text node is `SoAsciiText` in VRML 2 mode, else `SoText3` or `SoAnnoText3` by PoBase::getTextType().
///
/// @code
/// PiText text;
/// text.setFont("defaultFont", 0.04f);
/// text.setAlignment(PiText::CENTER, PiText::TOP);
/// text.setPosition(SbVec3f(x, y, 0));
/// limits.extendBy(text.measure("12.5"));
/// text.build("12.5", group);
/// @endcode
class PiText {
 public:
  enum HorizontalAlignment { LEFT = 0, RIGHT = 1, CENTER = 2 };
  /// Which height of the text stands at the position; in font sizes, from the base line of the first line or the last.
  enum VerticalAlignment {
    TOP = 0,    ///< 0.73 above the first: the ascenders end there
    UPPER = 1,  ///< 0.65 above the first: about the height of figures
    HALF = 2,   ///< the middle between 0.64 above the first and the base line of the last
    BASE = 3,   ///< the base line of the last
    BOTTOM = 4  ///< 0.28 below the last: the descenders end there
  };

  PiText();
  ~PiText();
  PiText(const PiText&) = delete;
  PiText& operator=(const PiText&) = delete;

  void setPosition(const SbVec3f& position) { m_position = position; }
  /// Need not be unit vectors. What `up` has along `direction` is taken away; without a usable vector the text reads
  /// along x, with y up where possible.
  void setDirection(const SbVec3f& direction, const SbVec3f& up);
  /// The values of the enumerations; others count as `LEFT` and `BASE`.
  void setAlignment(int horizontal, int vertical);
  /// An empty name leaves the font, and the size in which text is drawn, to the state; it is measured in the font and
  /// size given here all the same, with the default font.
  void setFont(const SbString& name, float size);
  void setFontSize(float size) { m_fontSize = size; }
  float getFontSize() const { return m_fontSize; }
  /// Turns the text by half a turn about its upright, without moving it, to be read from behind.
  void setHalfTurn(int on) { m_isHalfTurn = on; }
  /// Line breaking and profile; not the font name. Null takes the defaults.
  void setAttributes(const PbMiscTextAttr* attributes);
  /// Where build() adds texts; not owned, and must live as long as that.
  void setGroup(SoGroup* group) { m_group = group; }

  /// Adds `text` to the group as one separator and returns the number of its lines. With `isWrapped` it is broken by
  /// the line length of the attributes. Text that is null or empty, has no finite place or no positive size isn't
  /// built: then 0.
  int build(const char* text, int isWrapped = 0);
  /// The box that `text` would take; empty where build() would build nothing. Stays valid until the next call.
  const SbBox3f& measure(const char* text, int isWrapped = 0);
  /// What measure() found last; empty at first.
  const SbBox3f& getBoundingBox() const { return m_boundingBox; }

 private:
  std::vector<std::string> prepareLines(const char* text, int isWrapped) const;
  bool usesSolidText() const;
  float verticalOffset(size_t numLines) const;
  void addText(SoGroup* group, const std::vector<std::string>& lines, int horizontal, float size,
               bool isMeasuring) const;
  SbBox3f measureLine(const std::string& line);
  SbBox3f measureUnplaced(const std::vector<std::string>& lines);
  SbMatrix placement(const std::vector<std::string>& lines);

  SbVec3f m_position = SbVec3f(0, 0, 0);
  SbVec3f m_direction = SbVec3f(1, 0, 0);
  SbVec3f m_up = SbVec3f(0, 1, 0);
  int m_horizontal = LEFT;
  int m_vertical = BASE;
  SbString m_fontName = "default";
  float m_fontSize = 1;
  SoGroup* m_group = nullptr;
  int m_isHalfTurn = 0;
  SbBox3f m_boundingBox;
  int m_lineLength = 0;
  char m_endLineChar = ' ';
  int m_isProfileEnabled = 0;
  int m_isPredefinedProfileEnabled = 1;
  std::unique_ptr<SoGetBoundingBoxAction> m_measuring;
};

#endif
