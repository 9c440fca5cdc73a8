#ifndef ORMELLE_PIFILLEDBUILDER_H
#define ORMELLE_PIFILLEDBUILDER_H

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoQuadMesh.h>

#include "graph/toolkit/PiQuadMeshNormals.h"
#include "quillane/emit/PiCellValue.h"
#include "quillane/emit/PiColorWriter.h"
#include "quillane/emit/PiIndexList.h"
#include "quillane/emit/PiMeshEmitter.h"

/// Paints the cells of a surface mesh, of whatever class, under one of the plain colourings.
///
/// It appends to the group: a material binding, or the binding and coordinates of a texture; coordinates and a shape;
/// and makes the material. The shape is a SoQuadMesh for a grid and a SoIndexedFaceSet for other meshes, and for a grid
/// with cells that can't be drawn.
class PiFilledBuilder : public PiMeshEmitter {
 public:
  using PiMeshEmitter::PiMeshEmitter;

  template <PiView2D View>
  void build(const View& view);

 private:
  template <PiView2D View>
  void emitShape(const View& view, const PiDrawnNodes& drawn);
  template <PiView2D View>
  void colorCells(const View& view, const PiDrawnNodes& drawn);

  int m_numDrawnCells = 0;
};

template <PiView2D View>
void PiFilledBuilder::build(const View& view) {
  switch (m_request.coloring) {
    case PoMesh::COLOR_AVERAGE: {
      bindMaterial(View::isGrid ? SoMaterialBinding::PER_FACE : SoMaterialBinding::PER_PART);
      const PiDrawnNodes drawn = emitCoordinates(view);
      emitShape(view, drawn);
      colorCells(view, drawn);
      break;
    }
    case PoMesh::COLOR_MAPPING: {
      bindMaterial(SoMaterialBinding::PER_VERTEX_INDEXED);
      const PiDrawnNodes drawn = emitCoordinates(view);
      emitShape(view, drawn);
      colorNodes(drawn, view.numNodes());
      break;
    }
    case PoMesh::COLOR_TEXTURE_CONTOURING: {
      bindTexture();
      const PiDrawnNodes drawn = emitCoordinates(view);
      emitShape(view, drawn);
      textureNodes(view.numNodes());
      break;
    }
    default:
      emitShape(view, emitCoordinates(view));
  }
}

template <PiView2D View>
void PiFilledBuilder::emitShape(const View& view, const PiDrawnNodes& drawn) {
  m_numDrawnCells = view.numCells();
  const bool hasHoles = m_request.coloring == PoMesh::COLOR_TEXTURE_CONTOURING && m_request.bands->hasHoles();
  if constexpr (View::isGrid) {
    if (drawn.areAll() && !hasHoles && m_numDrawnCells > 0) {
      auto* shape = new SoQuadMesh;
      m_nodes.group->addChild(shape);
      shape->verticesPerColumn = view.numX();
      shape->verticesPerRow = view.numY();
      if (!m_nodes.overallNormal)
        shape->vertexProperty = PiQuadMeshNormals::ofSurface(m_nodes.coordinate->point.getValues(0), view.numX(),
                                                             view.numY(), !view.hasZ());
      return;
    }
  }
  auto* shape = new SoIndexedFaceSet;
  m_nodes.group->addChild(shape);
  PiIndexList indices;
  indices.reserve(5 * static_cast<std::size_t>(m_numDrawnCells));
  m_numDrawnCells = 0;
  view.forEachCell([&](const PiCellNodes& cell) {
    if (!drawn.hasAll(cell)) return;
    if (hasHoles && m_request.bands->isHole(m_request.values, cell.node, cell.num)) return;
    ++m_numDrawnCells;
    indices.addPart(cell.node, cell.num);
  });
  indices.handTo(shape->coordIndex);
}

template <PiView2D View>
void PiFilledBuilder::colorCells(const View& view, const PiDrawnNodes& drawn) {
  m_nodes.material = new SoMaterial;
  PiColorWriter colors(*m_request.mapping, *m_nodes.material, m_numDrawnCells);
  const PiCellValue valueOf(*m_request.mapping);
  int entry = 0;
  view.forEachCell([&](const PiCellNodes& cell) {
    if (drawn.hasAll(cell)) colors.set(entry++, valueOf(m_request.values, cell));
  });
}

#endif
