#ifndef ORMELLE_TOOL_ARGUMENTS_H
#define ORMELLE_TOOL_ARGUMENTS_H

#include <Inventor/SbVec3f.h>

#include <string>

#include "ColorNames.h"

namespace tool {

/// Values of command-line options. Each parser throws std::invalid_argument with a message for the user.

struct Size {
  int width;
  int height;
};

/// "1600x1200", both from 1 to 32767.
Size parseSize(const std::string& text);

/// One of the axes "x", "y", "z", "-x", "-y", "-z", or a vector "x,y,z".
SbVec3f parseAxis(const std::string& text);

/// The direction of looking: a vector "x,y,z", or sides joined by "-", such as "front-top": the viewer then stands on
/// those sides. With `up` upwards, the front side is that of +z if y is up, of -y if z is up. "iso" is the same as
/// "front-right-top".
SbVec3f parseView(const std::string& text, const SbVec3f& up);

/// A colour name, "#rgb", "#rrggbb", "#rrggbbaa", "r,g,b" or "r,g,b,a" with numbers from 0 to 1, or "transparent".
Background parseBackground(const std::string& text);

}  // namespace tool

#endif
