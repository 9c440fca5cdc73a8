#include <Ormelle/PoMeshFilled.h>

#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoIsovaluesListElement.h>

#include <cmath>

#include "quillane/contour/PiContouringFilled.h"
#include "quillane/emit/PiFilledBuilder.h"
#include "quillane/rep/PiMeshInputs.h"
#include "quillane/rep/PiMeshScratch.h"
#include "quillane/view/PiIndexedView2D.h"

PO_KIT_SOURCE(PoMeshFilled)

PoMeshFilled::PoMeshFilled() {
  PO_KIT_CONSTRUCTOR(PoMeshFilled);
  PO_KIT_ADD_CATALOG_ENTRY(groupFilled, SoGroup, alternateRep);
  PO_KIT_ADD_FIELD(useOverallNormal, (FALSE));
  PO_KIT_CONSTRUCTED(PoMeshFilled);
  watchField(useOverallNormal);
  ownPart(groupFilled);
  beginWatching();
}

PoMeshFilled::~PoMeshFilled() = default;

void PoMeshFilled::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
  PoIsovaluesListElement::get(getState());
}

void PoMeshFilled::preRebuild() {
  inherited::preRebuild();
  addDataMappingInCache();
  addIsovaluesListInCache(0);
}

void PoMeshFilled::rebuild() {
  preRebuild();
  clearZelNodes();
  if (const PbMesh2D* mesh = drawnMesh()) {
    PiRebuildScope scope;
    nodes().group = new SoSeparator;
    insertOverallNormal(*mesh);
    insertDefaultShapeHints();
    mesh->meshFilled(this);
  }
  setAppearancePart("texture2", nodes().texture);
  setAppearancePart("material", nodes().material);
  setPart("groupFilled", nodes().group);
  deleteTransparencyParts(m_currentDataMapping, nodes().material, nodes().materialBinding, nodes().group);
  clearZelNodes();
  postRebuild();
}

void PoMeshFilled::insertOverallNormal(const PbMesh2D& mesh) {
  if (!useOverallNormal.getValue() || zValuesIndex.getValue() >= 0 || mesh.getZcoord()) return;
  SbVec3f normal = mesh.getFirstCellNormal();
  const float length = normal.length();
  // Without a first cell to speak of the toolkit finds the normals.
  if (!(length > 0) || !std::isfinite(length)) return;
  normal /= length;

  nodes().normalBinding = new SoNormalBinding;
  nodes().group->addChild(nodes().normalBinding);
  nodes().normalBinding->value = SoNormalBinding::OVERALL;
  nodes().overallNormal = new SoNormal;
  nodes().group->addChild(nodes().overallNormal);
  nodes().overallNormal->vector.setValue(normal);
}

void PoMeshFilled::insertDefaultShapeHints() {
  inherited::insertDefaultShapeHints();
  // The overall normal is on the side from which the corners of the cells run counter-clockwise.
  if (nodes().overallNormal) nodes().shapeHints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
}

template <class Mesh>
void PoMeshFilled::fill(const Mesh& mesh) {
  if (!nodes().group) return;
  const float* values = nodeValuesToColor(mesh);
  if (m_currentColoring == COLOR_CONTOURING) {
    fillBands(mesh, values);
    return;
  }
  PiFilledBuilder({m_currentColoring, values, m_currentDataMapping, &inputs().textureContouring}, nodes())
      .build(viewOf(mesh, heights(mesh)));
}

template <class Mesh>
void PoMeshFilled::fillBands(const Mesh& mesh, const float* values) {
  if (!m_contouring) m_contouring = std::make_unique<PiContouringFilled>();
  nodes().material = new SoMaterial;
  nodes().materialBinding = new SoMaterialBinding;
  m_contouring->setMesh(mesh, heights(mesh));
  m_contouring->setDataMapping(m_currentDataMapping);
  m_contouring->setIsovaluesList(m_currentIsovaluesList);
  m_contouring->fillSurf(values, nodes().group, nodes().material, nodes().materialBinding);
}

std::size_t PoMeshFilled::getMemorySize() const {
  return inherited::getMemorySize() + (m_contouring ? m_contouring->memorySize() : 0);
}

void PoMeshFilled::regularCartGridFilled(const PbRegularCartesianGrid2D* mesh) { fill(*mesh); }
void PoMeshFilled::cartGridFilled(const PbCartesianGrid2D* mesh) { fill(*mesh); }
void PoMeshFilled::paralCartGridFilled(const PbParalCartesianGrid2D* mesh) { fill(*mesh); }
void PoMeshFilled::polarGridFilled(const PbPolarGrid2D* mesh) { fill(*mesh); }
void PoMeshFilled::indexedMeshFilled(const PbIndexedMesh2D* mesh) { fill(*mesh); }
void PoMeshFilled::triangleMeshFilled(const PbTriangleMesh2D* mesh) { fill(*mesh); }
void PoMeshFilled::quadrangleMeshFilled(const PbQuadrangleMesh2D* mesh) { fill(*mesh); }
