#include "graph/chart/PiPieAnnotations.h"

#include <algorithm>
#include <cmath>

#include <Inventor/nodes/SoAnnotation.h>
#include <Ormelle/PbMiscTextAttr.h>

#include "graph/chart/PiPieEmitter.h"

namespace {

constexpr float kLineHeight = 1.25f;  // from one line to the next, in font sizes
constexpr float kPadding = 0.3f;      // of a box round its lines, in font sizes
constexpr float kArrowLength = 1.5f;  // in widths

/// A triangle at the start of a leader, which points at it.
void addArrow(const std::vector<SbVec2f>& leader, float width, float z, PiPieGeometry::Faces& arrows) {
  SbVec2f along = leader[1] - leader[0];
  if (!(along.normalize() > 0)) return;
  const SbVec2f across(-along[1], along[0]);
  const SbVec2f base = leader[0] + along * (kArrowLength * width);
  for (const SbVec2f& point : {leader[0], base - across * (width / 2), base + across * (width / 2)}) {
    arrows.points.emplace_back(point[0], point[1], z);
    arrows.normals.emplace_back(0.0f, 0.0f, 1.0f);
  }
  arrows.sizes.push_back(3);
}

}  // namespace

PiPieAnnotations::PiPieAnnotations(const Line (&lines)[MAX_LINES], const PbMiscTextAttr& attributes) {
  std::copy(std::begin(lines), std::end(lines), m_kinds);
  for (Line& kind : m_kinds)
    if (kind.fontName.getLength() == 0) kind.fontName = attributes.getFontName();
  m_text.setAttributes(&attributes);
}

float PiPieAnnotations::lineHeight(int kind) const { return kLineHeight * m_kinds[kind].fontSize; }

float PiPieAnnotations::padding() const {
  float size = 0;
  for (const Line& kind : m_kinds)
    if (kind.isVisible) size = std::max(size, kind.fontSize);
  return kPadding * size;
}

const char* PiPieAnnotations::text(int kind, std::size_t index) const {
  return m_kinds[kind].isVisible ? (*m_kinds[kind].texts)[index].c_str() : "";
}

SbVec2f PiPieAnnotations::measure(std::size_t index) {
  float width = 0;
  float height = 0;
  m_text.setPosition(SbVec3f(0, 0, 0));
  m_text.setDirection(SbVec3f(1, 0, 0), SbVec3f(0, 1, 0));
  m_text.setAlignment(PiText::LEFT, PiText::BASE);
  for (int kind = 0; kind < MAX_LINES; ++kind) {
    if (!*text(kind, index)) continue;
    m_text.setFont(m_kinds[kind].fontName, m_kinds[kind].fontSize);
    const SbBox3f& box = m_text.measure(text(kind, index));
    if (box.isEmpty()) continue;
    width = std::max(width, box.getMax()[0]);
    height += lineHeight(kind);
  }
  return height > 0 ? SbVec2f(width + 2 * padding(), height + padding()) : SbVec2f(0, 0);
}

void PiPieAnnotations::build(const std::vector<PiPieLayout::Place>& places, Alignment alignment, float height,
                             float arrowWidth, const std::vector<SbColor>* colors) {
  m_boxes = new SoAnnotation;
  m_borders = new SoAnnotation;
  m_leaders = new SoGroup;
  for (int kind = 0; kind < MAX_LINES; ++kind) m_lines[kind] = m_kinds[kind].isVisible ? new SoAnnotation : nullptr;

  PiPieGeometry::Faces boxes;
  PiPieGeometry::Faces borders;
  PiPieGeometry::Faces leaders;
  PiPieGeometry::Faces arrows;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const PiPieLayout::Place& place = places[i];
    if (!place.isShown) continue;
    const SbVec2f size = measure(i);
    const SbVec2f along(std::cos(place.angle), std::sin(place.angle));
    const SbVec2f up(-along[1], along[0]);
    const auto at = [&](float x, float y) {
      const SbVec2f point = place.center + along * x + up * y;
      return SbVec3f(point[0], point[1], height);
    };
    const SbVec2f half = size / 2;
    const SbVec3f corners[] = {at(-half[0], -half[1]), at(half[0], -half[1]), at(half[0], half[1]),
                               at(-half[0], half[1])};
    boxes.points.insert(boxes.points.end(), std::begin(corners), std::end(corners));
    boxes.sizes.push_back(4);
    borders.points.insert(borders.points.end(), std::begin(corners), std::end(corners));
    borders.points.push_back(corners[0]);
    borders.sizes.push_back(5);
    if (place.line.size() >= 2) {
      for (const SbVec2f& point : place.line) leaders.points.emplace_back(point[0], point[1], height);
      leaders.sizes.push_back(static_cast<int>(place.line.size()));
      if (arrowWidth > 0) addArrow(place.line, arrowWidth, height, arrows);
    }

    int horizontal = PiText::CENTER;
    if (alignment == AT_LEFT || (alignment == INWARDS && !place.isMirrored) ||
        (alignment == OUTWARDS && place.isMirrored))
      horizontal = PiText::LEFT;
    else if (alignment != AT_CENTER)
      horizontal = PiText::RIGHT;
    const float inset = half[0] - padding();
    const float x = horizontal == PiText::LEFT ? -inset : horizontal == PiText::RIGHT ? inset : 0;
    float top = half[1] - padding() / 2;
    m_text.setDirection(SbVec3f(along[0], along[1], 0), SbVec3f(up[0], up[1], 0));
    m_text.setAlignment(horizontal, PiText::HALF);
    for (int kind = 0; kind < MAX_LINES; ++kind) {
      if (!*text(kind, i)) continue;
      // The font stands before the group.
      m_text.setFont("", m_kinds[kind].fontSize);
      m_text.setPosition(at(x, top - lineHeight(kind) / 2));
      if (colors) PiPieEmitter::addColor((*colors)[i], m_lines[kind]);
      m_text.setGroup(m_lines[kind]);
      m_text.build(text(kind, i));
      top -= lineHeight(kind);
    }
  }
  PiPieEmitter::addFaces(boxes, false, m_boxes);
  PiPieEmitter::addLines(borders, m_borders);
  PiPieEmitter::addLines(leaders, m_leaders);
  PiPieEmitter::addFaces(arrows, false, m_leaders);
}
