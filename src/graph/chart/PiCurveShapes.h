#ifndef ORMELLE_PICURVESHAPES_H
#define ORMELLE_PICURVESHAPES_H

#include <Inventor/SbString.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <span>

class SoGroup;
struct PiCurveFill;

/// The shapes that curves are made of. Each is a new group without a reference; null where there is nothing to show.
namespace PiCurveShapes {

/// How a marker is written.
struct Marker {
  SbString text;
  SbString fontName;
  float fontSize;
  SbVec3f stretch;  ///< how the coordinates of the markers are stretched, which the texts are to be kept from
};

/// Lets lines in the same plane be in front of the faces that follow.
void addOffset(SoGroup& group);

/// A polyline for each run of finite points.
/// @{
SoGroup* makeLines(std::span<const SbVec2f> points);
SoGroup* makeLines(std::span<const SbVec3f> points);
/// @}
/// A line from each place along y to `threshold`.
SoGroup* makeRaisedLines(std::span<const SbVec2f> places, float threshold);
/// Takes the points away.
SoGroup* makeFilling(PiCurveFill fill);
SoGroup* makeMarkers(std::span<const SbVec2f> places, const Marker& marker);

}  // namespace PiCurveShapes

#endif
