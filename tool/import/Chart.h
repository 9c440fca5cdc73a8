#ifndef ORMELLE_TOOL_IMPORT_CHART_H
#define ORMELLE_TOOL_IMPORT_CHART_H

#include <string>
#include <vector>

class SoSeparator;

namespace importer {

/// A table to be shown as a chart instead of as meshes.
struct Chart {
  enum class Kind {
    CURVES,  ///< each column over x, joined in the order of x
    POINTS,  ///< each column over x as marks
    BARS     ///< a bar for each row, or several beside each other
  };
  struct Column {
    std::string name;
    std::vector<float> values;  ///< NaN is missing
  };

  Kind kind = Kind::CURVES;
  std::string title;
  std::string xTitle;                 ///< of the x axis, or of the rows
  std::vector<double> x;              ///< of CURVES and POINTS, ascending for CURVES; of time in days
  bool isTime = false;                ///< x counts days from `firstDay`
  double firstDay = 0;                ///< since 1970-01-01
  std::vector<std::string> rowNames;  ///< of BARS
  std::vector<Column> columns;
};

/// What a chart was made into.
struct ChartScene {
  SoSeparator* root = nullptr;  ///< without a reference
  std::string summary;
  std::vector<std::string> notes;
};

/// The indices of what is finite in `x`, in its rising order.
std::vector<std::size_t> rowsInOrder(const std::vector<double>& x);

/// Draws a chart: columns whose values go together over common axes, others in panels of their own. Curves keep their
/// data in one mesh with a set for each column, whether it is drawn or not. Throws Failure if there is nothing to draw.
ChartScene makeChartScene(const Chart& chart);

}  // namespace importer

#endif
