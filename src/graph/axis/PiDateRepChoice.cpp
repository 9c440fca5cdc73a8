#include "graph/axis/PiDateRepChoice.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "graph/axis/PiLinearGradations.h"

namespace {

constexpr double kSecondsOfUnit[] = {0, 1, 60, 3600, 86400, 2592000, 31536000};  // months of 30, years of 365 days
// By these weights periods are sorted. That of the year is what users' files rely on, not its length.
constexpr double kPeriodWeights[] = {0, 1, 60, 3600, 86400, 2635200, 962506816};
constexpr double kPeriodDays[] = {0, 0, 0, 0, 1, 30.5, 365.25};

struct UnitDefaults {
  PiDateForm finest;  // of the elements that are kept
  PiDateElement element;
};

const UnitDefaults& defaultsOf(PiDate::StepType unit) {
  static const UnitDefaults defaults[] = {
      {PiDateForm::SECOND, {0, PiDateForm::SECOND, ""}},  {PiDateForm::SECOND, {0, PiDateForm::SECOND, "\""}},
      {PiDateForm::MINUTE, {0, PiDateForm::MINUTE, "'"}}, {PiDateForm::HOUR, {0, PiDateForm::HOUR, "h"}},
      {PiDateForm::DAY, {0, PiDateForm::DAY, ""}},        {PiDateForm::MONTH, {3, PiDateForm::MONTH_NAME, ""}},
      {PiDateForm::YEAR, {24, PiDateForm::YEAR, ""}}};
  return defaults[unit];
}

// A step of this many units for counts below a limit.
struct Rung {
  int limit;
  int step;
};
constexpr Rung kSexagesimal[] = {{13, 1}, {25, 2}, {37, 3}, {61, 5}, {121, 10}, {181, 15}, {241, 20}, {450, 30}};
constexpr Rung kHours[] = {{13, 1}, {25, 2}, {37, 3}, {49, 4}, {73, 6}, {97, 8}, {312, 12}};

// 0 above the last rung.
int stepOfLadder(std::span<const Rung> ladder, double count) {
  const auto rung = std::find_if(ladder.begin(), ladder.end(), [&](const Rung& r) { return count < r.limit; });
  return rung == ladder.end() ? 0 : rung->step;
}

float twelfth(int count) { return static_cast<float>(std::max(1, static_cast<int>(count / 12.0 + 0.5))); }

PiDate::StepType nextUnit(PiDate::StepType unit) { return static_cast<PiDate::StepType>(unit + 1); }

double weightOf(const PiDateRep& rep) {
  const PiDateLevel& level = rep.front();
  const double numStep = level.numStep == 0 ? 1 : std::abs(level.numStep);
  return numStep * kSecondsOfUnit[level.unit];
}

// A twelfth of the span, worked out in the largest unit that it fills.
double wantedWeight(const PiDateSpan& span) {
  if (span.days > 0)
    return span.days < 13 ? static_cast<int>(span.inHours() / 12) * 3600.0 : static_cast<int>(span.days / 12) * 86400.0;
  if (span.hours > 0)
    return span.hours < 13 ? static_cast<int>(span.inMinutes() / 12) * 60.0
                           : static_cast<int>(span.hours / 12) * 3600.0;
  if (span.minutes > 0) return span.minutes < 13 ? span.inSeconds() / 12 : static_cast<int>(span.minutes / 12) * 60.0;
  return span.seconds / 12;
}

bool isNothingWritten(const PiDateLevel& level) { return level.elements.empty() && !level.hasPrefix; }

// Less than one day can't be counted in days: it is that part of a day in hours, and so on.
void leaveFractions(PiDateLevel& level) {
  constexpr float kParts[] = {0, 0, 60, 60, 24, 30, 12};
  level.numStep = std::abs(level.numStep);
  while (level.numStep > 0 && level.numStep < 1 && level.unit > PiDate::SECOND) {
    level.numStep *= kParts[level.unit];
    level.unit = static_cast<PiDate::StepType>(level.unit - 1);
  }
  if (level.unit > PiDate::SECOND) level.numStep = std::trunc(level.numStep);
}

void completeStep(const PiDateSpan& span, PiDateLevel& level) {
  const PiDate::StepType unit = level.unit;
  leaveFractions(level);
  if (level.numStep == 0) PiDateRepChoice::initDateNumStep(span, level);
  // Elements of a unit that turned out much too fine would be the same all along.
  if (isNothingWritten(level) || level.unit > unit) PiDateRepChoice::initDateElem(level);
}

PiDateRep complete(const PiDateSpan& span, PiDateRep rep) {
  if (rep.empty()) rep.emplace_back();
  if (rep[0].unit == PiDate::NO_STEP) {
    rep[0].unit = PiDateRepChoice::initDateStepOfLevel0(span);
    rep[0].numStep = 0;
    PiDateRepChoice::initDateElem(rep[0]);
  }
  completeStep(span, rep[0]);
  for (size_t i = 1; i < rep.size(); ++i) {
    if (rep[i].unit == PiDate::NO_STEP) {
      if (rep[i - 1].unit == PiDate::YEAR) {
        rep.resize(i);
        break;
      }
      rep[i].unit = nextUnit(rep[i - 1].unit);
      rep[i].numStep = 0;
      PiDateRepChoice::initDateElem(rep[i]);
    }
    completeStep(span, rep[i]);
  }
  return rep;
}

}  // namespace

std::vector<double> PiDateRepChoice::sortedPeriods(std::vector<PiDatePeriod> periods) {
  const auto weight = [](const PiDatePeriod& period) { return double{period.value} * kPeriodWeights[period.unit]; };
  std::stable_sort(periods.begin(), periods.end(), [&](const auto& a, const auto& b) { return weight(a) < weight(b); });
  periods.erase(
      std::unique(periods.begin(), periods.end(), [&](const auto& a, const auto& b) { return weight(a) == weight(b); }),
      periods.end());
  std::vector<double> seconds;
  for (const PiDatePeriod& period : periods) {
    const double value = period.value;
    if (period.unit == PiDate::SECOND)
      seconds.push_back(value);
    else if (period.unit < PiDate::DAY)
      seconds.push_back(std::trunc(value) * kSecondsOfUnit[period.unit]);
    else
      seconds.push_back(std::trunc(value * kPeriodDays[period.unit]) * 86400);
  }
  return seconds;
}

PiDateRep PiDateRepChoice::getDateAxisRep(const PiDateSpan& span, std::span<const PiDateRep> reps,
                                          std::span<const double> periods, PiDate::Language language) {
  if (reps.empty()) return complete(span, initAutoRep(span, language));
  if (periods.empty()) return complete(span, chooseBestDateRep(span, reps, language));
  const double seconds = span.inSeconds();
  const auto period = std::find_if(periods.begin(), periods.end(), [&](double p) { return p >= seconds; });
  // Periods of one weight being kept once, there can be fewer of them than representations less one.
  return complete(span, period == periods.end() ? reps.back() : reps[static_cast<size_t>(period - periods.begin())]);
}

PiDateRep PiDateRepChoice::chooseBestDateRep(const PiDateSpan& span, std::span<const PiDateRep> reps,
                                             PiDate::Language language) {
  std::vector<std::pair<double, const PiDateRep*>> candidates;
  for (const PiDateRep& rep : reps)
    if (const double weight = rep.empty() ? 0 : weightOf(rep); weight > 0) candidates.emplace_back(weight, &rep);
  if (candidates.empty()) return initAutoRep(span, language);
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  const double wanted = wantedWeight(span);
  auto best = std::find_if(candidates.begin(), candidates.end(), [&](const auto& c) { return c.first >= wanted; });
  if (best == candidates.end()) --best;
  if (best != candidates.begin() && std::abs(wanted - (best - 1)->first) < std::abs(wanted - best->first)) --best;
  return *best->second;
}

PiDateRep PiDateRepChoice::initAutoRep(const PiDateSpan& span, PiDate::Language language) {
  PiDateRep rep(1);
  rep[0].unit = initDateStepOfLevel0(span);
  initDateElem(rep[0]);
  if (rep[0].unit == PiDate::YEAR) return rep;

  using enum PiDateForm;
  PiDateLevel coarse;
  coarse.unit = nextUnit(rep[0].unit);
  int64_t count = 0;
  switch (rep[0].unit) {
    case PiDate::SECOND:
      count = span.inMinutes();
      coarse.elements = {{24, HOUR, "h "}, {0, MINUTE, "'"}};
      break;
    case PiDate::MINUTE:
      count = span.inHours();
      coarse.elements = {{0, DAY, " "}, {24, HOUR, "h"}};
      break;
    case PiDate::HOUR:
      count = span.days;
      coarse.elements = {{0, DAY, " "}, {3, MONTH_NAME, " "}, {2, YEAR, ""}};
      if (language == PiDate::ENGLISH) std::swap(coarse.elements[0], coarse.elements[1]);
      break;
    case PiDate::DAY:
      count = span.days / 30;
      coarse.elements = {{3, MONTH_NAME, " "}, {4, YEAR, ""}};
      break;
    default:
      count = span.days / 365;
      coarse.elements = {{4, YEAR, ""}};
  }
  coarse.numStep = static_cast<float>(std::max<int64_t>(1, count / 4));
  rep.push_back(std::move(coarse));
  return rep;
}

PiDate::StepType PiDateRepChoice::initDateStepOfLevel0(const PiDateSpan& span) {
  if (span.days >= 1826) return PiDate::YEAR;
  if (span.days >= 151) return PiDate::MONTH;
  if (span.days >= 6) return PiDate::DAY;
  if (span.days > 0 || span.hours > 5) return PiDate::HOUR;
  if (span.hours > 0 || span.minutes > 5) return PiDate::MINUTE;
  return PiDate::SECOND;
}

void PiDateRepChoice::initDateNumStep(const PiDateSpan& span, PiDateLevel& level) {
  const double seconds = span.inSeconds();
  if (level.unit == PiDate::SECOND) {
    level.numStep = 0;
    if (seconds < 6)
      PiLinearGradations::chooseStep(static_cast<float>(seconds), level.numStep);
    else
      level.numStep = static_cast<float>(stepOfLadder(kSexagesimal, seconds));
    if (level.numStep > 0) return;
    level.unit = seconds < 6 ? level.unit : PiDate::MINUTE;
  }
  if (level.unit == PiDate::MINUTE) {
    level.numStep = static_cast<float>(stepOfLadder(kSexagesimal, static_cast<double>(span.inMinutes())));
    if (level.numStep > 0) return;
    level.unit = PiDate::HOUR;
  }
  if (level.unit == PiDate::HOUR) {
    level.numStep = static_cast<float>(stepOfLadder(kHours, static_cast<double>(span.inHours())));
    if (level.numStep > 0) return;
    level.unit = PiDate::DAY;
  }
  if (level.unit == PiDate::DAY) level.numStep = twelfth(span.days);
  if (level.unit == PiDate::MONTH) level.numStep = twelfth(span.days / 30);
  if (level.unit == PiDate::YEAR) level.numStep = twelfth(span.days / 365);
  if (!(level.numStep > 0)) level.numStep = 1;
}

void PiDateRepChoice::initDateElem(PiDateLevel& level) {
  const UnitDefaults& defaults = defaultsOf(level.unit);
  std::erase_if(level.elements, [&](const PiDateElement& element) { return element.form < defaults.finest; });
  if (level.elements.empty()) level.elements.push_back(defaults.element);
}
