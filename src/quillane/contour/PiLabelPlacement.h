#ifndef ORMELLE_PILABELPLACEMENT_H
#define ORMELLE_PILABELPLACEMENT_H

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include <Inventor/SbVec2f.h>

#include "quillane/contour/PiLabelBox.h"
#include "quillane/contour/PiPolylineWalk.h"
#include "quillane/search/PiSegmentIndex.h"

/// A line that may get labels, and keep others off.
struct PiLabelLine {
  PiPolyline points;
  float width = 0, height = 0;  ///< of its text; without a positive size the line gets no label
  bool isForbidden = false;     ///< whether the labels of other lines must keep off
};

/// A label that has its place.
struct PiPlacedLabel {
  std::size_t line;
  SbVec3f position;                ///< its middle, on the line
  SbVec3f direction, up;           ///< unit vectors along the text and across it
  std::array<SbVec3f, 4> corners;  ///< lower left, upper left, upper right, lower right
  PiLabelBox box;                  ///< its room in the plane, before it is tilted

  /// Puts the corners where the other members say they are.
  void placeCorners() {
    const SbVec3f along = direction * static_cast<float>(box.halfWidth);
    const SbVec3f across = up * static_cast<float>(box.halfHeight);
    corners = {position - along - across, position - along + across, position + along + across,
               position + along - across};
  }
};

/// Fits labels to lines: a label lies with its middle on its line and touches neither a boundary, nor the sides of a
/// clipping polygon, nor another label, nor a line that is forbidden to it.
///
/// Along each line the middles of its segments are tried, from a start that shifts from line to line so that labels of
/// neighbours don't line up. What a label keeps off is looked up in trees, so that the cost follows the number of
/// segments tried.
class PiLabelPlacement {
 public:
  enum Path {
    TANGENTIAL = 0,  ///< along the line, never upside down
    HORIZONTAL = 1,  ///< along x
    VERTICAL = 2     ///< along y
  };

  /// `gap` is what lies between labels of a line, along it. With `isTilted` a label rises as its line does at both of
  /// its ends.
  PiLabelPlacement(Path path, double gap, bool isTilted) : m_path(path), m_gap(gap), m_isTilted(isTilted) {}

  /// Lines that no label may touch. They aren't copied.
  void setBoundary(std::span<const PiPolyline> lines) { m_boundary = PiSegmentIndex(lines); }
  /// Labels stay inside of `corners`, by the crossing rule, and off its sides. Corners that aren't finite don't count;
  /// less than three bound nothing.
  void setClippingPolygon(std::span<const SbVec2f> corners);

  /// The labels of all lines, in the order in which they were placed, line after line.
  std::vector<PiPlacedLabel> place(std::span<const PiLabelLine> lines);

 private:
  class PlacedLimits;
  struct Place;

  bool hasRoom(const PiLabelLine& line) const;
  void placeOn(std::size_t number, PlacedLimits& placed, std::vector<PiPlacedLabel>& labels);
  std::size_t startSegment();
  bool findPlace(std::size_t segment, const PiLabelLine& line, Place& place) const;
  bool isAllowed(const PiLabelRegion& room, std::size_t line) const;
  bool isInPolygon(const PiLabelRegion& room) const;
  PiPlacedLabel makeLabel(std::size_t line, const Place& place) const;

  const Path m_path;
  const double m_gap;
  const bool m_isTilted;
  PiSegmentIndex m_boundary;
  std::vector<SbVec3f> m_polygonCorners;
  PiRect m_polygonLimit;
  PiSegmentIndex m_polygon;

  std::span<const PiLabelLine> m_lines;
  PiSegmentIndex m_forbidden;
  std::vector<std::size_t> m_forbiddenNumbers;  // the line of each polyline of the index
  PiPolylineWalk m_walk;
  double m_stagger = 0;
};

#endif
