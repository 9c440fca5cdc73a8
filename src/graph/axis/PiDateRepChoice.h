#ifndef ORMELLE_PIDATEREPCHOICE_H
#define ORMELLE_PIDATEREPCHOICE_H

#include <span>
#include <vector>

#include "graph/axis/PiDateRep.h"
#include "graph/axis/PiDateSpan.h"

/// Which representation suits a span of time, and what it leaves open.
///
/// Wherever a step stays open it is one that gives about a dozen gradations or fewer: 1, 2, 3, 5, 10, 15, 20 or 30
/// seconds or minutes, 1, 2, 3, 4, 6, 8 or 12 hours, and any whole number of days, months or years.
namespace PiDateRepChoice {

/// What the periods of a time axis are compared with: months of 30.5 days and years of 365.25, whole but for seconds.
/// Periods of one weight, as they are sorted by it, are kept once.
std::vector<double> sortedPeriods(std::vector<PiDatePeriod> periods);

/// The complete representation for a span. With `periods` (seconds, ascending) that of the first period that isn't
/// below the span, the last one beyond all periods; else chooseBestDateRep(), and without `reps` the automatic one.
/// Always at least one level, each with a unit, a step above 0, and something to write.
PiDateRep getDateAxisRep(const PiDateSpan& span, std::span<const PiDateRep> reps, std::span<const double> periods,
                         PiDate::Language language);

/// The one of `reps` that comes nearest to a dozen gradations, judged by the step of its first level. One that leaves
/// this step open takes no part; if none is left, the automatic one.
PiDateRep chooseBestDateRep(const PiDateSpan& span, std::span<const PiDateRep> reps, PiDate::Language language);

/// One level by the span, and unless it counts years a second one further out that tells what the first leaves out.
PiDateRep initAutoRep(const PiDateSpan& span, PiDate::Language language);

/// The unit of a level next to the axis.
PiDate::StepType initDateStepOfLevel0(const PiDateSpan& span);

/// Sets the step of `level`, and its unit too where that is much too fine for the span.
void initDateNumStep(const PiDateSpan& span, PiDateLevel& level);

/// Drops the elements that are finer than the unit of `level`; if that leaves none, one of that unit.
void initDateElem(PiDateLevel& level);

}  // namespace PiDateRepChoice

#endif
