#include "AxisTexts.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText3.h>
#include <Inventor/nodes/SoTranslation.h>

#include <algorithm>
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

AxisText placed(const SbMatrix& matrix, const SbVec3f& shift, const SoText3& node, const SoFont& font) {
  AxisText text;
  text.size = font.size.getValue();
  text.x = matrix[3][0];
  text.y = matrix[3][1];
  for (int i = 0; i < node.string.getNum(); ++i) {
    if (i > 0) text.text += '\n';
    text.text += node.string[i].getString();
  }
  const SbBox3f box = boxAtSizeOne(node, font.name.getValue());
  if (box.isEmpty()) return text;
  bool isFirst = true;
  for (const float u : {box.getMin()[0], box.getMax()[0]}) {
    for (const float v : {box.getMin()[1], box.getMax()[1]}) {
      const double p = u * text.size + shift[0], q = v * text.size + shift[1];
      const double x = p * matrix[0][0] + q * matrix[1][0] + matrix[3][0];
      const double y = p * matrix[0][1] + q * matrix[1][1] + matrix[3][1];
      text.xmin = isFirst ? x : std::min(text.xmin, x);
      text.xmax = isFirst ? x : std::max(text.xmax, x);
      text.ymin = isFirst ? y : std::min(text.ymin, y);
      text.ymax = isFirst ? y : std::max(text.ymax, y);
      isFirst = false;
    }
  }
  return text;
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

std::vector<AxisText> axisTexts(SoBaseKit& axis, const char* element) {
  std::vector<AxisText> texts;
  const auto* group = static_cast<SoGroup*>(axis.getPart(element, FALSE));
  const std::string fontPart = std::string(element) + "App.font";
  const auto* font = static_cast<SoFont*>(axis.getPart(fontPart.c_str(), FALSE));
  if (!group || !font) return texts;
  for (int i = 0; i < group->getNumChildren(); ++i) {
    if (!group->getChild(i)->isOfType(SoSeparator::getClassTypeId())) continue;
    const auto* separator = static_cast<SoSeparator*>(group->getChild(i));
    SbMatrix matrix = SbMatrix::identity();
    SbVec3f shift(0, 0, 0);
    for (int k = 0; k < separator->getNumChildren(); ++k) {
      const SoNode* node = separator->getChild(k);
      if (node->isOfType(SoMatrixTransform::getClassTypeId()))
        matrix = static_cast<const SoMatrixTransform*>(node)->matrix.getValue();
      else if (node->isOfType(SoTranslation::getClassTypeId()))
        shift = static_cast<const SoTranslation*>(node)->translation.getValue();
      else if (node->isOfType(SoText3::getClassTypeId()))
        texts.push_back(placed(matrix, shift, *static_cast<const SoText3*>(node), *font));
    }
  }
  return texts;
}
