#include "ChartPage.h"

#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <array>

#include "Dataset.h"
#include "SceneText.h"

namespace importer {

namespace {

constexpr std::size_t kMostPanels = 4;

// Colours that the colour-blind tell apart (Okabe and Ito, "Color Universal Design", 2008), the yellow darkened.
constexpr std::array<const char*, 8> kPalette{"0 0.45 0.70",    "0.84 0.37 0", "0 0.62 0.45",    "0.80 0.47 0.65",
                                              "0.34 0.71 0.91", "0.90 0.62 0", "0.35 0.35 0.35", "0.72 0.67 0.10"};

constexpr const char* kGridLook =
    " mainGradGridApp AppearanceKit { material Material { diffuseColor 0.87 0.88 0.90 } drawStyle DrawStyle { "
    "lineWidth 1 } }";

ValueRange rangeOf(const std::vector<float>& values) {
  ValueRange range;
  for (const float value : values) range.add(value);
  return range;
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

std::string wordsAt(double x, double y, const std::string& words) {
  return "Separator { Translation { translation " + numberText(x) + " " + numberText(y) + " 0 } Text3 { string " +
         chartText(words) + " } }\n";
}

}  // namespace

const char* paletteColor(std::size_t i) { return kPalette[i % kPalette.size()]; }

SoSeparator* addSeparator(SoGroup* group) {
  auto* separator = new SoSeparator;
  group->addChild(separator);
  return separator;
}

std::string chartText(const std::string& text) {
  std::string words = text;
  std::replace(words.begin(), words.end(), '|', '/');  // a bar ends a line, see the PoMiscTextAttr
  return quoted(words);
}

void ValueRange::add(double value) {
  if (!std::isfinite(value)) return;
  low = std::min(low, value);
  high = std::max(high, value);
}

void ValueRange::add(const ValueRange& other) {
  low = std::min(low, other.low);
  high = std::max(high, other.high);
}

std::string AxisScale::format() const {
  const double size = std::max(std::abs(low), std::abs(high));
  return size >= 1e7 || step < 1e-5 ? std::string() : decimalsText(decimalsOf(step));
}

AxisScale scaleOf(const ValueRange& range, double count) {
  const RoundSteps steps = roundSteps(range.low, range.high, count, false);
  return {steps.first * steps.step, steps.last * steps.step, steps.step};
}

double stepsAlong(double length) { return std::clamp(length / 0.07, 2.0, 8.0); }

std::string decimalsText(int decimals) {
  return decimals == 0
             ? "PoNumericDisplayFormat { formatType INTEGER_FORMAT }\n"
             : "PoNumericDisplayFormat { formatType FLOAT_FORMAT numDecimal " + std::to_string(decimals) + " }\n";
}

std::string unitOf(const std::string& name) {
  if (name.empty() || (name.back() != ')' && name.back() != ']')) return {};
  const std::size_t start = name.find_last_of(name.back() == ')' ? '(' : '[');
  return start == std::string::npos ? std::string() : name.substr(start + 1, name.size() - start - 2);
}

std::vector<Panel> panelsOf(const Chart& chart, std::vector<std::string>& notDrawn, bool isEachAlone) {
  const bool fromZero = chart.kind == Chart::Kind::BARS;
  std::vector<Panel> panels;
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
  // The names of files have underscores in place of blanks.
  std::string title = chart.title;
  std::replace(title.begin(), title.end(), '_', ' ');
  addNodes(root,
           "LightModel { model BASE_COLOR }\nBaseColor { rgb 0.18 0.20 0.24 }\n"
           "PoMiscTextAttr { fontName \"DejaVu Sans\" endLineChar 0x7c lineLength 0 }\n"
           "Font { name \"DejaVu Sans:Bold\" size 0.032 }\n" +
               wordsAt(0, top + 0.025, title) + "Font { name \"DejaVu Sans\" size " + numberText(kLetter) + " }\n");
}

const char* const kAxisLook = " gradFontSize 0.02 tickMainLength 0.008 arrowVisibility VISIBILITY_OFF";

std::string titleText(const std::string& title) {
  if (title.empty()) return " titleVisibility VISIBILITY_OFF";
  return " titleVisibility VISIBILITY_ON titlePosition TITLE_MIDDLE titlePath PATH_RIGHT titleFontSize 0.022 "
         "titleString " +
         chartText(title);
}

std::string linearAxis(const char* type, double x, double y, const AxisScale& scale, double across,
                       const std::string& title, const std::string& more) {
  std::string text = "Separator {\n" + (scale.step > 0 ? scale.format() : std::string()) + "PoLinearAxis { type " +
                     type + " start " + numberText(x) + " " + numberText(y) + " 0 end " + numberText(scale.high) +
                     " step " + numberText(scale.step) + kAxisLook + more + titleText(title);
  if (across > 0) text += " gridVisibility VISIBILITY_ON gridLengthGradOtherSide " + numberText(across) + kGridLook;
  return text + " }\n}\n";
}

void addKey(SoGroup* group, const Chart& chart, const Panel& panel, double height, bool isBar) {
  std::string text = "BaseColor { rgb 0.18 0.20 0.24 }\n";
  double y = height - kLetter;
  for (std::size_t i = 0; i < panel.columns.size(); ++i) {
    const std::string points =
        isBar ? "1.025 0.1 0, 1.045 0.1 0, 1.045 0.9 0, 1.025 0.9 0" : "1.02 0.35 0, 1.05 0.35 0";
    text += "Separator { Translation { translation 0 " + numberText(y) + " 0 } Separator { DrawStyle { lineWidth 3 } " +
            "BaseColor { rgb " + paletteColor(i) + " } Scale { scaleFactor 1 " + numberText(kLetter) +
            " 1 } Coordinate3 { point [ " + points + " ] } " + (isBar ? "FaceSet {}" : "LineSet {}") + " } " +
            wordsAt(1.06, 0, chart.columns[panel.columns[i]].name) + "}\n";
    y -= 1.7 * kLetter;
  }
  addNodes(group, text);
}

}  // namespace importer
