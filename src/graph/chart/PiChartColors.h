#ifndef ORMELLE_PICHARTCOLORS_H
#define ORMELLE_PICHARTCOLORS_H

#include <Inventor/SbColor.h>
#include <Inventor/fields/SoMFColor.h>

/// Colours of the parts of a chart.
class PiChartColors {
 public:
  /// That of part `index`: the list is used in turn. A negative index is the last of them. Without a list, one of
  /// eight.
  static SbColor of(const SoMFColor& colors, int index);
};

#endif
