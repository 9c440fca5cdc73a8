#include "quillane/emit/PiLabelNodes.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PoBase.h>

#include <algorithm>
#include <cmath>

namespace {

/// Between what lies in the plane of the labels and the texts, which come nearer than that.
constexpr float kOffsetFactor = -1;
constexpr float kOffsetUnits = -4;
/// How far solid text is lifted off its box, by its height.
constexpr float kLift = 0.01F;

/// Twice the greater distance of the two from 0.
float spanAround(float min, float max) { return 2 * std::max(std::abs(min), std::abs(max)); }

/// Adds coordinates to `group`: for each label those of its corners that `order` names.
template <std::size_t num>
void addCorners(SoGroup* group, std::span<const PiLabelNodes::Label> labels, const int (&order)[num]) {
  auto* coordinate = new SoCoordinate3;
  group->addChild(coordinate);
  coordinate->point.setNum(static_cast<int>(labels.size() * num));
  SbVec3f* points = coordinate->point.startEditing();
  for (const PiLabelNodes::Label& label : labels)
    for (const int corner : order) *points++ = label.place->corners[static_cast<std::size_t>(corner)];
  coordinate->point.finishEditing();
}

template <class Shape>
void addShape(SoGroup* group, std::size_t num, int32_t numVertices) {
  auto* shape = new Shape;
  group->addChild(shape);
  shape->numVertices.setNum(static_cast<int>(num));
  int32_t* numbers = shape->numVertices.startEditing();
  std::fill_n(numbers, num, numVertices);
  shape->numVertices.finishEditing();
}

}  // namespace

PiLabelNodes::PiLabelNodes(const PbIsovaluesList& list, const PbNumericDisplayFormat* format,
                           const PbMiscTextAttr* attributes, float size, bool hasBox)
    : m_hasBox(hasBox) {
  int num = 0, isRegular = 0;
  float min = 0, max = 0, step = 0;
  if (const float* levels = list.getIsoList(num, min, max, step, isRegular)) {
    const float first = levels[0], last = levels[num - 1];
    m_format.setFormat(format, first, last, num > 1 ? (last - first) / static_cast<float>(num - 1) : 0, 1);
  }
  const PbMiscTextAttr defaults;
  m_text.setFont((attributes ? attributes : &defaults)->getFontName(), size);
  m_text.setAlignment(PiText::CENTER, PiText::HALF);
  m_text.setAttributes(attributes);
}

std::string PiLabelNodes::textOf(float isovalue) const {
  char number[PiNumericFormat::TEXT_SIZE];
  m_format.getString(isovalue, number);
  std::string text = number;
  if (m_format.getTenPower() != 0) text += 'E' + std::to_string(m_format.getTenPower());
  return text;
}

SbVec2f PiLabelNodes::roomOf(float isovalue) {
  m_text.setDirection(SbVec3f(1, 0, 0), SbVec3f(0, 1, 0));
  m_text.setPosition(SbVec3f(0, 0, 0));
  const SbBox3f& box = m_text.measure(textOf(isovalue).c_str());
  if (box.isEmpty()) return SbVec2f(0, 0);
  const float width = spanAround(box.getMin()[0], box.getMax()[0]);
  const float height = spanAround(box.getMin()[1], box.getMax()[1]);
  return m_hasBox ? SbVec2f(width + 0.5F * height, 1.5F * height) : SbVec2f(width, height);
}

SoGroup* PiLabelNodes::makeTexts(std::span<const Label> labels) {
  auto* group = new SoGroup;
  m_text.setGroup(group);
  const bool isLifted = m_hasBox && PoBase::getTextType() == PoBase::TEXT_3D;
  for (const Label& label : labels) {
    const PiPlacedLabel& place = *label.place;
    m_text.setDirection(place.direction, place.up);
    SbVec3f position = place.position;
    if (isLifted) position += place.direction.cross(place.up) * (kLift * m_text.getFontSize());
    m_text.setPosition(position);
    m_text.build(textOf(label.isovalue).c_str());
  }
  m_text.setGroup(nullptr);
  return group;
}

SoGroup* PiLabelNodes::makeBoxes(std::span<const Label> labels) {
  auto* group = new SoGroup;
  auto* offset = new SoPolygonOffset;
  group->addChild(offset);
  offset->factor = kOffsetFactor;
  offset->units = kOffsetUnits;
  addCorners(group, labels, {0, 1, 2, 3});
  addShape<SoFaceSet>(group, labels.size(), 4);
  return group;
}

SoGroup* PiLabelNodes::makeBorders(std::span<const Label> labels) {
  auto* group = new SoGroup;
  addCorners(group, labels, {0, 1, 1, 2, 2, 3, 3, 0});
  addShape<SoLineSet>(group, labels.size(), 8);
  return group;
}
