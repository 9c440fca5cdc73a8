#ifndef ORMELLE_PIDATEGRADATIONS_H
#define ORMELLE_PIDATEGRADATIONS_H

#include <string>
#include <vector>

#include "graph/axis/PiDateRep.h"

class PbDateFormatMapping;
class PiNumericFormat;

/// The part of a time axis that bears gradations. Start may be later than end; both coordinates are finite.
struct PiDateRange {
  PiDate start, end;
  float startCoord = 0, endCoord = 0;
};

/// The gradations of one level, from the start of the range to its end.
struct PiDateGradList {
  std::vector<PiDate> dates;
  std::vector<float> coords;
  std::vector<std::string> texts;
};

/// Where the gradations of a level stand, and what they say.
namespace PiDateGradations {

enum Fit {
  FIT = 0,   ///< from the start of the range on
  UNFIT = 1  ///< on multiples of the step in its unit: the 2nd, 4th, 6th day; 1990, 1995
};

/// More gradations than this are no axis any more: then the step is that many times greater.
constexpr int kMaxGradations = 10000;
/// The longest text; what is longer is cut.
constexpr size_t kMaxTextLength = 99;

/// How texts are written.
struct Style {
  PiDate::Language language = PiDate::ENGLISH;
  /// Names are cut no shorter than tells them from all others: JUIN and JUIL, where three letters were wanted.
  bool hasDistinctNames = false;
  std::string suffix;  ///< behind each text
};

/// `level` must be complete, see PiDateRepChoice::getDateAxisRep(). A range within which no gradation falls has a
/// single one, in its middle, with the text of its start. Of gradations that fall on one coordinate, which then can't
/// tell them apart, the first is kept.
PiDateGradList getGradList(const PiDateRange& range, const PbDateFormatMapping& mapping, const PiDateLevel& level,
                           Fit fit, const Style& style, int maxGradations = kMaxGradations);

/// The first gradation at or behind the earlier end of the range (`UNFIT`), or its start (`FIT`). It can lie behind the
/// later end.
PiDate getFirstDateGrad(const PiDateRange& range, const PbDateFormatMapping& mapping, PiDate::StepType unit,
                        float numStep, Fit fit);

/// One item of a date, without the text behind it; names are cut to `count` letters when it is positive.
std::string getStringDate(const PiDate& date, int count, PiDateForm form, PiDate::Language language,
                          const PiNumericFormat& secondsFormat);

}  // namespace PiDateGradations

#endif
