#ifndef ORMELLE_PIISOVALUEADJUSTMENT_H
#define ORMELLE_PIISOVALUEADJUSTMENT_H

#include <span>
#include <vector>

class PbIsovaluesList;

/// Moves isovalues off node values, so that no edge of a mesh has an end exactly on a level.
///
/// A level that is equal to some value, but not to all, moves by a hundredth of the distance to the nearest other
/// value: up if any value is greater, else down. Where a float can't hold so small a step it moves by more of that
/// distance, or on past the next value. Values that aren't finite count as absent. Each operation answers 1 if it moved
/// a level, else 0, and leaves that answer in isAdjusted().
///
/// The list of adjusted levels belongs to the object and is reused from one rebuild to the next.
class PiIsovalueAdjustment {
 public:
  int adjustIsoval(int n, const float* values, float& iso);

  /// The same over three arrays, of which the second and third may be empty. A level that as many values are equal to
  /// as the first array has elements stays.
  int adjustIsovalMultiple(int n1, const float* v1, int n2, const float* v2, int n3, const float* v3, float& iso);

  /// Adjusts a copy of the levels of `list`, ascending as before: each as adjustIsovalMultiple() does. Costs the
  /// logarithm of the number of levels for each value.
  int adjustIsovalList(const PbIsovaluesList& list, int n1, const float* v1, int n2 = 0, const float* v2 = nullptr,
                       int n3 = 0, const float* v3 = nullptr);

  /// The adjusted levels, valid until the next adjustIsovalList().
  std::span<const float> getIsovalues() const { return m_isovalues; }
  int isAdjusted() const { return m_isAdjusted; }

 private:
  std::vector<float> m_isovalues;
  int m_isAdjusted = 0;
};

#endif
