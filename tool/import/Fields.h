#ifndef ORMELLE_TOOL_IMPORT_FIELDS_H
#define ORMELLE_TOOL_IMPORT_FIELDS_H

#include <optional>
#include <string>
#include <string_view>

namespace importer {

std::string_view trimmed(std::string_view text);
/// The letters of ASCII made small.
std::string lowered(std::string_view text);

/// Whether a field of a table stands for no value: empty, "NA", "null", "-" and their like.
bool isMissing(std::string_view field);

/// A whole field as a number, which may have marks between groups of three digits. NaN for what a double can't hold;
/// none for what is no number.
std::optional<double> parseNumber(std::string_view field, bool decimalComma);

/// The order of a date that doesn't begin with its year.
enum class DateOrder { YMD, DMY, MDY };

/// A month by its English name or the first three letters of it.
std::optional<unsigned> monthNamed(std::string_view word);

/// A whole field as a date, with or without a time of day: days since 1970-01-01.
std::optional<double> parseDate(std::string_view field, DateOrder order);

/// A day, or a time of day, as ISO 8601 writes it: "1958-03-29", "1958-03-29 06:30:00".
std::string dateText(double daysSince1970, bool withTime);

}  // namespace importer

#endif
