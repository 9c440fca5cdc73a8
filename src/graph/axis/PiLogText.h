#ifndef ORMELLE_PILOGTEXT_H
#define ORMELLE_PILOGTEXT_H

#include <span>

#include <Ormelle/PoLogAxis.h>

#include "graph/axis/PiAxisText.h"
#include "graph/axis/PiLogGradations.h"

/// How the gradations of a logarithmic axis are written.
namespace PiLogText {

/// Automatic digits that aren't larger are left out; fraction of the reference length.
constexpr float MIN_AUTO_SIZE = 0.007F;

/// The representations of an axis with its `AUTO` ones settled.
struct Choice {
  PoLogAxis::TenPowGradRep powerRep = PoLogAxis::TEN_POWER_POW10;
  PoLogAxis::DecadeRep digitRep = PoLogAxis::DECADE_NONE;
  bool isDigitAuto = false;  ///< the digits' representation was `DECADE_AUTO`

  bool hasDigits() const { return digitRep != PoLogAxis::DECADE_NONE; }
  /// Whether digits stand on one line with the powers.
  bool isOneLine() const { return digitRep == PoLogAxis::DECADE_AS_TEN_POWER; }
  PoAxis::LogGradType powerType() const;
  PoAxis::LogGradType digitType() const;
};

Choice choose(PoLogAxis::TenPowGradRep powerRep, PoLogAxis::DecadeRep digitRep, std::span<const float> powers,
              std::span<const PiLogGradation> digits);

/// Writes a power of ten (`isDecadeStart`) or a digit times one: `text` as a number, as the digit alone, or as "10" and
/// "2.10" with its exponent in `exponentText`, which is empty otherwise. Both have room for PiGradStrings::SLOT_SIZE
/// characters; numbers too long for that are written with an exponent.
void write(bool isDecadeStart, PoAxis::LogGradType type, const PiLogGradation& gradation, char* text,
           char* exponentText);

/// The widths by which log texts are fitted: real ones along the axis, by the letters across it.
float fittingWidth(PoAxis::TextPath path, const PiTextRun& run, const PiTextBox& box);

/// The font size, in axis coordinates, at which a text of width `width` at size 1 fits into `room`: from the automatic
/// size downwards in steps.
float fitSize(float width, float room, float along);

/// Where separate digits stand across the axis, on the side of texts: beyond the ticks of digits.
float digitLine(const PiAxisAttributes& attributes, float size, float along);

}  // namespace PiLogText

#endif
