#ifndef ORMELLE_PIMOTIONNODES_H
#define ORMELLE_PIMOTIONNODES_H

#include <algorithm>
#include <cmath>
#include <vector>

#include <Inventor/SbColor.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>

/// The nodes that kits of moving particles have in common, each added to a group.
namespace PiMotionNodes {

template <class Node>
Node* add(SoGroup* group) {
  auto* node = new Node;
  group->addChild(node);
  return node;
}

/// Widths that are no positive number go back to the toolkit's own.
inline float widthOf(float pixels) { return pixels > 0 && std::isfinite(pixels) ? pixels : 0; }

inline void addPoints(SoGroup* group, const std::vector<SbVec3f>& points) {
  add<SoCoordinate3>(group)->point.setValues(0, static_cast<int>(points.size()), points.data());
}

inline void addColors(SoGroup* group, const std::vector<SbColor>& colors, SoMaterialBinding::Binding binding) {
  add<SoMaterial>(group)->diffuseColor.setValues(0, static_cast<int>(colors.size()), colors.data());
  add<SoMaterialBinding>(group)->value = binding;
}

inline void addColor(SoGroup* group, const SbColor& color) { add<SoMaterial>(group)->diffuseColor = color; }

/// `num` lines of `size` vertices each.
inline void addLines(SoGroup* group, int num, int size) {
  auto* lines = add<SoLineSet>(group);
  lines->numVertices.setNum(num);
  std::fill_n(lines->numVertices.startEditing(), num, size);
  lines->numVertices.finishEditing();
}

}  // namespace PiMotionNodes

#endif
