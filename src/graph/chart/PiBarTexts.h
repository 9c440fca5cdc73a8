#ifndef ORMELLE_PIBARTEXTS_H
#define ORMELLE_PIBARTEXTS_H

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include <Inventor/SbBox2f.h>
#include <Inventor/SbString.h>
#include <Inventor/SbVec2f.h>
#include <Ormelle/PoAxis.h>
#include <Ormelle/PoHistogram.h>

class PbMiscTextAttr;
class SoGroup;

/// Places texts at bars, without overlaps: what comes first stays.
class PiBarTexts {
 public:
  struct Text {
    std::string text;
    SbVec2f corners[2];  ///< the bar: its lower left and its upper right corner
    PoHistogram::Position position = PoHistogram::POS_CENTER;
    bool isWithin = false;  ///< left out where it doesn't fit between the corners
  };

  /// Of one kind, which share font, size and path.
  struct Style {
    SbString fontName;
    float fontSize = 0;  ///< 0: automatic, between the two sizes below
    float largest = 0.04f;
    float smallest = 0.015f;
    PoAxis::TextPath path = PoAxis::PATH_DEPEND;  ///< depends: from left to right, or upwards if that has more room
    float room = 0;                               ///< along x for each text, which an automatic size keeps to; 0: any
  };

  /// An empty frame bounds nothing.
  PiBarTexts(const PbMiscTextAttr& attributes, const SbBox2f& frame) : m_attributes(attributes), m_frame(frame) {}

  /// Builds those that have room, in their order, into a new group at a height, and tells the font size in use.
  SoGroup* build(const std::vector<Text>& texts, const Style& style, float height, float& fontSize);

  /// What those of the last call cover.
  const SbBox2f& builtBox() const { return m_builtBox; }
  /// Those of all calls that had none.
  int numDropped() const { return m_numDropped; }

 private:
  bool take(const SbBox2f& box);
  /// Calls `visit(key)` for the cells that a box touches until it says false; returns whether it never did.
  template <class Visit>
  bool forCells(const SbBox2f& box, Visit visit) const;
  void setCellSize(float size);

  const PbMiscTextAttr& m_attributes;
  SbBox2f m_frame;
  std::vector<SbBox2f> m_taken;
  float m_cellSize = 1;
  std::unordered_map<long long, std::vector<std::size_t>> m_cells;  ///< which boxes touch a cell of the plane
  SbBox2f m_builtBox;
  int m_numDropped = 0;
};

#endif
