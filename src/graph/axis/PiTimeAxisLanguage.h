#ifndef ORMELLE_PITIMEAXISLANGUAGE_H
#define ORMELLE_PITIMEAXISLANGUAGE_H

#include <optional>
#include <string_view>
#include <vector>

#include "graph/axis/PiDateRep.h"

/// The two small languages of the time axis.
///
/// A representation is a list of levels, the finest first, with a separator between two:
///
///     rep:   level { SEPARATOR level }
///     level: [ [NUMBER] PERIOD ] [STRING] { [INTEGER] ELEMENT [STRING] }
///
/// with the periods SEC MIN HOU DAY MON YEA, the elements s m H D M Y, and strings between single quotes, where two
/// quotes stand for one. Before an element stands how many letters to write of a name: 3 D is "TUE", D is the day of
/// the month. A list of periods is
///
///     list:  [NUMBER] PERIOD { [NUMBER] PERIOD }
///
/// Blanks, tabs and line ends between tokens don't count. Both parsers keep all their state on the stack.
namespace PiTimeAxisLanguage {

/// The longest token, in characters. A longer one is reported on the error stream and is a syntax error.
constexpr int kMaxTokenLength = 512;

/// The levels of `text`, at least one; nothing if `text` is wrong anywhere. `separator` is a character; one that means
/// something else in this language, or a blank, separates nothing.
std::optional<PiDateRep> parseAxisRep(std::string_view text, int separator);

/// The periods of `text` in their order, at least one; nothing if `text` is wrong anywhere.
std::optional<std::vector<PiDatePeriod>> parseDateList(std::string_view text);

}  // namespace PiTimeAxisLanguage

#endif
