#ifndef ORMELLE_TOOL_IMPORT_CHARTPAGE_H
#define ORMELLE_TOOL_IMPORT_CHARTPAGE_H

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "Chart.h"

class SoGroup;
class SoSeparator;

namespace importer {

/// The plots of a chart stand in a page one wide; all else is in parts of that.
constexpr double kPlotHeight = 0.56;
constexpr double kPanelGap = 0.05;
constexpr double kLetter = 0.021;

const char* paletteColor(std::size_t i);

SoSeparator* addSeparator(SoGroup* group);

/// Text of a chart between the quotation marks of a scene.
std::string chartText(const std::string& text);

// ---- Ranges and panels

struct ValueRange {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  bool isEmpty() const { return low > high; }
  double size() const { return std::max(std::abs(low), std::abs(high)); }
  void add(double value);
  void add(const ValueRange& other);
};

/// An axis from one round number to another.
struct AxisScale {
  double low, high, step;

  /// How its numbers are written: with the decimals that the step needs, unless they are very large or small.
  std::string format() const;
};

/// With about `count` steps.
AxisScale scaleOf(const ValueRange& range, double count);

/// So many steps that their texts stand clear of each other along a length of the page.
double stepsAlong(double length);

/// A node that writes numbers with so many decimals.
std::string decimalsText(int decimals);

/// Columns that share an axis.
struct Panel {
  ValueRange range;
  std::vector<std::size_t> columns;
};

/// The unit that a name ends with, in parentheses or brackets; empty if none.
std::string unitOf(const std::string& name);

/// Columns that go together, or each alone, in at most four panels: the names of the others go to `notDrawn`. Throws
/// Failure if there is no number in any column.
std::vector<Panel> panelsOf(const Chart& chart, std::vector<std::string>& notDrawn, bool isEachAlone = false);

// ---- The page

/// The title above `top`, and how all that follows is drawn.
void addPage(SoGroup* root, const Chart& chart, double top);

/// What axes of every kind have in common.
extern const char* const kAxisLook;
std::string titleText(const std::string& title);

/// An axis with its numbers in its own format. Grid lines are `across` long; a step of 0 is the axis' own choice.
std::string linearAxis(const char* type, double x, double y, const AxisScale& scale, double across,
                       const std::string& title, const std::string& more);

/// Lines or bars in the colours of a panel's columns, each with its name, right of the plot.
void addKey(SoGroup* group, const Chart& chart, const Panel& panel, double height, bool isBar);

// ---- What stands in it

/// Curves or marks, in ChartPlots.cpp; bars, in ChartBars.cpp.
void drawPlots(const Chart& chart, ChartScene& scene);
void drawBars(const Chart& chart, ChartScene& scene);

}  // namespace importer

#endif
