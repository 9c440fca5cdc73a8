#include "graph/axis/PiTimeAxisLanguage.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <limits>
#include <string>
#include <utility>

namespace {

using PiTimeAxisLanguage::kMaxTokenLength;

struct Token {
  enum Kind { END, WRONG, STRING, INTEGER, REAL, PERIOD, ELEMENT, SEPARATOR };

  Kind kind = END;
  double value = 0;         // of a number
  int code = 0;             // the unit of a period, the form of an element
  std::string_view source;  // as it stands in the text
};

constexpr std::pair<std::string_view, PiDate::StepType> kPeriods[] = {{"SEC", PiDate::SECOND}, {"MIN", PiDate::MINUTE},
                                                                      {"HOU", PiDate::HOUR},   {"DAY", PiDate::DAY},
                                                                      {"MON", PiDate::MONTH},  {"YEA", PiDate::YEAR}};

constexpr std::pair<char, PiDateForm> kElements[] = {{'s', PiDateForm::SECOND}, {'m', PiDateForm::MINUTE},
                                                     {'H', PiDateForm::HOUR},   {'D', PiDateForm::DAY},
                                                     {'M', PiDateForm::MONTH},  {'Y', PiDateForm::YEAR}};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

size_t skipDigits(std::string_view text, size_t at) {
  while (at < text.size() && isDigit(text[at])) ++at;
  return at;
}

// Length of the string at the beginning of `text`, with its quotes; 0 if there is none or it doesn't end.
size_t stringLength(std::string_view text) {
  if (text.empty() || text[0] != '\'') return 0;
  for (size_t at = 1; at < text.size(); ++at) {
    if (text[at] != '\'') continue;
    if (at + 1 == text.size() || text[at + 1] != '\'') return at + 1;
    ++at;
  }
  return 0;
}

std::string unquoted(std::string_view source) {
  std::string text;
  for (size_t at = 1; at + 1 < source.size(); ++at) {
    text += source[at];
    if (source[at] == '\'') ++at;
  }
  return text;
}

// Length of the number at the beginning of `text`, 0 if there is none.
size_t numberLength(std::string_view text, bool& isReal) {
  isReal = false;
  const size_t digits = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  size_t end = skipDigits(text, digits);
  size_t numDigits = end - digits;
  if (end < text.size() && text[end] == '.') {
    const size_t fraction = skipDigits(text, end + 1);
    const size_t numFraction = fraction - end - 1;
    if (numDigits + numFraction > 0) {
      isReal = true;
      numDigits += numFraction;
      end = fraction;
    }
  }
  if (numDigits == 0) return 0;
  if (end < text.size() && (text[end] == 'E' || text[end] == 'e')) {
    size_t exponent = end + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
    const size_t exponentEnd = skipDigits(text, exponent);
    if (exponentEnd > exponent) {
      isReal = true;
      end = exponentEnd;
    }
  }
  return end;
}

// Numbers beyond double are 0 or its greatest, by the sign of their exponent; no locale has a say.
double numberValue(std::string_view source) {
  const bool isNegative = source[0] == '-';
  if (isNegative || source[0] == '+') source.remove_prefix(1);
  double value = 0;
  const auto result = std::from_chars(source.data(), source.data() + source.size(), value);
  if (result.ec == std::errc::result_out_of_range)
    value =
        source.find("E-") == source.npos && source.find("e-") == source.npos ? std::numeric_limits<double>::max() : 0;
  return isNegative ? -value : value;
}

// Takes tokens off a text. The longest match counts; of matches of one length the first in the order of next().
class Scanner {
 public:
  enum Language { AXIS_REP, DATE_LIST };

  Scanner(std::string_view text, Language language, int separator)
      : m_rest(text), m_language(language), m_separator(static_cast<char>(separator)) {
    m_token = next();
    m_following = next();
  }

  const Token& token() const { return m_token; }
  const Token& following() const { return m_following; }
  void advance() {
    m_token = m_following;
    m_following = next();
  }

 private:
  bool isBlank(char c) const {
    const bool isSeparator = m_language == AXIS_REP && c == m_separator;
    return c == ' ' || ((c == '\t' || c == '\n' || c == '\r') && !isSeparator);
  }

  Token next() {
    while (!m_rest.empty() && isBlank(m_rest[0])) m_rest.remove_prefix(1);
    if (m_rest.empty() || m_isEnded) return {};
    Token token;
    const size_t length = match(token);
    if (length > size_t{kMaxTokenLength}) {
      std::fprintf(stderr, "Input string too long, limit %d\n", kMaxTokenLength);
      token.kind = Token::WRONG;
    }
    token.source = m_rest.substr(0, length);
    m_rest.remove_prefix(length);
    if (token.kind == Token::WRONG) m_isEnded = true;
    if (token.kind == Token::INTEGER || token.kind == Token::REAL) token.value = numberValue(token.source);
    return token;
  }

  size_t match(Token& token) const {
    if (m_language == AXIS_REP) {
      if (const size_t length = stringLength(m_rest)) {
        token.kind = Token::STRING;
        return length;
      }
    }
    bool isReal = false;
    if (const size_t length = numberLength(m_rest, isReal)) {
      token.kind = isReal ? Token::REAL : Token::INTEGER;
      return length;
    }
    for (const auto& [name, unit] : kPeriods)
      if (m_rest.starts_with(name)) {
        token.kind = Token::PERIOD;
        token.code = unit;
        return name.size();
      }
    token.kind = Token::WRONG;
    if (m_language == AXIS_REP) {
      for (const auto& [letter, form] : kElements)
        if (m_rest[0] == letter) {
          token.kind = Token::ELEMENT;
          token.code = static_cast<int>(form);
          return 1;
        }
      if (m_rest[0] == m_separator) token.kind = Token::SEPARATOR;
    }
    return 1;
  }

  std::string_view m_rest;
  Language m_language;
  char m_separator;
  bool m_isEnded = false;  // behind something wrong nothing is read
  Token m_token, m_following;
};

bool isNumber(const Token& token) { return token.kind == Token::INTEGER || token.kind == Token::REAL; }

float toFloat(double value) {
  constexpr double greatest = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(value, -greatest, greatest));
}

class Parser {
 public:
  Parser(std::string_view text, Scanner::Language language, int separator) : m_scanner(text, language, separator) {}

  bool parseRep(PiDateRep& rep) {
    for (;;) {
      if (!parseLevel(rep)) return false;
      if (token().kind == Token::END) return true;
      if (token().kind != Token::SEPARATOR) return false;
      m_scanner.advance();
    }
  }

  bool parseList(std::vector<PiDatePeriod>& list) {
    do {
      double value = 1;
      if (isNumber(token())) value = take().value;
      if (token().kind != Token::PERIOD) return false;
      parseDateListNewDate(value, take().code, list);
    } while (token().kind != Token::END);
    return true;
  }

 private:
  const Token& token() const { return m_scanner.token(); }
  Token take() {
    Token token = m_scanner.token();
    m_scanner.advance();
    return token;
  }

  // A number belongs to a step if a period follows, else it can only be the count of an element.
  bool parseLevel(PiDateRep& rep) {
    double value = 0;
    int unit = PiDate::NO_STEP;
    if (isNumber(token()) && m_scanner.following().kind == Token::PERIOD) value = take().value;
    if (token().kind == Token::PERIOD) unit = take().code;
    const bool hasPrefix = token().kind == Token::STRING;
    parseAxisRepNewLevel(value, unit, hasPrefix, parseText(), rep);
    while (token().kind == Token::INTEGER || token().kind == Token::ELEMENT) {
      double count = 0;
      if (token().kind == Token::INTEGER) count = take().value;
      if (token().kind != Token::ELEMENT || count < 0) return false;
      const int form = take().code;
      parseAxisRepAddToLevel(form, count, parseText(), rep);
    }
    return true;
  }

  std::string parseText() { return token().kind == Token::STRING ? unquoted(take().source) : std::string(); }

  static void parseAxisRepNewLevel(double value, int unit, bool hasPrefix, std::string text, PiDateRep& rep) {
    rep.push_back({static_cast<PiDate::StepType>(unit), toFloat(value), hasPrefix, std::move(text), {}});
  }

  // With a count, days and months are written as names.
  static void parseAxisRepAddToLevel(int form, double count, std::string text, PiDateRep& rep) {
    PiDateElement element;
    element.count = static_cast<int>(std::min<double>(count, std::numeric_limits<int>::max()));
    element.form = static_cast<PiDateForm>(form);
    if (element.count != 0 && element.form == PiDateForm::DAY) element.form = PiDateForm::DAY_NAME;
    if (element.count != 0 && element.form == PiDateForm::MONTH) element.form = PiDateForm::MONTH_NAME;
    element.text = std::move(text);
    rep.back().elements.push_back(std::move(element));
  }

  static void parseDateListNewDate(double value, int unit, std::vector<PiDatePeriod>& list) {
    list.push_back({toFloat(value), static_cast<PiDate::StepType>(unit)});
  }

  Scanner m_scanner;
};

}  // namespace

std::optional<PiDateRep> PiTimeAxisLanguage::parseAxisRep(std::string_view text, int separator) {
  PiDateRep rep;
  if (!Parser(text, Scanner::AXIS_REP, separator).parseRep(rep)) return std::nullopt;
  return rep;
}

std::optional<std::vector<PiDatePeriod>> PiTimeAxisLanguage::parseDateList(std::string_view text) {
  std::vector<PiDatePeriod> list;
  if (!Parser(text, Scanner::DATE_LIST, 0).parseList(list)) return std::nullopt;
  return list;
}
