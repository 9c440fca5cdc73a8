#ifndef ORMELLE_TOOL_IMPORT_CSVTABLE_H
#define ORMELLE_TOOL_IMPORT_CSVTABLE_H

#include <string>
#include <vector>

namespace importer {

/// A table in text, column by column, with what its fields turned out to be.
struct CsvTable {
  enum class Kind { NUMBERS, DATES, TEXTS, EMPTY };

  struct Column {
    std::string name;  ///< that of the header, with its unit; else "column 1"
    Kind kind = Kind::EMPTY;
    /// Of NUMBERS; of DATES days since 1970-01-01, with parts of a day. NaN is missing.
    std::vector<double> numbers;
    std::vector<std::string> texts;  ///< of TEXTS; empty is missing
  };

  bool hasHeader = false;
  std::size_t numRows = 0;
  std::vector<Column> columns;
  std::vector<std::string> notes;  ///< what was found and had to be guessed or left out; see Dataset
};

/// Reads a table whose fields are separated by commas, semicolons, tabs or, if all are numbers, blanks; that may be in
/// double quotes, and whose numbers may have a decimal comma. Lines that begin with # are comments, the last of them
/// perhaps the header. Takes the text, of which it changes the encoding in place. Throws Failure.
CsvTable parseCsv(std::string text);

}  // namespace importer

#endif
