#include "graph/chart/PiHistogramTexts.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>

#include "graph/chart/PiChartFormat.h"
#include "graph/chart/PiHistogramState.h"
#include "graph/frame/PiElementFont.h"
#include "nodes/attribute/PiEnumField.h"

namespace {

constexpr float kLargestFont = 0.04f;  // of the reference length
constexpr float kSmallestFont = 0.014f;
constexpr float kLift = 0.002f;  // of texts over bars

PiChartFormat formatOf(const PiHistogramState& state) {
  std::vector<float> values;
  for (const PiHistogramBars::Bar& bar : state.bars.bars())
    if (bar.isDefined) values.push_back(static_cast<float>(bar.value));
  return PiChartFormat(state.format, values);
}

}  // namespace

PiHistogramTexts::PiHistogramTexts(PoHistogram& kit, const PiHistogramState& state, const SbBox2f& frame)
    : m_kit(kit), m_state(state), m_placer(state.text, frame) {}

bool PiHistogramTexts::isShown(const SoSFEnum& visibility, bool depends) {
  if (visibility.getValue() == PoAxis::VISIBILITY_ON) return true;
  return depends && visibility.getValue() != PoAxis::VISIBILITY_OFF;
}

PoHistogram::Position PiHistogramTexts::positionOf(const SoSFEnum& position, PoHistogram::Position depends) {
  const auto value = PiEnumField::get(position, PoHistogram::POS_DEPEND, PoHistogram::POS_DEPEND);
  return value == PoHistogram::POS_DEPEND ? depends : value;
}

void PiHistogramTexts::add(const std::string& text, float low, float high, float foot, float top,
                           PoHistogram::Position position, bool isWithin) {
  PiBarTexts::Text added;
  added.text = text;
  added.position = position;
  added.isWithin = isWithin;
  m_state.corners(low, high, foot, top, added.corners[0], added.corners[1]);
  m_texts.push_back(std::move(added));
}

float PiHistogramTexts::build(const PiHistogramTextFields& fields, float width) {
  PiBarTexts::Style style;
  style.fontName = fields.fontName.getValue();
  const float size = fields.fontSize.getValue();
  style.fontSize = std::isfinite(size) && size > 0 ? size * m_state.reference : 0;
  style.largest = kLargestFont * m_state.reference;
  style.smallest = kSmallestFont * m_state.reference;
  style.path = PiEnumField::get(fields.path, PoAxis::PATH_DEPEND, PoAxis::PATH_DEPEND);
  style.room = m_state.roomAlongX(width);
  // Where groups lie above each other, their height is what texts have to share.
  if (!m_state.isAlongX && style.fontSize <= 0 && width != 0)
    style.largest = std::max(style.smallest, std::min(style.largest, 0.8f * std::abs(width)));

  float used = 0;
  SoGroup* group = m_placer.build(m_texts, style, kLift * m_state.reference * m_state.depth, used);
  m_texts.clear();
  const std::string part = fields.part;
  m_kit.setPart(part.c_str(), group);
  PiElementFont::set(m_kit, part, SbName(style.fontName.getLength() > 0 ? style.fontName : m_state.text.getFontName()),
                     used);
  const SbBox2f& built = m_placer.builtBox();
  return built.isEmpty() ? std::numeric_limits<float>::max() : built.getMin()[m_state.isAlongX ? 1 : 0];
}

std::vector<std::string> PiHistogramTexts::valueTexts(const PiHistogramState& state, const std::string& added) {
  const PiChartFormat format = formatOf(state);
  std::vector<std::string> texts;
  for (const PiHistogramBars::Bar& bar : state.bars.bars())
    texts.push_back(bar.isDefined ? format.text(bar.value) + added : std::string());
  return texts;
}

std::vector<std::string> PiHistogramTexts::sumTexts(const PiHistogramState& state) {
  const PiChartFormat format = formatOf(state);
  std::vector<std::string> texts;
  texts.reserve(static_cast<std::size_t>(state.bars.numGroups()));
  for (int group = 0; group < state.bars.numGroups(); ++group) texts.push_back(format.text(state.bars.sumOf(group)));
  return texts;
}
