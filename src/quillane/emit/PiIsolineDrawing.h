#ifndef ORMELLE_PIISOLINEDRAWING_H
#define ORMELLE_PIISOLINEDRAWING_H

#include <span>
#include <vector>

#include <Inventor/SbVec2f.h>

#include "quillane/contour/PiContouringLines.h"
#include "quillane/contour/PiLabelDraping.h"
#include "quillane/contour/PiLabelPlacement.h"

class PbDataMapping;
class PbIsovaluesList;
class PbMiscTextAttr;
class PbNumericDisplayFormat;
class SoGroup;
class SoMatrixTransform;

/// How isolines are drawn. Objects that are pointed to must live as long as the drawing.
struct PiIsolineStyle {
  const PbIsovaluesList* list = nullptr;   ///< not null
  const PbDataMapping* mapping = nullptr;  ///< gives each line the colour of its isovalue; null inherits the colour
  int majorPeriod = 3;                     ///< every n-th isovalue is major, or all
  int firstMajor = 1;                      ///< place of a major isovalue in the list, counted from 1
  bool hasLabels = false;                  ///< on the major lines

  /// @name Of the labels
  /// @{
  PiLabelPlacement::Path path = PiLabelPlacement::TANGENTIAL;
  bool isMajorForbidden = false;  ///< whether labels keep off other major lines
  bool isMinorForbidden = false;
  bool hasBox = false;
  bool isClipped = false;            ///< whether lines are cut where a label is; no effect with boxes
  float gap = 1;                     ///< along a line between its labels
  float size = 0.04F;                ///< of the font
  PiHeightsAt heightsAt;             ///< of the surface that labels lie on; none if it is flat
  std::span<const SbVec2f> polygon;  ///< that labels stay in
  const PbNumericDisplayFormat* format = nullptr;
  const PbMiscTextAttr* attributes = nullptr;
  /// @}
};

/// The nodes of isolines. New ones, without a reference yet; null where there is nothing to draw.
struct PiIsolineNodes {
  SoGroup* major = nullptr;
  SoGroup* minor = nullptr;
  SoGroup* boxes = nullptr;
  SoGroup* borders = nullptr;
  SoGroup* texts = nullptr;
};

/// Draws isolines as major and minor ones, with labels on the major ones. Lines, boundary and style are all in the
/// space in which labels are fitted. A line whose isovalue the mapping gives no colour, or too high a transparency,
/// isn't drawn and has no label.
PiIsolineNodes drawIsolines(const PiIsolineStyle& style, std::span<const PiIsoline> lines,
                            std::span<const PiPolyline> boundary);

#endif
