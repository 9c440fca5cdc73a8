#ifndef ORMELLE_PISECTIONSTATE_H
#define ORMELLE_PISECTIONSTATE_H

#include <Ormelle/PoMesh3D.h>
#include <Ormelle/PoMeshCrossSection.h>

#include "quillane/emit/PiSectionBuilder.h"
#include "quillane/surface/PiMeshSection.h"
#include "quillane/surface/PiPlaneDistances.h"

/// How often a kit did what it does to cut a plane. For tests.
struct PiSectionPasses {
  int distances = 0;      ///< of the nodes were computed
  int intersections = 0;  ///< of cells
  int slices = 0;         ///< of a grid across an axis
  bool operator==(const PiSectionPasses&) const = default;
};

/// What a section keeps from one rebuild to the next.
struct PiSectionState {
  PiPlaneDistances distances;
  PiMeshSection intersection;
  PiGridSlice slice;
  PiSectionNodes nodes;
  PiContouringFilled contouring;
  bool isIntersection = false;  ///< the group shows an intersection
  int numIntersections = 0, numSlices = 0;

  static PiSectionPasses passesOf(const PoMeshCrossSection& kit) {
    const PiSectionState& state = *kit.m_section;
    return {state.distances.numPasses(), state.numIntersections, state.numSlices};
  }
};

#endif
