#ifndef ORMELLE_PISORTEDSEARCH_H
#define ORMELLE_PISORTEDSEARCH_H

/// Bisection of `num` ascending values that takes no branch on them, since for scattered values most would be
/// mispredicted.
namespace PiSortedSearch {

/// Index of the first element that `isBefore` doesn't hold for; `num` if there is none.
template <class Predicate>
int partitionPoint(const float* values, int num, Predicate isBefore) {
  if (num <= 0) return 0;
  int first = 0;
  while (num > 1) {
    const int half = num / 2;
    first += half & -static_cast<int>(isBefore(values[first + half - 1]));  // compilers make a branch of `? :`
    num -= half;
  }
  return first + static_cast<int>(isBefore(values[first]));
}

/// Index of the first element greater than or equal to `value`.
inline int firstNotBelow(const float* values, int num, float value) {
  return partitionPoint(values, num, [value](float element) { return element < value; });
}

/// Index of the first element greater than `value`.
inline int firstAbove(const float* values, int num, float value) {
  return partitionPoint(values, num, [value](float element) { return element <= value; });
}

}  // namespace PiSortedSearch

#endif
