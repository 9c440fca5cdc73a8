#ifndef ORMELLE_PINODESCOORD_H
#define ORMELLE_PINODESCOORD_H

#include <Inventor/fields/SoMFVec3f.h>

#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/view/PiView2D.h"

/// Fills the field with all nodes of the view, in node order.
template <PiView2D View>
void fillNodesCoord(const View& view, SoMFVec3f& coords) {
  coords.setNum(view.numNodes());
  SbVec3f* points = coords.startEditing();
  view.forEachNode([&](int node, const SbVec2f& xy) { points[node].setValue(xy[0], xy[1], view.z(node)); });
  coords.finishEditing();
}

/// The box of all nodes of the view with finite coordinates.
template <PiView2D View>
SbBox3f boxOfNodes(const View& view) {
  PiFiniteBox box;
  view.forEachNode([&](int node, const SbVec2f& xy) { box.add(SbVec3f(xy[0], xy[1], view.z(node))); });
  return box.box();
}

#endif
