// The surface that a volume kit keeps between rebuilds: its nodes, and the passes that bring them up to date.

#include <Ormelle/PbCellFilterIterator.h>
#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbTetrahedronCell.h>
#include <Ormelle/PbWedgeCell.h>
#include <Ormelle/PoCellFilter.h>
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
#include <cmath>
#include <cstdlib>
#include <string>

#include "quillane/emit/PiColorWriter.h"
#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiMeshBuffers.h"
#include "quillane/rep/PiMeshInputs.h"
#include "quillane/rep/PiSurfaceStore.h"

namespace {

/// A switch of the environment: on unless it says otherwise.
bool isEnvironmentOn(const char* name) {
  const char* text = std::getenv(name);
  if (!text) return true;
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
  return !(upper == "FALSE" || upper == "0" || upper == "NO" || upper == "OFF");
}

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

  if (m_currentColoring == COLOR_INHERITED || m_currentColoring == COLOR_TEXTURE_CONTOURING) {
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
  if (surface.isReduced || m_currentColoring == COLOR_CONTOURING) return;
  surface.isReduced = deleteTransparencyParts(m_currentDataMapping, nodes().material, nodes().materialBinding,
                                              nodes().group) != nullptr;
}

void PoMesh3D::removeSurface(const char* groupPart) {
  clearZelNodes();
  m_surface->forget();
  setAppearancePart("texture2", nullptr);
  setAppearancePart("material", nullptr);
  setPart(groupPart, nullptr);
}

// --- passes ---------------------------------------------------------------------------------------------------------

void PoMesh3D::meshLevelSurf(PbMesh3D* mesh) {
  PiSurfaceStore& surface = *m_surface;
  surface.areStrips = isEnvironmentOn("ZEL_QUILLANE_USE_TRIANGLE_STRIP_SET");
  const float* values = getIsosurfDataSet();
  m_currentMesh3D = mesh;
  updateSurfaceShapeBindings(surface.areStrips);
  updateLevelSurfTopology(values, getIsosurfValue());
  updateLevelSurfCoord(values);
  if (m_currentColoring == COLOR_CONTOURING) {
    updateLevelSurfContouring(values);
    return;
  }
  placeShape();
  updateLevelSurfColors(values);
  updateLevelSurfTextures(values);
}

void PoMesh3D::updateLevelSurfTopology(const float* values, float iso) {
  PiSurfaceStore& surface = *m_surface;
  const PbMesh3D& mesh = *m_currentMesh3D;
  const PoCellFilter* filter = getCellFilter();
  const int filterIndex = valuesIndexForCellFilter.getValue();
  const PiTopologyKey key{mesh.getTopologyId(),
                          mesh.getGeometryId(),
                          getIsosurfDataSetId(),
                          filter ? static_cast<unsigned>(filter->getNodeId()) : 0,
                          filter ? mesh.getFltDataSetId(filterIndex) : 0,
                          getIsosurfDataSetIndex(),
                          filter ? filterIndex : -1,
                          iso,
                          getSurfOrientation(),
                          surface.areStrips};
  if (surface.shape && surface.topologyKey == key) return;
  surface.topologyKey = key;
  ++surface.passes.topology;

  initSurfPointList();
  initOptQuadrangleList();
  surface.iso = iso;
  if (values) {
    adjustIsoval(mesh.getNumNodes(), values, surface.iso);
    addLevelSurfCells();
    addLevelSurfOptQuadrangle();
  }
  PiIndexList& cells = buffers().cellIndices;
  surface.cells.reset(cells.size());
  std::copy(cells.data(), cells.data() + cells.size(), surface.cells.begin());

  SoIndexedShape* shape = surface.shape.get();
  const bool isStripSet = shape && shape->isOfType(SoIndexedTriangleStripSet::getClassTypeId());
  if (!shape || isStripSet != surface.areStrips) {
    if (shape && surface.group) removeFrom(*surface.group, shape);
    surface.shape.reset(surface.areStrips ? static_cast<SoIndexedShape*>(new SoIndexedTriangleStripSet)
                                          : new SoIndexedFaceSet);
  }
  update_coord_index(surface.shape.get());
}

void PoMesh3D::addLevelSurfCells() {
  const PbMesh3D& mesh = *m_currentMesh3D;
  const float* values = getIsosurfDataSet();
  const auto numNodes = static_cast<std::size_t>(mesh.getNumNodes());
  const auto isUsable = [&](const PbCell& cell) {
    for (int n = 0; n < cell.getNumNodes(); ++n) {
      const SbVec3f point = cell.getNodeCoord(n);
      if (std::isnan(values[cell.getNodeIndex(n)]) || !std::isfinite(point[0]) || !std::isfinite(point[1]) ||
          !std::isfinite(point[2]))
        return false;
    }
    return true;
  };

  std::vector<bool> flags(numNodes);
  int ordering = -1;
  PbCellFilterIterator cells(&mesh, getCellFilter(), valuesIndexForCellFilter.getValue());
  for (cells.first(); cells.notDone(); cells.next()) {
    const PbCell* cell = cells.getCell();
    if (!cell) continue;
    if (ordering < 0) {
      ordering = cell->getOrdering();
      const bool isToMax = (getSurfOrientation() != 0) == (ordering != 0);
      for (std::size_t n = 0; n < numNodes; ++n)
        flags[n] = isToMax ? values[n] > m_surface->iso : values[n] < m_surface->iso;
    }
    if (!isUsable(*cell)) continue;
    cell->addLevelSurfPart(this, flags, m_surface->areStrips);
  }
}

void PoMesh3D::updateLevelSurfCoord(const float* values) {
  PiSurfaceStore& surface = *m_surface;
  const PbMesh3D& mesh = *m_currentMesh3D;
  if (!surface.coordinate) surface.coordinate.reset(new SoCoordinate3);
  nodes().coordinate = surface.coordinate.get();
  ++surface.passes.coordinates;
  SoMFVec3f& field = surface.coordinate->point;
  field.setNum(static_cast<int>(surface.points.size()));
  if (surface.points.size() == 0) return;
  SbVec3f* point = field.startEditing();
  for (PiSurfacePoint& cut : surface.points.points()) {
    const SbVec3f a = mesh.getNodeCoord(cut.a), b = mesh.getNodeCoord(cut.b);
    cut.t = (values[cut.a] - surface.iso) / (values[cut.a] - values[cut.b]);
    *point++ = a - cut.t * (a - b);
  }
  field.finishEditing();
}

void PoMesh3D::placeShape() {
  PiSurfaceStore& surface = *m_surface;
  SoGroup& group = *surface.group.get();
  removeFrom(group, surface.coordinate.get());
  removeFrom(group, surface.shape.get());
  group.addChild(surface.coordinate.get());
  group.addChild(surface.shape.get());
}

const std::vector<float>& PoMesh3D::updateLevelSurfPointValues(const float*, const float* colorValues) {
  std::vector<float>& result = m_surface->pointValues;
  result.resize(m_surface->points.size());
  std::size_t i = 0;
  for (const PiSurfacePoint& point : m_surface->points.points())
    result[i++] = colorValues[point.a] - point.t * (colorValues[point.a] - colorValues[point.b]);
  return result;
}

void PoMesh3D::updateLevelSurfColors(const float* values) {
  PiMeshNodes& made = nodes();
  if (!made.material || !m_currentDataMapping) return;
  const float* colorValues = m_currentMesh3D->getValuesSet(valuesIndex.getValue());
  made.material->transparency.setValue(0);
  if (colorValues == values) {
    setBinding(*made.materialBinding, SoMaterialBinding::OVERALL);
    PiColorWriter(*m_currentDataMapping, *made.material, 1).set(0, getIsosurfValue());
    return;
  }
  ++m_surface->passes.colors;
  const bool arePerCell = m_currentMesh3D->getValuesBinding(valuesIndex.getValue()) == PbMesh::PER_CELL;
  if (arePerCell) {
    PiColorWriter colors(*m_currentDataMapping, *made.material, static_cast<int>(m_surface->cells.size()));
    int entry = 0;
    for (const int cell : m_surface->cells) colors.set(entry++, colorValues[cell]);
    return;
  }
  const std::vector<float>& pointValues = updateLevelSurfPointValues(values, colorValues);
  PiColorWriter colors(*m_currentDataMapping, *made.material, static_cast<int>(pointValues.size()));
  int entry = 0;
  for (const float value : pointValues) colors.set(entry++, value);
}

void PoMesh3D::updateLevelSurfTextures(const float* values) {
  PiMeshNodes& made = nodes();
  if (!made.textureCoordinate) return;
  ++m_surface->passes.textures;
  const std::vector<float>& pointValues =
      updateLevelSurfPointValues(values, m_currentMesh3D->getValuesSet(valuesIndex.getValue()));
  made.texture = inputs().textureContouring.getTexture();
  inputs().textureContouring.fill(*made.textureCoordinate, static_cast<int>(pointValues.size()), pointValues.data());
}

void PoMesh3D::updateLevelSurfContouring(const float*) {}

void PoMesh3D::updateLevelSurfNormals() {}

// --- called back by the mesh ----------------------------------------------------------------------------------------

void PoMesh3D::regularGrid3DLevelSurf(const PbRegularCartesianGrid3D*, const float*) { addLevelSurfCells(); }
void PoMesh3D::paralCartGrid3DLevelSurf(const PbParalCartesianGrid3D*, const float*) { addLevelSurfCells(); }
void PoMesh3D::cartGrid3DLevelSurf(const PbCartesianGrid3D*, const float*) { addLevelSurfCells(); }
void PoMesh3D::indexedMeshLevelSurf(const PbIndexedMesh3D*, const float*) { addLevelSurfCells(); }
