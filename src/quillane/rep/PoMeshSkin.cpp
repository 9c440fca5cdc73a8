#include <Ormelle/PoMeshSkin.h>

#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoIsovaluesListElement.h>

#include <Inventor/nodes/SoTexture2.h>

#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiMeshInputs.h"
#include "quillane/rep/PiMeshScratch.h"
#include "quillane/rep/PiSkinDrawing.h"
#include "quillane/surface/PiMeshSkin.h"
#include "quillane/surface/PiSkinFacets.h"
#include "quillane/view/PiView3D.h"

PO_KIT_SOURCE(PoMeshSkin)

PoMeshSkin::PoMeshSkin() : m_drawing(std::make_unique<PiSkinDrawing>()) {
  PO_KIT_CONSTRUCTOR(PoMeshSkin);
  PO_KIT_ADD_CATALOG_ENTRY(groupSkin, SoGroup, alternateRep);
  PO_KIT_CONSTRUCTED(PoMeshSkin);
  ownPart(groupSkin);
  beginWatching();
}

PoMeshSkin::~PoMeshSkin() = default;

std::size_t PoMeshSkin::getMemorySize() const { return inherited::getMemorySize() + m_drawing->memorySize(); }

void PoMeshSkin::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
  PoIsovaluesListElement::get(getState());
  PoCellFilterElement::get(getState());
}

void PoMeshSkin::preRebuild() {
  inherited::preRebuild();
  addDataMappingInCache();
  addIsovaluesListInCache(0);
  addCellFilterInCache();
}

void PoMeshSkin::rebuild() {
  preRebuild();
  if (const PbMesh3D* mesh = drawnMesh()) {
    PiRebuildScope scope;
    startSurface();
    mesh->meshSkin(this);
    setAppearancePart("texture2", nodes().texture);
    setAppearancePart("material", nodes().material);
    setPart("groupSkin", nodes().group);
  } else {
    removeSurface("groupSkin");
    m_drawing->forget();
  }
  postRebuild();
}

void PoMeshSkin::draw(const PbMesh3D& mesh, PiSkinForm& form) {
  form.geometryId = mesh.getGeometryId();
  PiSkinLook look;
  look.coloring = m_currentColoring;
  look.creaseAngle = creaseAngle.getValue();
  look.values = valuesToColor(mesh, look.arePerCell);
  if (look.values) {
    look.valuesId = mesh.getFltDataSetId(valuesIndex.getValue());
    look.mapping = m_currentDataMapping;
    look.isovalues = m_currentIsovaluesList;
    look.bands = &inputs().textureContouring;
  }
  m_drawing->draw(form, look, nodes());
  const bool isReduced =
      deleteTransparencyParts(look.mapping, nodes().material, nodes().materialBinding, nodes().group) != nullptr;
  m_drawing->light(look, nodes(), isReduced);
}

/// The values that updateSurfaceShapeBindings() has settled to colour with.
const float* PoMeshSkin::valuesToColor(const PbMesh3D& mesh, bool& arePerCell) const {
  if (m_currentColoring == COLOR_INHERITED) return nullptr;
  arePerCell = mesh.getValuesBinding(valuesIndex.getValue()) == PbMesh::PER_CELL;
  return mesh.getValuesSet(valuesIndex.getValue());
}

// --- sides of a grid ------------------------------------------------------------------------------------------------

namespace {

template <class View>
auto pointReader(const View& view) {
  return [&view](const std::vector<int>& nodes, SbVec3f* points) {
    auto walker = view.walker();
    if (nodes.empty()) {
      for (int node = 0; node < view.numNodes(); ++node) *points++ = walker(node);
    } else {
      for (const int node : nodes) *points++ = walker(node);
    }
  };
}

}  // namespace

template <class View>
void PoMeshSkin::drawSides(const PbMesh3D& mesh, const View& view) {
  if (!nodes().group) return;
  updateSurfaceShapeBindings(0);
  bool arePerCell = false;
  const float* values = valuesToColor(mesh, arePerCell);
  if (view.numCells() < 1 || !areOuterNodesDrawn(view, arePerCell ? nullptr : values)) {
    drawFacets(mesh, view, nullptr);
    return;
  }
  const PiGridSides sides(view.shape(), isMirroredGrid(view));
  PiSkinForm form;
  form.facetsId = mesh.getTopologyId();
  form.sides = &sides;
  form.numPoints = sides.numPoints();
  form.numFacets = static_cast<std::size_t>(sides.numFacets());
  form.readPoints = pointReader(view);
  form.writeFacets = [&](const SbVec3f*, const PiDrawnNodes&, PiFacetWriter& facets) {
    sides.forEachFacet([&](int cell, const int(&corners)[4]) { facets.add(cell, corners, false); });
  };
  draw(mesh, form);
}

void PoMeshSkin::regularGrid3DSkin(const PbRegularCartesianGrid3D* mesh) { drawSides(*mesh, viewOf(*mesh)); }
void PoMeshSkin::paralCartGrid3DSkin(const PbParalCartesianGrid3D* mesh) { drawSides(*mesh, viewOf(*mesh)); }
void PoMeshSkin::cartGrid3DSkin(const PbCartesianGrid3D* mesh) { drawSides(*mesh, viewOf(*mesh)); }

// --- facets of any cells --------------------------------------------------------------------------------------------

template <class View>
void PoMeshSkin::drawFacets(const PbMesh3D& mesh, const View& view, const PoCellFilter* filter) {
  if (!nodes().group) return;
  PiSkinForm form;
  const PiMeshSkin& skin = *mesh.getSkinTopology(filter, valuesIndexForCellFilter.getValue(), form.facetsId);
  form.numPoints = view.numNodes();
  form.numFacets = static_cast<std::size_t>(skin.getNumFacets());
  form.readPoints = pointReader(view);
  form.writeFacets = [&](const SbVec3f* points, const PiDrawnNodes& drawn, PiFacetWriter& facets) {
    forEachSkinFacet(view, points, skin,
                     [&](int cell, std::span<const int> cellNodes, std::span<const int> facetNodes, bool isReversed) {
                       if (drawn.areAll() ||
                           std::all_of(cellNodes.begin(), cellNodes.end(), [&](int node) { return drawn.has(node); }))
                         facets.add(cell, facetNodes, isReversed);
                     });
  };
  draw(mesh, form);
}

void PoMeshSkin::grid3DSkinFilter(const PbGrid3D* mesh, const PoCellFilter* filter) {
  updateSurfaceShapeBindings(0);
  if (const auto* regular = dynamic_cast<const PbRegularCartesianGrid3D*>(mesh))
    drawFacets(*mesh, viewOf(*regular), filter);
  else if (const auto* paral = dynamic_cast<const PbParalCartesianGrid3D*>(mesh))
    drawFacets(*mesh, viewOf(*paral), filter);
  else if (const auto* cartesian = dynamic_cast<const PbCartesianGrid3D*>(mesh))
    drawFacets(*mesh, viewOf(*cartesian), filter);
}

void PoMeshSkin::indexedMeshSkin(const PbIndexedMesh3D* mesh) { indexedMeshSkinFilter(mesh, getCellFilter()); }

void PoMeshSkin::indexedMeshSkinFilter(const PbIndexedMesh3D* mesh, const PoCellFilter* filter) {
  updateSurfaceShapeBindings(1);
  drawFacets(*mesh, viewOf(*mesh), filter);
}
