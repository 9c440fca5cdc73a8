#ifndef ORMELLE_POTIMEAXIS_H
#define ORMELLE_POTIMEAXIS_H

#include <memory>

#include <Inventor/fields/SoMFString.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>

#include <Ormelle/PoAxis.h>

class PbDateFormatMapping;
class SoMatrixTransform;
struct PiTimeAxisState;

/// An axis along x or y whose values are dates, from a fraction of a second to ten thousand years.
///
/// Gradations are written on one or more levels: a fine one next to the axis (hours, say) and coarser ones further out
/// (days, months), each of which stands at the beginning of what it names. Ticks and grid lines are those of the fine
/// level. Where dates stand, and how they are written in `startDate` and `endDate`, is told by the PbDateFormatMapping
/// that was given or that is on the traversal state.
///
/// @code
/// auto* axis = new PoTimeAxis("1-03-58", "31-12-97", 0, PoTimeAxis::X);
/// axis->setDateFormatMapping(&mapping);             // "dmy", and the coordinates of two dates
/// axis->gradRep = "5 YEA Y";                        // instead of what the axis would choose
/// root->addChild(axis);
/// @endcode
///
/// @section time_axis_rep Representations
/// Each entry of `gradRep` is one representation: levels from fine to coarse, between them the end-of-line character of
/// the PbMiscTextAttr (PbMiscTextAttr::setLineLength()). That is a blank by default, which separates nothing, as blanks
/// don't count: for several levels set another one. A level is
///
///     [[number] period] [text] { [count] element [text] }
///
/// | | |
/// |---|---|
/// | period | `SEC` `MIN` `HOU` `DAY` `MON` `YEA`: from one gradation to the next. Without one, or without the number,
/// the axis chooses by the span | | element | `s` `m` `H` `D` `M` `Y`: second, minute, hour, day, month, year as
/// numbers | | count | letters of a name: with one, `D` and `M` are the names of the day of the week and the month | |
/// text | between single quotes, two of which stand for one; written as it stands |
///
/// `1 DAY 3 D ' ' D '.' M` writes "TUE 14.7", and `6 HOU H 'h' | 1 DAY D ' ' 3 M ' ' Y` hours next to the axis and days
/// below. A level that says nothing to write has the number of its period, or for months the name. A level without a
/// period takes the one that follows that of the level before, and then only writes elements at least as coarse. A step
/// below 1 is counted in the next finer unit (0.5 DAY is 12 HOU), other fractions count in seconds only, and of a
/// negative step the sign is dropped.
///
/// Of several representations the one is taken that comes nearest to a dozen gradations, or if `timesPeriod` is set the
/// one for the first period that isn't below the span, the last representation being for longer spans. `timesPeriod` is
/// a list of one period less than there are representations, such as "1 DAY 3 MON YEA". Without any representation the
/// axis has a level that suits the span and, unless it is of years, a coarser second one.
///
/// Where one of the two can't be read, or they don't fit each other, the representations that were in force stay, and a
/// PoDebugError says so. A date that can't be read, or two dates with one coordinate, leave all parts as they are.
///
/// @section time_axis_float What spans can be resolved
/// Coordinates are floats. An axis whose mapping begins near its own dates resolves a ten-millionth of the span; if the
/// mapping counts seconds from a far epoch, dates closer than the floats there (128 seconds in 2026, counted from 1970)
/// have one coordinate, and only the first of them is gradated. So let the mapping begin where the data begin. Far from
/// 0 the coordinates in the parts count from the start of the axis, as those of Cartesian axes do.
///
/// The transform, the order of steps and all else is that of PoAxis. For a `Y` axis the side of the domain that
/// lengths of grid lines are counted in is that along z.
class ORMELLE_API PoTimeAxis : public PoAxis {
  PO_KIT_HEADER(PoTimeAxis, PoAxis);

 public:
  enum Language { ENGLISH = 0, FRANCAIS = 1, DEUTSCH = 2, ESPANOL = 3 };
  enum Type { X = 0, Y = 1 };
  enum GradFit {
    GRAD_FIT = 0,   ///< gradations count from the start of the axis
    GRAD_UNFIT = 1  ///< gradations stand on multiples of the step in its unit: full hours, every fifth year
  };

  SoSFString startDate;    ///< in the format of the PbDateFormatMapping; "1-01-70" by default
  SoSFString endDate;      ///< may be earlier than `startDate`; "2-01-70" by default
  SoSFFloat coord;         ///< where the axis stands across its direction; 0 by default
  SoSFEnum type;           ///< a Type, `X` by default
  SoSFEnum language;       ///< a Language, of the names of days and months; `ENGLISH` by default
  SoSFEnum gradFit;        ///< a GradFit, `GRAD_UNFIT` by default
  SoMFString gradRep;      ///< the representations; without an entry, or if the first is empty, automatic: the default
  SoSFString timesPeriod;  ///< the periods that select one of them; empty by default

  PoTimeAxis();
  PoTimeAxis(const char* startDate, const char* endDate, float coord, Type type);

  /// What dates coordinates stand for, instead of what is on the traversal state; null goes back to that. Not owned.
  void setDateFormatMapping(PbDateFormatMapping* mapping);
  /// What was set, else during a traversal what is on the state, else the default one. Never null.
  const PbDateFormatMapping* getDateFormatMapping() const;

  /// @name What the two languages are read into
  /// Plain structures, whose arrays and texts belong to them: the parsers allocate, and the functions here free.
  /// @{

  /// The unit of a level.
  enum Tdate_step {
    STEP_UNSET = 0,
    STEP_SECOND = 1,
    STEP_MINUTE = 2,
    STEP_HOUR = 3,
    STEP_DAY = 4,
    STEP_MONTH = 5,
    STEP_YEAR = 6
  };
  /// One printed element of a date.
  enum Tdate_elem_form {
    FORM_SECOND = 0,
    FORM_MINUTE = 1,
    FORM_HOUR = 2,
    FORM_DAY = 3,
    FORM_DAY_NAME = 4,
    FORM_MONTH = 5,
    FORM_MONTH_NAME = 6,
    FORM_YEAR = 7
  };
  /// A piece of a date in a text.
  struct Tdate_elem {
    int count;  ///< letters of a name, 0 for all
    Tdate_elem_form form;
    char* text;  ///< what follows, null if absent
  };
  /// How the gradations of one level are spaced and written.
  struct Tdate_axis_level_rep {
    Tdate_step step;
    float numStep;
    int spare;
    char* string;  ///< what stands before the elements, null if absent
    int numElem;
    Tdate_elem* elems;
  };
  /// A representation: its levels, the finest first.
  struct Tdate_axis_rep {
    int numLevel;
    Tdate_axis_level_rep* levels;
  };
  /// A list of periods of time.
  struct Tdate_list {
    /// A period: so many of a unit.
    struct Date {
      float value;
      Tdate_step unit;
    };
    int numDate;
    Date* dates;
  };

  /// Reads one representation. `error` is 0 on success; otherwise `rep` has no levels. What `rep` held isn't freed.
  static void parseAxisRep(const char* string, int separator, Tdate_axis_rep* rep, int* error);
  /// Reads a list of periods, in the same way.
  static void parseDateList(const char* string, Tdate_list* list, int* error);
  /// Makes `to` a copy of its own. What `to` held isn't freed.
  static void copyDateRep(const Tdate_axis_rep* from, Tdate_axis_rep* to);
  /// Free all that a structure holds, and leave it empty.
  static void freeDateAxisRep(Tdate_axis_rep* rep);
  static void freeDateList(Tdate_list* list);
  /// Frees an array of `n`, made with new[], and all that it holds.
  static void freeDateAxisRepList(int n, Tdate_axis_rep* reps);
  /// @}

  void rebuild() override;

 protected:
  ~PoTimeAxis() override;

  void saveAxisAttr() override;
  void preRebuild() override;
  void addElementsAllCaches() override;
  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;

 private:
  Type getType() const;
  bool findDates();
  void computeTransfo(SoMatrixTransform* out);
  void buildAll(float start, float end);
  void setDateAxisRep();
  void chooseLevels();
  void buildDateGrads(SoGroup* group);

  std::unique_ptr<PiTimeAxisState> m_timeState;
};

#endif
