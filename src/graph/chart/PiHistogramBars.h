#ifndef ORMELLE_PIHISTOGRAMBARS_H
#define ORMELLE_PIHISTOGRAMBARS_H

#include <vector>

/// Places the bars of a table of values along an axis, without regard to its direction.
///
/// The table is read row by row. Its bars stand in groups: one for each row, with a bar for each column, or the other
/// way round.
class PiHistogramBars {
 public:
  enum Representation {
    JUXTAPOSED,   ///< the bars of a group side by side
    ACCUMULATED,  ///< on each other: positive values upwards from the base, negative ones downwards
    PERCENTAGE    ///< on each other, as shares of the group, which all have one height; negative values count as 0
  };

  struct Table {
    const float* values = nullptr;
    int numValues = 0;
    int numRows = 1;  ///< below 1 counts as 1, and more than there are values as their number
    bool isGroupedByRow = true;
    Representation representation = JUXTAPOSED;
    float percentageHeight = 1;  ///< in values
  };

  /// The axis, and what is free between two groups.
  struct Axis {
    float start = 0;
    float end = 1;
    float base = 0;
    float valueScale = 1;  ///< lengths across the axis for a value of 1
    bool isFixedSpace = false;
    float space = 0.2f;  ///< a fraction of the pitch, or a length
  };

  struct Bar {
    int group = 0;
    int member = 0;    ///< its place in the group
    double value = 0;  ///< 0 if it isn't finite
    bool isDefined = true;
    bool isBelow = false;  ///< whether it grows downwards from the base
    float low = 0;         ///< ends along the axis, the one at the start first
    float high = 0;
    float foot = 0;  ///< ends across: towards the base
    float top = 0;   ///< and away from it
  };

  void compute(const Table& table, const Axis& axis);

  int numGroups() const { return m_numGroups; }
  int numMembers() const { return m_numMembers; }
  /// One for each value, in the order of the table.
  const std::vector<Bar>& bars() const { return m_bars; }
  double sumOf(int group) const { return m_sums[static_cast<std::size_t>(group)]; }

  /// What groups have for width on a pitch, both with their sign: the direction of the axis.
  static float widthOf(float pitch, const Axis& axis);

 private:
  int m_numGroups = 0;
  int m_numMembers = 0;
  std::vector<Bar> m_bars;
  std::vector<double> m_sums;
};

#endif
