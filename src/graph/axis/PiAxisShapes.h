#ifndef ORMELLE_PIAXISSHAPES_H
#define ORMELLE_PIAXISSHAPES_H

#include <span>

class SoGroup;

/// Turns what an axis found into nodes, in axis coordinates counted from `origin`. Coordinates that aren't finite draw
/// nothing.
namespace PiAxisShapes {

/// The line of the axis itself.
void addLine(float start, float end, float origin, SoGroup* group);

/// A line across the axis at each coordinate, all of them one shape.
void addLinesAcross(std::span<const float> coords, float from, float to, float origin, SoGroup* group);

/// A triangle with its base at `end`, `height` wide, and its point at `tip`.
void addArrow(float end, float tip, float height, float origin, SoGroup* group);

}  // namespace PiAxisShapes

#endif
