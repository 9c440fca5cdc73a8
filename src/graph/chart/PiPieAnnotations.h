#ifndef ORMELLE_PIPIEANNOTATIONS_H
#define ORMELLE_PIPIEANNOTATIONS_H

#include <functional>
#include <string>
#include <vector>

#include <Inventor/SbColor.h>
#include <Inventor/SbString.h>
#include <Inventor/SbVec2f.h>

#include "graph/chart/PiPieLayout.h"
#include "graph/format/PiText.h"

class PbMiscTextAttr;
class SoGroup;

/// Measures and builds the annotations of one side of a pie, inside or outside: boxes of up to three lines.
class PiPieAnnotations {
 public:
  static constexpr int MAX_LINES = 3;

  enum Alignment { AT_LEFT, AT_CENTER, AT_RIGHT, INWARDS, OUTWARDS };

  /// One kind of line, with a text for each annotation; empty texts take no room.
  struct Line {
    bool isVisible = false;
    SbString fontName;
    float fontSize = 0;
    const std::vector<std::string>* texts = nullptr;
  };

  PiPieAnnotations(const Line (&lines)[MAX_LINES], const PbMiscTextAttr& attributes);

  /// The size of the box of annotation `index`; 0 and 0 if it has no text.
  SbVec2f measure(std::size_t index);

  /// Boxes as filled polygons, their borders, leaders with their arrows, and the lines by kind, each in its group; all
  /// at a height. An arrow width of 0 makes no arrows. With colours, one an annotation, its lines have them.
  void build(const std::vector<PiPieLayout::Place>& places, Alignment alignment, float height, float arrowWidth,
             const std::vector<SbColor>* colors = nullptr);

  SoGroup* boxes() const { return m_boxes; }
  SoGroup* borders() const { return m_borders; }
  SoGroup* leaders() const { return m_leaders; }
  /// Null for a kind that isn't visible.
  SoGroup* lines(int kind) const { return m_lines[kind]; }

 private:
  float lineHeight(int kind) const;
  float padding() const;
  const char* text(int kind, std::size_t index) const;

  Line m_kinds[MAX_LINES];
  PiText m_text;
  SoGroup* m_boxes = nullptr;
  SoGroup* m_borders = nullptr;
  SoGroup* m_leaders = nullptr;
  SoGroup* m_lines[MAX_LINES] = {nullptr, nullptr, nullptr};
};

#endif
