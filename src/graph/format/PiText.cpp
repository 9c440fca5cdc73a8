#include "graph/format/PiText.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLinearProfile.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoProfileCoordinate2.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText3.h>
#include <Inventor/nodes/SoTranslation.h>

#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PoBase.h>

#include <algorithm>
#include <cmath>

#include "graph/data/PiFinite.h"
#include "graph/format/PiTextLines.h"
#include "graph/format/PiTextMetrics.h"
#include "graph/toolkit/SoAnnoText3.h"

namespace {

// Scales `v` to length 1 without overflow; false if it has no direction.
bool makeUnit(SbVec3f& v) {
  const float greatest = std::max({std::abs(v[0]), std::abs(v[1]), std::abs(v[2])});
  if (!isFinitePoint(v) || greatest == 0) return false;
  v = SbVec3f(v[0] / greatest, v[1] / greatest, v[2] / greatest);
  v.normalize();
  return true;
}

// `v` less what it has along the unit vector `axis`.
bool makeUnitAcross(SbVec3f& v, const SbVec3f& axis) {
  if (!makeUnit(v)) return false;
  v -= axis * axis.dot(v);
  return v.length() > 1e-4f && makeUnit(v);
}

template <class TextNode>
SoNode* makeTextNode(const std::vector<std::string>& lines, int horizontal) {
  auto* text = new TextNode;
  text->string.setNum(static_cast<int>(lines.size()));
  SbString* strings = text->string.startEditing();
  for (const std::string& line : lines) *strings++ = line.c_str();
  text->string.finishEditing();
  text->justification = horizontal == PiText::RIGHT    ? TextNode::RIGHT
                        : horizontal == PiText::CENTER ? TextNode::CENTER
                                                       : TextNode::LEFT;
  return text;
}

constexpr float kProfileDepth = 0.15f;

// A bevel at both ends, for text of size `s`.
void addPredefinedProfile(SoGroup* group, float s) {
  const SbVec2f points[] = {{0, 0}, {0.025f * s, 0.025f * s}, {0.125f * s, 0.025f * s}, {kProfileDepth * s, 0}};
  const int32_t order[] = {0, 1, 2, 3};
  auto* coordinates = new SoProfileCoordinate2;
  group->addChild(coordinates);
  coordinates->point.setValues(0, 4, points);
  auto* profile = new SoLinearProfile;
  group->addChild(profile);
  profile->index.setValues(0, 4, order);
}

}  // namespace

PiText::PiText() = default;
PiText::~PiText() = default;

void PiText::setDirection(const SbVec3f& direction, const SbVec3f& up) {
  m_direction = direction;
  if (!makeUnit(m_direction)) m_direction.setValue(1, 0, 0);
  m_up = up;
  if (makeUnitAcross(m_up, m_direction)) return;
  m_up.setValue(0, 1, 0);
  if (makeUnitAcross(m_up, m_direction)) return;
  m_up.setValue(-1, 0, 0);
  makeUnitAcross(m_up, m_direction);
}

void PiText::setAlignment(int horizontal, int vertical) {
  m_horizontal = horizontal >= LEFT && horizontal <= CENTER ? horizontal : LEFT;
  m_vertical = vertical >= TOP && vertical <= BOTTOM ? vertical : BASE;
}

void PiText::setFont(const SbString& name, float size) {
  m_fontName = name;
  m_fontSize = size;
}

void PiText::setAttributes(const PbMiscTextAttr* attributes) {
  const PbMiscTextAttr defaults;
  if (!attributes) attributes = &defaults;
  attributes->getLineLength(m_endLineChar, m_lineLength);
  m_isProfileEnabled = attributes->isProfileEnabled();
  m_isPredefinedProfileEnabled = attributes->isPredefinedProfileEnabled();
}

// No lines: there is nothing to draw, or nowhere.
std::vector<std::string> PiText::prepareLines(const char* text, int isWrapped) const {
  if (!text || !*text || !isFinitePoint(m_position) || !(m_fontSize > 0) || !std::isfinite(m_fontSize)) return {};
  return PiTextLines::split(PiTextLines::toUtf8(text), m_endLineChar, isWrapped ? m_lineLength : 0);
}

bool PiText::usesSolidText() const { return !PoBase::isVRML2Mode() && PoBase::getTextType() == PoBase::TEXT_3D; }

float PiText::verticalOffset(size_t numLines) const {
  const float toLast = static_cast<float>(numLines - 1);
  switch (m_vertical) {
    case TOP:
      return -0.73f * m_fontSize;
    case UPPER:
      return -0.65f * m_fontSize;
    case HALF:
      return (toLast * 0.5f - 0.32f) * m_fontSize;
    case BOTTOM:
      return (toLast + 0.28f) * m_fontSize;
    default:
      return toLast * m_fontSize;
  }
}

void PiText::addText(SoGroup* group, const std::vector<std::string>& lines, int horizontal, float size,
                     bool isMeasuring) const {
  if (isMeasuring || m_fontName.getLength() > 0) {
    auto* font = new SoFont;
    group->addChild(font);
    font->name = m_fontName.getLength() > 0 ? m_fontName.getString() : "defaultFont";
    font->size = size;
  }
  if (PoBase::isVRML2Mode()) {
    group->addChild(makeTextNode<SoAsciiText>(lines, horizontal));
  } else if (!usesSolidText()) {
    group->addChild(makeTextNode<SoAnnoText3>(lines, horizontal));
  } else {
    if (m_isProfileEnabled && m_isPredefinedProfileEnabled) addPredefinedProfile(group, size);
    SoNode* text = makeTextNode<SoText3>(lines, horizontal);
    group->addChild(text);
    if (m_isProfileEnabled) static_cast<SoText3*>(text)->parts = SoText3::ALL;
  }
}

SbBox3f PiText::measureLine(const std::string& line) {
  const int isAscii = PoBase::isVRML2Mode();
  const bool isDeep = usesSolidText() && m_isProfileEnabled && m_isPredefinedProfileEnabled;
  const int kind = isAscii ? 0 : !usesSolidText() ? 1 : !m_isProfileEnabled ? 2 : isDeep ? 3 : 4;
  const auto measureAtSizeOne = [&] {
    if (!m_measuring) m_measuring = std::make_unique<SoGetBoundingBoxAction>(SbViewportRegion(100, 100));
    auto* group = new SoSeparator;
    group->ref();
    addText(group, {line}, LEFT, 1, true);
    m_measuring->apply(group);
    SbBox3f box = m_measuring->getBoundingBox();
    group->unref();
    // SoText3 says that text with a profile is at least 1 deep.
    if (!box.isEmpty() && isDeep) {
      SbVec3f least = box.getMin();
      least[2] = -kProfileDepth;
      box.setBounds(least, box.getMax());
    }
    return box;
  };
  SbBox3f box = PiTextMetrics::shared().get(kind, m_fontName.getString(), line, measureAtSizeOne);
  if (!box.isEmpty()) box.setBounds(box.getMin() * m_fontSize, box.getMax() * m_fontSize);
  return box;
}

// The box before the text is placed. Each line is measured by itself, since the box of a text node of several lines
// only knows how high the letters of its last line are.
SbBox3f PiText::measureUnplaced(const std::vector<std::string>& lines) {
  SbBox3f all;
  float base = verticalOffset(lines.size());
  for (const std::string& line : lines) {
    const SbBox3f box = measureLine(line);
    if (!box.isEmpty()) {
      const float width = box.getMax()[0];
      const SbVec3f shift(m_horizontal == RIGHT ? -width : m_horizontal == CENTER ? -width / 2 : 0, base, 0);
      all.extendBy(box.getMin() + shift);
      all.extendBy(box.getMax() + shift);
    }
    base -= m_fontSize;
  }
  return all;
}

// Half a turn in place first, then along the vectors and to the position.
SbMatrix PiText::placement(const std::vector<std::string>& lines) {
  const SbVec3f normal = m_direction.cross(m_up);
  SbMatrix matrix(m_direction[0], m_direction[1], m_direction[2], 0,  //
                  m_up[0], m_up[1], m_up[2], 0,                       //
                  normal[0], normal[1], normal[2], 0,                 //
                  m_position[0], m_position[1], m_position[2], 1);
  if (!m_isHalfTurn) return matrix;
  SbMatrix turn = SbMatrix::identity();
  turn[0][0] = turn[2][2] = -1;
  if (m_horizontal != CENTER) {
    const SbBox3f box = measureUnplaced(lines);
    if (!box.isEmpty()) turn[3][0] = box.getMin()[0] + box.getMax()[0];
  }
  return matrix.multLeft(turn);
}

int PiText::build(const char* text, int isWrapped) {
  const std::vector<std::string> lines = prepareLines(text, isWrapped);
  if (lines.empty() || !m_group) return 0;
  auto* separator = new SoSeparator;
  m_group->addChild(separator);
  auto* place = new SoMatrixTransform;
  separator->addChild(place);
  place->matrix = placement(lines);
  auto* offset = new SoTranslation;
  separator->addChild(offset);
  offset->translation.setValue(0, verticalOffset(lines.size()), 0);
  addText(separator, lines, m_horizontal, m_fontSize, false);
  return static_cast<int>(lines.size());
}

const SbBox3f& PiText::measure(const char* text, int isWrapped) {
  m_boundingBox.makeEmpty();
  const std::vector<std::string> lines = prepareLines(text, isWrapped);
  if (lines.empty()) return m_boundingBox;
  const SbBox3f unplaced = measureUnplaced(lines);
  if (unplaced.isEmpty()) return m_boundingBox;
  m_boundingBox = unplaced;
  m_boundingBox.transform(placement(lines));
  return m_boundingBox;
}
