#ifndef ORMELLE_PILABELDRAPING_H
#define ORMELLE_PILABELDRAPING_H

#include <functional>
#include <span>
#include <vector>

#include <Inventor/SbVec2f.h>

#include "quillane/contour/PiLabelPlacement.h"

/// The height of the surface at each place; NaN where there is none.
using PiHeightsAt = std::function<std::vector<float>(std::span<const SbVec2f>)>;

/// Lays labels on a surface that isn't flat: tilts each across its direction as the surface rises there, and lifts it
/// until no part of it lies under the surface. Its direction, and its place in the plane, stay.
void drapeLabels(std::span<PiPlacedLabel> labels, const PiHeightsAt& heightsAt);

#endif
