// The surface that a volume kit keeps between rebuilds: its nodes, and what colours it. PoMesh3DLevelSurf.cpp makes it.

#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoMesh3D.h>

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoTextureCoordinate2.h>
#include <Inventor/nodes/SoTextureCoordinateBinding.h>

#include <algorithm>
#include <span>

#include "quillane/emit/PiColorWriter.h"
#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiMeshBuffers.h"
#include "quillane/rep/PiMeshInputs.h"
#include "quillane/rep/PiSurfaceStore.h"

namespace {

void removeFrom(SoGroup& group, SoNode* node) {
  const int place = node ? group.findChild(node) : -1;
  if (place >= 0) group.removeChild(place);
}

void insertAt(SoGroup& group, SoNode* node, int place) {
  group.insertChild(node, std::min(place, group.getNumChildren()));
}

template <class Binding>
void setBinding(Binding& node, int value) {
  if (node.value.getValue() != value) node.value = value;
}

/// Whether a node that was made in an earlier rebuild still stands where it was put.
bool isStillThere(SoGroup* group, SoNode* node) { return !node || (group && group->findChild(node) >= 0); }

}  // namespace

// --- nodes ----------------------------------------------------------------------------------------------------------

void PoMesh3D::startSurface() {
  PiSurfaceStore& surface = *m_surface;
  PiMeshNodes& made = nodes();
  SoGroup* group = surface.group.get();
  bool isWhole = group && made.group == group;
  // The group is in the hands of the application, too.
  for (SoNode* node :
       std::initializer_list<SoNode*>{made.shapeHints, made.materialBinding, made.normalBinding, made.normal,
                                      made.textureCoordinateBinding, made.textureCoordinate})
    isWhole = isWhole && isStillThere(group, node);
  if (!isWhole) {
    clearZelNodes();
    surface.forget();
    surface.group.reset(new SoGroup);
    made.group = surface.group.get();
    insertDefaultShapeHints();
  }
  if (made.shapeHints && made.shapeHints->creaseAngle.getValue() != creaseAngle.getValue())
    made.shapeHints->creaseAngle = creaseAngle.getValue();
}

void PoMesh3D::updateSurfaceShapeBindings(int perPart) {
  PiMeshNodes& made = nodes();
  SoGroup* group = made.group;
  const int index = valuesIndex.getValue();
  const bool arePerCell = index >= 0 && m_currentMesh3D && m_currentMesh3D->getValuesBinding(index) == PbMesh::PER_CELL;
  if (!m_currentMesh3D || !hasValuesToColor(m_currentMesh3D) ||
      (arePerCell ? m_currentMesh3D->getNumValues(index) < m_currentMesh3D->getNumCells()
                  : !findNodeValues(*m_currentMesh3D, index)))
    m_currentColoring = COLOR_INHERITED;
  if (arePerCell && m_currentColoring != COLOR_INHERITED) m_currentColoring = COLOR_MAPPING;
  if (!group) return;

  if (m_previousColoring == COLOR_CONTOURING) {
    clearZelNodes();
    group->removeAllChildren();
    made.group = group;
    insertDefaultShapeHints();
  }

  if (m_currentColoring == COLOR_CONTOURING) {
    // The bands bring nodes of their own.
    m_surface->material.reset(new SoMaterial);
    made.material = m_surface->material.get();
  } else if (m_currentColoring == COLOR_INHERITED || m_currentColoring == COLOR_TEXTURE_CONTOURING) {
    removeFrom(*group, made.materialBinding);
    made.materialBinding = nullptr;
    made.material = nullptr;
    m_surface->material.reset();
  } else {
    if (!made.materialBinding) {
      made.materialBinding = new SoMaterialBinding;
      insertAt(*group, made.materialBinding, 1);
    }
    if (!made.material) {
      m_surface->material.reset(new SoMaterial);
      made.material = m_surface->material.get();
    }
    setBinding(*made.materialBinding, !arePerCell ? SoMaterialBinding::PER_VERTEX_INDEXED
                                      : perPart   ? SoMaterialBinding::PER_PART
                                                  : SoMaterialBinding::PER_FACE);
  }

  if (m_currentColoring == COLOR_TEXTURE_CONTOURING) {
    if (!made.textureCoordinateBinding) {
      made.textureCoordinateBinding = new SoTextureCoordinateBinding;
      insertAt(*group, made.textureCoordinateBinding, 1);
      made.textureCoordinateBinding->value = SoTextureCoordinateBinding::PER_VERTEX_INDEXED;
    }
    if (!made.textureCoordinate) {
      made.textureCoordinate = new SoTextureCoordinate2;
      insertAt(*group, made.textureCoordinate, 1);
    }
  } else {
    removeFrom(*group, made.textureCoordinateBinding);
    removeFrom(*group, made.textureCoordinate);
    made.textureCoordinateBinding = nullptr;
    made.textureCoordinate = nullptr;
    made.texture = nullptr;
  }

  const SbVec3f overall = getOverallNormal();
  if (overall == SbVec3f(0, 0, 0)) return;
  if (!made.normalBinding) {
    made.normalBinding = new SoNormalBinding;
    insertAt(*group, made.normalBinding, 3);
  }
  setBinding(*made.normalBinding, SoNormalBinding::OVERALL);
  if (!made.normal) {
    made.normal = new SoNormal;
    insertAt(*group, made.normal, group->findChild(made.normalBinding) + 1);
  }
  if (made.normal->vector.getNum() != 1 || made.normal->vector[0] != overall) made.normal->vector.setValue(overall);
}

void PoMesh3D::showSurface(const char* groupPart) {
  PiSurfaceStore& surface = *m_surface;
  setAppearancePart("texture2", nodes().texture);
  setAppearancePart("material", nodes().material);
  setPart(groupPart, nodes().group);
  SoShape* reduced =
      deleteTransparencyParts(m_currentDataMapping, nodes().material, nodes().materialBinding, nodes().group);
  if (!reduced) return;
  surface.isReduced = true;
  // Normals of facets are counted along the facets that are left.
  if (nodes().normal && nodes().normalBinding && nodes().normalBinding->value.getValue() != SoNormalBinding::OVERALL &&
      reduced->isOfType(SoIndexedShape::getClassTypeId())) {
    makeLevelSurfNormals(*static_cast<SoIndexedShape*>(reduced));
    surface.normalsKey.reset();
  }
}

void PoMesh3D::setSectionBlocks(std::shared_ptr<const PiCellBlocks> blocks, const PiSectionPlane& plane) {
  m_surface->blocks = std::move(blocks);
  m_surface->plane = plane;
}

void PoMesh3D::removeSurface(const char* groupPart) {
  clearZelNodes();
  m_surface->forget();
  setAppearancePart("texture2", nullptr);
  setAppearancePart("material", nullptr);
  setPart(groupPart, nullptr);
}

// --- passes ---------------------------------------------------------------------------------------------------------

/// Puts coordinates and shape behind the other nodes, in place of what the last rebuild showed without its transparent
/// parts.
void PoMesh3D::placeShape() {
  PiSurfaceStore& surface = *m_surface;
  SoGroup& group = *surface.group;
  if (surface.isReduced) {
    for (int child = group.getNumChildren() - 1; child >= 0; --child)
      if (group.getChild(child)->isOfType(SoShape::getClassTypeId())) group.removeChild(child);
    surface.isReduced = false;
    surface.colorsKey.reset();
  }
  SoNode* const wanted[2] = {surface.coordinate.get(), surface.shape.get()};
  const int numChildren = group.getNumChildren();
  if (numChildren >= 2 && group.getChild(numChildren - 2) == wanted[0] && group.getChild(numChildren - 1) == wanted[1])
    return;
  for (SoNode* node : wanted) {
    removeFrom(group, node);
    group.addChild(node);
  }
}

void PoMesh3D::updateLevelSurfPointValues(const float* colorValues) {
  PiGrowBuffer<float>& result = m_surface->pointValues;
  result.reset(m_surface->points.size());
  std::size_t i = 0;
  for (const PiSurfacePoint& point : m_surface->points.points()) {
    const float valueA = colorValues[point.a], valueB = colorValues[point.b];
    // At an end the other end doesn't count, be it infinite.
    result[i++] = point.t == 0 ? valueA : point.t == 1 ? valueB : valueA - point.t * (valueA - valueB);
  }
}

bool PoMesh3D::isColoredPerCell() const {
  return m_currentColoring != COLOR_INHERITED &&
         m_currentMesh3D->getValuesBinding(valuesIndex.getValue()) == PbMesh::PER_CELL;
}

void PoMesh3D::updateLevelSurfColors(const float* values) {
  PiMeshNodes& made = nodes();
  PiSurfaceStore& surface = *m_surface;
  if (!made.material || !m_currentDataMapping) {
    surface.colorsKey.reset();
    return;
  }
  const int index = valuesIndex.getValue();
  const float* colorValues = m_currentMesh3D->getValuesSet(index);
  const bool isLevelData = colorValues == values;
  if (isLevelData) setBinding(*made.materialBinding, SoMaterialBinding::OVERALL);
  const PiColorsKey key{surface.passes.topology, m_currentMesh3D->getFltDataSetId(index), index, isLevelData,
                        m_currentDataMapping->getId()};
  if (surface.colorsKey == key) return;
  surface.colorsKey = key;
  ++surface.passes.colors;

  made.material->transparency.setValue(0);
  if (isLevelData) {
    PiColorWriter(*m_currentDataMapping, *made.material, 1).set(0, getIsosurfValue());
  } else if (isColoredPerCell()) {
    PiColorWriter colors(*m_currentDataMapping, *made.material, static_cast<int>(surface.cells.size()));
    int entry = 0;
    for (const int cell : surface.cells) colors.set(entry++, colorValues[cell]);
  } else {
    updateLevelSurfPointValues(colorValues);
    PiColorWriter colors(*m_currentDataMapping, *made.material, static_cast<int>(surface.pointValues.size()));
    int entry = 0;
    for (const float value : surface.pointValues) colors.set(entry++, value);
  }
}

void PoMesh3D::updateLevelSurfTextures() {
  PiMeshNodes& made = nodes();
  PiSurfaceStore& surface = *m_surface;
  if (!made.textureCoordinate) return;
  PiTextureContouring& bands = inputs().textureContouring;
  made.texture = bands.getTexture();
  // The coordinates also depend on the isovalues, which have no id. They are cheap beside the texture, which preRebuild
  // has made anew.
  ++surface.passes.textures;
  updateLevelSurfPointValues(m_currentMesh3D->getValuesSet(valuesIndex.getValue()));
  bands.fill(*made.textureCoordinate, static_cast<int>(surface.pointValues.size()), surface.pointValues.data());
}

void PoMesh3D::updateLevelSurfContouring() {
  PiMeshNodes& made = nodes();
  PiSurfaceStore& surface = *m_surface;
  SoGroup& group = *surface.group;
  group.removeAllChildren();
  insertDefaultShapeHints();
  made.materialBinding = nullptr;
  made.normalBinding = nullptr;
  made.normal = nullptr;
  surface.normalsKey.reset();
  surface.colorsKey.reset();
  surface.isReduced = false;
  if (surface.points.size() == 0 || !m_currentDataMapping) return;

  ++surface.passes.contouring;
  updateLevelSurfPointValues(m_currentMesh3D->getValuesSet(valuesIndex.getValue()));
  PiContouringFilled& bands = surface.contouring;
  bands.setIsovaluesList(m_currentIsovaluesList);
  bands.setDataMapping(m_currentDataMapping);
  bands.initGeometry();
  bands.setPoints(static_cast<int>(surface.points.size()), surface.coordinate.get());
  const SoMFInt32& field = surface.shape->coordIndex;
  bands.addPolygons(surface.areJoined
                        ? std::span<const int>(surface.polygons.data(), surface.polygons.size())
                        : std::span<const int>(field.getValues(0), static_cast<std::size_t>(field.getNum())));
  made.materialBinding = new SoMaterialBinding;
  bands.fillSurf(surface.pointValues.data(), &group, made.material, made.materialBinding);
}
