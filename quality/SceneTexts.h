#ifndef ORMELLE_SCENETEXTS_H
#define ORMELLE_SCENETEXTS_H

#include <string>
#include <vector>

#include <Inventor/SbVec2f.h>

class SoNode;

/// A text of a finished scene: what it reads as, and the rectangle of its letters in the plane of the chart.
struct SceneText {
  std::string text;
  SbVec2f corners[4];  ///< lower left, lower right, upper right and upper left, as the text reads

  SbVec2f center() const { return (corners[0] + corners[2]) / 2; }
  float width() const { return (corners[1] - corners[0]).length(); }
  float height() const { return (corners[3] - corners[0]).length(); }

  /// Whether the rectangles share more than `tolerance` of depth (by the separating axes of both).
  bool overlaps(const SceneText& other, float tolerance = 0) const;
  /// Whether all of it lies in a box.
  bool isInside(const SbVec2f& min, const SbVec2f& max, float tolerance = 0) const;
};

/// All texts below a node as they are drawn: in its own coordinates, without z. Brings the kits up to date.
std::vector<SceneText> textsOf(SoNode* scene);

/// How many of the texts overlap an earlier one.
int countOverlaps(const std::vector<SceneText>& texts, float tolerance = 0);

#endif
