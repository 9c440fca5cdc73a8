#include "AxisTexts.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoScale.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText3.h>
#include <Inventor/nodes/SoTranslation.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace {

/// The box of a text node in its own coordinates, at font size 1.
SbBox3f boxAtSizeOne(const SoText3& node, const SbName& font) {
  static std::map<std::string, SbBox3f> known;
  std::string key = font.getString() + std::to_string(node.justification.getValue());
  for (int i = 0; i < node.string.getNum(); ++i) {
    key += '\n';
    key += node.string[i].getString();
  }
  const auto found = known.find(key);
  if (found != known.end()) return found->second;
  auto* scene = new SoSeparator;
  scene->ref();
  auto* fontNode = new SoFont;
  scene->addChild(fontNode);
  fontNode->name = font;
  fontNode->size = 1;
  scene->addChild(const_cast<SoText3*>(&node));
  static SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
  action.apply(scene);
  const SbBox3f box = action.getBoundingBox();
  scene->unref();
  return known[key] = box;
}

/// Where the coordinates of a text lie in those of the axis.
struct Placement {
  double matrix[2][2] = {{1, 0}, {0, 1}};  // of row vectors
  double x = 0, y = 0;

  void apply(double m00, double m01, double m10, double m11, double tx, double ty) {
    x += tx * matrix[0][0] + ty * matrix[1][0];
    y += tx * matrix[0][1] + ty * matrix[1][1];
    const double a = matrix[0][0], b = matrix[0][1], c = matrix[1][0], d = matrix[1][1];
    matrix[0][0] = m00 * a + m01 * c;
    matrix[0][1] = m00 * b + m01 * d;
    matrix[1][0] = m10 * a + m11 * c;
    matrix[1][1] = m10 * b + m11 * d;
  }
  void apply(const SoNode* node) {
    if (node->isOfType(SoMatrixTransform::getClassTypeId())) {
      const SbMatrix& m = static_cast<const SoMatrixTransform*>(node)->matrix.getValue();
      apply(m[0][0], m[0][1], m[1][0], m[1][1], m[3][0], m[3][1]);
    } else if (node->isOfType(SoTranslation::getClassTypeId())) {
      const SbVec3f t = static_cast<const SoTranslation*>(node)->translation.getValue();
      apply(1, 0, 0, 1, t[0], t[1]);
    } else if (node->isOfType(SoScale::getClassTypeId())) {
      const SbVec3f s = static_cast<const SoScale*>(node)->scaleFactor.getValue();
      apply(s[0], 0, 0, s[1], 0, 0);
    }
  }
};

/// `place` is that of the text, `letters` that of its letters, which the vertical alignment shifts.
AxisText placed(const Placement& place, const Placement& letters, const SoText3& node, const SoFont& font) {
  AxisText text;
  text.size = font.size.getValue() * std::hypot(place.matrix[0][0], place.matrix[0][1]);
  text.x = place.x;
  text.y = place.y;
  for (int i = 0; i < node.string.getNum(); ++i) {
    if (i > 0) text.text += '\n';
    text.text += node.string[i].getString();
  }
  const SbBox3f box = boxAtSizeOne(node, font.name.getValue());
  if (box.isEmpty()) return text;
  bool isFirst = true;
  for (const float u : {box.getMin()[0], box.getMax()[0]}) {
    for (const float v : {box.getMin()[1], box.getMax()[1]}) {
      const double p = u * font.size.getValue(), q = v * font.size.getValue();
      const double x = p * letters.matrix[0][0] + q * letters.matrix[1][0] + letters.x;
      const double y = p * letters.matrix[0][1] + q * letters.matrix[1][1] + letters.y;
      text.xmin = isFirst ? x : std::min(text.xmin, x);
      text.xmax = isFirst ? x : std::max(text.xmax, x);
      text.ymin = isFirst ? y : std::min(text.ymin, y);
      text.ymax = isFirst ? y : std::max(text.ymax, y);
      isFirst = false;
    }
  }
  return text;
}

void addTexts(const SoGroup* group, Placement place, const SoFont& font, std::vector<AxisText>& texts) {
  Placement letters = place;
  for (int i = 0; i < group->getNumChildren(); ++i) {
    const SoNode* node = group->getChild(i);
    if (node->isOfType(SoText3::getClassTypeId())) {
      texts.push_back(placed(place, letters, *static_cast<const SoText3*>(node), font));
    } else if (node->isOfType(SoSeparator::getClassTypeId())) {
      addTexts(static_cast<const SoGroup*>(node), letters, font, texts);
    } else {
      letters.apply(node);
      if (node->isOfType(SoMatrixTransform::getClassTypeId())) place = letters;
    }
  }
}

}  // namespace

bool AxisText::overlaps(const AxisText& other, double tolerance) const {
  return std::min(xmax, other.xmax) - std::max(xmin, other.xmin) > tolerance &&
         std::min(ymax, other.ymax) - std::max(ymin, other.ymin) > tolerance;
}

void AxisText::extendBy(const AxisText& other) {
  xmin = std::min(xmin, other.xmin);
  xmax = std::max(xmax, other.xmax);
  ymin = std::min(ymin, other.ymin);
  ymax = std::max(ymax, other.ymax);
}

std::vector<AxisText> axisTexts(SoBaseKit& axis, const char* element, int direction) {
  std::vector<AxisText> texts;
  const auto* group = static_cast<SoGroup*>(axis.getPart(element, FALSE));
  const std::string fontPart = std::string(element) + "App.font";
  const auto* font = static_cast<SoFont*>(axis.getPart(fontPart.c_str(), FALSE));
  if (!group || !font) return texts;
  Placement place;
  if (const auto* transform = static_cast<SoMatrixTransform*>(axis.getPart("transform", FALSE)))
    place.x = transform->matrix.getValue()[3][direction];
  addTexts(group, place, *font, texts);
  return texts;
}
