#ifndef ORMELLE_PIZPART_H
#define ORMELLE_PIZPART_H

#include "nodes/field/PiMeshGeometry.h"

/// The end of the geometry of every surface mesh: whether it has z coordinates, and one for each node if it has.
class PiZPart {
 public:
  template <class Form>
  static bool pass(Form& form, const char* comment, PiMeshGeometry& g) {
    if (!form.line(g.hasZ ? "3D mesh" : "2D mesh", g.hasZ)) return false;
    if (g.hasZ == 0) return true;
    return g.hasZ == 1 && form.block(comment, g.numNodes, g.z);
  }
};

#endif
