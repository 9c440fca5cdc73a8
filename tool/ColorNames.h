#ifndef ORMELLE_TOOL_COLORNAMES_H
#define ORMELLE_TOOL_COLORNAMES_H

#include <Inventor/SbColor.h>

#include <optional>
#include <string>

namespace tool {

struct Background {
  SbColor color;
  float opacity;
};

/// The text with its Latin letters made small.
std::string lowerCase(std::string text);

/// A colour written as a name of the web's style sheets (CSS Color 4, in letters of either size), "#rgb", "#rrggbb" or
/// "#rrggbbaa"; nothing if the text is none of these.
std::optional<Background> namedColor(const std::string& text);

}  // namespace tool

#endif
