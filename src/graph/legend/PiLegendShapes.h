#ifndef ORMELLE_PILEGENDSHAPES_H
#define ORMELLE_PILEGENDSHAPES_H

#include <span>

#include <Inventor/SbVec2f.h>

#include "graph/legend/PiLegendColors.h"

class SoGroup;

/// Turns the boxes of a legend into nodes.
namespace PiLegendShapes {

/// Which way the colours of a box run from its first value to its second.
enum class Direction { UP, DOWN, RIGHT, LEFT };

/// Goes first in a group of filled boxes: their colours are as they are, and lines in their plane lie before them.
void beginFilled(SoGroup* group);
/// A rectangle with the pieces in their places; without any nothing is added.
void addFilled(const SbVec2f& min, const SbVec2f& max, Direction direction,
               std::span<const PiLegendColors::Piece> pieces, SoGroup* group);
void addBorder(const SbVec2f& min, const SbVec2f& max, SoGroup* group);

}  // namespace PiLegendShapes

#endif
