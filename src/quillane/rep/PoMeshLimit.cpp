#include <Ormelle/PoMeshLimit.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PoDataMappingElement.h>

#include <algorithm>

#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiBoundary.h"

PO_KIT_SOURCE(PoMeshLimit)

PoMeshLimit::PoMeshLimit() {
  PO_KIT_CONSTRUCTOR(PoMeshLimit);
  PO_KIT_ADD_CATALOG_ENTRY(groupLimit, SoGroup, alternateRep);
  PO_KIT_CONSTRUCTED(PoMeshLimit);
  ownPart(groupLimit);
  beginWatching();
}

PoMeshLimit::~PoMeshLimit() = default;

void PoMeshLimit::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
}

void PoMeshLimit::preRebuild() {
  inherited::preRebuild();
  addDataMappingInCache();
}

void PoMeshLimit::rebuild() {
  preRebuild();
  clearZelNodes();
  if (drawnMesh()) drawBoundary(*m_currentMesh2D);
  setAppearancePart("material", nullptr);
  setPart("groupLimit", nodes().group);
  clearZelNodes();
  postRebuild();
}

void PoMeshLimit::drawBoundary(PbMesh2D& mesh) {
  const PiBoundary boundary(mesh, heightsIndex(mesh));
  if (boundary.pieces().empty()) return;
  nodes().group = new SoGroup;
  nodes().coordinate = new SoCoordinate3;
  nodes().group->addChild(nodes().coordinate);
  auto* lines = new SoLineSet;
  nodes().group->addChild(lines);
  std::size_t numPoints = 0;
  for (const PiBoundaryPiece& piece : boundary.pieces()) numPoints += piece.points.size();
  nodes().coordinate->point.setNum(static_cast<int>(numPoints));
  lines->numVertices.setNum(static_cast<int>(boundary.pieces().size()));
  SbVec3f* points = nodes().coordinate->point.startEditing();
  int32_t* numVertices = lines->numVertices.startEditing();
  for (const PiBoundaryPiece& piece : boundary.pieces()) {
    points = std::copy(piece.points.begin(), piece.points.end(), points);
    *numVertices++ = static_cast<int32_t>(piece.points.size());
  }
  nodes().coordinate->point.finishEditing();
  lines->numVertices.finishEditing();
}
