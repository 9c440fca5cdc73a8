#include "graph/chart/PiPieSliceParts.h"

#include <cmath>

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoShapeHints.h>

#include "graph/chart/PiPieEmitter.h"

PiPieSliceParts::PiPieSliceParts(const Input& input) : m_slices(new SoGroup), m_borders(new SoGroup) {
  // The borders lie in the planes of the faces.
  m_slices->addChild(new SoPolygonOffset);
  auto* hints = new SoShapeHints;
  m_slices->addChild(hints);
  hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
  hints->shapeType = input.isSolid ? SoShapeHints::SOLID : SoShapeHints::UNKNOWN_SHAPE_TYPE;
  hints->faceType = input.isSolid ? SoShapeHints::CONVEX : SoShapeHints::UNKNOWN_FACE_TYPE;

  PiPieGeometry::Faces faces;
  PiPieGeometry::Faces lines;
  for (std::size_t i = 0; i < input.slices.displayed().size(); ++i) {
    const PiPieSlices::Slice& slice = input.slices.displayed()[i];
    PiPieGeometry::Sector sector;
    const float pulled = input.pulled[i];
    sector.center = input.center + SbVec2f(pulled * static_cast<float>(std::cos(slice.middle())),
                                           pulled * static_cast<float>(std::sin(slice.middle())));
    sector.innerRadius = input.innerRadius;
    sector.radius = input.radius;
    sector.start = slice.start;
    sector.end = slice.end;
    sector.angleStep = input.angleStep;
    faces.clear();
    if (input.isSolid) {
      PiPieGeometry::addSolid(sector, input.zMin, input.zMax, faces);
      PiPieGeometry::addSolidEdges(sector, input.zMin, input.zMax, lines);
    } else {
      PiPieGeometry::addDisc(sector, input.zMin, faces);
      PiPieGeometry::addOutline(sector, input.zMin, lines);
    }
    auto* group = new SoGroup;
    m_slices->addChild(group);
    if (input.names) group->setName((*input.names)[i].c_str());
    if (input.colors) PiPieEmitter::addColor((*input.colors)[i], group);
    PiPieEmitter::addFaces(faces, input.isSolid, group);
  }
  PiPieEmitter::addLines(lines, m_borders);
}
