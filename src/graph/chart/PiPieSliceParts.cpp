#include "graph/chart/PiPieSliceParts.h"

#include <cmath>

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoShapeHints.h>

#include "graph/chart/PiChartColors.h"
#include "graph/chart/PiPieEmitter.h"
#include "graph/chart/PiPieState.h"

PiPieSliceParts::PiPieSliceParts(const PiPieState& pie, const SbVec2f& center, float radius, float angleStep,
                                 const SoMFColor& colors, bool isSolid, const Add& addFaces, const Add& addLines)
    : m_slices(new SoGroup), m_borders(new SoGroup) {
  // The borders lie in the planes of the faces.
  m_slices->addChild(new SoPolygonOffset);
  auto* hints = new SoShapeHints;
  m_slices->addChild(hints);
  hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
  hints->shapeType = isSolid ? SoShapeHints::SOLID : SoShapeHints::UNKNOWN_SHAPE_TYPE;
  hints->faceType = isSolid ? SoShapeHints::CONVEX : SoShapeHints::UNKNOWN_FACE_TYPE;

  PiPieGeometry::Faces faces;
  PiPieGeometry::Faces lines;
  for (std::size_t i = 0; i < pie.slices.displayed().size(); ++i) {
    const PiPieSlices::Slice& slice = pie.slices.displayed()[i];
    PiPieGeometry::Sector sector;
    const float pulled = pie.pulled[i];
    sector.center = center + SbVec2f(pulled * static_cast<float>(std::cos(slice.middle())),
                                     pulled * static_cast<float>(std::sin(slice.middle())));
    sector.radius = radius;
    sector.start = slice.start;
    sector.end = slice.end;
    sector.angleStep = angleStep;
    addLines(sector, lines);

    faces.clear();
    addFaces(sector, faces);
    auto* group = new SoGroup;
    m_slices->addChild(group);
    group->setName(pie.names[i].c_str());
    PiPieEmitter::addColor(PiChartColors::of(colors, slice.index()), group);
    PiPieEmitter::addFaces(faces, isSolid, group);
  }
  PiPieEmitter::addLines(lines, m_borders);
}
