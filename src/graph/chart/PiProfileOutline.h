#ifndef ORMELLE_PIPROFILEOUTLINE_H
#define ORMELLE_PIPROFILEOUTLINE_H

#include <Inventor/SbVec2f.h>

#include <vector>

class PoProfile;

/// The corners of a profile, counter-clockwise, the last to be joined to the first. Empty for one without an area:
/// with fewer than three corners, with a radius or a side that isn't above 0, or with a corner that isn't finite.
std::vector<SbVec2f> outlineOf(const PoProfile& profile);
/// Those of a circle.
std::vector<SbVec2f> circleOutline(float radius);

#endif
