#include <Ormelle/PoMeshLevelSurf.h>

#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoIsovaluesListElement.h>

#include <Inventor/nodes/SoGroup.h>

#include "quillane/rep/PiMeshScratch.h"

PO_KIT_SOURCE(PoMeshLevelSurf)

PoMeshLevelSurf::PoMeshLevelSurf() {
  PO_KIT_CONSTRUCTOR(PoMeshLevelSurf);
  PO_KIT_ADD_CATALOG_ENTRY(groupLevelSurf, SoGroup, alternateRep);
  PO_KIT_DEFINE_ENUM_VALUE(SurfOrientation, ORIENTED_TO_MIN);
  PO_KIT_DEFINE_ENUM_VALUE(SurfOrientation, ORIENTED_TO_MAX);
  PO_KIT_ADD_FIELD(levelValue, (0.0F));
  PO_KIT_ADD_FIELD(surfOrientation, (ORIENTED_TO_MAX));
  PO_KIT_ADD_FIELD(valuesIndexForLevel, (-1));
  PO_KIT_SET_ENUM_TYPE(surfOrientation, SurfOrientation);
  PO_KIT_CONSTRUCTED(PoMeshLevelSurf);
  for (SoField* field : std::initializer_list<SoField*>{&levelValue, &surfOrientation, &valuesIndexForLevel})
    watchField(*field);
  ownPart(groupLevelSurf);
  beginWatching();
}

PoMeshLevelSurf::~PoMeshLevelSurf() = default;

void PoMeshLevelSurf::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
  PoIsovaluesListElement::get(getState());
  PoCellFilterElement::get(getState());
}

void PoMeshLevelSurf::preRebuild() {
  inherited::preRebuild();
  addDataMappingInCache();
  addIsovaluesListInCache(0);
  addCellFilterInCache();
}

void PoMeshLevelSurf::rebuild() {
  preRebuild();
  if (PbMesh3D* mesh = drawnMesh()) {
    PiRebuildScope scope;
    startSurface();
    meshLevelSurf(mesh);
    showSurface("groupLevelSurf");
  } else {
    removeSurface("groupLevelSurf");
  }
  postRebuild();
}

int PoMeshLevelSurf::getIsosurfDataSetIndex() {
  const int index = valuesIndexForLevel.getValue();
  return index == -1 ? valuesIndex.getValue() : index;
}

const float* PoMeshLevelSurf::getIsosurfDataSet() {
  return m_currentMesh3D ? findNodeValues(*m_currentMesh3D, getIsosurfDataSetIndex()) : nullptr;
}

unsigned int PoMeshLevelSurf::getIsosurfDataSetId() {
  return m_currentMesh3D ? m_currentMesh3D->getFltDataSetId(getIsosurfDataSetIndex()) : 0;
}

float PoMeshLevelSurf::getIsosurfValue() { return levelValue.getValue(); }

int PoMeshLevelSurf::getSurfOrientation() { return surfOrientation.getValue(); }
