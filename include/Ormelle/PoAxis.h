#ifndef ORMELLE_POAXIS_H
#define ORMELLE_POAXIS_H

#include <memory>

#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>
#include <Inventor/fields/SoSFUShort.h>

#include <Ormelle/PoBaseAxis.h>

class PbMiscTextAttr;
struct PiAxisAttributes;
struct PiAxisState;

/// What every graduated line has: gradations with their texts, ticks and grid lines, a title, an arrow, margins.
///
/// An axis is drawn in coordinates of its own, which the part `transform` takes to its place: x is the coordinate along
/// the axis, y runs across it, towards the texts where they stand above it. Sizes (fonts, ticks, arrow, distances) are
/// fractions of the reference length, which is the side of the domain along the axis, so that charts of different
/// domains look alike.
///
/// Fields are what the application asks for, and a rebuild never changes them. A value of 0, or `*_DEPEND`, means that
/// the axis chooses; what it chose is told by the `get` functions, which give the fields until the first rebuild.
///
/// @section axis_fit Texts that stay readable
/// By its formulas an axis shrinks its texts until the widest fits between two gradations, and writes as many decimals
/// as the step needs. A few axes need more: steps that the numbers of the format don't tell apart, axes much shorter
/// than the domain, values so far from 0 that a float hardly tells neighbours apart. There a last pass adds decimals,
/// shrinks all texts further, and where they would become illegible writes only every second, fifth, tenth ... one. It
/// changes nothing on an axis that reads well already; see setGradLegibility().
///
/// @section axis_float What spans can be resolved
/// Coordinates are floats: 24 binary digits, 7 decimal ones. An axis from `a` to `b` shows distinct gradations as long
/// as |b - a| is at least some 10^-6 times the greater of |a| and |b| (ten gradations, each a few floats apart); on
/// shorter spans the step grows with the distance of two neighbouring floats, down to one gradation at each end.
/// Seconds since 1970, 1.8e9, are 128 apart as floats, and a map coordinate of 4,500,000 is known to half a metre.
/// Where more is needed, subtract a fixed offset from the data and name it in the title, or use a time axis. So far
/// from 0, more than a thousand of its own lengths, a Cartesian axis counts the coordinates in its parts from its
/// start, and `transform` holds the rest, so that lines and texts keep their distances while the camera moves.
///
/// Catalog, behind the parts of PoBase. Each element is a triple of `<name>Sep` (SoSeparator), `<name>App`
/// (SoAppearanceKit, to restyle the element) and `<name>` (SoGroup):
/// @code
/// alternateRep
///   transform      SoMatrixTransform
///   body           the line itself
///   arrow          a triangle beyond the end
///   title
///   subGradTick    all sub-ticks, one SoLineSet
///   subGradGrid    all grid lines of sub-gradations, one SoLineSet
///   mainGradTick
///   mainGradGrid
///   mainGradText   texts; their font is mainGradTextApp.font
/// @endcode
///
/// Texts are in the font of the PbMiscTextAttr that was given or that is on the traversal state, unless a field names
/// another.
class ORMELLE_API PoAxis : public PoBaseAxis {
  PO_KIT_ABSTRACT_HEADER(PoAxis, PoBaseAxis);
  PO_KIT_CATALOG_ENTRY_HEADER(transform);
  PO_KIT_TRIPLE_HEADER(body);
  PO_KIT_TRIPLE_HEADER(arrow);
  PO_KIT_TRIPLE_HEADER(title);
  PO_KIT_TRIPLE_HEADER(subGradTick);
  PO_KIT_TRIPLE_HEADER(subGradGrid);
  PO_KIT_TRIPLE_HEADER(mainGradTick);
  PO_KIT_TRIPLE_HEADER(mainGradGrid);
  PO_KIT_TRIPLE_HEADER(mainGradText);

 public:
  /// `DEPEND` values are resolved by the orientation of the axis.
  enum Visibility { VISIBILITY_OFF = 0, VISIBILITY_ON = 1, VISIBILITY_DEPEND = 2 };
  /// The writing direction, in the coordinates of the axis: along it, against it, to the side above, to that below.
  enum TextPath { PATH_RIGHT = 0, PATH_LEFT = 1, PATH_UP = 2, PATH_DOWN = 3, PATH_DEPEND = 4 };
  enum GradPosition { GRAD_ABOVE = 0, GRAD_BELOW = 1, GRAD_DEPEND = 2 };
  enum MarginType {
    REL_MARGIN = 0,   ///< a fraction of the length of the axis
    FIXED_MARGIN = 1  ///< in coordinates along the axis
  };
  enum TickPosition { TICK_GRAD_SIDE = 0, TICK_GRAD_OTHER_SIDE = 1, TICK_ACROSS_AXIS = 2 };
  enum TitlePosition { TITLE_MIDDLE = 0, TITLE_END = 1, TITLE_DEPEND = 2 };
  /// What `tickNumOrPeriod` means.
  enum TickSubDef {
    NUM_SUB_TICK = 0,     ///< the number of sub-ticks between two main ticks
    PERIOD_MAIN_TICK = 1  ///< every so many gradations a main tick, the others are sub-gradations
  };
  /// Of an axis that is seen from behind, texts upwards become texts downwards and the other way round.
  enum AxisReverse { AXIS_NO_REVERSE = 0, AXIS_REVERSE = 1, AXIS_REVERSE_DEPEND = 2 };
  /// The direction of an axis, and the direction in which its gradations are offset.
  enum Plane { PLANE_XY = 0, PLANE_XZ = 1, PLANE_YX = 2, PLANE_YZ = 3, PLANE_ZX = 4, PLANE_ZY = 5 };
  /// How a gradation of a logarithmic axis is written.
  enum LogGradType {
    LOG_GRAD_DECIMAL = 0,   ///< as a number: 0.02
    LOG_GRAD_DIGIT = 1,     ///< the digit alone: 2
    LOG_GRAD_TEN_POWER = 2  ///< with a raised exponent: 2.10^-2
  };
  /// When the last pass over gradation texts runs, see setGradLegibility().
  enum GradLegibility { LEGIBILITY_OFF = 0, LEGIBILITY_ON = 1, LEGIBILITY_DEPEND = 2 };

  SoSFEnum gradVisibility;            ///< a Visibility, `VISIBILITY_DEPEND` by default: on
  SoSFEnum gradPosition;              ///< a GradPosition, `GRAD_DEPEND` by default: below x axes in the xy plane
  SoSFEnum gradPath;                  ///< a TextPath, `PATH_DEPEND` by default
  SoSFString gradFontName;            ///< empty, by default: that of the PbMiscTextAttr
  SoSFFloat gradFontSize;             ///< fraction of the reference length; 0 or below, by default: automatic
  SoSFFloat gradDistAxis;             ///< of texts from the axis, fraction of the reference length; 0: automatic
  SoSFBool gradAddStringVisibility;   ///< adds the string below if it is `TRUE`; not by default
  SoSFString gradAddString;           ///< a unit, say, behind every gradation text
  SoSFEnum marginType;                ///< a MarginType, `REL_MARGIN` by default
  SoSFFloat marginStart;              ///< part of the axis without gradations at its start; 0 by default
  SoSFFloat marginEnd;                ///< the same at its end
  SoSFEnum titleVisibility;           ///< a Visibility, `VISIBILITY_DEPEND` by default: off
  SoSFEnum titlePosition;             ///< a TitlePosition, `TITLE_DEPEND` by default
  SoSFEnum titlePath;                 ///< a TextPath, `PATH_DEPEND` by default
  SoSFString titleFontName;           ///< as `gradFontName`
  SoSFFloat titleFontSize;            ///< fraction of the reference length; 0 or below, by default: 0.055
  SoSFFloat titleDistAxis;            ///< fraction of the reference length; 0, by default: beside what there is
  SoSFString titleString;             ///< broken into lines as the PbMiscTextAttr says
  SoSFEnum gridVisibility;            ///< a Visibility, `VISIBILITY_DEPEND` by default: off
  SoSFFloat gridLengthGradSide;       ///< on the side of texts, in coordinates of the direction across; 0 by default
  SoSFFloat gridLengthGradOtherSide;  ///< on the other side; 1 by default
  SoSFEnum arrowVisibility;           ///< a Visibility, `VISIBILITY_DEPEND` by default: on
  SoSFFloat arrowHeight;              ///< fraction of the reference length; 0 or below, by default: 0.03
  SoSFFloat arrowLength;              ///< fraction of the reference length; 0 or below, by default: 0.05
  SoSFEnum tickVisibility;            ///< a Visibility, `VISIBILITY_DEPEND` by default: on
  SoSFEnum tickPosition;              ///< a TickPosition, `TICK_GRAD_SIDE` by default
  SoSFFloat tickMainLength;           ///< fraction of the reference length; 0 or below: by the number of gradations
  SoSFFloat tickSubLength;            ///< the same; 0 or below, by default: half the length of main ticks
  SoSFEnum tickSubDef;                ///< a TickSubDef, `PERIOD_MAIN_TICK` by default
  SoSFUShort tickNumOrPeriod;         ///< sub-ticks in an interval, or the period of main ticks; 1 by default
  SoSFUShort tickFirstGrad;           ///< the first gradation with a main tick, counted from 1; 1 by default
  SoSFUShort tickLastGrad;            ///< the last one, counted from 1 from the end; 1 by default
  SoSFEnum reverseFlag;               ///< an AxisReverse, `AXIS_REVERSE_DEPEND` by default: not reversed

  /// Fonts and line breaking of the texts, instead of what is on the traversal state; null goes back to that. Not
  /// owned.
  void setMiscTextAttr(PbMiscTextAttr* attributes);
  /// What was set, else during a traversal what is on the state, else a default of the axis. Never null.
  const PbMiscTextAttr* getMiscTextAttr() const;

  /// Whether texts that the formulas leave overlapping, illegible or alike are thinned out, shrunk and given more
  /// decimals. `LEGIBILITY_DEPEND`, the default: if size, distance, step and format of the gradations are all
  /// automatic. `LEGIBILITY_ON`: always; a size, step or format that the application gave stays as it is.
  void setGradLegibility(GradLegibility legibility);
  GradLegibility getGradLegibility() const { return m_legibility; }

  /// @name What the last rebuild chose
  /// The fields until the first rebuild. Sizes and distances are fractions of the reference length.
  /// @{
  void getGrad(Visibility& visibility, GradPosition& position, TextPath& path, SbString& fontName, float& fontSize,
               float& distAxis, int& addStringVisibility, SbString& addString) const;
  void getMargin(MarginType& type, float& start, float& end) const;
  void getTitle(Visibility& visibility, TitlePosition& position, TextPath& path, SbString& fontName, float& fontSize,
                float& distAxis, SbString& title) const;
  void getGrid(Visibility& visibility, float& gradSide, float& otherSide) const;
  void getArrow(Visibility& visibility, float& height, float& length) const;
  void getTick(Visibility& visibility, TickPosition& position, float& mainLen, float& subLen, TickSubDef& subDef,
               unsigned short& numOrPeriod, unsigned short& first, unsigned short& last) const;
  AxisReverse getReverseFlag() const;
  /// The number and, in `coords`, the coordinates along the axis of the gradations of the last rebuild; 0 and null if
  /// there are none. The array is the axis's own and good until the next rebuild.
  /// @{
  int getMainGradCoords(const float*& coords) const;
  int getSubGradCoords(const float*& coords) const;
  /// @}
  /// @}

  void basicObjectChange(PbBase* object) override;

 protected:
  PoAxis();
  ~PoAxis() override;

  /// @name Steps of a rebuild, in their order
  /// @{
  /// Copies the fields, and takes fonts and reference lengths from what is in force.
  virtual void saveAxisAttr();
  /// Resolves every `*_DEPEND` of the copy. A plane that isn't one leaves them.
  virtual void setDefaultAttr(Plane plane);
  /// The range of gradations: that of the axis less its margins.
  virtual void computeGradLimit(float start, float end, float& gradStart, float& gradEnd);
  /// The lengths of ticks as fractions of the reference length; what is automatic is resolved by the number of main
  /// gradations.
  virtual void computeTickLen(int numMainGrads, float& mainLen, float& subLen);
  /// These add shapes to a group and let the limits grow. `length` of ticks is in coordinates of the axis.
  /// @{
  virtual void buildArrow(float start, float end, SoGroup* group);
  virtual void buildTick(int num, const float* coords, float length, SoGroup* group);
  virtual void buildGridLines(int num, const float* coords, SoGroup* group);
  virtual void buildGrads(int num, const float* coords, const char** strings, SoGroup* group);
  /// @}
  /// @}

  /// Splits `n` gradations, ascending or descending, into main and sub-gradations, by the fields on ticks; the result
  /// is in state(). The strings stay where they are.
  void computeGradList(float gradStart, float gradEnd, float step, int n, const char** allStrings,
                       const float* allCoords);
  void buildTitle(float start, float end, SoGroup* group);
  /// Writes "x 10" with a raised exponent beyond `max`, seen from `min`. A `dist` of 0 is chosen; fraction of the
  /// reference length.
  void buildMultFactorAtExtr(int exponent, float min, float max, float& dist, SoGroup* group);

  /// The digits that are gradated inside a decade, by the number of decades on the axis; `list` points into a table.
  static void computeDecadeGradList(int numDecades, const int** list, int& count);
  /// At least `n` slots for texts of up to 99 characters, shared by all axes and used by one rebuild at a time.
  static char** allocGradString(int n);

  /// The start of the texts and shapes: parts `body` and `arrow`, and limits that are the axis itself.
  void buildAxisLine(float start, float end);
  /// Parts for the ticks and grid lines of the main and sub-gradations in state(); `mainGradText` is left to the
  /// caller.
  void buildTicksAndGrids();
  /// Part `mainGradText` with its font, of the main gradations in state().
  void buildGradTextPart();
  /// Part `title` with its font.
  void buildTitlePart(float start, float end);
  /// Sets `<element>App.font`; `size` is a fraction of the reference length. Takes it away again if `isShown` is 0.
  void setElementFont(const char* element, int isShown, const SbString& name, float size);

  /// The working values of the last or running rebuild; internal.
  PiAxisState& state() { return *m_axisState; }
  const PiAxisState& state() const { return *m_axisState; }

  /// What was built depends on this traversal element, so that another one calls for a rebuild.
  void dependOn(int elementStackIndex);
  /// Takes over what another axis of the same class was given: its fields, text attributes and legibility.
  void copyAxis(const PoAxis& other);

  void preRebuild() override;
  void addElementsAllCaches() override;
  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;

 private:
  PiAxisAttributes answers() const;

  std::unique_ptr<PiAxisState> m_axisState;
  GradLegibility m_legibility = LEGIBILITY_DEPEND;
};

#endif
