// Bars for the rows of a table, upright or, where their names need room, across.

#include <Inventor/nodes/SoSeparator.h>

#include <Ormelle/PoMultipleHistogram.h>
#include <Ormelle/PoSingleHistogram.h>

#include <algorithm>

#include "ChartPage.h"
#include "Dataset.h"
#include "SceneText.h"

namespace importer {

namespace {

constexpr std::size_t kMostBars = 60;

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
    return decimalsText(decimals);
  }

  void addUpright(const Panel& panel, double bottom, std::size_t index) {
    SoSeparator* group = addSeparator(m_scene.root);
    const AxisScale y = scaleOfBars(panel, stepsAlong(m_height));
    const bool isOne = panel.columns.size() == 1;
    addNodes(group, "Translation { translation 0 " + numberText(bottom) + " 0 }\nPoDomain { min 0 " +
                        numberText(y.low) + " 0 max 1 " + numberText(y.low + (y.high - y.low) / m_height) +
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
    names += "Font { name \"DejaVu Sans\" size " + numberText(letter) + " }\n";
    for (std::size_t row = 0; row < m_numRows; ++row)
      names += "Separator { Translation { translation -0.012 " +
               numberText(m_height - rowHeight * (static_cast<double>(row) + 0.5) - letter * 0.36) +
               " 0 } Text3 { justification RIGHT string " + chartText(m_chart.rowNames[row]) + " } }\n";
    addNodes(addSeparator(m_scene.root), names);
    for (std::size_t i = 0; i < panels.size(); ++i) {
      SoSeparator* group = addSeparator(m_scene.root);
      const AxisScale x = scaleOfBars(panels[i], stepsAlong(width / 2));
      const bool isOne = panels[i].columns.size() == 1;
      // Letters are counted in widths of the domain, which ends with the page.
      addNodes(group, "Translation { translation " + numberText((width + kPanelGap) * static_cast<double>(i)) +
                          " 0 0 }\nPoDomain { min " + numberText(x.low) + " 0 0 max " +
                          numberText(x.low + (x.high - x.low) / width) + " " +
                          numberText(static_cast<double>(m_numRows) / m_height) + " 1 transformType TRANSFORM_01 }\n" +
                          linearAxis("XY", x.low, 0, x, static_cast<double>(m_numRows),
                                     isOne ? m_chart.columns[panels[i].columns[0]].name : "", ""));
      addBars(group, panels[i], i, static_cast<double>(m_numRows));
      if (!isOne) addKey(group, m_chart, panels[i], m_height, true);
    }
  }

  // Bars from 0; those across begin at the top.
  void addBars(SoSeparator* group, const Panel& panel, std::size_t index, double top) {
    const bool isOne = panel.columns.size() == 1;
    addNodes(group, formatOf(panel));
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
      fields += " start 0 " + numberText(top) + " end 0";
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

}  // namespace

void drawBars(const Chart& chart, ChartScene& scene) { BarWriter(chart, scene).write(); }

}  // namespace importer
