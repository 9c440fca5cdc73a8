#ifndef ORMELLE_POLEGEND_H
#define ORMELLE_POLEGEND_H

#include <memory>

#include <Inventor/SbVec2f.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>
#include <Inventor/fields/SoSFUShort.h>

#include <Ormelle/PoTavernel.h>

class PbMiscTextAttr;
class PiText;
class SoGroup;
struct PiLegendState;
struct Plimit;

/// Root of all legends: a rectangle with a title and boxes in rows and columns, a text beside each. What the boxes show
/// is up to the classes derived from it.
///
/// A legend keeps its looks where the domain stretches what it stands beside: only its corners are scaled. All sizes
/// are fitted to the rectangle. The background is drawn once the application styles it, by `backgroundApp.material` or
/// `backgroundApp.drawStyle`.
///
/// Catalog, behind the parts of PoBase; each element is a triple of `<name>Sep` (SoSeparator), `<name>App`
/// (SoAppearanceKit, to style the element) and `<name>` (SoGroup):
/// @code
/// alternateRep
///   background        the rectangle
///   backgroundBorder  the line round it
///   box               the boxes, in colours of their own
///   boxBorder         the lines round them
///   title             its font is titleApp.font
///   valueText         the texts; their font is valueTextApp.font
/// @endcode
class ORMELLE_API PoLegend : public PoTavernel {
  PO_KIT_ABSTRACT_HEADER(PoLegend, PoTavernel);
  PO_KIT_TRIPLE_HEADER(background);
  PO_KIT_TRIPLE_HEADER(backgroundBorder);
  PO_KIT_TRIPLE_HEADER(box);
  PO_KIT_TRIPLE_HEADER(boxBorder);
  PO_KIT_TRIPLE_HEADER(title);
  PO_KIT_TRIPLE_HEADER(valueText);

 public:
  enum Position { POS_BOTTOM = 0, POS_TOP = 1, POS_RIGHT = 2, POS_LEFT = 3 };
  enum Visibility { VISIBILITY_OFF = 0, VISIBILITY_ON = 1 };
  enum TextPath { PATH_RIGHT = 0, PATH_LEFT = 1, PATH_UP = 2, PATH_DOWN = 3 };
  enum MarginType {
    REL_MARGIN = 0,   ///< fractions of the width and the height
    FIXED_MARGIN = 1  ///< in coordinates
  };
  /// The order in which boxes fill rows and columns.
  enum IncrementType {
    VERTICAL_INCREMENT = 0,   ///< one column after the other
    HORIZONTAL_INCREMENT = 1  ///< one row after the other
  };

  SoSFEnum titleVisibility;           ///< a Visibility, `VISIBILITY_OFF` by default
  SoSFEnum titlePosition;             ///< a Position, `POS_BOTTOM` by default: the side that the title stands on
  SoSFEnum titlePath;                 ///< a TextPath, `PATH_RIGHT` by default
  SoSFFloat titleFontSize;            ///< at most that, in coordinates; 0, by default: automatic
  SoSFString titleFontName;           ///< empty, by default: the font of the PbMiscTextAttr
  SoSFString titleString;             ///< broken into lines as the PbMiscTextAttr says
  SoSFEnum valueVisibility;           ///< a Visibility of the texts beside boxes, `VISIBILITY_ON` by default
  SoSFEnum valuePosition;             ///< a Position, `POS_RIGHT` by default: the side of a box that its text stands on
  SoSFString valueFontName;           ///< as `titleFontName`
  SoSFBool valueAddStringVisibility;  ///< adds the string below to each text; FALSE by default
  SoSFString valueAddString;          ///< a unit, say
  SoSFEnum marginType;                ///< a MarginType, `REL_MARGIN` by default
  /// Room between the rectangle and what it holds, 0.05 each by default. Two that leave no room count as 0. If a
  /// relative one is negative, all are 5 % of the shorter side.
  /// @{
  SoSFFloat marginLeft;
  SoSFFloat marginRight;
  SoSFFloat marginBottom;
  SoSFFloat marginTop;
  /// @}
  SoSFEnum incrementType;  ///< an IncrementType, `VERTICAL_INCREMENT` by default
  SoSFUShort numColumns;   ///< of boxes; 1 by default, 0 acts as 1
  SoSFFloat boxRatio;      ///< width of a box over its height; 1 by default, and where it isn't above 0

  /// Fonts and line breaking, instead of what is on the traversal state; null goes back to that. Not owned.
  void setMiscTextAttr(PbMiscTextAttr* attributes);
  /// What was set, else during a traversal what is on the state, else a default of the legend. Never null.
  const PbMiscTextAttr* getMiscTextAttr() const;

  void basicObjectChange(PbBase* object) override;

 protected:
  PoLegend();
  ~PoLegend() override;

  /// Adds the shapes of box `boxIndex`, whose lower left corner is `origin`. Empty here.
  virtual void drawBoxLegendBoxesA(SoGroup* boxes, SoGroup* borders, const SbVec2f& origin, float width, float height,
                                   int boxIndex);
  /// Room that a derived class needs in font sizes: beside the boxes, above them, and the least that all need in the
  /// other direction. Leaves them here.
  virtual void computeGraphicSizeForValues(float& across, float& down, float& least);
  /// Rows run from the top if `second` is below `first`, which are the coordinates of start and end of the legend.
  virtual void setRevertOrder(float first, float second);
  int isRevertOrder() const;

  /// Settles the fonts.
  void setDefaultAttr();
  /// What the margins leave of a rectangle.
  void computeMarginA(const SbVec2f& start, float width, float height, SbVec2f& newStart, float& newWidth,
                      float& newHeight);
  /// Fits the title into a rectangle, of which it takes no more than half, and tells its size with the gap to the
  /// boxes.
  void computeTitleSizeA(float width, float height, float& titleWidth, float& titleHeight);
  void drawBackgroundA(const SbVec2f& origin, float width, float height);
  /// Puts the title, of this size, on its side of the limits and takes its room away from them.
  void drawTitleA(float width, float height, Plimit& limits);
  /// Draw boxes and texts in rows and columns; all widths are in coordinates, ratios in font sizes.
  /// @{
  void drawBoxesLegendBoxesA(int numBoxes, float boxWidthRatio, float boxHeightRatio, int numRows, int numColumns,
                             int lastIndex, const float* columnWidths, const SbVec2f& gaps, const Plimit& limits);
  void drawValuesLegendBoxesA(int numRows, int numColumns, int numBoxes, const SbString* texts,
                              const float* columnWidths, const SbVec2f& gaps, const Plimit& limits, PiText& text);
  /// @}

  void styleBoxBorders();
  /// A new group in the part, in the coordinates of the legend: as drawn, not as stretched by the domain.
  SoGroup* newGroup(const char* part);
  /// Sets `<element>App.font`, or takes it away.
  void setElementFont(const char* element, int isShown, const SbString& name, float size);
  /// What was built depends on this traversal element.
  void dependOn(int elementStackIndex);

  /// The working values of the last or running rebuild; internal.
  PiLegendState& state() { return *m_legendState; }
  const PiLegendState& state() const { return *m_legendState; }

  void preRebuild() override;
  void addElementsAllCaches() override;
  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;

 private:
  std::unique_ptr<PiLegendState> m_legendState;
};

#endif
