#ifndef ORMELLE_FUZZ_AXISLANGUAGE_H
#define ORMELLE_FUZZ_AXISLANGUAGE_H

#include <charconv>
#include <cstdlib>
#include <string>

#include "graph/axis/PiTimeAxisLanguage.h"

/// What the fuzz targets of the two languages of the time axis share: the way back from what was read to text.
namespace AxisLanguage {

inline std::string numberOf(float value) {
  char text[32];
  // As a real number, whatever the value.
  const auto result = std::to_chars(text, text + sizeof text, double{value}, std::chars_format::scientific);
  return std::string(text, result.ptr);
}

inline const char* periodOf(PiDate::StepType unit) {
  static constexpr const char* kPeriods[] = {"", "SEC", "MIN", "HOU", "DAY", "MON", "YEA"};
  return kPeriods[unit];
}

inline std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) result += c == '\'' ? std::string("''") : std::string(1, c);
  return result + "'";
}

inline std::string textOf(const PiDateRep& rep) {
  static constexpr const char kElements[] = "smHDDMMY";
  std::string text;
  for (std::size_t i = 0; i < rep.size(); ++i) {
    if (i > 0) text += " | ";
    if (rep[i].unit != PiDate::NO_STEP) text += numberOf(rep[i].numStep) + periodOf(rep[i].unit);
    if (rep[i].hasPrefix) text += quoted(rep[i].prefix);
    for (const PiDateElement& element : rep[i].elements) {
      text += ' ' + std::to_string(element.count) + kElements[static_cast<int>(element.form)];
      if (!element.text.empty()) text += quoted(element.text);
    }
  }
  return text;
}

inline std::string textOf(const std::vector<PiDatePeriod>& list) {
  std::string text;
  for (const PiDatePeriod& period : list) text += numberOf(period.value) + periodOf(period.unit);
  return text;
}

}  // namespace AxisLanguage

#endif
