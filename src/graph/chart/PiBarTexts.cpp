#include "graph/chart/PiBarTexts.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <utility>

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoTranslation.h>

#include <Ormelle/PbMiscTextAttr.h>

#include "graph/axis/PiAxisText.h"

namespace {

constexpr float kGap = 0.35f;   // between a text and its bar, in font sizes
constexpr float kFill = 0.92f;  // of the room that a text may take
constexpr float kLineHeight = 1.15f;

}  // namespace

void PiBarTexts::setCellSize(float size) {
  m_cellSize = size;
  m_cells.clear();
  for (std::size_t i = 0; i < m_taken.size(); ++i)
    forCells(m_taken[i], [&](long long key) {
      m_cells[key].push_back(i);
      return true;
    });
}

template <class Visit>
bool PiBarTexts::forCells(const SbBox2f& box, Visit visit) const {
  const auto cell = [&](float coordinate) {
    return static_cast<long long>(std::clamp(std::floor(coordinate / m_cellSize), -1e6f, 1e6f));
  };
  for (long long i = cell(box.getMin()[0]); i <= cell(box.getMax()[0]); ++i)
    for (long long j = cell(box.getMin()[1]); j <= cell(box.getMax()[1]); ++j)
      if (!visit(i * 4000037 + j)) return false;
  return true;
}

bool PiBarTexts::take(const SbBox2f& box) {
  if (!m_frame.isEmpty() && !(m_frame.intersect(box.getMin()) && m_frame.intersect(box.getMax()))) return false;
  const bool isFree = forCells(box, [&](long long key) {
    const auto found = m_cells.find(key);
    if (found == m_cells.end()) return true;
    return std::none_of(found->second.begin(), found->second.end(), [&](std::size_t i) {
      const SbVec2f& min = m_taken[i].getMin();
      const SbVec2f& max = m_taken[i].getMax();
      return box.getMin()[0] < max[0] && box.getMax()[0] > min[0] && box.getMin()[1] < max[1] &&
             box.getMax()[1] > min[1];
    });
  });
  if (!isFree) return false;
  m_taken.push_back(box);
  forCells(box, [&](long long key) {
    m_cells[key].push_back(m_taken.size() - 1);
    return true;
  });
  return true;
}

SoGroup* PiBarTexts::build(const std::vector<Text>& texts, const Style& style, float height, float& fontSize) {
  const SbString fontName = style.fontName.getLength() > 0 ? style.fontName : m_attributes.getFontName();
  PiTextAlignment base;
  base.horizontal = PiText::LEFT;
  float longest = 0;
  PiAxisText ruler(fontName, m_attributes, PoAxis::PATH_RIGHT, base);
  for (const Text& text : texts) longest = std::max(longest, ruler.measureLength(text.text.c_str()));

  // Upwards texts need only their height of the room along x.
  const float across = style.room > 0 && longest > 0 ? kFill * style.room / longest : style.largest;
  const float upwards = style.room > 0 ? kFill * style.room / kLineHeight : 0;
  PoAxis::TextPath path = style.path;
  if (path == PoAxis::PATH_DEPEND) {
    const float wanted = style.fontSize > 0 ? style.fontSize : 0.7f * style.largest;
    path = across < wanted && upwards > across ? PoAxis::PATH_UP : PoAxis::PATH_RIGHT;
  }
  const float room = style.room > 0 ? (PiAxisText::isVertical(path) ? upwards : across) : style.largest;
  fontSize = style.fontSize > 0 ? style.fontSize : std::clamp(room, style.smallest, style.largest);
  setCellSize(4 * fontSize);
  m_builtBox.makeEmpty();

  auto* group = new SoGroup;
  if (height != 0) {
    auto* lift = new SoTranslation;
    group->addChild(lift);
    lift->translation.setValue(0, 0, height);
  }
  std::map<std::pair<int, int>, std::unique_ptr<PiAxisText>> writers;
  for (const Text& text : texts) {
    if (text.text.empty()) continue;
    const SbVec2f corners[4] = {text.corners[0], SbVec2f(text.corners[1][0], text.corners[0][1]), text.corners[1],
                                SbVec2f(text.corners[0][0], text.corners[1][1])};
    SbVec2f place;
    PoHistogram::computeTextPos(corners, text.position, kGap * fontSize, place);
    PiTextAlignment alignment;
    PoHistogram::computeTextAlignPath(text.position, path, alignment.horizontal, alignment.vertical);
    std::unique_ptr<PiAxisText>& ofAlignment = writers[{alignment.horizontal, alignment.vertical}];
    if (!ofAlignment) ofAlignment = std::make_unique<PiAxisText>(fontName, m_attributes, path, alignment);
    PiAxisText& writer = *ofAlignment;
    const PiTextRun run(text.text.c_str());
    const PiTextBox box = writer.measure(run);
    const SbVec2f min = place + SbVec2f(box.xmin, box.ymin) * fontSize;
    const SbVec2f max = place + SbVec2f(box.xmax, box.ymax) * fontSize;
    const bool isFinite =
        std::isfinite(min[0]) && std::isfinite(min[1]) && std::isfinite(max[0]) && std::isfinite(max[1]);
    if (box.isEmpty()) continue;
    const bool fits = !text.isWithin || (min[0] >= corners[0][0] && min[1] >= corners[0][1] &&
                                         max[0] <= corners[2][0] && max[1] <= corners[2][1]);
    if (!isFinite || !fits || !take(SbBox2f(min, max))) {
      ++m_numDropped;
      continue;
    }
    m_builtBox.extendBy(SbBox2f(min, max));
    writer.build(run, place[0], place[1], fontSize, group);
  }
  return group;
}
