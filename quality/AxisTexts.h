#ifndef ORMELLE_AXISTEXTS_H
#define ORMELLE_AXISTEXTS_H

#include <string>
#include <vector>

class SoBaseKit;

/// A text of an axis as its nodes place it, in the coordinates of the axis: x along it, y across. In double, since an
/// axis may lie so far from 0 that the size of a letter is lost beside a float coordinate.
struct AxisText {
  std::string text;
  double x = 0, y = 0;  ///< the place that its transform names
  double xmin = 0, xmax = 0, ymin = 0, ymax = 0;
  double size = 0;  ///< of its font

  double center() const { return (xmin + xmax) / 2; }
  bool overlaps(const AxisText& other, double tolerance) const;
  void extendBy(const AxisText& other);
};

/// The texts in the group `element` of a rebuilt axis, in their font `elementApp.font`; `direction` is that of the
/// axis, 0 for x.
std::vector<AxisText> axisTexts(SoBaseKit& axis, const char* element, int direction);

#endif
