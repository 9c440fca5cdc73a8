#ifndef ORMELLE_TOOL_VIEW_WORDS_H
#define ORMELLE_TOOL_VIEW_WORDS_H

#include <string>

class PbDateFormatMapping;

/// How names, numbers and dates are told.
namespace view {

/// What printf makes of it, up to 255 bytes.
[[gnu::format(printf, 1, 2)]] std::string print(const char* format, ...);

/// `name` in quotes, or "KIND INDEX" if it is empty.
std::string nameOr(const std::string& name, const char* kind, int index);

/// A number of the data: as many digits as tell it from its neighbours.
std::string exactly(float value);
/// A number that was measured in the picture or interpolated: the seven digits that a float has.
std::string roughly(double value);
/// `roughly(value)`, counted from an origin that has more digits than floats have.
std::string roughly(double value, double origin);

/// The date at a coordinate, in the format of `dates`; with hours and minutes if `withTime` and the format has none.
/// What a float can't tell is rounded, so that a midnight stays on its day.
std::string dateAt(const PbDateFormatMapping& dates, double coordinate, bool withTime);
/// How many days lie between two coordinates.
double daysBetween(const PbDateFormatMapping& dates, double a, double b);

}  // namespace view

#endif
