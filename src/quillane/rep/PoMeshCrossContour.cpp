#include <Ormelle/PoMeshCrossContour.h>

#include <Inventor/nodes/SoGroup.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoDataMappingElement.h>

#include "quillane/emit/PiMeshNodes.h"
#include "quillane/emit/PiSectionBuilder.h"
#include "quillane/rep/PiMeshScratch.h"
#include "quillane/rep/PiSectionValues.h"
#include "quillane/surface/PiCrossContour.h"

PO_KIT_SOURCE(PoMeshCrossContour)

PoMeshCrossContour::PoMeshCrossContour() : m_nodes(std::make_unique<PiSectionNodes>()) {
  PO_KIT_CONSTRUCTOR(PoMeshCrossContour);
  PO_KIT_ADD_CATALOG_ENTRY(groupCrossContour, SoGroup, alternateRep);
  PO_KIT_ADD_FIELD(plane, (SbPlane(SbVec3f(1, 0, 0), 0)));
  PO_KIT_CONSTRUCTED(PoMeshCrossContour);
  watchField(plane);
  ownPart(groupCrossContour);
  beginWatching();
}

PoMeshCrossContour::~PoMeshCrossContour() = default;

void PoMeshCrossContour::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
  PoCellFilterElement::get(getState());
}

void PoMeshCrossContour::preRebuild() {
  inherited::preRebuild();
  addDataMappingInCache();
  addCellFilterInCache();
}

void PoMeshCrossContour::rebuild() {
  preRebuild();
  clearZelNodes();
  if (const PbMesh3D* mesh = drawnMesh()) {
    PiRebuildScope scope;
    nodes().group = new SoGroup;
    mesh->meshCrossContour(this);
  }
  setAppearancePart("material", nodes().material);
  setPart("groupCrossContour", nodes().group);
  deleteTransparencyParts(m_currentDataMapping, nodes().material, nodes().materialBinding, nodes().group);
  clearZelNodes();
  postRebuild();
}

void PoMeshCrossContour::cutOutside(const PbMesh3D& mesh) {
  if (!nodes().group) return;
  PiSectionValues values(mesh, valuesIndex.getValue());
  const bool isMapped = m_currentColoring != COLOR_INHERITED && values.areThere();
  m_currentColoring = isMapped ? COLOR_MAPPING : COLOR_INHERITED;
  if (!isMapped) values = PiSectionValues(mesh, -1);
  crossContour().cut(mesh, PiSectionPlane(plane.getValue()), values.ofNodes, getCellFilter(),
                     valuesIndexForCellFilter.getValue());
  PiSectionBuilder({m_currentColoring, values.ofCells, m_currentDataMapping}, nodes(), *m_nodes)
      .buildLines(crossContour().section);
}

void PoMeshCrossContour::regularGrid3DCrossContour(const PbRegularCartesianGrid3D* mesh) { cutOutside(*mesh); }
void PoMeshCrossContour::paralCartGrid3DCrossContour(const PbParalCartesianGrid3D* mesh) { cutOutside(*mesh); }
void PoMeshCrossContour::cartGrid3DCrossContour(const PbCartesianGrid3D* mesh) { cutOutside(*mesh); }
void PoMeshCrossContour::indexedMeshCrossContour(const PbIndexedMesh3D* mesh) { cutOutside(*mesh); }
