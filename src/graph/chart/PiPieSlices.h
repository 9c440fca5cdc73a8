#ifndef ORMELLE_PIPIESLICES_H
#define ORMELLE_PIPIESLICES_H

#include <string>
#include <vector>

/// Which slices a pie shows, in which order, how large they are, and what their percentages read as.
class PiPieSlices {
 public:
  struct Slice {
    int number;      ///< i + 1 for value i; -1 - n for the group of small slices of n values
    double value;    ///< that of the group is the sum of its members
    double percent;  ///< of the total
    double start;    ///< angle in radians, counterclockwise from the x axis
    double end;

    double middle() const { return (start + end) / 2; }
    bool isGroup() const { return number < 0; }
    /// The place in lists of one entry a value; -1 for the group.
    int index() const { return isGroup() ? -1 : number - 1; }
  };

  struct Grouping {
    bool isActive = false;
    bool isPercentage = false;  ///< whether the limit is a share of the total, in hundredths
    float limit = 0;            ///< slices below it are small; two or more of them become one, the last
  };

  /// Values that are negative or not finite count as 0; those that aren't positive take no slice.
  void compute(int num, const float* values, const Grouping& grouping);

  const std::vector<Slice>& displayed() const { return m_displayed; }

  /// The percentages of the displayed slices with so many decimals, rounded by largest remainder so that what is shown
  /// sums to 100.
  std::vector<std::string> percentTexts(int numDecimals) const;

  /// The same for any parts of a whole: parts of `total` as whole numbers that sum to `whole`. Equal remainders go to
  /// the earlier part.
  static std::vector<long long> apportion(const std::vector<double>& parts, double total, long long whole);

 private:
  std::vector<Slice> m_displayed;
  double m_total = 0;
};

#endif
