#include <Ormelle/PoMesh.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodes/SoComplexity.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoIsovaluesListElement.h>
#include <Ormelle/PoMeshElement.h>

#include "quillane/emit/PiMeshNodes.h"
#include "quillane/mesh/PiNodeValues.h"
#include "quillane/rep/PiMeshBuffers.h"
#include "quillane/rep/PiMeshInputs.h"

PO_KIT_ABSTRACT_SOURCE(PoMesh)

float (*PoMesh::m_points)[3] = nullptr;
int PoMesh::m_numPoints = 0;
int PoMesh::m_allocPoints = 0;
float* PoMesh::m_pointValues = nullptr;
int PoMesh::m_numValues = 0;
int PoMesh::m_allocPointValues = 0;

namespace {

/// The leading number of an environment variable, 0 if there is none. Unlike atof, the same in every locale.
float environmentFloat(const char* name) {
  const char* text = std::getenv(name);
  if (!text) return 0;
  text += std::strspn(text, " \t\n\r\f\v");
  if (*text == '+') ++text;
  float number = 0;
  std::from_chars(text, text + std::strlen(text), number);
  return std::isfinite(number) ? number : 0;
}

}  // namespace

// --- life -----------------------------------------------------------------------------------------------------------

PoMesh::PoMesh()
    : m_inputs(std::make_unique<PiMeshInputs>(this)),
      m_nodes(std::make_unique<PiMeshNodes>()),
      m_buffers(std::make_unique<PiMeshBuffers>()) {
  PO_KIT_CONSTRUCTOR(PoMesh);
  PO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_INHERITED);
  PO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_AVERAGE);
  PO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_MAPPING);
  PO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_CONTOURING);
  PO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_TEXTURE_CONTOURING);
  PO_KIT_ADD_FIELD(valuesIndex, (-1));
  PO_KIT_ADD_FIELD(valuesIndexForCellFilter, (-1));
  PO_KIT_ADD_FIELD(vecsIndex, (-1));
  PO_KIT_ADD_FIELD(coloringType, (COLOR_INHERITED));
  PO_KIT_ADD_FIELD(smoothTextureContouring, (FALSE));
  PO_KIT_ADD_FIELD(creaseAngle, (environmentFloat("ZEL_QUILLANE_CREASE_ANGLE")));
  PO_KIT_SET_ENUM_TYPE(coloringType, ColoringType);
  PO_KIT_CONSTRUCTED(PoMesh);

  for (SoField* field : std::initializer_list<SoField*>{&valuesIndex, &valuesIndexForCellFilter, &vecsIndex,
                                                        &coloringType, &smoothTextureContouring, &creaseAngle})
    watchField(*field);
  for (const char* part : {"material", "texture2", "complexity"}) addGeneratedAppearance(part);
  // The geometry is that of the mesh's own coordinates; only the transform follows the domain.
  setDomainUsedForRebuild(0);
}

PoMesh::~PoMesh() = default;

void PoMesh::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  inherited::copyContents(from, copyConnections);
  m_inputs->copyGiven(*static_cast<const PoMesh*>(from)->m_inputs);
}

std::size_t PoMesh::getMemorySize() const { return m_buffers->memorySize(); }

// --- data objects ---------------------------------------------------------------------------------------------------

void PoMesh::setMesh(PbMesh* mesh) {
  m_inputs->mesh.give(mesh);
  touchKit();
}

void PoMesh::setDataMapping(PbDataMapping* mapping) {
  m_inputs->dataMapping.give(mapping);
  touchKit();
}

void PoMesh::setModuleDataMapping(PbDataMapping* mapping) {
  m_inputs->moduleDataMapping.give(mapping);
  touchKit();
}

void PoMesh::setIsovaluesList(PbIsovaluesList* list) {
  m_inputs->isovaluesList.give(list);
  touchKit();
}

PbMesh* PoMesh::getMesh() const {
  if (PbMesh* given = m_inputs->mesh.given()) return given;
  return isStateValid() ? PoMeshElement::getMesh(getState()) : nullptr;
}

const PbDataMapping* PoMesh::getDataMapping() const {
  if (const PbDataMapping* given = m_inputs->dataMapping.given()) return given;
  return isStateValid() ? PoDataMappingElement::get(getState()) : nullptr;
}

const PbDataMapping* PoMesh::getModuleDataMapping() const {
  if (const PbDataMapping* given = m_inputs->moduleDataMapping.given()) return given;
  return isStateValid() ? PoDataMappingElement::get(getState()) : nullptr;
}

const PbIsovaluesList* PoMesh::getIsovaluesList() const {
  if (const PbIsovaluesList* given = m_inputs->isovaluesList.given()) return given;
  return isStateValid() ? PoIsovaluesListElement::get(getState()) : nullptr;
}

const PoCellFilter* PoMesh::getCellFilter() const {
  return isStateValid() ? PoCellFilterElement::get(getState()) : nullptr;
}

void PoMesh::basicObjectChange(PbBase* object) {
  inherited::basicObjectChange(object);
  if (!m_inputs->slots.holds(object)) return;
  if (object->getChangeType() == PbBase::OBJECT_DELETED) {
    // Everything that names the object is cleared before anything is rebuilt.
    m_inputs->slots.forget(object);
    forgetCurrentObjects();
  }
  PbBase* held = object;
  manageBasicObjectChange(object, &held);
}

void PoMesh::forgetCurrentObjects() {
  m_currentMesh = nullptr;
  m_currentDataMapping = nullptr;
  m_currentModuleDataMapping = nullptr;
  m_currentIsovaluesList = nullptr;
}

// --- the rebuild cycle ----------------------------------------------------------------------------------------------

void PoMesh::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoMeshElement::getMesh(getState());
}

void PoMesh::addInAllCache(int elementStackIndex) {
  // Also when the cache is still valid: then this rebuild may depend on more than the last one. Twice does no harm.
  if (isStateValid() && getAllCache()) getAllCache()->addElement(getState()->getConstElement(elementStackIndex));
}

void PoMesh::addDataMappingInCache() {
  if (coloringType.getValue() == COLOR_INHERITED || m_inputs->dataMapping.given()) return;
  addInAllCache(PoDataMappingElement::getClassStackIndex());
}

void PoMesh::addIsovaluesListInCache(int force) {
  const int asked = coloringType.getValue();
  if (!force && asked != COLOR_CONTOURING && asked != COLOR_TEXTURE_CONTOURING) return;
  if (!m_inputs->isovaluesList.given()) addInAllCache(PoIsovaluesListElement::getClassStackIndex());
}

void PoMesh::addCellFilterInCache() { addInAllCache(PoCellFilterElement::getClassStackIndex()); }

void PoMesh::preRebuild() {
  inherited::preRebuild();
  if (!m_inputs->mesh.given()) addInAllCache(PoMeshElement::getClassStackIndex());

  const bool isTraversed = isStateValid() != 0;
  SoState* state = isTraversed ? getState() : nullptr;
  const PbDataMapping* mappingOnState = state ? PoDataMappingElement::get(state) : nullptr;
  m_currentDataMapping = m_inputs->dataMapping.resolve(isTraversed, mappingOnState);
  m_currentModuleDataMapping = m_inputs->moduleDataMapping.resolve(isTraversed, mappingOnState);
  m_currentIsovaluesList =
      m_inputs->isovaluesList.resolve(isTraversed, state ? PoIsovaluesListElement::get(state) : nullptr);
  m_currentMesh = m_inputs->mesh.resolve(isTraversed, state ? PoMeshElement::getMesh(state) : nullptr);

  m_currentColoring = coloringType.getValue();
  if (m_currentColoring < COLOR_INHERITED || m_currentColoring > COLOR_TEXTURE_CONTOURING)
    m_currentColoring = COLOR_INHERITED;
  const bool isContouring = m_currentColoring == COLOR_CONTOURING || m_currentColoring == COLOR_TEXTURE_CONTOURING;
  if (isContouring && !m_currentIsovaluesList) m_currentColoring = COLOR_MAPPING;
  setTextureQuality();
  if (m_currentColoring == COLOR_TEXTURE_CONTOURING) {
    PiTextureContouring& bands = m_inputs->textureContouring;
    bands.setDataMapping(m_currentDataMapping);
    bands.setIsovaluesList(m_currentIsovaluesList);
    bands.buildTexture();
  }
  if (!m_currentDataMapping || !hasValuesToColor(m_currentMesh)) m_currentColoring = COLOR_INHERITED;
}

bool PoMesh::hasValuesToColor(const PbMesh* mesh) const {
  const int index = valuesIndex.getValue();
  return mesh && index >= 0 && mesh->getValuesSet(index);
}

const float* PoMesh::findNodeValues(const PbMesh& mesh, int index) {
  return index < 0 ? nullptr : ::findNodeValues(mesh, index);
}

void PoMesh::setTextureQuality() {
  // Texels of bands must not be blended, or the bands are blurred.
  float quality = 0.5F;
  if (m_currentColoring == COLOR_TEXTURE_CONTOURING) quality = smoothTextureContouring.getValue() ? 1.0F : 0.1F;
  auto* complexity = static_cast<SoComplexity*>(getPart("appearance.complexity", TRUE));
  if (complexity && complexity->textureQuality.getValue() != quality) complexity->textureQuality = quality;
}

void PoMesh::postRebuild() {
  inherited::postRebuild();
  if (m_currentColoring == COLOR_TEXTURE_CONTOURING) {
    // The texture is multiplied with the material.
    auto* material = static_cast<SoMaterial*>(getPart("appearance.material", TRUE));
    if (material) material->diffuseColor = SbColor(1, 1, 1);
  }
  m_previousColoring = m_currentColoring;
}

void PoMesh::setAppearancePart(const char* name, SoNode* node) {
  SbString path("appearance.");
  path += name;
  if (node || getPart(path.getString(), FALSE)) setPart(path.getString(), node);
}

void PoMesh::clearZelNodes() { *m_nodes = PiMeshNodes(); }

void PoMesh::insertDefaultShapeHints() {
  m_nodes->shapeHints = new SoShapeHints;
  m_nodes->group->addChild(m_nodes->shapeHints);
  m_nodes->shapeHints->vertexOrdering = SoShapeHints::CLOCKWISE;
  m_nodes->shapeHints->creaseAngle = creaseAngle.getValue();
}
