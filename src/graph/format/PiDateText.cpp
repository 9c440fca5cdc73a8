// Reading and writing of dates by a format: the part of PiDate that knows about text. Nothing here asks the locale.

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "graph/format/PiDate.h"

namespace {

constexpr const char* kDays[PiDate::NUM_LANGUAGES][8] = {
    {"", "MONDAY", "TUESDAY", "WENESDAY", "THURSDAY", "FRIDAY", "SATURDAY", "SUNDAY"},
    {"", "LUNDI", "MARDI", "MERCREDI", "JEUDI", "VENDREDI", "SAMEDI", "DIMANCHE"},
    {"", "MONTAG", "DIENSTAG", "MITTWOCH", "DONNERSTAG", "FREITAG", "SAMSTAG", "SONNTAG"},
    {"", "LUNES", "MARTES", "MIERCOLES", "JUEVES", "VIERNES", "SABADO", "DOMINGO"}};

constexpr const char* kMonths[PiDate::NUM_LANGUAGES][13] = {
    {"", "JANUARY", "FEBRUARY", "MARCH", "APRIL", "MAY", "JUNE", "JULY", "AUGUST", "SEPTEMBER", "OCTOBER", "NOVEMBER",
     "DECEMBER"},
    {"", "JANVIER", "FEVRIER", "MARS", "AVRIL", "MAI", "JUIN", "JUILLET", "AOUT", "SEPTEMBRE", "OCTOBRE", "NOVEMBRE",
     "DECEMBRE"},
    {"", "JANUAR", "FEBRUAR", "MARZ", "APRIL", "MAI", "JUNI", "JULI", "AUGUST", "SEPTEMBER", "OKTOBER", "NOVEMBER",
     "DEZEMBER"},
    {"", "ENERO", "FEBRERO", "MARZO", "ABRIL", "MAYO", "JUNIO", "JULIO", "AGOSTO", "SEPTIEMBRE", "OCTUBRE", "NOVIEMBRE",
     "DICIEMBRE"}};

constexpr int kDayLetters = 3;
constexpr int kMonthLetters = 4;

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// The first letters of a word packed into a number, so that a name is found by comparing numbers. Ends at the first
// character that is no letter, so a name shorter than that only equals the same word.
constexpr uint32_t packWord(const char* word, int numLetters, int* length = nullptr) {
  uint32_t packed = 0;
  int i = 0;
  for (; i < numLetters && isLetter(word[i]); ++i) packed |= uint32_t{static_cast<unsigned char>(word[i])} << (8 * i);
  if (length) *length = i;
  return packed;
}

using LanguageOrder = std::array<PiDate::Language, PiDate::NUM_LANGUAGES>;

template <int Count>
constexpr auto packNames(const char* const (&names)[PiDate::NUM_LANGUAGES][Count + 1], LanguageOrder order,
                         int numLetters) {
  std::array<uint32_t, size_t{PiDate::NUM_LANGUAGES} * Count> packed{};
  size_t i = 0;
  for (const PiDate::Language language : order)
    for (int name = 1; name <= Count; ++name) packed[i++] = packWord(names[language][name], numLetters);
  return packed;
}

constexpr auto kPackedDays =
    packNames<7>(kDays, {PiDate::ENGLISH, PiDate::FRANCAIS, PiDate::DEUTSCH, PiDate::ESPANOL}, kDayLetters);
constexpr auto kPackedMonths =
    packNames<12>(kMonths, {PiDate::ENGLISH, PiDate::FRANCAIS, PiDate::ESPANOL, PiDate::DEUTSCH}, kMonthLetters);

// Reads items off the front of a text.
class DateScanner {
 public:
  explicit DateScanner(const char* text) : m_text(text ? text : "") {}

  void skipSeparators() {
    while (*m_text && !isDigit(*m_text) && !isLetter(*m_text)) ++m_text;
  }

  bool readNumber(int minDigits, int maxDigits, int& value) {
    int number = 0;
    int length = 0;
    for (; length < maxDigits && isDigit(m_text[length]); ++length) number = number * 10 + (m_text[length] - '0');
    if (length < minDigits) return false;
    value = number;
    m_text += length;
    return true;
  }

  bool readNumberIn(int least, int greatest, int& value) {
    int number;
    if (!readNumber(1, 2, number) || number < least || number > greatest) return false;
    value = number;
    return true;
  }

  bool readSecond(float& value) {
    const char* start = m_text;
    int whole;
    if (!readNumberIn(0, 59, whole)) return false;
    if (*m_text == '.') do
        ++m_text;
      while (isDigit(*m_text));
    float second = 0;
    std::from_chars(start, m_text, second, std::chars_format::fixed);
    // Decimals that only a longer number could tell from the full minute.
    value = std::min(second, std::nextafter(60.f, 0.f));
    return true;
  }

  // The position, from 1, of the name in its language.
  template <size_t Size>
  bool readName(const std::array<uint32_t, Size>& packedNames, int numLetters, int& value) {
    int length;
    const uint32_t word = packWord(m_text, numLetters, &length);
    if (length == 0) return false;
    const auto found = std::find(packedNames.begin(), packedNames.end(), word);
    if (found == packedNames.end()) return false;
    value = static_cast<int>(found - packedNames.begin()) % static_cast<int>(Size / PiDate::NUM_LANGUAGES) + 1;
    m_text += length;
    return true;
  }

 private:
  const char* m_text;
};

bool readItem(char letter, DateScanner& scanner, PiDate& date, bool& isYearSet) {
  switch (letter) {
    case 'Y':
      return isYearSet = scanner.readNumber(4, 4, date.m_year);
    case 'y':
      isYearSet = scanner.readNumber(2, 2, date.m_year);
      if (isYearSet) date.m_year += 1900;
      return isYearSet;
    case 'm':
      return scanner.readNumberIn(1, 12, date.m_month);
    case 'M':
      return scanner.readName(kPackedMonths, kMonthLetters, date.m_month);
    case 'd':
      return scanner.readNumberIn(1, 31, date.m_day);
    case 'D':
      return scanner.readName(kPackedDays, kDayLetters, date.m_dayOfWeek);
    case 'h':
    case 'H':
      return scanner.readNumberIn(0, 23, date.m_hour);
    case '\'':
      return scanner.readNumberIn(0, 59, date.m_minute);
    case '"':
      return scanner.readSecond(date.m_second);
    default:
      return true;
  }
}

void appendPadded(std::string& text, int value, int numDigits) {
  const std::string digits = std::to_string(value);
  text.append(static_cast<size_t>(std::max<int>(0, numDigits - static_cast<int>(digits.size()))), '0');
  text += digits;
}

void appendSecond(std::string& text, float second) {
  second = std::isnan(second) ? 0 : std::clamp(second, 0.f, std::nextafter(60.f, 0.f));
  char digits[96];  // the least float has 45 zeros after the point
  const auto end = std::to_chars(digits, digits + sizeof digits, second, std::chars_format::fixed).ptr;
  if (second < 10) text += '0';
  text.append(digits, end);
}

// What stands between two items: items of a day are joined by '-', those of a time by ':'.
char separator(char before, char after) {
  const auto isOf = [=](std::string_view letters) {
    return letters.find(before) != letters.npos && letters.find(after) != letters.npos;
  };
  return isOf("YymMd") ? '-' : isOf("hH'\"") ? ':' : ' ';
}

}  // namespace

// The language of a date may come from a file or a cast, so it may be none of the four.
static int known(int language) {
  return language >= 0 && language < PiDate::NUM_LANGUAGES ? language : PiDate::ENGLISH;
}

const char* const* PiDate::getDays(Language language) { return kDays[known(language)]; }

const char* const* PiDate::getMonths(Language language) { return kMonths[known(language)]; }

int PiDate::setDateString(const char* text, const char* format) {
  m_year = m_month = m_day = m_dayOfWeek = m_hour = m_minute = 0;
  m_second = 0;
  bool isYearSet = false;
  DateScanner scanner(text);
  for (; format && *format; ++format) {
    scanner.skipSeparators();
    if (!readItem(*format, scanner, *this, isYearSet)) return 1;
  }
  if (!isYearSet) m_year = 1993;
  if (m_month == 0) m_month = 1;
  if (m_day != 0) {
    m_day = std::min(m_day, (isLeapYear(m_year) ? getNumDaysParMonthBissex() : getNumDaysPerMonth())[m_month]);
  } else {
    m_day = 1;
    if (m_dayOfWeek != 0) m_day += (m_dayOfWeek - getDayWeek() + 7) % 7;
  }
  m_dayOfWeek = getDayWeek();
  return 0;
}

std::string PiDate::getDateString(const char* format) const {
  std::string text;
  char before = 0;
  for (; format && *format; ++format) {
    const size_t start = text.size();
    switch (*format) {
      case 'Y':
        appendPadded(text, std::clamp(m_year, 0, 9999), 4);
        break;
      case 'y':
        appendPadded(text, (m_year % 100 + 100) % 100, 2);
        break;
      case 'm':
        appendPadded(text, std::clamp(m_month, 1, 12), 2);
        break;
      case 'M':
        text += std::string_view(kMonths[ENGLISH][std::clamp(m_month, 1, 12)]).substr(0, kMonthLetters);
        break;
      case 'd':
        appendPadded(text, std::clamp(m_day, 1, 31), 1);
        break;
      case 'D':
        text += std::string_view(kDays[ENGLISH][std::clamp(m_dayOfWeek, 1, 7)]).substr(0, kDayLetters);
        break;
      case 'h':
      case 'H':
        appendPadded(text, std::clamp(m_hour, 0, 23), 2);
        break;
      case '\'':
        appendPadded(text, std::clamp(m_minute, 0, 59), 2);
        break;
      case '"':
        appendSecond(text, m_second);
        break;
      default:
        continue;
    }
    if (before) text.insert(start, 1, separator(before, *format));
    before = *format;
  }
  return text;
}
