#ifndef ORMELLE_PIAXISLAYOUT_H
#define ORMELLE_PIAXISLAYOUT_H

#include <span>

#include <Ormelle/Plimit.h>

#include "graph/axis/PiAxisAttributes.h"
#include "graph/axis/PiAxisText.h"

/// Where the elements of an axis stand, in axis coordinates, and how large they are: numbers only. What was chosen goes
/// into the attributes.
namespace PiAxisLayout {

constexpr float AUTO_GRAD_SIZE = 0.04F;  ///< of gradation texts, before they are fitted
constexpr float AUTO_TITLE_SIZE = 0.055F;
constexpr float AUTO_ARROW_HEIGHT = 0.03F;
constexpr float AUTO_ARROW_LENGTH = 0.05F;
constexpr float TEXT_GAP = 0.65F;  ///< between a text and what stands before it, in font sizes: a figure's height
constexpr float TEXT_ROOM = 0.8F;  ///< the part of an interval that a text may fill

/// A place along and across the axis.
struct Place {
  float x = 0;
  float y = 0;
};

/// Settles the lengths of ticks, fractions of the reference length, by the number of main gradations.
void resolveTickLengths(PiAxisAttributes& attributes, int numMainGrads);

/// From where to where a tick of length 1 reaches.
struct Reach {
  float from = 0;
  float to = 0;
};
Reach tickReach(PoAxis::TickPosition position, bool isAbove);

/// The font size, in axis coordinates, at which the widest text leaves room for itself in an interval: the automatic
/// one, shrunk where needed. `maxWidth` is at size 1, `maxLetters` counts; the path says which of the two matters.
float fitGradSize(PoAxis::TextPath path, float maxWidth, int maxLetters, float interval, float along);

/// Where texts stand across the axis: as the attributes say, or else beyond what was built so far. The distance is
/// settled.
float gradLine(PiAxisAttributes& attributes, const Plimit& limits, float size, float along);

struct TitlePlace {
  Place place;
  PiTextAlignment alignment;
};
/// Size and distance of the title are settled.
TitlePlace placeTitle(PiAxisAttributes& attributes, const Plimit& limits, float start, float end, float along);

/// Where a multiplier starts that stands beyond `end`, seen from `start`; a `distance` of 0 is settled.
Place placeMultiplier(const Plimit& limits, float start, float end, float size, float along, float& distance);

void growByText(Plimit& limits, const PiTextBox& box, float x, float y, float size);

}  // namespace PiAxisLayout

#endif
