#ifndef ORMELLE_TOOL_IMPORT_COLORSCALE_H
#define ORMELLE_TOOL_IMPORT_COLORSCALE_H

#include <string>
#include <vector>

#include "MeshSets.h"

namespace importer {

/// The range of most values: without those that lie at a distance of ten times the range of the others and more, which
/// would leave all others one colour. Numbers that a file has in place of missing values are such, 1e30 or -9999. Its
/// count is that of the values in it.
Range mainRange(const std::vector<float>& values);

/// From one colour to another over exactly the range of what is shown, with round numbers in between.
class ColorScale {
 public:
  /// A range of one value, or as good as one, is widened.
  ColorScale(double low, double high);

  /// A node that maps values to colours; with `hasBeyond` those far beyond the range are grey.
  std::string mappingText(bool hasBeyond) const;
  /// A legend below the picture, which names the round numbers; with `hasBeyond` the grey as well.
  std::string legendText(const std::string& title, bool hasBeyond) const;

 private:
  std::string formatText() const;

  // The ends, the round numbers, and one between any two of these, so that no colour of the scale is passed over.
  std::vector<double> m_levels;
  std::size_t m_firstRound = 0, m_lastRound = 0;  // among the levels, counted from 1
  double m_step = 1;
};

}  // namespace importer

#endif
