#ifndef ORMELLE_PIDATEREP_H
#define ORMELLE_PIDATEREP_H

#include <string>
#include <vector>

#include "graph/format/PiDate.h"

/// One printed item of a date. The order is from fine to coarse.
enum class PiDateForm : int {
  SECOND = 0,
  MINUTE = 1,
  HOUR = 2,
  DAY = 3,
  DAY_NAME = 4,
  MONTH = 5,
  MONTH_NAME = 6,
  YEAR = 7
};

/// An item and the text that follows it.
struct PiDateElement {
  int count = 0;  ///< characters of a name, 0 for all; never negative
  PiDateForm form = PiDateForm::SECOND;
  std::string text;

  bool operator==(const PiDateElement&) const = default;
};

/// One line of gradations along a time axis: how far they are apart and what is written.
struct PiDateLevel {
  PiDate::StepType unit = PiDate::NO_STEP;  ///< `NO_STEP` leaves unit and step to the span
  float numStep = 0;                        ///< units from one gradation to the next; 0 leaves it to the span
  bool hasPrefix = false;
  std::string prefix;  ///< written before the first element
  std::vector<PiDateElement> elements;

  bool operator==(const PiDateLevel&) const = default;
};

/// The levels, the finest, which stands next to the axis, first.
using PiDateRep = std::vector<PiDateLevel>;

/// A length of time as it is written: 3 months.
struct PiDatePeriod {
  float value = 1;
  PiDate::StepType unit = PiDate::NO_STEP;

  bool operator==(const PiDatePeriod&) const = default;
};

#endif
