#ifndef ORMELLE_PIAXISATTRIBUTES_H
#define ORMELLE_PIAXISATTRIBUTES_H

#include <Inventor/SbString.h>
#include <Ormelle/PoAxis.h>

/// The fields of an axis as a rebuild uses them: copied once, then resolved. Numbers are finite.
struct PiAxisAttributes {
  PoAxis::Visibility gradVisibility = PoAxis::VISIBILITY_DEPEND;
  PoAxis::GradPosition gradPosition = PoAxis::GRAD_DEPEND;
  PoAxis::TextPath gradPath = PoAxis::PATH_DEPEND;
  SbString gradFontName;
  float gradFontSize = 0;
  float gradDistAxis = 0;
  int gradAddStringVisibility = 0;
  SbString gradAddString;
  PoAxis::MarginType marginType = PoAxis::REL_MARGIN;
  float marginStart = 0;
  float marginEnd = 0;
  PoAxis::Visibility titleVisibility = PoAxis::VISIBILITY_DEPEND;
  PoAxis::TitlePosition titlePosition = PoAxis::TITLE_DEPEND;
  PoAxis::TextPath titlePath = PoAxis::PATH_DEPEND;
  SbString titleFontName;
  float titleFontSize = 0;
  float titleDistAxis = 0;
  SbString titleString;
  PoAxis::Visibility gridVisibility = PoAxis::VISIBILITY_DEPEND;
  float gridLengthGradSide = 0;
  float gridLengthGradOtherSide = 1;
  PoAxis::Visibility arrowVisibility = PoAxis::VISIBILITY_DEPEND;
  float arrowHeight = 0;
  float arrowLength = 0;
  PoAxis::Visibility tickVisibility = PoAxis::VISIBILITY_DEPEND;
  PoAxis::TickPosition tickPosition = PoAxis::TICK_GRAD_SIDE;
  float tickMainLength = 0;
  float tickSubLength = 0;
  PoAxis::TickSubDef tickSubDef = PoAxis::PERIOD_MAIN_TICK;
  unsigned short tickNumOrPeriod = 1;
  unsigned short tickFirstGrad = 1;
  unsigned short tickLastGrad = 1;
  PoAxis::AxisReverse reverseFlag = PoAxis::AXIS_REVERSE_DEPEND;

  /// The fields of `axis`; values that are none of an enumeration count as its default, numbers that aren't finite as
  /// 0, and sizes end at a million reference lengths.
  static PiAxisAttributes of(const PoAxis& axis);

  /// Settles every `*_DEPEND`. A plane that isn't one changes nothing.
  void resolve(PoAxis::Plane plane);

  bool isAbove() const { return gradPosition == PoAxis::GRAD_ABOVE; }
  /// +1 where texts stand above the axis, else -1.
  float side() const { return isAbove() ? 1.0F : -1.0F; }
  /// `path` as it is written: up and down change places on a reversed axis.
  PoAxis::TextPath effective(PoAxis::TextPath path) const;
  /// What is added to each gradation text; null for nothing.
  const char* addedString() const { return gradAddStringVisibility == 1 ? gradAddString.getString() : nullptr; }
};

#endif
