#ifndef ORMELLE_PILABELNODES_H
#define ORMELLE_PILABELNODES_H

#include <span>
#include <string>
#include <vector>

#include <Inventor/SbVec2f.h>

#include "graph/format/PiNumericFormat.h"
#include "graph/format/PiText.h"
#include "quillane/contour/PiLabelPlacement.h"

class PbIsovaluesList;
class PbMiscTextAttr;
class PbNumericDisplayFormat;
class SoGroup;

/// Writes isovalues, tells how much room that takes, and makes the nodes of labels that have their places.
class PiLabelNodes {
 public:
  struct Label {
    const PiPlacedLabel* place;
    float isovalue;
  };

  /// All labels share the number format that suits the list; what it divides by stands behind each number as "E3". Null
  /// objects are defaults. A `size` that isn't positive makes nothing.
  PiLabelNodes(const PbIsovaluesList& list, const PbNumericDisplayFormat* format, const PbMiscTextAttr* attributes,
               float size, bool hasBox);

  std::string textOf(float isovalue) const;
  /// Width and height of the label, with the margin of its box if it has one; 0 where there is nothing to draw. What
  /// it takes on either side of its middle is equal.
  SbVec2f roomOf(float isovalue);

  /// The texts.
  SoGroup* makeTexts(std::span<const Label> labels);
  /// A face for each label, just behind its text and in front of the lines.
  static SoGroup* makeBoxes(std::span<const Label> labels);
  /// Four lines for each label.
  static SoGroup* makeBorders(std::span<const Label> labels);

 private:
  PiNumericFormat m_format;
  PiText m_text;
  bool m_hasBox;
};

#endif
