#ifndef ORMELLE_TOOL_VIEW_PROBE_H
#define ORMELLE_TOOL_VIEW_PROBE_H

#include <Inventor/SbVec2s.h>
#include <Inventor/SbViewportRegion.h>

#include <optional>
#include <string>

#include "Origin.h"

class SoNode;

namespace view {

/// What stands under a pixel of the picture of `root`, counted from the bottom left: the representation, and of a mesh
/// the cell, the nearest node, the values there and the coordinates in the mesh, `origin` added to them. One line;
/// empty if nothing is there.
std::string tellPicked(SoNode* root, const SbViewportRegion& viewport, const SbVec2s& pixel,
                       const std::optional<tool::Origin>& origin);

}  // namespace view

#endif
