#include "CsvTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string_view>

#include "Dataset.h"
#include "Fields.h"

namespace importer {

namespace {

constexpr double kMissingNumber = std::numeric_limits<double>::quiet_NaN();
// A table of more columns is no table, but another file.
constexpr std::size_t kMostColumns = 10000;

using Record = std::vector<std::string>;

bool isBlankOfLine(char c) { return c == ' ' || c == '\t' || c == '\r'; }

// ---- Bytes to fields ------------------------------------------------------------------------------------------------

// Length of the character of UTF-8 that starts at `at`; 0 if none does.
std::size_t utf8Length(std::string_view text, std::size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  const std::size_t length = lead < 0x80 ? 1 : lead >> 5 == 6 ? 2 : lead >> 4 == 14 ? 3 : lead >> 3 == 30 ? 4 : 0;
  if (length == 0 || at + length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if (static_cast<unsigned char>(text[at + i]) >> 6 != 2) return 0;
  return length;
}

void makeUtf8(std::string& text, CsvTable& table) {
  if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
    throw Failure("it is written in UTF-16: save it as UTF-8");
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
  if (text.find('\0') != std::string::npos) throw Failure("it has bytes in it that no text has");
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t length = utf8Length(text, at);
    if (length == 0) break;
    at += length;
  }
  if (at == text.size()) return;
  table.notes.emplace_back("its texts are not UTF-8 and were taken for Latin-1");
  std::string result;
  result.reserve(text.size() + text.size() / 8);
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      result += c;
    } else {
      result += static_cast<char>(0xC0 | byte >> 6);
      result += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  text = std::move(result);
}

// Reads records one after the other. A separator of 0 stands for any run of blanks.
class RecordReader {
 public:
  RecordReader(std::string_view text, char separator) : m_text(text), m_separator(separator) {}

  // False at the end. Empty lines are no records.
  bool next(Record& record) {
    skipEmptyLines();
    if (m_at >= m_text.size()) return false;
    record.clear();
    while (nextField(record)) {
      if (record.size() > kMostColumns) throw Failure("one of its lines has more than 10000 fields");
    }
    return true;
  }

 private:
  void skipEmptyLines() {
    std::size_t at = m_at;
    while (at < m_text.size() && (isBlankOfLine(m_text[at]) || m_text[at] == '\n')) {
      if (m_text[at] == '\t' && m_separator == '\t') break;
      if (m_text[at++] == '\n') m_at = at;
    }
    if (at >= m_text.size()) m_at = at;
  }

  // Whether another field follows in the record.
  bool nextField(Record& record) {
    std::size_t at = m_at;
    const auto isSeparator = [&](char c) { return m_separator == 0 ? isBlankOfLine(c) : c == m_separator; };
    while (at < m_text.size() && m_text[at] == ' ') ++at;
    if (at < m_text.size() && m_text[at] == '"') {
      m_at = at + 1;
      record.push_back(quoted());
      while (m_at < m_text.size() && m_text[m_at] != '\n' && !isSeparator(m_text[m_at])) ++m_at;
    } else {
      const std::size_t start = at;
      while (at < m_text.size() && m_text[at] != '\n' && !isSeparator(m_text[at])) ++at;
      record.emplace_back(trimmed(m_text.substr(start, at - start)));
      m_at = at;
    }
    if (m_separator == 0)
      while (m_at < m_text.size() && isBlankOfLine(m_text[m_at])) ++m_at;
    if (m_at >= m_text.size()) return false;
    if (m_text[m_at] == '\n') {
      ++m_at;
      return false;
    }
    if (m_separator != 0) ++m_at;
    return true;
  }

  std::string quoted() {
    std::string field;
    while (m_at < m_text.size()) {
      const std::size_t end = m_text.find('"', m_at);
      if (end == std::string_view::npos) throw Failure("a quoted field has no end");
      field.append(m_text, m_at, end - m_at);
      m_at = end + 1;
      if (m_at >= m_text.size() || m_text[m_at] != '"') return field;
      field += '"';
      ++m_at;
    }
    throw Failure("a quoted field has no end");
  }

  std::string_view m_text;
  std::size_t m_at = 0;
  char m_separator;
};

// The first records with a separator, for guesses.
std::vector<Record> firstRecords(std::string_view text, char separator) {
  constexpr std::size_t kMost = 60;
  std::vector<Record> records;
  RecordReader reader(text, separator);
  Record record;
  try {
    while (records.size() < kMost && reader.next(record)) records.push_back(record);
  } catch (const Failure&) {
    records.clear();
  }
  return records;
}

// ---- Columns --------------------------------------------------------------------------------------------------------

// How many of a column's fields can be read in which way.
struct FieldCensus {
  std::size_t filled = 0, numbers = 0;
  std::array<std::size_t, 3> dates{};
};

class Guesser {
 public:
  explicit Guesser(const std::vector<Record>& records) : m_records(records) {
    std::map<std::size_t, std::size_t> widths;
    for (const Record& record : records) ++widths[record.size()];
    for (const auto& [width, times] : widths)
      if (times > 0 && times >= m_common) {
        m_common = times;
        m_width = width;
      }
  }

  std::size_t width() const { return m_width; }
  // How well this separator explains the lines: most of them with the same number of fields, above one.
  double score() const {
    if (m_records.empty() || m_width < 2) return 0;
    return static_cast<double>(m_common) / static_cast<double>(m_records.size());
  }
  bool allNumbers() const {
    for (const Record& record : m_records)
      for (const std::string& field : record)
        if (!isMissing(field) && !parseNumber(field, false)) return false;
    return true;
  }

 private:
  const std::vector<Record>& m_records;
  std::size_t m_width = 0, m_common = 0;
};

// Numbers with a comma against numbers with a point.
bool hasDecimalCommas(const std::vector<Record>& records) {
  std::size_t commas = 0, points = 0;
  for (const Record& record : records)
    for (const std::string& field : record) {
      const bool hasComma = field.find(',') != std::string::npos, hasPoint = field.find('.') != std::string::npos;
      if (hasComma && parseNumber(field, true) && (!hasPoint || field.find('.') < field.find(','))) ++commas;
      if (hasPoint && parseNumber(field, false) && (!hasComma || field.find(',') < field.find('.'))) ++points;
    }
  return commas > points;
}

char guessSeparator(std::string_view text) {
  char best = ',';
  double bestScore = 0;
  // A comma may be a decimal one: semicolons and tabs come first.
  for (const char separator : {';', '\t', ','}) {
    const std::vector<Record> records = firstRecords(text, separator);
    const double score = Guesser(records).score();
    if (score > bestScore + 0.05) {
      best = separator;
      bestScore = score;
    }
  }
  if (bestScore > 0.5) return best;
  const std::vector<Record> records = firstRecords(text, 0);
  const Guesser blanks(records);
  // The first line may be a header.
  const std::vector<Record> rest(records.begin() + (records.size() > 1 ? 1 : 0), records.end());
  return blanks.score() > 0.9 && Guesser(rest).allNumbers() ? '\0' : best;
}

FieldCensus fieldCensusOf(const std::vector<Record>& records, std::size_t column, std::size_t first,
                          bool decimalComma) {
  constexpr std::size_t kMost = 2000;
  FieldCensus census;
  for (std::size_t row = first; row < records.size() && row < first + kMost; ++row) {
    if (column >= records[row].size() || isMissing(records[row][column])) continue;
    const std::string& field = records[row][column];
    ++census.filled;
    if (parseNumber(field, decimalComma)) ++census.numbers;
    for (const DateOrder order : {DateOrder::YMD, DateOrder::DMY, DateOrder::MDY})
      if (parseDate(field, order)) ++census.dates[static_cast<std::size_t>(order)];
  }
  return census;
}

bool isValue(const std::string& field, bool decimalComma) {
  return parseNumber(field, decimalComma) || parseDate(field, DateOrder::DMY) || parseDate(field, DateOrder::MDY);
}

// Whether the first line names the columns: it has words where the others have values, or nothing but words.
bool beginsWithHeader(const std::vector<Record>& records, bool decimalComma) {
  const Record& first = records.front();
  bool allWords = true;
  std::vector<double> years;
  for (std::size_t column = 0; column < first.size(); ++column) {
    const std::string& field = first[column];
    if (isMissing(field)) continue;
    if (isValue(field, decimalComma)) {
      allWords = false;
      const std::optional<double> number = parseNumber(field, decimalComma);
      years.push_back(number.value_or(kMissingNumber));
      continue;
    }
    const FieldCensus below = fieldCensusOf(records, column, 1, decimalComma);
    const std::size_t most = std::max({below.numbers, below.dates[0], below.dates[1], below.dates[2]});
    if (below.filled > 0 && 2 * most > below.filled) return true;
  }
  // Years beside each other name columns too.
  bool areYears = years.size() > 1;
  for (std::size_t i = 0; i < years.size(); ++i)
    areYears = areYears && years[i] >= 1500 && years[i] <= 2500 && years[i] == std::floor(years[i]) &&
               (i == 0 || years[i] > years[i - 1]);
  if (areYears) return !isValue(first.front(), decimalComma);
  return allWords;
}

std::size_t takeUnits(std::vector<Record>& records, std::size_t first, bool decimalComma) {
  if (records.size() < first + 2) return 0;
  const Record& units = records[first];
  std::size_t numWords = 0;
  for (std::size_t column = 0; column < units.size(); ++column) {
    if (isMissing(units[column])) continue;
    if (isValue(units[column], decimalComma) || units[column].size() > 24) return 0;
    const FieldCensus below = fieldCensusOf(records, column, first + 1, decimalComma);
    const std::size_t most = std::max({below.numbers, below.dates[0], below.dates[1], below.dates[2]});
    if (below.filled > 0 && 2 * most > below.filled) ++numWords;
  }
  return numWords > 0 ? 1 : 0;
}

std::string shortened(const std::string& text) { return text.size() > 30 ? text.substr(0, 27) + "..." : text; }

void fillTexts(CsvTable::Column& column, std::vector<Record>& records, std::size_t first, std::size_t index) {
  column.kind = CsvTable::Kind::TEXTS;
  column.texts.reserve(records.size() - first);
  for (std::size_t row = first; row < records.size(); ++row)
    column.texts.push_back(index < records[row].size() ? std::move(records[row][index]) : std::string());
}

template <class Parse>
void fillNumbers(CsvTable::Column& column, const std::vector<Record>& records, std::size_t first, std::size_t index,
                 CsvTable& table, const char* what, Parse parse) {
  std::size_t wrong = 0;
  std::string example;
  column.numbers.reserve(records.size() - first);
  for (std::size_t row = first; row < records.size(); ++row) {
    std::optional<double> value;
    if (index < records[row].size()) {
      const std::string& field = records[row][index];
      value = parse(field);
      if (!value && !isMissing(field) && wrong++ == 0) example = shortened(field);
    }
    column.numbers.push_back(value.value_or(kMissingNumber));
  }
  if (wrong > 0)
    table.notes.push_back(counted(wrong, "field", "fields") + " of the column " + column.name +
                          (wrong == 1 ? " is no " : " are no ") + what + " (\"" + example + "\") and " +
                          (wrong == 1 ? "counts" : "count") + " as missing");
}

void fillColumn(CsvTable& table, std::size_t index, std::vector<Record>& records, std::size_t first, bool decimalComma,
                char separator) {
  CsvTable::Column& column = table.columns[index];
  const FieldCensus census = fieldCensusOf(records, index, first, decimalComma);
  if (census.filled == 0) return;
  // A few wrong fields don't make texts of numbers.
  const auto isMost = [&](std::size_t count) { return count > 0 && 5 * count >= 4 * census.filled; };
  const std::size_t dates = *std::max_element(census.dates.begin(), census.dates.end());
  if (isMost(census.numbers) && census.numbers >= dates) {
    column.kind = CsvTable::Kind::NUMBERS;
    fillNumbers(column, records, first, index, table, "number",
                [&](const std::string& field) { return parseNumber(field, decimalComma); });
  } else if (isMost(dates)) {
    auto order = DateOrder::YMD;
    if (census.dates[0] < dates) {
      const std::size_t dmy = census.dates[1], mdy = census.dates[2];
      const bool isSlash = separator == ',' && census.filled > 0 && records[first].size() > index &&
                           records[first][index].find('/') != std::string::npos;
      order = dmy > mdy ? DateOrder::DMY : mdy > dmy ? DateOrder::MDY : isSlash ? DateOrder::MDY : DateOrder::DMY;
      if (dmy == mdy && monthNamed(records[first][index]) == std::nullopt)
        table.notes.push_back("the dates of the column " + column.name + " were read as " +
                              (order == DateOrder::DMY ? "day, month, year" : "month, day, year"));
    }
    column.kind = CsvTable::Kind::DATES;
    fillNumbers(column, records, first, index, table, "date",
                [&](const std::string& field) { return parseDate(field, order); });
  } else {
    fillTexts(column, records, first, index);
  }
}

// Takes the comments at the beginning away; the last of them, without its mark, may be the header.
std::string takeComments(std::string_view& text) {
  std::string last;
  while (!text.empty() && text.front() == '#') {
    const std::size_t end = text.find('\n');
    last = std::string(trimmed(text.substr(1, end == std::string_view::npos ? end : end - 1)));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return last;
}

}  // namespace

CsvTable parseCsv(std::string text) {
  CsvTable table;
  makeUtf8(text, table);
  if (text.find('\n') == std::string::npos) std::replace(text.begin(), text.end(), '\r', '\n');
  std::string_view rest = text;
  const std::string comment = takeComments(rest);
  const char separator = guessSeparator(rest);

  std::vector<Record> records;
  {
    RecordReader reader(rest, separator);
    Record record;
    while (reader.next(record)) {
      if (record.front().starts_with('#')) continue;
      records.push_back(record);
    }
  }
  if (records.empty()) throw Failure("it has no line with a field");
  const bool decimalComma = separator != ',' && hasDecimalCommas(firstRecords(rest, separator));

  std::size_t width = 0;
  for (const Record& record : records) width = std::max(width, record.size());
  const std::size_t usual = Guesser(firstRecords(rest, separator)).width();
  std::size_t numOdd = 0;
  for (const Record& record : records) numOdd += record.size() != usual ? 1 : 0;
  if (numOdd > 0)
    table.notes.push_back(counted(numOdd, "line has", "lines have") + " not the " + counted(usual, "field", "fields") +
                          " of the others: what is missing counts as missing");

  std::size_t first = 0;
  Record names;
  if (beginsWithHeader(records, decimalComma)) {
    names = records[0];
    first = 1;
    table.hasHeader = true;
  } else if (!comment.empty()) {
    const std::vector<Record> named = firstRecords(comment, separator);
    if (named.size() == 1 && named[0].size() == usual && usual > 1) {
      names = named[0];
      table.hasHeader = true;
    }
  }
  names.resize(width);
  if (table.hasHeader && takeUnits(records, first, decimalComma) == 1) {
    for (std::size_t i = 0; i < records[first].size(); ++i)
      if (!isMissing(records[first][i])) names[i] += " (" + records[first][i] + ")";
    ++first;
  }

  table.numRows = records.size() - first;
  if (table.numRows == 0) throw Failure("it has a header, and no line below it");
  table.columns.resize(width);
  for (std::size_t i = 0; i < width; ++i) {
    CsvTable::Column& column = table.columns[i];
    column.name = names[i].empty() ? "column " + std::to_string(i + 1) : names[i];
    for (char& c : column.name)
      if (static_cast<unsigned char>(c) < 32) c = ' ';
    fillColumn(table, i, records, first, decimalComma, separator);
  }
  return table;
}

}  // namespace importer
