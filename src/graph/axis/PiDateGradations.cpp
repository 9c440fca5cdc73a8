#include "graph/axis/PiDateGradations.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include <Ormelle/PbDateFormatMapping.h>

#include "graph/axis/PiDateSpan.h"
#include "graph/format/PiNumericFormat.h"

namespace {

constexpr double kLeastSecondsOfUnit[] = {1, 1, 60, 3600, 86400, 28 * 86400.0, 365 * 86400.0};
constexpr int kMaxSecondDecimals = 6;  // a float below 60 tells no more apart

// The fewest decimals that show `value`.
int numDecimals(double value) {
  double power = 1;
  for (int decimals = 0; decimals < kMaxSecondDecimals; ++decimals, power *= 10) {
    const double scaled = value * power;
    if (std::abs(scaled - std::round(scaled)) <= 2e-7 * std::abs(scaled) + 1e-9) return decimals;
  }
  return kMaxSecondDecimals;
}

// One gradation after another. Seconds are counted from the first one, since a sum of float steps would drift away
// from the round values that are written.
class Walk {
 public:
  Walk(const PiDate& first, PiDate::StepType unit, float numStep)
      : m_first(first), m_date(first), m_unit(unit), m_numStep(numStep) {
    m_decimals = std::max(numDecimals(first.m_second), unit == PiDate::SECOND ? numDecimals(numStep) : 0);
  }

  const PiDate& date() const { return m_date; }
  int secondDecimals() const { return m_decimals; }

  // False when the calendar ends.
  bool advance() {
    const PiDate former = m_date;
    ++m_count;
    if (m_unit != PiDate::SECOND || std::abs(m_numStep) * m_count > 1e9) {
      m_date.incDateStep(m_numStep, m_unit);
    } else {
      const double power = std::pow(10.0, m_decimals);
      const double seconds = std::round((m_first.m_second + m_count * double{m_numStep}) * power) / power;
      const double minutes = std::floor(seconds / 60);
      m_date = m_first;
      m_date.m_second = static_cast<float>(seconds - minutes * 60);
      m_date.incDateStep(static_cast<float>(minutes), PiDate::MINUTE);
    }
    const double moved = PiDate::getDeltaSeconds(m_date, former);
    return m_numStep > 0 ? moved > 0 : moved < 0;
  }

 private:
  PiDate m_first, m_date;
  PiDate::StepType m_unit;
  float m_numStep;
  int m_decimals;
  double m_count = 0;
};

void truncate(PiDate& date, PiDate::StepType unit) {
  if (unit > PiDate::SECOND) date.m_second = 0;
  if (unit > PiDate::MINUTE) date.m_minute = 0;
  if (unit > PiDate::HOUR) date.m_hour = 0;
  if (unit > PiDate::DAY) date.m_day = 1;
  if (unit > PiDate::MONTH) date.m_month = 1;
}

double fieldOf(const PiDate& date, PiDate::StepType unit) {
  switch (unit) {
    case PiDate::MINUTE:
      return date.m_minute;
    case PiDate::HOUR:
      return date.m_hour;
    case PiDate::DAY:
      return date.m_day;
    case PiDate::MONTH:
      return date.m_month;
    case PiDate::YEAR:
      return date.m_year;
    default:
      return date.m_second;
  }
}

// The multiple of the step at or above the field. Fractions of seconds, being binary, may miss theirs by a little.
double multipleOf(double numStep, double field) {
  const double steps = field / numStep;
  const double nearest = std::round(steps);
  const bool isMultiple = nearest > 0 && std::abs(steps - nearest) <= 1e-6 * nearest;
  return (isMultiple ? nearest : std::ceil(steps)) * numStep;
}

// Moves a date up to where its field is a multiple of the step.
void moveToMultiple(PiDate& date, PiDate::StepType unit, float numStep) {
  const double field = fieldOf(date, unit);
  const double multiple = multipleOf(numStep, field);
  if (unit == PiDate::SECOND && multiple < 1e6) {
    const double power = std::pow(10.0, numDecimals(numStep));
    date.m_second = static_cast<float>(std::round(multiple * power) / power);
    date.incDateStep(0, PiDate::SECOND);
  } else {
    date.incDateStep(static_cast<float>(multiple - field), unit);
  }
}

bool beginsAlike(const char* name, const char* other, size_t length) { return std::strncmp(name, other, length) == 0; }

// As many letters, from `count` on, as tell entry `entry` of a table of names from the others; 0 stays 0.
int distinctCount(const char* const* names, int numNames, int entry, int count) {
  for (; count > 0 && count < static_cast<int>(std::strlen(names[entry])); ++count) {
    bool isDistinct = true;
    for (int other = 1; other <= numNames && isDistinct; ++other)
      isDistinct = other == entry || !beginsAlike(names[entry], names[other], static_cast<size_t>(count));
    if (isDistinct) break;
  }
  return count;
}

int countOf(const PiDate& date, const PiDateElement& element, const PiDateGradations::Style& style) {
  if (style.hasDistinctNames && element.form == PiDateForm::MONTH_NAME)
    return distinctCount(PiDate::getMonths(style.language), 12, std::clamp(date.m_month, 1, 12), element.count);
  if (style.hasDistinctNames && element.form == PiDateForm::DAY_NAME)
    return distinctCount(PiDate::getDays(style.language), 7, date.getDayWeek(), element.count);
  return element.count;
}

std::string textOf(const PiDate& date, const PiDateLevel& level, const PiDateGradations::Style& style,
                   const PiNumericFormat& secondsFormat) {
  std::string text = level.prefix;
  for (const PiDateElement& element : level.elements) {
    if (text.size() > PiDateGradations::kMaxTextLength) break;
    text += PiDateGradations::getStringDate(date, countOf(date, element, style), element.form, style.language,
                                            secondsFormat);
    text += element.text;
  }
  text += style.suffix;
  if (text.size() > PiDateGradations::kMaxTextLength) {
    size_t length = PiDateGradations::kMaxTextLength;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;  // whole UTF-8 characters
    text.resize(length);
  }
  return text;
}

}  // namespace

std::string PiDateGradations::getStringDate(const PiDate& date, int count, PiDateForm form, PiDate::Language language,
                                            const PiNumericFormat& secondsFormat) {
  const auto cut = [&](const char* name) {
    const size_t length = std::strlen(name);
    return std::string(name, count > 0 ? std::min(length, static_cast<size_t>(count)) : length);
  };
  switch (form) {
    case PiDateForm::SECOND: {
      char text[PiNumericFormat::TEXT_SIZE];
      secondsFormat.getString(date.m_second, text);
      return text;
    }
    case PiDateForm::MINUTE:
      return std::to_string(date.m_minute);
    case PiDateForm::HOUR:
      return std::to_string(date.m_hour);
    case PiDateForm::DAY:
      return std::to_string(date.m_day);
    case PiDateForm::DAY_NAME:
      return cut(PiDate::getDays(language)[date.getDayWeek()]);
    case PiDateForm::MONTH:
      return std::to_string(date.m_month);
    case PiDateForm::MONTH_NAME:
      return cut(PiDate::getMonths(language)[std::clamp(date.m_month, 1, 12)]);
    case PiDateForm::YEAR:
      return std::to_string(date.m_year);
  }
  return {};
}

PiDate PiDateGradations::getFirstDateGrad(const PiDateRange& range, const PbDateFormatMapping& mapping,
                                          PiDate::StepType unit, float numStep, Fit fit) {
  if (fit == FIT) return range.start;
  PiDate date = range.startCoord <= range.endCoord ? range.start : range.end;
  const float least = std::min(range.startCoord, range.endCoord);
  truncate(date, unit);
  moveToMultiple(date, unit, numStep);
  // What was cut off can leave it in front of the range, by a step or two.
  Walk walk(date, unit, numStep);
  for (int i = 0; i < 4 && mapping.getCoordinateP(walk.date()) < least; ++i)
    if (!walk.advance()) break;
  return walk.date();
}

PiDateGradList PiDateGradations::getGradList(const PiDateRange& range, const PbDateFormatMapping& mapping,
                                             const PiDateLevel& level, Fit fit, const Style& style, int maxGradations) {
  const bool isDescending = range.startCoord > range.endCoord;
  const float least = std::min(range.startCoord, range.endCoord);
  const float greatest = std::max(range.startCoord, range.endCoord);
  float numStep = level.numStep;
  const double count = PiDateSpan(range.start, range.end).inSeconds() / (numStep * kLeastSecondsOfUnit[level.unit]);
  if (count > maxGradations) numStep *= static_cast<float>(std::ceil(count / maxGradations));

  PiDateGradList list;
  const PiDate first = getFirstDateGrad(range, mapping, level.unit, numStep, fit);
  Walk walk(first, level.unit, fit == FIT && isDescending ? -numStep : numStep);
  for (int i = 0; i <= maxGradations; ++i) {
    // The date of a start that margins moved is itself rounded: it stands where it came from.
    const float coord = fit == FIT && i == 0 ? range.startCoord : mapping.getCoordinateP(walk.date());
    if (!(coord >= least && coord <= greatest)) break;
    if (list.coords.empty() || coord != list.coords.back()) {
      list.dates.push_back(walk.date());
      list.coords.push_back(coord);
    }
    if (!walk.advance()) break;
  }

  if (list.dates.empty()) {
    list.dates.push_back(range.start);
    list.coords.push_back(static_cast<float>((double{range.startCoord} + range.endCoord) / 2));
  } else if (fit == UNFIT && isDescending) {
    std::reverse(list.dates.begin(), list.dates.end());
    std::reverse(list.coords.begin(), list.coords.end());
  }
  PiNumericFormat secondsFormat;
  if (walk.secondDecimals() > 0) secondsFormat.setFormatFloatingPoint(walk.secondDecimals(), 0);
  for (const PiDate& date : list.dates) list.texts.push_back(textOf(date, level, style, secondsFormat));
  return list;
}
