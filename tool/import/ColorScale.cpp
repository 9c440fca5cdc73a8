#include "ColorScale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

#include "SceneText.h"

namespace importer {

namespace {

// From cold to warm; light enough to leave room for shades.
using Color = std::array<double, 3>;
constexpr std::array<Color, 8> kScale{{{0.25, 0.18, 0.50},
                                       {0.27, 0.36, 0.72},
                                       {0.25, 0.55, 0.79},
                                       {0.44, 0.74, 0.80},
                                       {0.75, 0.88, 0.78},
                                       {0.98, 0.86, 0.50},
                                       {0.94, 0.53, 0.27},
                                       {0.74, 0.16, 0.17}}};

Color colorAt(double part) {
  const double place = std::clamp(part, 0.0, 1.0) * (kScale.size() - 1);
  const auto below = std::min(static_cast<std::size_t>(place), kScale.size() - 2);
  const double rest = place - static_cast<double>(below);
  Color color{};
  for (std::size_t i = 0; i < 3; ++i) color[i] = kScale[below][i] * (1 - rest) + kScale[below + 1][i] * rest;
  return color;
}

// Parts the values in `range` at the widest stretch without any, seen at a thousandth of the range: returns the larger
// of the two groups, as far as it is much narrower than the stretch; else what it was given.
Range withoutOutliers(const std::vector<float>& values, const Range& range) {
  constexpr std::size_t kSlots = 1000;
  constexpr double kFar = 10;
  const double extent = range.high - range.low;
  if (!(extent > 0)) return range;
  std::array<bool, kSlots> isTaken{};
  const auto slotOf = [&](double value) {
    return std::min(static_cast<std::size_t>((value - range.low) / extent * kSlots), kSlots - 1);
  };
  const auto forEach = [&](auto&& take) {
    for (const float value : values)
      if (const auto number = static_cast<double>(value); number >= range.low && number <= range.high) take(number);
  };
  forEach([&](double value) { isTaken[slotOf(value)] = true; });
  std::size_t start = 0, longest = 0;  // of the empty slots
  for (std::size_t slot = 0, run = 0; slot < kSlots; ++slot) {
    run = isTaken[slot] ? 0 : run + 1;
    if (run > longest) {
      longest = run;
      start = slot + 1 - run;
    }
  }
  if (longest == 0) return range;
  std::array<Range, 2> groups;
  forEach([&](double value) { groups[slotOf(value) < start ? 0 : 1].add(value); });
  const double gap = groups[1].low - groups[0].high;
  const Range& larger = groups[groups[1].count > groups[0].count ? 1 : 0];
  const double width = larger.high - larger.low;
  return width > 0 && gap >= kFar * width ? larger : range;
}

}  // namespace

Range mainRange(const std::vector<float>& values) {
  Range range;
  for (const float value : values) range.add(static_cast<double>(value));
  for (int i = 0; i < 4; ++i) {
    const Range rest = withoutOutliers(values, range);
    if (rest.count == range.count) break;
    range = rest;
  }
  return range;
}

ColorScale::ColorScale(double low, double high) {
  const RoundSteps steps = roundSteps(low, high, 6, true);
  m_step = steps.step;
  if (!(high - low > 1e-6 * std::max(std::abs(low), std::abs(high)))) {
    low = steps.first * m_step;
    high = steps.last * m_step;
  }
  // Half steps, of which the even ones are the round numbers, and the ends where none of these is near.
  const double near = 1e-3 * (high - low);
  const double first = std::ceil((low - near) / m_step * 2), last = std::floor((high + near) / m_step * 2);
  if (first * m_step / 2 > low + near) m_levels.push_back(low);
  for (double half = first; half <= last && m_levels.size() < 100; ++half) {
    m_levels.push_back(half * m_step / 2);
    if (std::fmod(half, 2) != 0) continue;
    if (m_firstRound == 0) m_firstRound = m_levels.size();
    m_lastRound = m_levels.size();
  }
  if (m_levels.back() < high - near) m_levels.push_back(high);
}

std::string ColorScale::mappingText(bool hasBeyond) const {
  const double low = m_levels.front(), high = m_levels.back(), extent = high - low;
  std::string values, colors;
  for (const double level : m_levels) {
    const Color color = colorAt((level - low) / extent);
    const char* separator = values.empty() ? "" : ", ";
    values += separator + numberText(level);
    colors += separator + numberText(color[0]) + " " + numberText(color[1]) + " " + numberText(color[2]);
  }
  const auto beyond = [&](const std::string& side, double threshold) {
    const std::string name = " " + side + "Threshold";
    return name + " " + numberText(threshold) + name + "Enabled TRUE" + name + "HasColor TRUE" + name +
           "Color 0.62 0.62 0.62";
  };
  return "PoNonLinearDataMapping2 { value [ " + values + " ] color [ " + colors + " ]" +
         (hasBeyond ? beyond("min", low - extent / 100) + beyond("max", high + extent / 100) : "") + " }\n";
}

// Numbers of usual size are written in full, with the decimals of their step.
std::string ColorScale::formatText() const {
  const double size = std::max(std::abs(m_levels.front()), std::abs(m_levels.back()));
  if (size >= 1e6 || m_step < 1e-4) return {};
  const int decimals = decimalsOf(m_step);
  const double shifted = m_step * std::pow(10.0, decimals);
  const bool isBetween = std::abs(shifted - std::round(shifted)) > 1e-6;
  return "PoNumericDisplayFormat { formatType FLOAT_FORMAT numDecimal " +
         std::to_string(decimals + (isBetween ? 1 : 0)) + " }\n";
}

std::string ColorScale::legendText(const std::string& title, bool hasBeyond) const {
  std::ostringstream text;
  text << "Annotation {\n"
          "  OrthographicCamera { position 0 0 1 nearDistance 0.5 farDistance 1.5 height 2 }\n"
          "  LightModel { model BASE_COLOR }\n"
          "  BaseColor { rgb 0.13 0.15 0.18 }\n"
          "  PoMiscTextAttr { fontName \"DejaVu Sans\" lineLength 0 endLineChar 10 }\n"
       << formatText()
       << "  PoNonLinearValueLegend3 {\n"
          "    start -0.85 -0.98\n    end 0.85 -0.72\n"
          "    incrementType HORIZONTAL_INCREMENT\n    valuePosition POS_BOTTOM\n"
       << "    lowerUpperBoxes " << (hasBeyond ? "TRUE" : "FALSE")
       << "\n    lowerUndefString \"<\"\n    upperUndefString \">\"\n    firstValue " << m_firstRound
       << "\n    lastValue " << m_lastRound << "\n    periodValue 2\n"
       << "    numColumns " << m_levels.size() << "\n"
       << "    titleVisibility VISIBILITY_ON\n    titlePosition POS_TOP\n    titleFontSize 0.065\n    titleString "
       << quoted(title)
       << "\n    backgroundBorderApp AppearanceKit { drawStyle DrawStyle { style INVISIBLE } }\n  }\n}\n";
  return text.str();
}

}  // namespace importer
