// Curves over a common axis, or marks.

#include <Inventor/nodes/SoSeparator.h>

#include <Ormelle/PoCurve3.h>
#include <Ormelle/PoIrregularMesh1D.h>

#include "ChartPage.h"
#include "Dataset.h"
#include "Fields.h"
#include "SceneText.h"

namespace importer {

namespace {

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
      m_scene.notes.push_back("x is counted from " + numberText(m_base) + ", so that its values stay apart");
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
      addNodes(group, "Translation { translation 0 " +
                          numberText((m_height + kPanelGap) * static_cast<double>(panels.size() - 1 - i)) + " 0 }\n");
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
                        m_base != 0 && isLast ? title + " - " + numberText(m_base) : title, more);
    const bool withTime = m_range.high - m_range.low < 200;
    // A mapping needs two days apart; seconds are the finest that it tells.
    const std::string first = dateText(m_chart.firstDay + m_range.low, withTime);
    const std::string last = dateText(m_chart.firstDay + m_range.high, withTime);
    return std::string("PoDateFormatMapping { format ") + (withTime ? "\"YmdH'\\\"\"" : "\"Ymd\"") + " date1 \"" +
           first + "\" date2 \"" + last + "\" coord1 " + numberText(m_range.low) + " coord2 " +
           numberText(m_range.high) + " }\nPoTimeAxis { startDate \"" + first + "\" endDate \"" + last + "\" coord " +
           numberText(bottom) + kAxisLook + more + titleText(title) + " }\n";
  }

  void addPanel(SoSeparator* group, const Panel& panel, bool isLast) {
    const AxisScale y = scaleOf(panel.range, stepsAlong(m_height));
    const bool isOne = panel.columns.size() == 1;
    addNodes(
        group,
        "PoDomain { min " + numberText(m_range.low) + " " + numberText(y.low) + " 0 max " + numberText(m_range.high) +
            " " + numberText(y.low + (y.high - y.low) / m_height) + " 1 transformType TRANSFORM_01 }\n" +
            linearAxis("YX", m_range.low, y.low, y, m_range.high - m_range.low,
                       isOne ? m_chart.columns[panel.columns[0]].name : unitOf(m_chart.columns[panel.columns[0]].name),
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
      addNodes(group, look + "PoCurveLine { yValuesIndex " + std::to_string(column) + " }\n");
      return;
    }
    addNodes(group, look);
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

}  // namespace

void drawPlots(const Chart& chart, ChartScene& scene) { PlotWriter(chart, scene).write(); }

}  // namespace importer
