#include "graph/axis/PiGradTextLine.h"

#include <algorithm>

#include "graph/axis/PiAxisLayout.h"
#include "graph/axis/PiAxisState.h"

PiGradTextLine::PiGradTextLine(PiAxisState& state, const SbString& fontName)
    : m_state(state),
      m_path(state.attributes.effective(state.attributes.gradPath)),
      m_text(fontName, state.text, m_path, PiTextAlignment::beside(m_path, state.attributes.isAbove())) {}

void PiGradTextLine::add(float coord, const PiTextRun& run) {
  m_coords.push_back(coord);
  m_runs.push_back(run);
  m_boxes.push_back(m_text.measure(run));
  m_maxWidth = std::max(m_maxWidth, m_boxes.back().xmax - m_boxes.back().xmin);
  int letters = 0;
  for (int p = 0; p < run.num; ++p) letters += PiAxisText::countLetters(run.pieces[p].text);
  m_maxLetters = std::max(m_maxLetters, letters);
}

void PiGradTextLine::addMerged(const PiGradTextLine& a, const PiGradTextLine& b) {
  size_t i = 0, j = 0;
  while (i < a.m_coords.size() || j < b.m_coords.size()) {
    const bool isFromA = j == b.m_coords.size() || (i < a.m_coords.size() && a.m_coords[i] < b.m_coords[j]);
    const PiGradTextLine& from = isFromA ? a : b;
    const size_t k = isFromA ? i++ : j++;
    add(from.m_coords[k], from.m_runs[k]);
  }
}

void PiGradTextLine::setSize(float size, bool isFixed) {
  m_givenSize = m_choice.size = size;
  m_isSizeFixed = isFixed;
}

void PiGradTextLine::makeLegible(bool isThinned, long firstMultiple) {
  if (!m_state.isLegible) return;
  const PiAxisAttributes& a = m_state.attributes;
  PiGradLegibility::Line line;
  line.coords = m_coords;
  line.boxes = m_boxes;
  line.texts = m_runs;
  line.size = m_givenSize;
  line.largest = PiAxisLayout::AUTO_GRAD_SIZE * m_state.along;
  line.along = m_state.along;
  line.nearest =
      a.gradDistAxis != 0 ? a.gradDistAxis * m_state.along : (a.isAbove() ? m_state.limits.ymax : m_state.limits.ymin);
  line.isSizeFixed = m_isSizeFixed;
  line.isThinned = isThinned;
  line.firstMultiple = firstMultiple;
  m_choice = PiGradLegibility::choose(line);
}

void PiGradTextLine::build(float y, SoGroup* group) {
  for (int i = m_choice.next(-1, num()); i < num(); i = m_choice.next(i, num())) {
    const auto t = static_cast<size_t>(i);
    m_text.build(m_runs[t], m_coords[t] - m_state.origin, y, m_choice.size, group);
    PiAxisLayout::growByText(m_state.limits, m_boxes[t], m_coords[t], y, m_choice.size);
  }
}
