#ifndef ORMELLE_PICURVEPATH_H
#define ORMELLE_PICURVEPATH_H

#include <Ormelle/PoMesh1DHints.h>

#include <span>
#include <vector>

#include "graph/chart/PiMaterialMix.h"
#include "graph/chart/PiNewArray.h"

/// The polyline that joins nodes as an interpretation says.
struct PiCurvePath {
  /// What to make besides the points.
  struct Wants {
    bool nodePoints = false;
    bool mixes = false;
    bool isPerPart = false;  ///< points between two nodes have the material of the former, unmixed
  };

  PiNewArray<float> x, y;
  PiNewArray<float> z;  ///< if the nodes have it
  /// For each node its point; of an inner node that isn't on the path, where the way from the node before ends.
  PiNewArray<int> nodePoints;
  /// For each point its material, in terms of the nodes.
  std::vector<PiMaterialMix> mixes;

  /// `x` and `y` have an element for each node. Linear cost. Should an int not count the points, they are joined as by
  /// `AS_IS`.
  static PiCurvePath make(PoMesh1DHints::GeomInterpretation interpretation, std::span<const float> x,
                          std::span<const float> y, const Wants& wants);
  /// The points alone of a path in space. There z goes with y: seen along y as well as along z, stairs are stairs.
  static PiCurvePath makeInSpace(PoMesh1DHints::GeomInterpretation interpretation, std::span<const float> x,
                                 std::span<const float> y, std::span<const float> z);
};

#endif
