#ifndef ORMELLE_PIPIESLICEPARTS_H
#define ORMELLE_PIPIESLICEPARTS_H

#include <functional>

#include <Inventor/fields/SoMFColor.h>

#include "graph/chart/PiPieGeometry.h"

class SoGroup;
struct PiPieState;

/// Builds the slices of a pie and their borders: for each slice a named group of colour, coordinates and faces.
class PiPieSliceParts {
 public:
  using Add = std::function<void(const PiPieGeometry::Sector& sector, PiPieGeometry::Faces& shape)>;

  PiPieSliceParts(const PiPieState& pie, const SbVec2f& center, float radius, float angleStep, const SoMFColor& colors,
                  bool isSolid, const Add& addFaces, const Add& addLines);

  SoGroup* slices() const { return m_slices; }
  SoGroup* borders() const { return m_borders; }

 private:
  SoGroup* m_slices;
  SoGroup* m_borders;
};

#endif
