#include "support/PartTexts.h"

#include <Inventor/SoFullPath.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoText3.h>

std::vector<std::string> textsIn(SoBaseKit& kit, const char* part) {
  std::vector<std::string> texts;
  SoNode* group = kit.getPart(part, FALSE);
  if (!group) return texts;
  SoSearchAction search;
  search.setType(SoText3::getClassTypeId());
  search.setInterest(SoSearchAction::ALL);
  search.apply(group);
  for (int i = 0; i < search.getPaths().getLength(); ++i) {
    auto* text = static_cast<SoText3*>(static_cast<SoFullPath*>(search.getPaths()[i])->getTail());
    texts.emplace_back(text->string[0].getString());
  }
  return texts;
}
