#ifndef ORMELLE_PILINECLIPPING_H
#define ORMELLE_PILINECLIPPING_H

#include <cstddef>
#include <span>
#include <vector>

#include "quillane/contour/PiLabelBox.h"
#include "quillane/search/PiSegmentIndex.h"

/// Pieces of lines, one behind the other.
struct PiLinePieces {
  struct Piece {
    std::size_t line;  ///< the line that it was cut from
    std::size_t numPoints;
  };
  std::vector<SbVec3f> points;
  std::vector<Piece> pieces;
};

/// Cuts out of lines what lies in boxes of the plane, at whatever height. The pieces are in the order of the lines and
/// along them, each of at least two points.
class PiLineClipping {
 public:
  explicit PiLineClipping(std::vector<PiLabelBox> boxes);

  PiLinePieces clip(std::span<const PiPolyline> lines);

 private:
  struct Gap {
    double enter, leave;
  };

  void clipLine(std::size_t number, PiPolyline points);
  void clipSegment(const SbVec3f& from, const SbVec3f& to);
  void finishPiece(std::size_t line);

  std::vector<PiLabelBox> m_boxes;
  PiRectTree m_tree;
  std::vector<Gap> m_gaps;  // of a segment
  PiLinePieces m_result;
  std::size_t m_line = 0;
  std::size_t m_pieceStart = 0;
};

#endif
