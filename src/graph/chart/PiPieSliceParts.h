#ifndef ORMELLE_PIPIESLICEPARTS_H
#define ORMELLE_PIPIESLICEPARTS_H

#include <string>
#include <vector>

#include <Inventor/SbColor.h>
#include <Inventor/SbVec2f.h>

#include "graph/chart/PiPieSlices.h"

class SoGroup;

/// Builds the slices of a pie and their borders: for each slice a group, named if there are names, of colour,
/// coordinates and faces.
class PiPieSliceParts {
 public:
  struct Input {
    const PiPieSlices& slices;
    const std::vector<float>& pulled;  ///< how far each displayed slice is pulled out
    const std::vector<std::string>* names = nullptr;
    const std::vector<SbColor>* colors = nullptr;  ///< one a displayed slice; null: inherited
    SbVec2f center = SbVec2f(0, 0);
    float innerRadius = 0;
    float radius = 1;
    float angleStep = 0.05f;
    bool isSolid = false;
    float zMin = 0;  ///< the height of flat slices
    float zMax = 0;
  };

  explicit PiPieSliceParts(const Input& input);

  SoGroup* slices() const { return m_slices; }
  SoGroup* borders() const { return m_borders; }

 private:
  SoGroup* m_slices;
  SoGroup* m_borders;
};

#endif
