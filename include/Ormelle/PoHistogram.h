#ifndef ORMELLE_POHISTOGRAM_H
#define ORMELLE_POHISTOGRAM_H

#include <memory>

#include <Inventor/SbVec2f.h>
#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>
#include <Inventor/fields/SoSFVec2f.h>

#include <Ormelle/PoAxis.h>
#include <Ormelle/PoTavernel.h>

class PbDataMapping;
class PbMiscTextAttr;
class PbNumericDisplayFormat;
class SoPickedPoint;
struct PiHistogramState;

/// What bar charts have in common: bars along an axis that they don't draw, their colours, and texts at them.
///
/// The axis runs from `start` to the coordinate `end` along its direction; a bar reaches from the axis as far as its
/// value says, so that a value of 0 is a bar without height. A value that isn't finite is drawn as such a bar, without
/// a text. Under COLOR_LIST a bar has the entry of its index, in turn; under DATA_MAPPING the colour of its value, and
/// where the mapping has none it is a bar without height too.
///
/// Texts never overlap and never leave the domain if the bars lie inside it: those without room are left out. Font
/// sizes are fractions of the reference length, the width of the domain; 0 and below are automatic, so that texts fit
/// their bars.
///
/// Data objects, none of them owned: PbDataMapping, PbMiscTextAttr, PbNumericDisplayFormat; the kit's own, or that on
/// the state.
///
/// Catalog, behind the parts of PoBase: `transform` (SoMatrixTransform: in front of it all lengths across x are scaled
/// to those along it, so that letters keep their shape in a domain that isn't square), and for each of `bar`,
/// `valueText` and `nameText` a triple `<name>Sep` (SoSeparator), `<name>App` (SoAppearanceKit, to style it) and
/// `<name>` (SoGroup). The bars are one SoFaceSet, four points a bar, in the order of the values.
class ORMELLE_API PoHistogram : public PoTavernel {
  PO_KIT_ABSTRACT_HEADER(PoHistogram, PoTavernel);
  PO_KIT_CATALOG_ENTRY_HEADER(transform);
  PO_KIT_TRIPLE_HEADER(bar);
  PO_KIT_TRIPLE_HEADER(valueText);
  PO_KIT_TRIPLE_HEADER(nameText);

 public:
  using Visibility = PoAxis::Visibility;
  using TextPath = PoAxis::TextPath;
  enum Type {
    X = 0,  ///< the axis runs along x, bars along y
    Y = 1   ///< the axis runs along y, bars along x
  };
  enum BarSpaceType {
    REL_SPACE = 0,   ///< a fraction of what a bar has of the axis
    FIXED_SPACE = 1  ///< a fraction of the reference length
  };
  enum Coloring { COLOR_LIST = 0, DATA_MAPPING = 1 };
  /// Where a text stands: at the middle of which side of its bar, outside or inside.
  enum Position {
    POS_TOP_OUT = 0,
    POS_TOP_IN = 1,
    POS_BOTTOM_OUT = 2,
    POS_BOTTOM_IN = 3,
    POS_RIGHT_OUT = 4,
    POS_RIGHT_IN = 5,
    POS_LEFT_OUT = 6,
    POS_LEFT_IN = 7,
    POS_CENTER = 8,
    POS_DEPEND = 9  ///< values beyond the end of the bar (in the middle if bars are stacked), names beyond its foot
  };

  SoSFVec2f start;                    ///< the start of the axis; 0 0 by default
  SoSFFloat end;                      ///< where it ends; 1 by default, may lie before the start
  SoSFEnum type;                      ///< a Type; `X` by default
  SoSFEnum barSpaceType;              ///< a BarSpaceType; `REL_SPACE` by default
  SoSFFloat barSpaceValue;            ///< what is free between two bars; 0.2 by default
  SoSFEnum coloring;                  ///< a Coloring; `COLOR_LIST` by default
  SoMFColor color;                    ///< of the bars, in turn; none, by default: eight of our own
  SoSFEnum valueVisibility;           ///< a Visibility, `VISIBILITY_DEPEND` by default: on
  SoSFEnum valuePosition;             ///< a Position, `POS_DEPEND` by default
  SoSFEnum valuePath;                 ///< a TextPath, `PATH_DEPEND` by default: as there is room
  SoSFString valueFontName;           ///< empty, by default: that of the PbMiscTextAttr
  SoSFFloat valueFontSize;            ///< 0, by default: automatic
  SoSFEnum valueAddStringVisibility;  ///< a Visibility, `VISIBILITY_OFF` by default
  SoSFString valueAddString;          ///< behind each value; empty by default
  SoSFEnum nameVisibility;            ///< a Visibility, `VISIBILITY_DEPEND` by default: on
  SoSFEnum namePosition;              ///< as for values
  SoSFEnum namePath;
  SoSFString nameFontName;
  SoSFFloat nameFontSize;

  /// Null: that on the state.
  void setDataMapping(PbDataMapping* mapping);
  const PbDataMapping* getDataMapping() const;
  /// Null: those on the state, or else defaults.
  void setMiscTextAttr(PbMiscTextAttr* attributes);
  const PbMiscTextAttr* getMiscTextAttr() const;
  /// Of values. Null: that on the state, or else an automatic one.
  void setFormat(PbNumericDisplayFormat* format);
  const PbNumericDisplayFormat* getFormat() const;

  /// Which bar of this kit was picked: 1, and the index of its value; 0 if it was none, with `number` as it was.
  int getPickedBarNumber(const SoPickedPoint* point, int& number) const;

  void basicObjectChange(PbBase* object) override;

  /// The point of a bar at which a text stands: its corners are the lower left, lower right, upper right and upper left
  /// one, `gap` is kept from its side. `POS_DEPEND` counts as `POS_CENTER`.
  static void computeTextPos(const SbVec2f* corners, Position position, float gap, SbVec2f& pos);
  /// Which point of the text stands there, as PiText has them: outside, texts grow away from the bar, and inside away
  /// from its side.
  static void computeTextAlignPath(Position position, TextPath path, int& horizontal, int& vertical);

 protected:
  PoHistogram();
  ~PoHistogram() override;

  /// Takes over what the fields say, for this rebuild.
  virtual void setDefaultAttr();
  /// Adds the colours of the bars in front of them.
  virtual void colorBars(SoGroup* group);

  /// Whether the axis has finite ends that differ; else there is nothing to draw.
  bool hasPlace() const;
  /// Empties the parts.
  virtual void resetParts();
  /// Which entry of the list of colours a bar has, before the list is used in turn.
  virtual int colorIndex(int index) const;
  void buildBars();

  PiHistogramState& state() { return *m_histogramState; }
  const PiHistogramState& state() const { return *m_histogramState; }

  void preRebuild() override;
  void addElementsAllCaches() override;
  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;

 private:
  std::unique_ptr<PiHistogramState> m_histogramState;
};

#endif
