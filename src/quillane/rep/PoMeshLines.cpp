#include <Ormelle/PoMeshLines.h>

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PoDataMappingElement.h>

#include "quillane/emit/PiLinesBuilder.h"
#include "quillane/rep/PiMeshScratch.h"
#include "quillane/view/PiIndexedView2D.h"

PO_KIT_SOURCE(PoMeshLines)

PoMeshLines::PoMeshLines() {
  PO_KIT_CONSTRUCTOR(PoMeshLines);
  PO_KIT_ADD_CATALOG_ENTRY(groupLines, SoGroup, alternateRep);
  PO_KIT_CONSTRUCTED(PoMeshLines);
  ownPart(groupLines);
  beginWatching();
}

PoMeshLines::~PoMeshLines() = default;

void PoMeshLines::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
}

void PoMeshLines::preRebuild() {
  inherited::preRebuild();
  addDataMappingInCache();
}

void PoMeshLines::rebuild() {
  preRebuild();
  clearZelNodes();
  if (const PbMesh2D* mesh = drawnMesh()) {
    PiRebuildScope scope;
    nodes().group = new SoGroup;
    mesh->meshLines(this);
  }
  setAppearancePart("material", nodes().material);
  setPart("groupLines", nodes().group);
  deleteTransparencyParts(m_currentDataMapping, nodes().material, nodes().materialBinding, nodes().group);
  clearZelNodes();
  postRebuild();
}

template <class Mesh>
void PoMeshLines::drawLines(const Mesh& mesh) {
  if (!nodes().group) return;
  const float* values = nodeValuesToColor(mesh);
  // A line has no inside to put a texture on.
  if (m_currentColoring == COLOR_TEXTURE_CONTOURING) return;
  PiLinesBuilder({m_currentColoring, values, m_currentDataMapping}, nodes()).build(viewOf(mesh, heights(mesh)));
}

void PoMeshLines::regularCartGridLines(const PbRegularCartesianGrid2D* mesh) { drawLines(*mesh); }
void PoMeshLines::cartGridLines(const PbCartesianGrid2D* mesh) { drawLines(*mesh); }
void PoMeshLines::paralCartGridLines(const PbParalCartesianGrid2D* mesh) { drawLines(*mesh); }
void PoMeshLines::polarGridLines(const PbPolarGrid2D* mesh) { drawLines(*mesh); }
void PoMeshLines::indexedLines(const PbIndexedMesh2D* mesh) { drawLines(*mesh); }
void PoMeshLines::triangleLines(const PbTriangleMesh2D* mesh) { drawLines(*mesh); }
void PoMeshLines::quadrangleLines(const PbQuadrangleMesh2D* mesh) { drawLines(*mesh); }
