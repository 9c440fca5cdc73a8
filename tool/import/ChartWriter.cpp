#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>

#include <Ormelle/PoCurve3.h>
#include <Ormelle/PoIrregularMesh1D.h>
#include <Ormelle/PoMultipleHistogram.h>
#include <Ormelle/PoSingleHistogram.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

#include "Chart.h"
#include "Dataset.h"
#include "Fields.h"

namespace importer {

namespace {

// The plots of a chart stand in a page one wide; all else is in parts of that.
constexpr double kPlotHeight = 0.56;
constexpr double kPanelGap = 0.05;
constexpr double kLetter = 0.021;
constexpr std::size_t kMostPanels = 4;
constexpr std::size_t kMostBars = 60;

// Colours that the colour-blind tell apart (Okabe and Ito, "Color Universal Design", 2008), the yellow darkened.
constexpr std::array<const char*, 8> kPalette{"0 0.45 0.70",    "0.84 0.37 0", "0 0.62 0.45",    "0.80 0.47 0.65",
                                              "0.34 0.71 0.91", "0.90 0.62 0", "0.35 0.35 0.35", "0.72 0.67 0.10"};

const char* paletteColor(std::size_t i) { return kPalette[i % kPalette.size()]; }

// ---- Text of nodes --------------------------------------------------------------------------------------------------

std::string numeral(double number) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.9g", number);
  return text.data();
}

std::string quotedText(const std::string& text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    // A bar ends a line, see the PoMiscTextAttr.
    result += c == '|' ? '/' : c;
  }
  return result + '"';
}

void addText(SoGroup* group, const std::string& nodes) {
  const std::string text = "#Inventor V2.1 ascii\n" + nodes;
  SoInput in;
  in.setBuffer(text.data(), text.size());
  SoSeparator* all = SoDB::readAll(&in);
  if (!all) throw Failure("its chart could not be made");
  all->ref();
  for (int i = 0; i < all->getNumChildren(); ++i) group->addChild(all->getChild(i));
  all->unref();
}

SoSeparator* addSeparator(SoGroup* group) {
  auto* separator = new SoSeparator;
  group->addChild(separator);
  return separator;
}

std::string wordsAt(double x, double y, const std::string& words) {
  return "Separator { Translation { translation " + numeral(x) + " " + numeral(y) + " 0 } Text3 { string " +
         quotedText(words) + " } }\n";
}

// ---- Ranges and panels ----------------------------------------------------------------------------------------------

struct ValueRange {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  bool isEmpty() const { return low > high; }
  double size() const { return std::max(std::abs(low), std::abs(high)); }
  void add(double value) {
    if (!std::isfinite(value)) return;
    low = std::min(low, value);
    high = std::max(high, value);
  }
  void add(const ValueRange& other) {
    low = std::min(low, other.low);
    high = std::max(high, other.high);
  }
};

ValueRange rangeOf(const std::vector<float>& values) {
  ValueRange range;
  for (const float value : values) range.add(value);
  return range;
}

// An axis from one round number to another.
struct AxisScale {
  double low, high, step;

  /// How its numbers are written: with the decimals that the step needs, unless they are very large or small.
  std::string format() const {
    const double size = std::max(std::abs(low), std::abs(high));
    if (size >= 1e7 || step < 1e-5) return {};
    const int decimals = std::max(0, static_cast<int>(-std::floor(std::log10(step) + 1e-9)));
    return decimals == 0
               ? "PoNumericDisplayFormat { formatType INTEGER_FORMAT }\n"
               : "PoNumericDisplayFormat { formatType FLOAT_FORMAT numDecimal " + std::to_string(decimals) + " }\n";
  }
};

// With about `count` steps.
AxisScale scaleOf(ValueRange range, double count) {
  if (!(range.high - range.low > 1e-6 * range.size())) {
    const double half = range.size() > 0 ? 0.05 * range.size() : 0.5;
    range.low -= half;
    range.high += half;
  }
  const double rough = (range.high - range.low) / count;
  const double power = std::pow(10.0, std::floor(std::log10(rough)));
  double step = 10 * power;
  for (const double factor : {5.0, 2.0, 1.0})
    if (factor * power >= rough * 0.999) step = factor * power;
  return {std::floor(range.low / step + 1e-6) * step, std::ceil(range.high / step - 1e-6) * step, step};
}

// So many that their texts stand clear of each other along a length of the page.
double stepsAlong(double length) { return std::clamp(length / 0.07, 2.0, 8.0); }

// Columns that share an axis.
struct Panel {
  ValueRange range;
  std::vector<std::size_t> columns;
};

// The unit that a name ends with, in parentheses or brackets; empty if none.
std::string unitOf(const std::string& name) {
  if (name.empty() || (name.back() != ')' && name.back() != ']')) return {};
  const std::size_t start = name.find_last_of(name.back() == ')' ? '(' : '[');
  return start == std::string::npos ? std::string() : name.substr(start + 1, name.size() - start - 2);
}

// Whether one axis shows both well: neither would be a flat line there. Bars are seen from 0 on.
bool goTogether(const ValueRange& a, const ValueRange& b, bool fromZero) {
  constexpr double kMost = 8;
  if (fromZero) return a.size() <= kMost * b.size() && b.size() <= kMost * a.size();
  ValueRange both = a;
  both.add(b);
  const double span = both.high - both.low;
  return span <= kMost * (a.high - a.low) && span <= kMost * (b.high - b.low);
}

std::vector<Panel> panelsOf(const Chart& chart, std::vector<std::string>& notDrawn, bool isEachAlone = false) {
  const bool fromZero = chart.kind == Chart::Kind::BARS;
  std::vector<Panel> panels;
  std::vector<ValueRange> firsts;
  for (std::size_t i = 0; i < chart.columns.size(); ++i) {
    const ValueRange range = rangeOf(chart.columns[i].values);
    if (range.isEmpty()) continue;
    const std::string unit = unitOf(chart.columns[i].name);
    std::size_t at = 0;
    for (; at < panels.size(); ++at) {
      const std::string other = unitOf(chart.columns[panels[at].columns[0]].name);
      if (unit == other && !isEachAlone && panels[at].columns.size() < kPalette.size() &&
          goTogether(panels[at].range, range, fromZero))
        break;
    }
    if (at == panels.size()) {
      if (panels.size() == kMostPanels) {
        notDrawn.push_back(chart.columns[i].name);
        continue;
      }
      panels.emplace_back();
    }
    panels[at].range.add(range);
    panels[at].columns.push_back(i);
  }
  if (panels.empty()) throw Failure("there is no number in its columns");
  return panels;
}

// ---- The page -------------------------------------------------------------------------------------------------------

void addPage(SoGroup* root, const Chart& chart, double top) {
  addText(root,
          "LightModel { model BASE_COLOR }\nBaseColor { rgb 0.18 0.20 0.24 }\n"
          "PoMiscTextAttr { fontName \"DejaVu Sans\" endLineChar 0x7c lineLength 0 }\n"
          "Font { name \"DejaVu Sans:Bold\" size 0.032 }\n" +
              wordsAt(0, top + 0.025, chart.title) + "Font { name \"DejaVu Sans\" size " + numeral(kLetter) + " }\n");
}

constexpr const char* kAxisLook = " gradFontSize 0.02 tickMainLength 0.008 arrowVisibility VISIBILITY_OFF";
constexpr const char* kGridLook =
    " mainGradGridApp AppearanceKit { material Material { diffuseColor 0.87 0.88 0.90 } drawStyle DrawStyle { "
    "lineWidth 1 } }";

std::string titleText(const std::string& title) {
  if (title.empty()) return " titleVisibility VISIBILITY_OFF";
  return " titleVisibility VISIBILITY_ON titlePosition TITLE_MIDDLE titlePath PATH_RIGHT titleFontSize 0.022 "
         "titleString " +
         quotedText(title);
}

// An axis with its numbers in its own format. Grid lines are `across` long; a step of 0 is the axis' own choice.
std::string linearAxis(const char* type, double x, double y, const AxisScale& scale, double across,
                       const std::string& title, const std::string& more) {
  std::string text = "Separator {\n" + (scale.step > 0 ? scale.format() : std::string()) + "PoLinearAxis { type " +
                     type + " start " + numeral(x) + " " + numeral(y) + " 0 end " + numeral(scale.high) + " step " +
                     numeral(scale.step) + kAxisLook + more + titleText(title);
  if (across > 0) text += " gridVisibility VISIBILITY_ON gridLengthGradOtherSide " + numeral(across) + kGridLook;
  return text + " }\n}\n";
}

// Lines in the colours of a panel's columns, each with its name, right of the plot.
void addKey(SoGroup* group, const Chart& chart, const Panel& panel, double height, bool isBar) {
  std::string text = "BaseColor { rgb 0.18 0.20 0.24 }\n";
  double y = height - kLetter;
  for (std::size_t i = 0; i < panel.columns.size(); ++i) {
    const std::string points =
        isBar ? "1.025 0.1 0, 1.045 0.1 0, 1.045 0.9 0, 1.025 0.9 0" : "1.02 0.35 0, 1.05 0.35 0";
    text += "Separator { Translation { translation 0 " + numeral(y) + " 0 } Separator { DrawStyle { lineWidth 3 } " +
            "BaseColor { rgb " + paletteColor(i) + " } Scale { scaleFactor 1 " + numeral(kLetter) +
            " 1 } Coordinate3 { point [ " + points + " ] } " + (isBar ? "FaceSet {}" : "LineSet {}") + " } " +
            wordsAt(1.06, 0, chart.columns[panel.columns[i]].name) + "}\n";
    y -= 1.7 * kLetter;
  }
  addText(group, text);
}

// ---- Curves and points ----------------------------------------------------------------------------------------------

// What x is counted from, so that floats tell its values apart.
double baseOf(const Chart& chart, const ValueRange& x) {
  if (chart.isTime || x.high - x.low > 1e-4 * x.size()) return 0;
  const double power = std::pow(10.0, std::floor(std::log10(std::max(x.high - x.low, 1e-300))) + 1);
  const double base = std::floor(x.low / power) * power;
  return std::isfinite(base) ? base : 0;
}

class PlotWriter {
 public:
  PlotWriter(const Chart& chart, ChartScene& scene) : m_chart(chart), m_scene(scene) {}

  void write() {
    std::vector<std::string> notDrawn;
    const std::vector<Panel> panels = panelsOf(m_chart, notDrawn);
    for (const double x : m_chart.x) m_range.add(x);
    if (m_range.isEmpty()) throw Failure("there is no number in its first column");
    m_base = baseOf(m_chart, m_range);
    m_range = {m_range.low - m_base, m_range.high - m_base};
    if (m_base != 0)
      m_scene.notes.push_back("x is counted from " + numeral(m_base) + ", so that its values stay apart");
    const AxisScale x = scaleOf(m_range, 8);
    if (!(m_range.high > m_range.low) || m_chart.kind == Chart::Kind::POINTS) m_range = {x.low, x.high};
    m_xStep = x.step;

    m_height = (kPlotHeight - kPanelGap * static_cast<double>(panels.size() - 1)) / static_cast<double>(panels.size());
    if (panels.size() > 1) m_height = std::max(m_height, 0.22);
    const double all = (m_height + kPanelGap) * static_cast<double>(panels.size()) - kPanelGap;
    addPage(m_scene.root, m_chart, all);
    if (m_chart.kind == Chart::Kind::CURVES) addMesh();
    for (std::size_t i = 0; i < panels.size(); ++i) {
      SoSeparator* group = addSeparator(m_scene.root);
      addText(group, "Translation { translation 0 " +
                         numeral((m_height + kPanelGap) * static_cast<double>(panels.size() - 1 - i)) + " 0 }\n");
      addPanel(group, panels[i], i + 1 == panels.size());
    }
    for (const std::string& name : notDrawn)
      m_scene.notes.push_back("the column " + name +
                              (m_chart.kind == Chart::Kind::CURVES ? " is kept in the scene, but not drawn"
                                                                   : " is not drawn and was left out"));
  }

 private:
  std::vector<float> xs() const {
    std::vector<float> xs;
    xs.reserve(m_chart.x.size());
    for (const double x : m_chart.x) xs.push_back(static_cast<float>(x - m_base));
    return xs;
  }

  // One mesh with all columns.
  void addMesh() {
    auto* mesh = new PoIrregularMesh1D;
    m_scene.root->addChild(mesh);
    mesh->setName("Series");
    const std::vector<float> x = xs();
    mesh->setGeometry(static_cast<int>(x.size()), x.data());
    for (std::size_t i = 0; i < m_chart.columns.size(); ++i)
      mesh->addValuesSet(static_cast<int>(i), m_chart.columns[i].values.data(), m_chart.columns[i].name.c_str());
  }

  std::string xAxis(double bottom, bool isLast) const {
    const std::string more = isLast ? "" : " gradVisibility VISIBILITY_OFF";
    const std::string title = isLast ? m_chart.xTitle : "";
    if (!m_chart.isTime)
      return linearAxis("XY", m_range.low, bottom, {m_range.low, m_range.high, m_xStep}, 0,
                        m_base != 0 && isLast ? title + " - " + numeral(m_base) : title, more);
    const bool withTime = m_range.high - m_range.low < 200;
    // A mapping needs two days apart; seconds are the finest that it tells.
    const std::string first = dateText(m_chart.firstDay + m_range.low, withTime);
    const std::string last = dateText(m_chart.firstDay + m_range.high, withTime);
    return std::string("PoDateFormatMapping { format ") + (withTime ? "\"YmdH'\\\"\"" : "\"Ymd\"") + " date1 \"" +
           first + "\" date2 \"" + last + "\" coord1 " + numeral(m_range.low) + " coord2 " + numeral(m_range.high) +
           " }\nPoTimeAxis { startDate \"" + first + "\" endDate \"" + last + "\" coord " + numeral(bottom) +
           kAxisLook + more + titleText(title) + " }\n";
  }

  void addPanel(SoSeparator* group, const Panel& panel, bool isLast) {
    const AxisScale y = scaleOf(panel.range, stepsAlong(m_height));
    const bool isOne = panel.columns.size() == 1;
    addText(group, "PoDomain { min " + numeral(m_range.low) + " " + numeral(y.low) + " 0 max " + numeral(m_range.high) +
                       " " + numeral(y.low + (y.high - y.low) / m_height) + " 1 transformType TRANSFORM_01 }\n" +
                       linearAxis("YX", m_range.low, y.low, y, m_range.high - m_range.low,
                                  isOne ? m_chart.columns[panel.columns[0]].name
                                        : unitOf(m_chart.columns[panel.columns[0]].name),
                                  "") +
                       xAxis(y.low, isLast));
    for (std::size_t i = 0; i < panel.columns.size(); ++i) addColumn(group, panel.columns[i], isOne ? m_numDrawn : i);
    if (isOne)
      ++m_numDrawn;
    else
      addKey(group, m_chart, panel, m_height, false);
  }

  void addColumn(SoSeparator* group, std::size_t column, std::size_t color) {
    const std::string look = std::string("DrawStyle { lineWidth 2 }\nBaseColor { rgb ") + paletteColor(color) + " }\n";
    if (m_chart.kind == Chart::Kind::CURVES) {
      addText(group, look + "PoCurveLine { yValuesIndex " + std::to_string(column) + " }\n");
      return;
    }
    addText(group, look);
    const std::vector<float>& values = m_chart.columns[column].values;
    std::vector<SbVec3f> points;
    const std::vector<float> x = xs();
    for (std::size_t i = 0; i < values.size(); ++i)
      if (std::isfinite(x[i]) && std::isfinite(values[i])) points.emplace_back(x[i], values[i], 0.0F);
    auto* marks = new PoCurve3(static_cast<int>(points.size()), points.data(), PoCurve::CURVE_NONE);
    group->addChild(marks);
    marks->isMarkerVisible = TRUE;
  }

  const Chart& m_chart;
  ChartScene& m_scene;
  ValueRange m_range;
  double m_base = 0, m_xStep = 0;
  double m_height = kPlotHeight;
  std::size_t m_numDrawn = 0;
};

// ---- Bars -----------------------------------------------------------------------------------------------------------

class BarWriter {
 public:
  BarWriter(const Chart& chart, ChartScene& scene) : m_chart(chart), m_scene(scene) {}

  void write() {
    draw();
    if (m_numMissing > 0)
      m_scene.notes.push_back(counted(m_numMissing, "missing value is a bar", "missing values are bars") + " of 0");
  }

 private:
  void draw() {
    std::vector<std::string> notDrawn;
    std::vector<Panel> panels = panelsOf(m_chart, notDrawn);
    // Bars beside each other are compared: only where all of them may be.
    if (panels.size() > 1) {
      notDrawn.clear();
      panels = panelsOf(m_chart, notDrawn, true);
    }
    for (const std::string& name : notDrawn)
      m_scene.notes.push_back("the column " + name + " is not drawn and was left out");
    m_numRows = std::min(m_chart.rowNames.size(), kMostBars);
    if (m_numRows < m_chart.rowNames.size())
      m_scene.notes.push_back("only the first " + std::to_string(m_numRows) + " of " +
                              std::to_string(m_chart.rowNames.size()) + " rows are drawn as bars");
    std::size_t longest = 0;
    for (const std::string& name : m_chart.rowNames) longest = std::max(longest, name.size());
    // Many names, or long ones, are read best below each other, left of their bars.
    m_isAcross = m_numRows > 12 || longest * m_numRows > 90;
    if (m_isAcross) {
      writeAcross(panels);
      return;
    }
    m_height = panels.size() == 1 ? kPlotHeight : std::max(0.2, kPlotHeight / static_cast<double>(panels.size()));
    const double step = m_height + 2 * kPanelGap;
    addPage(m_scene.root, m_chart, step * static_cast<double>(panels.size()) - 2 * kPanelGap);
    for (std::size_t i = 0; i < panels.size(); ++i)
      addUpright(panels[i], step * static_cast<double>(panels.size() - 1 - i), i);
  }

  // From 0, with room for the texts at the ends.
  static AxisScale scaleOfBars(const Panel& panel, double count) {
    ValueRange range = panel.range;
    range.add(0.0);
    range.high *= range.high > 0 ? 1.07 : 1;
    range.low *= range.low < 0 ? 1.07 : 1;
    return scaleOf(range, count);
  }

  // With as many decimals as the values have, up to three.
  std::string formatOf(const Panel& panel) const {
    int decimals = 0;
    for (const std::size_t column : panel.columns)
      for (const float value : m_chart.columns[column].values)
        while (decimals < 3 && std::isfinite(value)) {
          const double scaled = static_cast<double>(value) * std::pow(10.0, decimals);
          if (std::abs(scaled - std::round(scaled)) <= 1e-6 * std::max(1.0, std::abs(scaled))) break;
          ++decimals;
        }
    if (panel.range.size() >= 1e7) return {};
    return decimals == 0
               ? "PoNumericDisplayFormat { formatType INTEGER_FORMAT }\n"
               : "PoNumericDisplayFormat { formatType FLOAT_FORMAT numDecimal " + std::to_string(decimals) + " }\n";
  }

  void addUpright(const Panel& panel, double bottom, std::size_t index) {
    SoSeparator* group = addSeparator(m_scene.root);
    const AxisScale y = scaleOfBars(panel, stepsAlong(m_height));
    const bool isOne = panel.columns.size() == 1;
    addText(group, "Translation { translation 0 " + numeral(bottom) + " 0 }\nPoDomain { min 0 " + numeral(y.low) +
                       " 0 max 1 " + numeral(y.low + (y.high - y.low) / m_height) +
                       " 1 transformType TRANSFORM_01 }\n" +
                       linearAxis("YX", 0, y.low, y, 1, isOne ? m_chart.columns[panel.columns[0]].name : "", ""));
    addBars(group, panel, index, 0);
    if (!isOne) addKey(group, m_chart, panel, m_height, true);
  }

  void writeAcross(const std::vector<Panel>& panels) {
    std::size_t numBars = 0;
    for (const Panel& panel : panels) numBars = std::max(numBars, panel.columns.size());
    m_height = std::clamp(0.026 * static_cast<double>(m_numRows * std::max<std::size_t>(1, numBars / 2)), 0.4, 2.0);
    addPage(m_scene.root, m_chart, m_height + 0.05);
    const auto count = static_cast<double>(panels.size());
    const double width = (1 - kPanelGap * (count - 1)) / count;
    std::string names;
    const double rowHeight = m_height / static_cast<double>(m_numRows);
    const double letter = std::min(kLetter, rowHeight * 0.75);
    names += "Font { name \"DejaVu Sans\" size " + numeral(letter) + " }\n";
    for (std::size_t row = 0; row < m_numRows; ++row)
      names += "Separator { Translation { translation -0.012 " +
               numeral(m_height - rowHeight * (static_cast<double>(row) + 0.5) - letter * 0.36) +
               " 0 } Text3 { justification RIGHT string " + quotedText(m_chart.rowNames[row]) + " } }\n";
    addText(addSeparator(m_scene.root), names);
    for (std::size_t i = 0; i < panels.size(); ++i) {
      SoSeparator* group = addSeparator(m_scene.root);
      const AxisScale x = scaleOfBars(panels[i], stepsAlong(width / 2));
      const bool isOne = panels[i].columns.size() == 1;
      // Letters are counted in widths of the domain, which ends with the page.
      addText(group, "Translation { translation " + numeral((width + kPanelGap) * static_cast<double>(i)) +
                         " 0 0 }\nPoDomain { min " + numeral(x.low) + " 0 0 max " +
                         numeral(x.low + (x.high - x.low) / width) + " " +
                         numeral(static_cast<double>(m_numRows) / m_height) + " 1 transformType TRANSFORM_01 }\n" +
                         linearAxis("XY", x.low, 0, x, static_cast<double>(m_numRows),
                                    isOne ? m_chart.columns[panels[i].columns[0]].name : "", ""));
      addBars(group, panels[i], i, static_cast<double>(m_numRows));
      if (!isOne) addKey(group, m_chart, panels[i], m_height, true);
    }
  }

  // Bars from 0; those across begin at the top.
  void addBars(SoSeparator* group, const Panel& panel, std::size_t index, double top) {
    const bool isOne = panel.columns.size() == 1;
    addText(group, formatOf(panel));
    PoHistogram* bars = nullptr;
    std::vector<float> values;
    for (std::size_t row = 0; row < m_numRows; ++row)
      for (const std::size_t column : panel.columns) {
        const float value = m_chart.columns[column].values[row];
        values.push_back(std::isfinite(value) ? value : 0);
        m_numMissing += std::isfinite(value) ? 0 : 1;
      }
    std::vector<SbString> names;
    for (std::size_t row = 0; row < m_numRows; ++row) names.emplace_back(m_chart.rowNames[row].c_str());
    const auto numValues = static_cast<int>(values.size()), numNames = static_cast<int>(names.size());
    if (isOne) {
      auto* single = new PoSingleHistogram;
      group->addChild(bars = single);
      single->value.setValues(0, numValues, values.data());
      single->name.setValues(0, numNames, names.data());
    } else {
      auto* multiple = new PoMultipleHistogram;
      group->addChild(bars = multiple);
      multiple->value.setValues(0, numValues, values.data());
      multiple->numRows = numNames;
      multiple->rowName.setValues(0, numNames, names.data());
    }
    std::string fields = "barSpaceValue 0.3 color [ ";
    for (std::size_t i = 0; i < panel.columns.size(); ++i)
      fields += std::string(paletteColor(isOne ? index : i)) + ", ";
    fields += m_isAcross ? " ] type Y nameVisibility VISIBILITY_OFF valueFontSize 0.014"
                         : " ] valueFontSize 0.021 nameFontSize 0.023";
    if (top > 0)
      fields += " start 0 " + numeral(top) + " end 0";
    else
      fields += " start 0 0 end 1";
    // Not that of kits, which sets parts.
    if (!bars->SoFieldContainer::set(fields.c_str())) throw Failure("its chart could not be made");
  }

  const Chart& m_chart;
  ChartScene& m_scene;
  std::size_t m_numRows = 0, m_numMissing = 0;
  double m_height = kPlotHeight;
  bool m_isAcross = false;
};

// Straight onto the chart, for a picture of the usual shape.
void addCamera(SoSeparator* root) {
  SoGetBoundingBoxAction measure(SbViewportRegion(800, 600));
  measure.apply(root);
  const SbBox3f box = measure.getBoundingBox();
  if (box.isEmpty() || !std::isfinite((box.getMax() - box.getMin()).length())) return;
  constexpr float kAspect = 4.0F / 3.0F, kMargin = 1.06F;
  auto* camera = new SoOrthographicCamera;
  root->insertChild(camera, 0);
  const SbVec3f size = box.getMax() - box.getMin(), center = box.getCenter();
  camera->position.setValue(center[0], center[1], box.getMax()[2] + 1);
  camera->height = std::max(size[1], size[0] / kAspect) * kMargin;
  camera->nearDistance = 0.5F;
  camera->farDistance = size[2] + 2;
  camera->focalDistance = 1;
}

}  // namespace

std::vector<std::size_t> rowsInOrder(const std::vector<double>& x) {
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < x.size(); ++row)
    if (std::isfinite(x[row])) rows.push_back(row);
  std::stable_sort(rows.begin(), rows.end(), [&](std::size_t a, std::size_t b) { return x[a] < x[b]; });
  return rows;
}

ChartScene makeChartScene(const Chart& chart) {
  ChartScene scene;
  scene.root = new SoSeparator;
  scene.root->ref();
  if (chart.kind == Chart::Kind::BARS)
    BarWriter(chart, scene).write();
  else
    PlotWriter(chart, scene).write();
  addCamera(scene.root);
  scene.root->unrefNoDelete();
  const bool isBars = chart.kind == Chart::Kind::BARS;
  scene.summary = isBars ? "bars of " + counted(chart.rowNames.size(), "row", "rows")
                         : std::string(chart.kind == Chart::Kind::CURVES ? "curves" : "marks") + " of " +
                               counted(chart.x.size(), "point", "points");
  std::string names;
  for (const Chart::Column& column : chart.columns) names += (names.empty() ? "" : ", ") + column.name;
  scene.summary += "; values: " + names;
  return scene;
}

}  // namespace importer
