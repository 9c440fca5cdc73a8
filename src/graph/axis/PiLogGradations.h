#ifndef ORMELLE_PILOGGRADATIONS_H
#define ORMELLE_PILOGGRADATIONS_H

#include <span>
#include <vector>

/// A gradation inside a decade: `value` times ten to the power `exponent`. The value is a digit, or a number from 1 to
/// 100.
struct PiLogGradation {
  float coord = 0;
  float value = 0;
  int exponent = 0;
  int numDecimal = 0;  ///< that the value is written with
};

/// Gradations of an axis whose coordinates are exponents: numbers only. `low` must not be above `high`.
namespace PiLogGradations {

/// Whether the decades of these ends can be told apart as floats, and so can be gradated at all.
bool isResolved(float low, float high);

/// The integers from `low` to `high`; at most PiGradations::MAX_GRADATIONS, by leaving out all but every so many.
void powers(float low, float high, std::vector<float>& out);

/// The digits of `list` that lie from 2 to 9, in all decades between `low` and `high`, rising. Of more than
/// PiGradations::MAX_GRADATIONS nothing.
void digits(float low, float high, std::span<const int> list, std::vector<PiLogGradation>& out);

/// Values at equal steps between `low` and `high`, for an axis within a decade that has fewer than two digits. None of
/// them is a power of ten.
void between(float low, float high, std::vector<PiLogGradation>& out);

/// Which multiple of their distance the first of `powers` is; of none, 0.
long firstMultiple(std::span<const float> powers);

/// The least distance of neighbours in the merged lists, both rising; 2 at most, and 1 without digits.
float leastDistance(std::span<const float> powers, std::span<const PiLogGradation> digits);

}  // namespace PiLogGradations

#endif
