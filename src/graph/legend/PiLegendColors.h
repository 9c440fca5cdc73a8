#ifndef ORMELLE_PILEGENDCOLORS_H
#define ORMELLE_PILEGENDCOLORS_H

#include <vector>

#include <Inventor/SbColor.h>

class PbDataMapping;

/// The colours of a data mapping over an interval of values, as pieces over which they run evenly.
namespace PiLegendColors {

struct Piece {
  float from = 0, to = 1;  ///< as parts of the interval
  SbColor color1, color2;
  float transparency1 = 0, transparency2 = 0;
};

/// Pieces between `value1` and `value2` in their order. Where the mapping has no colour there is none.
std::vector<Piece> pieces(const PbDataMapping& mapping, float value1, float value2);
/// One piece in the colour of a value; none if it has no colour.
std::vector<Piece> single(const PbDataMapping& mapping, float value);

}  // namespace PiLegendColors

#endif
