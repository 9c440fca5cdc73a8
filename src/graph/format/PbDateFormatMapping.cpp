#include <Ormelle/PbDateFormatMapping.h>

#include <algorithm>
#include <cmath>
#include <string_view>

#include "graph/format/PiDate.h"

PbDateFormatMapping::PbDateFormatMapping() : m_reference(new PiDate), m_end(new PiDate) {
  m_end->incDateStep(1, PiDate::DAY);
}

PbDateFormatMapping::PbDateFormatMapping(const char* date1, const char* date2, float coord1, float coord2,
                                         const char* format)
    : PbDateFormatMapping(SbString(date1), SbString(date2), coord1, coord2, SbString(format)) {}

PbDateFormatMapping::PbDateFormatMapping(const SbString& date1, const SbString& date2, float coord1, float coord2,
                                         const SbString& format)
    : PbDateFormatMapping() {
  setFormat(format);
  setDateMapping(date1, date2, coord1, coord2);
}

PbDateFormatMapping::PbDateFormatMapping(const PbDateFormatMapping& other)
    : PbBase(other),
      m_reference(new PiDate(*other.m_reference)),
      m_end(new PiDate(*other.m_end)),
      m_coordMin(other.m_coordMin),
      m_coordMax(other.m_coordMax),
      m_span(other.m_span),
      m_format(other.m_format) {}

PbDateFormatMapping& PbDateFormatMapping::operator=(const PbDateFormatMapping& other) {
  if (this == &other) return *this;
  *m_reference = *other.m_reference;
  *m_end = *other.m_end;
  m_coordMin = other.m_coordMin;
  m_coordMax = other.m_coordMax;
  m_span = other.m_span;
  m_format = other.m_format;
  PbBase::operator=(other);
  return *this;
}

PbDateFormatMapping::~PbDateFormatMapping() = default;

int PbDateFormatMapping::setDateMapping(const SbString& date1, const SbString& date2, float coord1, float coord2) {
  PiDate first, second;
  if (first.setDateString(date1.getString(), m_format.getString()) != 0) return 0;
  if (second.setDateString(date2.getString(), m_format.getString()) != 0) return 0;
  if (!std::isfinite(coord1) || !std::isfinite(coord2)) return 0;
  double span = PiDate::getDeltaSeconds(second, first);
  if (!(span > 0)) {
    std::swap(first, second);
    span = std::abs(span);
  }
  *m_reference = first;
  *m_end = second;
  m_span = static_cast<float>(span);
  m_coordMin = std::min(coord1, coord2);
  m_coordMax = std::max(coord1, coord2);
  touch();
  return 1;
}

void PbDateFormatMapping::getDateMapping(SbString& date1, SbString& date2, float& coord1, float& coord2) const {
  date1 = m_reference->getDateString(m_format.getString()).c_str();
  date2 = m_end->getDateString(m_format.getString()).c_str();
  coord1 = m_coordMin;
  coord2 = m_coordMax;
}

int PbDateFormatMapping::setFormat(const SbString& format) {
  const int wrong = checkDateFormat(format);
  if (wrong != 0) return wrong;
  if (&format != &m_format) m_format = format;  // SbString loses text when assigned to itself
  touch();
  return 0;
}

int PbDateFormatMapping::checkDateFormat(const SbString& format) {
  constexpr std::string_view letters = "YyMmHhdD'\"";
  constexpr size_t numPaired = 6;  // neighbours among the first six are two letters of one item
  bool isUsed[letters.size()] = {};
  const char* text = format.getString();
  for (int i = 0; text[i]; ++i) {
    const size_t letter = letters.find(text[i]);
    if (letter == letters.npos) return i + 1;
    const size_t item = letter < numPaired ? letter / 2 * 2 : letter;
    if (isUsed[item]) return i + 1;
    isUsed[item] = true;
  }
  return 0;
}

int PbDateFormatMapping::getCoordinate(const SbString& date, float& coord) const {
  PiDate parsed;
  if (parsed.setDateString(date.getString(), m_format.getString()) != 0) return 0;
  coord = getCoordinateP(parsed);
  return 1;
}

// Both conversions run in double and round once: the later date then stands exactly at the greater coordinate.

float PbDateFormatMapping::getCoordinateP(const PiDate& date) const {
  if (!(m_span > 0)) return m_coordMin;
  const double range = static_cast<double>(m_coordMax) - m_coordMin;
  const double seconds = static_cast<float>(PiDate::getDeltaSeconds(date, *m_reference));
  return static_cast<float>(seconds * range / m_span + m_coordMin);
}

PiDate PbDateFormatMapping::getDateP(float coord) const {
  PiDate date = *m_reference;
  const double range = static_cast<double>(m_coordMax) - m_coordMin;
  if (range > 0)
    date.incDateStep(static_cast<float>((static_cast<double>(coord) - m_coordMin) * m_span / range), PiDate::SECOND);
  return date;
}
