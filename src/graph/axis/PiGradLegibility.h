#ifndef ORMELLE_PIGRADLEGIBILITY_H
#define ORMELLE_PIGRADLEGIBILITY_H

#include <span>

#include "graph/axis/PiAxisText.h"

/// The last pass over the gradation texts of a line: where they overlap, are illegible or reach too far from the axis,
/// they are shrunk, and if that isn't enough only some of them are written. Where all is well it changes nothing.
namespace PiGradLegibility {

constexpr float MIN_SIZE = 0.007F;    ///< smaller texts than this can't be read; fraction of the reference length
constexpr float GOOD_SIZE = 0.012F;   ///< what thinning aims at
constexpr float MAX_DISTANCE = 0.5F;  ///< of the far side of a text from the axis; fraction of the reference length

/// One line of texts.
struct Line {
  std::span<const float> coords;     ///< of the gradations, rising or falling
  std::span<const PiTextBox> boxes;  ///< of their texts, one each
  std::span<const PiTextRun> texts;  ///< the texts themselves, or none: those left don't read as their neighbours do
  float size = 0;                    ///< the font size that the formulas give, in axis coordinates
  float largest = 0;                 ///< no text becomes larger than this
  float along = 1;                   ///< the reference length
  float nearest = 0;                 ///< where the texts stand across the axis, but for what depends on their size
  bool isSizeFixed = false;          ///< the size was given: texts may only be left out
  bool isThinned = true;             ///< texts may be left out
  long firstMultiple = 0;  ///< which multiple of the step the first gradation is; those of the period are kept
};

/// What to write: each `period`-th text from number `first` on; `isEnds` instead the first and the last one.
struct Choice {
  float size = 0;
  int period = 1;
  int first = 0;
  bool isEnds = false;

  /// The number of the text after `i`, or of the first for -1; `num` if there is none.
  int next(int i, int num) const;
};

Choice choose(const Line& line);

/// Whether texts that follow each other overlap at `choice`.
bool overlap(const Line& line, const Choice& choice);

}  // namespace PiGradLegibility

#endif
