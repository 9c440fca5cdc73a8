#include "quillane/emit/PiSectionBuilder.h"

#include <algorithm>

#include <Inventor/nodes/SoQuadMesh.h>

#include "quillane/emit/PiColorWriter.h"

namespace {

/// The node from the last time, or a new one.
template <class Node>
Node* reuse(PiNodeRef<Node>& kept) {
  if (!kept) kept.reset(new Node);
  return kept.get();
}

void copyIndices(SoMFInt32& field, const PiGrowBuffer<int>& indices) {
  field.setNum(static_cast<int>(indices.size()));
  if (indices.empty()) return;
  std::copy(indices.begin(), indices.end(), field.startEditing());
  field.finishEditing();
}

}  // namespace

PiSectionBuilder::PiSectionBuilder(const PiSectionColoring& coloring, PiMeshNodes& nodes, PiSectionNodes& kept)
    : PiMeshEmitter(
          {coloring.cellValues && coloring.coloring != PoMesh::COLOR_INHERITED ? static_cast<int>(PoMesh::COLOR_MAPPING)
                                                                               : coloring.coloring,
           coloring.cellValues, coloring.mapping, coloring.bands},
          nodes),
      m_coloring(coloring),
      m_kept(kept) {}

void PiSectionBuilder::bind(SoMaterialBinding::Binding perCell) {
  if (m_request.coloring == PoMesh::COLOR_TEXTURE_CONTOURING)
    bindTexture();
  else if (isMapped())
    bindMaterial(m_coloring.cellValues ? perCell : SoMaterialBinding::PER_VERTEX_INDEXED);
}

void PiSectionBuilder::build(const PiSection& section) {
  if (m_request.coloring == PoMesh::COLOR_CONTOURING) {
    m_coloring.contouring->initGeometry();
    m_coloring.contouring->setPoints({section.points.data(), section.points.size()});
    m_coloring.contouring->addPolygons({section.coordIndices.data(), section.coordIndices.size()});
    emitBands(section.values);
    return;
  }
  bind(SoMaterialBinding::PER_FACE);
  emitPoints(section.points);
  auto* shape = reuse(m_kept.faces);
  m_nodes.group->addChild(shape);
  copyIndices(shape->coordIndex, section.coordIndices);
  emitColors(section.values, section.cells);
}

void PiSectionBuilder::build(const PiGridSlice& slice) {
  if (m_request.coloring == PoMesh::COLOR_CONTOURING) {
    m_coloring.contouring->setGeometryGrid(slice.numRows(), slice.numColumns());
    m_coloring.contouring->setPoints({slice.points.data(), slice.points.size()});
    emitBands(slice.values);
    return;
  }
  bind(SoMaterialBinding::PER_FACE);
  emitPoints(slice.points);
  auto* shape = new SoQuadMesh;
  m_nodes.group->addChild(shape);
  shape->verticesPerColumn = slice.numRows();
  shape->verticesPerRow = slice.numColumns();
  emitColors(slice.values, slice.cells);
}

void PiSectionBuilder::buildLines(const PiSection& section) {
  if (isMapped())
    bindMaterial(m_coloring.cellValues ? SoMaterialBinding::PER_PART : SoMaterialBinding::PER_VERTEX_INDEXED);
  emitPoints(section.points);
  auto* shape = reuse(m_kept.lines);
  m_nodes.group->addChild(shape);
  copyIndices(shape->coordIndex, section.coordIndices);
  emitColors(section.values, section.cells);
}

void PiSectionBuilder::emitBands(const PiGrowBuffer<float>& values) {
  m_coloring.contouring->setIsovaluesList(m_coloring.isovalues);
  m_coloring.contouring->setDataMapping(m_coloring.mapping);
  m_nodes.material = reuse(m_kept.material);
  m_nodes.material->transparency.setValue(0);
  m_nodes.materialBinding = new SoMaterialBinding;
  m_coloring.contouring->fillSurf(values.data(), m_nodes.group, m_nodes.material, m_nodes.materialBinding);
}

void PiSectionBuilder::emitPoints(const PiGrowBuffer<SbVec3f>& points) {
  m_nodes.coordinate = reuse(m_kept.coordinate);
  m_nodes.group->addChild(m_nodes.coordinate);
  SoMFVec3f& field = m_nodes.coordinate->point;
  field.setNum(static_cast<int>(points.size()));
  if (points.empty()) return;
  std::copy(points.begin(), points.end(), field.startEditing());
  field.finishEditing();
}

void PiSectionBuilder::emitColors(const PiGrowBuffer<float>& values, const PiGrowBuffer<int>& cells) {
  if (m_request.coloring == PoMesh::COLOR_TEXTURE_CONTOURING) {
    m_request.bands->fill(*m_nodes.textureCoordinate, static_cast<int>(values.size()), values.data());
    return;
  }
  if (!isMapped()) return;
  m_nodes.material = reuse(m_kept.material);
  m_nodes.material->transparency.setValue(0);
  const std::size_t num = m_coloring.cellValues ? cells.size() : values.size();
  PiColorWriter colors(*m_coloring.mapping, *m_nodes.material, static_cast<int>(num));
  for (std::size_t entry = 0; entry < num; ++entry)
    colors.set(static_cast<int>(entry),
               m_coloring.cellValues ? m_coloring.cellValues[static_cast<std::size_t>(cells[entry])] : values[entry]);
}
