#include "TextNode.h"

#include <Inventor/SoFullPath.h>
#include <Inventor/VRMLnodes/SoVRMLFontStyle.h>
#include <Inventor/VRMLnodes/SoVRMLText.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoFontNameElement.h>
#include <Inventor/elements/SoFontSizeElement.h>
#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoText2.h>
#include <Inventor/nodes/SoText3.h>

namespace tool {

namespace {

template <class Text>
void readFields(const SoNode* node, TextNode& out) {
  const auto* text = static_cast<const Text*>(node);
  out.spacing = static_cast<double>(text->spacing.getValue());
  const int value = text->justification.getValue();
  out.justification = value == Text::RIGHT ? 1 : value == Text::CENTER ? 0 : -1;
}

void readStyle(const SoVRMLText* text, TextNode& out) {
  SoNode* node = text->fontStyle.getValue();
  if (!node || !node->isOfType(SoVRMLFontStyle::getClassTypeId())) {
    out.font = "SERIF";
    out.size = 1.0;
    return;
  }
  const auto* style = static_cast<const SoVRMLFontStyle*>(node);
  out.font = style->family.getNum() > 0 ? style->family[0].getString() : "SERIF";
  if (style->style.getNum() > 0) out.font += std::string(":") + style->style[0].getString();
  out.size = static_cast<double>(style->size.getValue());
  out.spacing = static_cast<double>(style->spacing.getValue());
  const SbString justify = style->justify.getNum() > 0 ? style->justify[0] : SbString("BEGIN");
  out.justification = justify == "END" ? 1 : justify == "MIDDLE" ? 0 : -1;
}

}  // namespace

bool isText(const SoNode* node) {
  return node->isOfType(SoText2::getClassTypeId()) || node->isOfType(SoText3::getClassTypeId()) ||
         node->isOfType(SoAsciiText::getClassTypeId()) || node->isOfType(SoVRMLText::getClassTypeId());
}

std::vector<std::string> linesOf(const SoNode* text) {
  const SoMFString& field = text->isOfType(SoText2::getClassTypeId())   ? static_cast<const SoText2*>(text)->string
                            : text->isOfType(SoText3::getClassTypeId()) ? static_cast<const SoText3*>(text)->string
                            : text->isOfType(SoVRMLText::getClassTypeId())
                                ? static_cast<const SoVRMLText*>(text)->string
                                : static_cast<const SoAsciiText*>(text)->string;
  std::vector<std::string> lines;
  lines.reserve(static_cast<std::size_t>(field.getNum()));
  for (int i = 0; i < field.getNum(); ++i) lines.emplace_back(field[i].getString());
  return lines;
}

TextNode textNodeOf(SoCallbackAction& action) {
  const SoNode* node = static_cast<const SoFullPath*>(action.getCurPath())->getTail();
  TextNode out;
  out.lines = linesOf(node);
  out.font = SoFontNameElement::get(action.getState()).getString();
  out.size = static_cast<double>(SoFontSizeElement::get(action.getState()));
  if (node->isOfType(SoText2::getClassTypeId())) {
    out.isOnScreen = true;
    readFields<SoText2>(node, out);
  } else if (node->isOfType(SoText3::getClassTypeId())) {
    readFields<SoText3>(node, out);
    out.isAnnotation = node->getTypeId().getName() == "SoAnnoText3";
    out.isSolid = !out.isAnnotation && static_cast<const SoText3*>(node)->parts.getValue() != SoText3::FRONT;
  } else if (node->isOfType(SoVRMLText::getClassTypeId())) {
    readStyle(static_cast<const SoVRMLText*>(node), out);
  } else {
    readFields<SoAsciiText>(node, out);
  }
  return out;
}

}  // namespace tool
