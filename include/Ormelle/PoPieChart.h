#ifndef ORMELLE_POPIECHART_H
#define ORMELLE_POPIECHART_H

#include <memory>

#include <Inventor/SbVec2f.h>
#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFInt32.h>
#include <Inventor/fields/SoMFString.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>

#include <Ormelle/PoAxis.h>
#include <Ormelle/PoTavernel.h>

class PbMiscTextAttr;
class PbNumericDisplayFormat;
class SoPath;
struct PiPieState;

/// What flat and solid pies have in common: the values of their slices, the grouping of small ones, slices that are
/// pulled out, and annotations inside and outside.
///
/// A value that is negative or not finite counts as 0, and takes no slice. Slices follow each other counterclockwise
/// from the x axis, in the order of the values; that of the grouped ones is the last.
///
/// An annotation is a box of up to three lines: text, value (with the added string) and percentage, as far as they are
/// visible; a piece whose visibility is `VISIBILITY_DEPEND` isn't. Percentages are rounded so that those shown sum to
/// 100 (largest remainder); they have the decimals of the format set with setFormat(), or none. An inner annotation
/// that doesn't fit into its slice isn't shown. Outer annotations make room for each other, stay inside the domain if
/// the pie does, and those of the smallest slices are left out where there is no room.
///
/// Font sizes, distances and the width of arrows are fractions of the reference length, the width of the domain; 0 and
/// below mean automatic, by the radius of the pie.
///
/// Data objects: PbMiscTextAttr (the font where a field names none; own or on the state), PbNumericDisplayFormat (own
/// or on the state). Neither is owned; both must outlive the kit or tell of their end as all data objects do.
///
/// Catalog, behind the parts of PoBase: for each of `slice`, `sliceBorder`, `intAnnotBox`, `intAnnotBoxBorder`,
/// `intAnnotText`, `intAnnotValue`, `intAnnotPercent`, `extAnnotBox`, `extAnnotBoxBorder`, `extAnnotText`,
/// `extAnnotValue`, `extAnnotPercent` a triple `<name>Sep` (SoSeparator), `<name>App` (SoAppearanceKit, to style it)
/// and
/// `<name>` (SoGroup). Leaders and their arrows stand with the borders. Boxes are white and borders grey unless the
/// application's `<name>App` has a material: then they have that. The groups of annotations are SoAnnotation, and so
/// are drawn in front of the pie.
class ORMELLE_API PoPieChart : public PoTavernel {
  PO_KIT_ABSTRACT_HEADER(PoPieChart, PoTavernel);
  PO_KIT_TRIPLE_HEADER(slice);
  PO_KIT_TRIPLE_HEADER(sliceBorder);
  PO_KIT_TRIPLE_HEADER(intAnnotBox);
  PO_KIT_TRIPLE_HEADER(intAnnotBoxBorder);
  PO_KIT_TRIPLE_HEADER(intAnnotText);
  PO_KIT_TRIPLE_HEADER(intAnnotValue);
  PO_KIT_TRIPLE_HEADER(intAnnotPercent);
  PO_KIT_TRIPLE_HEADER(extAnnotBox);
  PO_KIT_TRIPLE_HEADER(extAnnotBoxBorder);
  PO_KIT_TRIPLE_HEADER(extAnnotText);
  PO_KIT_TRIPLE_HEADER(extAnnotValue);
  PO_KIT_TRIPLE_HEADER(extAnnotPercent);

 public:
  using Visibility = PoAxis::Visibility;
  enum PercentStatus {
    ABSOLUTE = 0,   ///< a value
    PERCENTAGE = 1  ///< hundredths of the sum of all values
  };
  enum IntAnnotPosition {
    RADIAL_INT_POS = 0,  ///< read along the radius
    HOR_INT_POS = 1      ///< read along x
  };
  enum ExtAnnotPosition {
    RADIAL_EXT_POS = 0,         ///< round the pie, each read along its radius
    HOR_EXT_POS = 1,            ///< left and right of the pie, as near as each can come
    HOR_ALIGNED_EXT_POS = 2,    ///< on a line above the pie and one below
    VERT_ALIGNED_EXT_POS = 3,   ///< on a line left of the pie and one right
    SQUARE_ALIGNED_EXT_POS = 4  ///< on the sides of a square round the pie
  };
  /// Of the lines of an annotation.
  enum Alignment {
    LEFT_ALIGN = 0,
    CENTER_ALIGN = 1,
    RIGHT_ALIGN = 2,
    INWARDS_ALIGN = 3,  ///< at the side of the pie's centre
    OUTWARDS_ALIGN = 4  ///< at the side away from it
  };

  SoMFFloat sliceValue;              ///< one a slice; none by default
  SoMFString sliceText;              ///< one a slice; a slice without one has an empty text
  SoMFColor sliceColor;              ///< used in turn; the group has the last one. None: eight of our own
  SoMFInt32 sliceToTranslateNumber;  ///< which slices are pulled out, counted from 0; -1 is the group
  SoMFFloat sliceToTranslateValue;   ///< how far each of those is moved from the centre, in coordinates
  SoSFBool sliceGroupActive;         ///< whether small slices become one, if there are at least two; not by default
  SoSFFloat sliceGroupMinValue;      ///< slices below it are small; 0 by default
  SoSFEnum sliceGroupFlagMin;        ///< a PercentStatus: what that limit is; `ABSOLUTE` by default
  SoSFString sliceGroupString;       ///< the text of the group; "Others" by default
  SoSFFloat sliceAngleStep;          ///< the largest angle between two points of an arc, in radians; 0.05 by default
  SoSFEnum intAnnotPosition;         ///< an IntAnnotPosition; `HOR_INT_POS` by default
  SoSFEnum extAnnotPosition;         ///< an ExtAnnotPosition; `HOR_EXT_POS` by default
  SoSFEnum intAnnotAlignment;        ///< an Alignment; `CENTER_ALIGN` by default
  SoSFEnum extAnnotAlignment;        ///< an Alignment; `INWARDS_ALIGN` by default

  /// @name Which pieces annotations have, in which font; all `VISIBILITY_OFF` by default
  /// @{
  SoSFEnum intAnnotTextVisibility;
  SoSFEnum intAnnotValueVisibility;
  SoSFEnum intAnnotPercentVisibility;
  SoSFEnum intAnnotAddStringVisibility;
  SoSFEnum extAnnotTextVisibility;
  SoSFEnum extAnnotValueVisibility;
  SoSFEnum extAnnotPercentVisibility;
  SoSFEnum extAnnotAddStringVisibility;
  SoSFString intAnnotTextFontName;  ///< empty, as all of them by default: that of the PbMiscTextAttr
  SoSFFloat intAnnotTextFontSize;   ///< 0, as all of them by default: 0.1 radii
  SoSFString intAnnotValueFontName;
  SoSFFloat intAnnotValueFontSize;
  SoSFString intAnnotPercentFontName;
  SoSFFloat intAnnotPercentFontSize;
  SoSFString extAnnotTextFontName;
  SoSFFloat extAnnotTextFontSize;
  SoSFString extAnnotValueFontName;
  SoSFFloat extAnnotValueFontSize;
  SoSFString extAnnotPercentFontName;
  SoSFFloat extAnnotPercentFontSize;
  SoSFString intAnnotAddString;  ///< behind the value; empty by default
  SoSFString extAnnotAddString;
  /// @}

  SoSFFloat intAnnotDistance;   ///< of inner annotations from the centre of their slice; 0: where they fit best
  SoSFFloat extAnnotDistance1;  ///< first leg of a leader, out along the middle of the slice; 0: 0.08 radii
  SoSFFloat extAnnotDistance2;  ///< second leg, on towards the annotation; 0: 0.1 radii
  SoSFFloat extAnnotDistance3;  ///< third leg, along the line of reading; 0: 0.08 radii
  SoSFFloat arrowWidth;         ///< of the arrow of a leader at its slice; 0, by default: there is none

  /// Null: those on the state, or else defaults.
  void setMiscTextAttr(PbMiscTextAttr* attributes);
  const PbMiscTextAttr* getMiscTextAttr() const;
  /// Of values. Null: that on the state, or else an automatic one.
  void setFormat(PbNumericDisplayFormat* format);
  const PbNumericDisplayFormat* getFormat() const;

  /// Which slice of this or another pie a picked path leads to: 1, and its number, counted from 0 (-1: the group); 0 if
  /// it leads to none, with `number` as it was.
  int getPickedSliceNumber(const SoPath* path, int& number) const;

  /// Pulls a slice out by `distance`, or puts it back with 0; the others stay as they are.
  void setSliceToTranslate(int number, float distance);
  /// How far a slice is pulled out; 0 for others.
  float getSliceToTranslate(int number) const;

  void basicObjectChange(PbBase* object) override;

 protected:
  PoPieChart();
  ~PoPieChart() override;

  /// Takes over what the fields say, for this rebuild.
  void savePieChartAttr();
  /// Finds the displayed slices and their shares.
  void computeSlicePartValuesToDisplay();
  /// Names the nodes of the displayed slices "Slice0" and so on, that of the group "Slice-1".
  void computeSliceNames();
  /// Makes the texts of the displayed slices.
  void computeStringsToDisplay();
  void resetAllPart();
  void drawInternalAnnotations();
  void drawExternalAnnotations();

  /// Where the pie stands.
  virtual SbVec2f pieCenter() const = 0;
  virtual float pieRadius() const = 0;
  /// The height in which annotations stand.
  virtual float annotationHeight() const { return 0; }
  /// Builds the parts `slice` and `sliceBorder` of the displayed slices.
  virtual void drawSlices() = 0;
  /// The same between two heights; flat ones stand at the first.
  void buildSlices(bool isSolid, float zMin, float zMax);

  PiPieState& state() { return *m_pieState; }

  void preRebuild() override;
  void rebuild() override;
  void addElementsAllCaches() override;
  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;

 private:
  struct Side;
  void drawAnnotations(const Side& side);

  std::unique_ptr<PiPieState> m_pieState;
};

#endif
