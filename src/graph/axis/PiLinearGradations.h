#ifndef ORMELLE_PILINEARGRADATIONS_H
#define ORMELLE_PILINEARGRADATIONS_H

#include <vector>

/// Gradations at equal steps: numbers only.
///
/// Values are worked out in double and rounded once, so that the twentieth is as exact as the first; what lies within
/// 10^-4 steps of an end counts as that end.
struct PiLinearGradations {
  float step = 0;
  float first = 0;
  int num = 0;
  bool isOnMultiples = true;  ///< whether gradations are multiples of the step

  /// Gradations from `start` to `end`, at most PiGradations::MAX_GRADATIONS; beyond that, the step is a multiple of the
  /// wanted one. A wanted step of 0 is automatic.
  static PiLinearGradations make(bool isOnMultiples, float start, float end, float wantedStep);
  /// The same with a step that a float resolves at these ends: never two equal values, and a value at each end if no
  /// step is left. Differs from make() only where that has equal neighbours or fewer than two values.
  static PiLinearGradations makeResolved(bool isOnMultiples, float start, float end);

  /// The automatic step of round factors, or the wanted one, with the sign of `delta`. A `delta` of 0 changes nothing.
  static void chooseStep(float delta, float& step);
  static void findFirst(bool isOnMultiples, float start, float end, float step, float& first, int& num);

  /// All values, from start to end, none beyond it.
  void values(float end, std::vector<float>& out) const;
  /// Which multiple of the step the first one is; 0 if gradations aren't on multiples.
  long firstMultiple() const;
};

#endif
