#include "SceneTexts.h"

#include <algorithm>
#include <cmath>

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SbXfBox3f.h>
#include <Inventor/SoFullPath.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoText3.h>

namespace {

std::string stringOf(const SoNode& node) {
  const SoField* field = node.getField("string");
  if (!field || !field->isOfType(SoMFString::getClassTypeId())) return {};
  const auto& lines = *static_cast<const SoMFString*>(field);
  std::string text;
  for (int i = 0; i < lines.getNum(); ++i) {
    if (i > 0) text += '\n';
    text += lines[i].getString();
  }
  return text;
}

void addTexts(SoNode* scene, SoType type, const SbViewportRegion& viewport, std::vector<SceneText>& texts) {
  SoSearchAction search;
  search.setType(type);
  search.setInterest(SoSearchAction::ALL);
  search.apply(scene);
  SoGetBoundingBoxAction measure(viewport);
  for (int i = 0; i < search.getPaths().getLength(); ++i) {
    SoPath* path = search.getPaths()[i];
    measure.apply(path);
    const SbXfBox3f& box = measure.getXfBoundingBox();
    if (box.isEmpty()) continue;
    SceneText text;
    text.text = stringOf(*static_cast<SoFullPath*>(path)->getTail());
    SbVec3f min, max;
    box.getBounds(min, max);
    const float xs[] = {min[0], max[0], max[0], min[0]};
    const float ys[] = {min[1], min[1], max[1], max[1]};
    for (int k = 0; k < 4; ++k) {
      SbVec3f corner;
      box.getTransform().multVecMatrix(SbVec3f(xs[k], ys[k], min[2]), corner);
      text.corners[k].setValue(corner[0], corner[1]);
    }
    texts.push_back(text);
  }
}

/// How deep the two share the direction, negative if they are apart.
float sharedDepth(const SceneText& a, const SceneText& b, const SbVec2f& direction) {
  const auto span = [&](const SceneText& text, float& low, float& high) {
    low = high = text.corners[0].dot(direction);
    for (const SbVec2f& corner : text.corners) {
      low = std::min(low, corner.dot(direction));
      high = std::max(high, corner.dot(direction));
    }
  };
  float lowA, highA, lowB, highB;
  span(a, lowA, highA);
  span(b, lowB, highB);
  return std::min(highA, highB) - std::max(lowA, lowB);
}

}  // namespace

bool SceneText::overlaps(const SceneText& other, float tolerance) const {
  for (const SceneText* each : {this, &other})
    for (const int side : {1, 3}) {
      SbVec2f direction = each->corners[side] - each->corners[0];
      if (!(direction.normalize() > 0)) return false;
      if (sharedDepth(*this, other, direction) <= tolerance) return false;
    }
  return true;
}

bool SceneText::isInside(const SbVec2f& min, const SbVec2f& max, float tolerance) const {
  return std::all_of(std::begin(corners), std::end(corners), [&](const SbVec2f& corner) {
    return corner[0] >= min[0] - tolerance && corner[0] <= max[0] + tolerance && corner[1] >= min[1] - tolerance &&
           corner[1] <= max[1] + tolerance;
  });
}

std::vector<SceneText> textsOf(SoNode* scene) {
  const SbViewportRegion viewport(1000, 1000);
  scene->ref();
  SoGetBoundingBoxAction update(viewport);
  update.apply(scene);
  std::vector<SceneText> texts;
  const SbBool wasSearching = SoBaseKit::isSearchingChildren();
  SoBaseKit::setSearchingChildren(TRUE);
  addTexts(scene, SoText3::getClassTypeId(), viewport, texts);
  addTexts(scene, SoAsciiText::getClassTypeId(), viewport, texts);
  SoBaseKit::setSearchingChildren(wasSearching);
  scene->unrefNoDelete();
  return texts;
}

int countOverlaps(const std::vector<SceneText>& texts, float tolerance) {
  int count = 0;
  for (std::size_t i = 0; i < texts.size(); ++i)
    for (std::size_t j = 0; j < i; ++j)
      if (texts[i].overlaps(texts[j], tolerance)) {
        ++count;
        break;
      }
  return count;
}
