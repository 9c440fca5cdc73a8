#include "graph/chart/PiPieEmitter.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>

namespace {

void addPoints(const PiPieGeometry::Faces& shape, SoGroup* group) {
  auto* coordinate = new SoCoordinate3;
  group->addChild(coordinate);
  coordinate->point.setValues(0, static_cast<int>(shape.points.size()), shape.points.data());
  coordinate->point.setNum(static_cast<int>(shape.points.size()));
}

}  // namespace

void PiPieEmitter::addFaces(const PiPieGeometry::Faces& faces, bool hasNormals, SoGroup* group) {
  if (faces.sizes.empty()) return;
  if (hasNormals) {
    auto* binding = new SoNormalBinding;
    group->addChild(binding);
    binding->value = SoNormalBinding::PER_VERTEX;
    auto* normal = new SoNormal;
    group->addChild(normal);
    normal->vector.setValues(0, static_cast<int>(faces.normals.size()), faces.normals.data());
  }
  addPoints(faces, group);
  auto* shape = new SoFaceSet;
  group->addChild(shape);
  shape->numVertices.setValues(0, static_cast<int>(faces.sizes.size()), faces.sizes.data());
}

void PiPieEmitter::addLines(const PiPieGeometry::Faces& lines, SoGroup* group) {
  if (lines.sizes.empty()) return;
  addPoints(lines, group);
  auto* shape = new SoLineSet;
  group->addChild(shape);
  shape->numVertices.setValues(0, static_cast<int>(lines.sizes.size()), lines.sizes.data());
}

void PiPieEmitter::addColor(const SbColor& color, SoGroup* group) {
  auto* material = new SoMaterial;
  group->addChild(material);
  material->diffuseColor = color;
}
