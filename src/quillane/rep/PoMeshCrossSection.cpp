#include <Ormelle/PoMeshCrossSection.h>

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoIsovaluesListElement.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string>

#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiMeshInputs.h"
#include "quillane/rep/PiMeshScratch.h"
#include "quillane/rep/PiSectionState.h"
#include "quillane/rep/PiSectionValues.h"

PO_KIT_SOURCE(PoMeshCrossSection)

PoMeshCrossSection::PoMeshCrossSection() : m_section(std::make_unique<PiSectionState>()) {
  PO_KIT_CONSTRUCTOR(PoMeshCrossSection);
  PO_KIT_ADD_CATALOG_ENTRY(groupCrossSection, SoGroup, alternateRep);
  PO_KIT_ADD_FIELD(plane, (SbPlane(SbVec3f(1, 0, 0), 0)));
  PO_KIT_CONSTRUCTED(PoMeshCrossSection);
  watchField(plane);
  ownPart(groupCrossSection);
  beginWatching();
}

PoMeshCrossSection::~PoMeshCrossSection() = default;

void PoMeshCrossSection::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  inherited::copyContents(from, copyConnections);
  m_crossSectionMethod = static_cast<const PoMeshCrossSection*>(from)->m_crossSectionMethod;
}

void PoMeshCrossSection::setCrossSectionMethod(CrossSectionMethod method) {
  if (method == m_crossSectionMethod) return;
  m_crossSectionMethod = method;
  touchKit();
}

std::size_t PoMeshCrossSection::getMemorySize() const {
  return inherited::getMemorySize() + m_section->distances.memorySize() + m_section->intersection.memorySize() +
         m_section->slice.memorySize();
}

// --- the rebuild cycle ----------------------------------------------------------------------------------------------

void PoMeshCrossSection::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
  PoIsovaluesListElement::get(getState());
  PoCellFilterElement::get(getState());
}

void PoMeshCrossSection::preRebuild() {
  inherited::preRebuild();
  addDataMappingInCache();
  addIsovaluesListInCache(0);
  addCellFilterInCache();
}

bool PoMeshCrossSection::isIntersected(const PbMesh3D& mesh) const {
  if (m_crossSectionMethod == ISOSURFACE) return false;
  if (m_crossSectionMethod == INTERSECTION) return true;
  if (const char* text = std::getenv("ZEL_QUILLANE_CROSS_SECTION_METHOD")) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
    if (upper == "ISOSURFACE") return false;
    if (upper == "INTERSECTION") return true;
  }
  return mesh.isCrossSectionOptimal() && !getCellFilter();
}

void PoMeshCrossSection::rebuild() {
  preRebuild();
  if (PbMesh3D* mesh = drawnMesh()) {
    PiRebuildScope scope;
    const bool isIntersection = isIntersected(*mesh);
    if (isIntersection != m_section->isIntersection) removeSurface("groupCrossSection");
    m_section->isIntersection = isIntersection;
    if (isIntersection) {
      showIntersection(*mesh);
    } else {
      startSurface();
      prepareSurface();
      meshLevelSurf(mesh);
      showSurface("groupCrossSection");
    }
  } else {
    removeSurface("groupCrossSection");
    m_section->intersection.forgetMesh();
    setSectionBlocks(nullptr, m_section->distances.plane());
  }
  postRebuild();
}

// --- the level surface of the distances -----------------------------------------------------------------------------

const float* PoMeshCrossSection::getIsosurfDataSet() {
  if (!m_currentMesh3D) return nullptr;
  const int index = valuesIndex.getValue();
  const float* values =
      m_currentColoring == COLOR_INHERITED ? nullptr : PiSectionValues(*m_currentMesh3D, index).ofNodes;
  return m_section->distances.update(*m_currentMesh3D, PiSectionPlane(plane.getValue()), values,
                                     m_currentMesh3D->getFltDataSetId(index));
}

void PoMeshCrossSection::prepareSurface() {
  std::shared_ptr<const PiCellBlocks> blocks;
  const auto* mesh = dynamic_cast<const PbIndexedMesh3D*>(m_currentMesh3D);
  if (mesh && getIsosurfDataSet()) blocks = PiCellBlocks::of(*mesh);
  setSectionBlocks(std::move(blocks), m_section->distances.plane());
}

float PoMeshCrossSection::getIsosurfValue() { return plane.getValue().getDistanceFromOrigin(); }

unsigned int PoMeshCrossSection::getIsosurfDataSetId() { return m_section->distances.counter(); }

SbVec3f PoMeshCrossSection::getOverallNormal() { return plane.getValue().getNormal(); }

// --- the intersection -----------------------------------------------------------------------------------------------

void PoMeshCrossSection::showIntersection(const PbMesh3D& mesh) {
  clearZelNodes();
  PiMeshNodes& made = nodes();
  made.group = new SoGroup;
  made.normalBinding = new SoNormalBinding;
  made.group->addChild(made.normalBinding);
  made.normalBinding->value = SoNormalBinding::OVERALL;
  made.normal = new SoNormal;
  made.group->addChild(made.normal);
  made.normal->vector.setValue(plane.getValue().getNormal());
  made.shapeHints = new SoShapeHints;
  made.group->addChild(made.shapeHints);
  made.shapeHints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;

  mesh.meshCrossSection(this);

  setAppearancePart("texture2", made.texture);
  setAppearancePart("material", made.material);
  setPart("groupCrossSection", made.group);
  deleteTransparencyParts(m_currentDataMapping, made.material, made.materialBinding, made.group);
  clearZelNodes();
}

template <class Mesh>
void PoMeshCrossSection::intersect(const Mesh& mesh) {
  if (!nodes().group) return;
  PiSectionState& state = *m_section;
  PiSectionValues values(mesh, valuesIndex.getValue());
  if (!values.areThere()) m_currentColoring = COLOR_INHERITED;
  if (m_currentColoring == COLOR_INHERITED) values = PiSectionValues(mesh, -1);
  // A cell has one value, which needs neither bands nor a mean.
  if (values.ofCells) m_currentColoring = COLOR_MAPPING;
  const PiSectionPlane cut(plane.getValue());
  PiSectionBuilder builder({m_currentColoring, values.ofCells, m_currentDataMapping, &inputs().textureContouring,
                            m_currentIsovaluesList, &state.contouring},
                           nodes(), state.nodes);

  if constexpr (std::is_same_v<Mesh, PbRegularCartesianGrid3D> || std::is_same_v<Mesh, PbParalCartesianGrid3D>) {
    const PiGridSlice::Result result =
        getCellFilter() ? PiGridSlice::OBLIQUE : state.slice.cut(mesh, cut, values.ofNodes);
    if (result == PiGridSlice::OUTSIDE) return;
    if (result == PiGridSlice::SLICED) {
      ++state.numSlices;
      builder.build(state.slice);
      return;
    }
  }
  ++state.numIntersections;
  state.intersection.cut(
      mesh, sectionRequest(cut, values.ofNodes, mesh, getCellFilter(), valuesIndexForCellFilter.getValue()));
  builder.build(state.intersection.section);
}

void PoMeshCrossSection::regularGrid3DCrossSection(const PbRegularCartesianGrid3D* mesh) { intersect(*mesh); }
void PoMeshCrossSection::paralCartGrid3DCrossSection(const PbParalCartesianGrid3D* mesh) { intersect(*mesh); }
void PoMeshCrossSection::cartGrid3DCrossSection(const PbCartesianGrid3D* mesh) { intersect(*mesh); }
void PoMeshCrossSection::indexedMeshCrossSection(const PbIndexedMesh3D* mesh) { intersect(*mesh); }
void PoMeshCrossSection::hexahedronMeshCrossSection(const PbHexahedronMesh3D* mesh) { indexedMeshCrossSection(mesh); }
void PoMeshCrossSection::tetrahedronMeshCrossSection(const PbTetrahedronMesh3D* mesh) { indexedMeshCrossSection(mesh); }
