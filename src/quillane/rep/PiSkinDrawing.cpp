#include "quillane/rep/PiSkinDrawing.h"

#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTextureCoordinate2.h>
#include <Inventor/nodes/SoTextureCoordinateBinding.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PoMesh.h>

#include <algorithm>
#include <cmath>

#include "graph/toolkit/PiQuadMeshNormals.h"
#include "quillane/emit/PiColorWriter.h"
#include "quillane/emit/PiTextureContouring.h"

namespace {

std::vector<float> isovaluesOf(const PbIsovaluesList* list) {
  if (!list) return {};
  int num = 0, isRegular;
  float min, max, step;
  const float* values = list->getIsoList(num, min, max, step, isRegular);
  return values ? std::vector<float>(values, values + num) : std::vector<float>();
}

void setBinding(SoNormalBinding& node, SoNormalBinding::Binding binding) {
  if (node.value.getValue() != binding) node.value = binding;
}

/// The last child of a type.
template <class Node>
Node* lastOf(const SoGroup& group) {
  for (int child = group.getNumChildren() - 1; child >= 0; --child)
    if (group.getChild(child)->isOfType(Node::getClassTypeId())) return static_cast<Node*>(group.getChild(child));
  return nullptr;
}

}  // namespace

void PiSkinDrawing::forget() {
  m_group.reset();
  m_normalBinding.reset();
  m_normal.reset();
  m_coordinate.reset();
  m_faces.reset();
  m_quads.clear();
  m_sides.reset();
  m_isReduced = false;
  m_drawn.reset();
  m_pointsKey.reset();
  m_facetsKey.reset();
  m_colorsKey.reset();
  m_texturesKey.reset();
  m_normalsKey.reset();
}

std::size_t PiSkinDrawing::memorySize() const {
  return (m_pointNodes.capacity() + m_usedPoints.capacity() + m_cells.capacity()) * sizeof(int) +
         m_values.capacity() * sizeof(float) + m_surfaceNormals.memorySize() + m_bands.memorySize();
}

void PiSkinDrawing::draw(const PiSkinForm& form, const PiSkinLook& look, PiMeshNodes& nodes) {
  if (m_group.get() != nodes.group) {
    forget();
    m_group.reset(nodes.group);
  }
  if (m_isReduced) m_colorsKey.reset();  // some of them are gone with what they coloured
  const bool areBands = look.coloring == PoMesh::COLOR_CONTOURING;
  updatePoints(form, look);
  updateFacets(form, !form.sides || look.values);
  if (areBands) {
    drawBands(look, nodes);
    return;
  }
  nodes.coordinate = m_coordinate.get();
  place(nodes);
  updateColors(look, nodes);
  updateTextures(look, nodes);
}

// --- points and facets ----------------------------------------------------------------------------------------------

void PiSkinDrawing::updatePoints(const PiSkinForm& form, const PiSkinLook& look) {
  // A node without a value is as good as none, where values of nodes are drawn.
  unsigned undefined = 0;
  if (!form.sides && look.values && !look.arePerCell) {
    if (m_undefinedOf != look.valuesId) {
      m_undefinedOf = look.valuesId;
      m_areSomeUndefined =
          std::any_of(look.values, look.values + form.numPoints, [](float value) { return std::isnan(value); });
    }
    if (m_areSomeUndefined) undefined = look.valuesId;
  }
  const PointsKey key{form.sides != nullptr, form.sides && form.sides->isMirrored(), form.geometryId,
                      form.sides ? form.facetsId : 0, undefined};
  if (m_coordinate && m_pointsKey == key) return;
  m_pointsKey = key;
  ++m_passes.points;

  m_sides.reset();
  m_pointNodes.clear();
  if (form.sides) {
    m_sides = *form.sides;
    m_pointNodes = form.sides->nodes();
  }
  if (!m_coordinate) m_coordinate.reset(new SoCoordinate3);
  SoMFVec3f& field = m_coordinate->point;
  field.setNum(form.numPoints);
  SbVec3f* points = form.numPoints > 0 ? field.startEditing() : nullptr;
  if (points) form.readPoints(m_pointNodes, points);
  m_drawn.emplace(points, undefined != 0 ? look.values : nullptr, form.numPoints);
  if (points) field.finishEditing();
}

void PiSkinDrawing::updateFacets(const PiSkinForm& form, bool arePolygons) {
  const FacetsKey key{arePolygons, form.facetsId, m_passes.points};
  if (m_facetsKey == key) return;
  m_facetsKey = key;
  ++m_passes.facets;

  m_quads.clear();
  m_cells.clear();
  if (!arePolygons) {
    makeSides(*form.sides);
    return;
  }
  if (!m_faces) m_faces.reset(new SoIndexedFaceSet);
  {
    PiFacetWriter facets(*m_faces, m_cells, form.numFacets);
    form.writeFacets(m_coordinate->point.getValues(0), *m_drawn, facets);
  }
}

/// Lists the points that a facet has.
void PiSkinDrawing::findUsedPoints() {
  if (m_usedPointsOf == m_passes.facets) return;
  m_usedPointsOf = m_passes.facets;
  m_usedPoints.clear();
  std::vector<bool> isUsed(static_cast<std::size_t>(numPoints()), false);
  const SoMFInt32& indices = m_faces->coordIndex;
  const std::int32_t* index = indices.getValues(0);
  for (int i = 0; i < indices.getNum(); ++i) {
    if (index[i] < 0 || isUsed[static_cast<std::size_t>(index[i])]) continue;
    isUsed[static_cast<std::size_t>(index[i])] = true;
    m_usedPoints.push_back(index[i]);
  }
}

void PiSkinDrawing::makeSides(const PiGridSides& sides) {
  for (const PiGridSide& side : sides.all()) {
    m_quads.emplace_back(new SoQuadMesh);
    SoQuadMesh& quads = *m_quads.back().get();
    quads.startIndex = side.firstPoint;
    quads.verticesPerColumn = side.numRows;
    quads.verticesPerRow = side.numColumns;
  }
}

/// Puts normals, coordinates and the shape behind the nodes that bind colours, unless they stand there.
void PiSkinDrawing::place(PiMeshNodes& nodes) {
  if (!m_normalBinding) {
    m_normalBinding.reset(new SoNormalBinding);
    m_normal.reset(new SoNormal);
  }
  std::vector<SoNode*> wanted;
  if (!nodes.normal) wanted = {m_normalBinding.get(), m_normal.get()};
  wanted.push_back(m_coordinate.get());
  if (m_quads.empty()) wanted.push_back(m_faces.get());
  for (const auto& quads : m_quads) wanted.push_back(quads.get());

  SoGroup& group = *nodes.group;
  const auto numWanted = static_cast<int>(wanted.size());
  const int first = group.getNumChildren() - numWanted;
  const auto isBinding = [&](const SoNode* child) {
    return child == nodes.shapeHints || child == nodes.materialBinding || child == nodes.textureCoordinate ||
           child == nodes.textureCoordinateBinding || child == nodes.normalBinding || child == nodes.normal;
  };
  bool isThere = first >= 0;
  for (int child = 0; isThere && child < group.getNumChildren(); ++child)
    isThere = child < first ? isBinding(group.getChild(child))
                            : group.getChild(child) == wanted[static_cast<std::size_t>(child - first)];
  m_isReduced = false;
  if (isThere) return;
  for (int child = group.getNumChildren() - 1; child >= 0; --child)
    if (!isBinding(group.getChild(child))) group.removeChild(child);
  for (SoNode* node : wanted) group.addChild(node);
}

// --- colours --------------------------------------------------------------------------------------------------------

const float* PiSkinDrawing::pointValues(const PiSkinLook& look) {
  if (m_pointNodes.empty()) return look.values;
  m_values.resize(m_pointNodes.size());
  for (std::size_t point = 0; point < m_values.size(); ++point) m_values[point] = look.values[m_pointNodes[point]];
  return m_values.data();
}

void PiSkinDrawing::updateColors(const PiSkinLook& look, PiMeshNodes& nodes) {
  if (!nodes.material || !look.values || !look.mapping) {
    m_colorsKey.reset();
    return;
  }
  const ColorsKey key{m_passes.points,       m_passes.facets, look.valuesId,
                      look.mapping->getId(), look.arePerCell, nodes.material};
  if (m_colorsKey == key) return;
  m_colorsKey = key;
  ++m_passes.colors;

  nodes.material->transparency.setValue(0);
  if (!look.arePerCell) {
    colorPoints(look, *nodes.material);
    return;
  }
  PiColorWriter colors(*look.mapping, *nodes.material, static_cast<int>(m_cells.size()));
  int entry = 0;
  for (const int cell : m_cells) colors.set(entry++, look.values[cell]);
}

/// A colour for each point, looked up for those only that are drawn: inside a mesh there are many more.
void PiSkinDrawing::colorPoints(const PiSkinLook& look, SoMaterial& material) {
  const float* values = pointValues(look);
  const int num = numPoints();
  PiColorWriter colors(*look.mapping, material, num);
  if (m_sides) {
    for (int point = 0; point < num; ++point) colors.set(point, values[point]);
  } else {
    findUsedPoints();
    for (int point = 0; point < num; ++point) colors.setUnused(point);
    for (const int point : m_usedPoints) colors.set(point, values[point]);
  }
}

void PiSkinDrawing::updateTextures(const PiSkinLook& look, PiMeshNodes& nodes) {
  if (!nodes.textureCoordinate || !look.values || !look.bands) {
    m_texturesKey.reset();
    return;
  }
  nodes.texture = look.bands->getTexture();
  TexturesKey key{m_passes.points, look.valuesId, isovaluesOf(look.isovalues), nodes.textureCoordinate};
  if (m_texturesKey == key) return;
  m_texturesKey = std::move(key);
  ++m_passes.textures;
  look.bands->fill(*nodes.textureCoordinate, numPoints(), pointValues(look));
}

void PiSkinDrawing::drawBands(const PiSkinLook& look, PiMeshNodes& nodes) {
  m_colorsKey.reset();
  m_texturesKey.reset();
  m_isReduced = false;
  ++m_passes.contouring;
  SoGroup& group = *nodes.group;
  for (int child = group.getNumChildren() - 1; child >= 0; --child)
    if (SoNode* node = group.getChild(child);
        node != nodes.shapeHints && node != nodes.normalBinding && node != nodes.normal)
      group.removeChild(child);
  nodes.textureCoordinate = nullptr;
  nodes.textureCoordinateBinding = nullptr;

  m_bands.setDataMapping(look.mapping);
  m_bands.setIsovaluesList(look.isovalues);
  m_bands.initGeometry();
  m_bands.setPoints(numPoints(), m_coordinate.get());
  const SoMFInt32& indices = m_faces->coordIndex;
  m_bands.addPolygons({indices.getValues(0), static_cast<std::size_t>(indices.getNum())});
  m_bands.fillSurf(pointValues(look), nodes.group, nodes.material, nullptr);
  nodes.materialBinding = lastOf<SoMaterialBinding>(group);
  nodes.coordinate = lastOf<SoCoordinate3>(group);
  if (nodes.normal) return;
  m_normalBinding.reset(new SoNormalBinding);
  m_normal.reset(new SoNormal);
  const int place = std::max(0, group.findChild(nodes.coordinate));
  group.insertChild(m_normal.get(), place);
  group.insertChild(m_normalBinding.get(), place);
}

// --- light ----------------------------------------------------------------------------------------------------------

void PiSkinDrawing::light(const PiSkinLook& look, PiMeshNodes& nodes, bool isReduced) {
  m_isReduced = isReduced;
  if (nodes.normal) return;
  const bool areBands = look.coloring == PoMesh::COLOR_CONTOURING;
  const bool areSides = !areBands && m_sides;
  const NormalsKey key{m_passes.points, m_passes.facets, !areSides, areSides ? 0 : look.creaseAngle};
  if (areBands || isReduced) m_normalsKey.reset();
  if (m_normalsKey == key) return;
  ++m_passes.normals;
  if (!areBands && (areSides || !isReduced)) m_normalsKey = key;
  if (areSides) {
    lightSides();
    return;
  }
  auto* shape = lastOf<SoIndexedFaceSet>(*nodes.group);
  if (shape && nodes.coordinate) lightFacets(*nodes.coordinate, *shape, look.creaseAngle);
}

/// A normal for each point, that of its side as smooth as it can be.
void PiSkinDrawing::lightSides() {
  setBinding(*m_normalBinding, SoNormalBinding::PER_VERTEX_INDEXED);
  SoMFVec3f& field = m_normal->vector;
  field.setNum(numPoints());
  const SbVec3f* points = m_coordinate->point.getValues(0);
  SbVec3f* normals = field.startEditing();
  for (const PiGridSide& side : m_sides->all())
    PiQuadMeshNormals::fill(points + side.firstPoint, side.numRows, side.numColumns, normals + side.firstPoint);
  field.finishEditing();
  for (std::size_t s = 0; s < m_quads.size(); ++s) {
    const PiGridSide& side = m_sides->all()[s];
    auto* property = new SoVertexProperty;
    m_quads[s]->vertexProperty = property;
    property->normalBinding = SoVertexProperty::PER_VERTEX;
    property->normal.setValues(0, side.numRows * side.numColumns, field.getValues(side.firstPoint));
  }
}

void PiSkinDrawing::lightFacets(SoCoordinate3& coordinate, SoIndexedFaceSet& shape, float creaseAngle) {
  const auto spanOf = [](const auto& field) {
    return std::span(field.getValues(0), static_cast<std::size_t>(field.getNum()));
  };
  m_surfaceNormals.make(spanOf(shape.coordIndex), spanOf(coordinate.point), false, creaseAngle);
  setBinding(*m_normalBinding, creaseAngle > 0 ? SoNormalBinding::PER_VERTEX_INDEXED : SoNormalBinding::PER_FACE);
  const auto normals = m_surfaceNormals.normals();
  m_normal->vector.setValues(0, static_cast<int>(normals.size()), normals.data());
  m_normal->vector.setNum(static_cast<int>(normals.size()));
  const auto indices = m_surfaceNormals.normalIndices();
  if (!indices.empty()) {
    shape.normalIndex.setValues(0, static_cast<int>(indices.size()), indices.data());
    shape.normalIndex.setNum(static_cast<int>(indices.size()));
  } else if (shape.normalIndex.getNum() != 1 || shape.normalIndex[0] != -1) {
    shape.normalIndex.setValue(-1);  // that of the point
  }
}
