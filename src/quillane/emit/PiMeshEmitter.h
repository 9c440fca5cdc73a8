#ifndef ORMELLE_PIMESHEMITTER_H
#define ORMELLE_PIMESHEMITTER_H

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Ormelle/PoMesh.h>

#include "quillane/emit/PiDrawnNodes.h"
#include "quillane/emit/PiMeshNodes.h"
#include "quillane/emit/PiTextureContouring.h"
#include "quillane/view/PiView2D.h"

/// What is to be drawn of a surface mesh.
struct PiMeshRequest {
  int coloring = PoMesh::COLOR_INHERITED;      ///< a PoMesh::ColoringType
  const float* values = nullptr;               ///< one for each node; null exactly if the colouring is inherited
  const PbDataMapping* mapping = nullptr;      ///< as `values`
  const PiTextureContouring* bands = nullptr;  ///< given if the colouring is COLOR_TEXTURE_CONTOURING
};

/// The steps that drawing the cells and drawing the edges of a mesh have in common. Each appends its node to the group.
class PiMeshEmitter {
 public:
  PiMeshEmitter(const PiMeshRequest& request, PiMeshNodes& nodes) : m_request(request), m_nodes(nodes) {}

 protected:
  void bindMaterial(SoMaterialBinding::Binding binding);
  /// The texture of the bands, and the node for its coordinates.
  void bindTexture();
  /// One point for each node. Returns the nodes that can be drawn.
  template <PiView2D View>
  PiDrawnNodes emitCoordinates(const View& view);
  /// One colour for each node.
  void colorNodes(const PiDrawnNodes& drawn, int numNodes);
  /// One texture coordinate for each node.
  void textureNodes(int numNodes);

  const PiMeshRequest m_request;
  PiMeshNodes& m_nodes;
};

template <PiView2D View>
PiDrawnNodes PiMeshEmitter::emitCoordinates(const View& view) {
  const int numNodes = view.numNodes();
  m_nodes.coordinate = new SoCoordinate3;
  m_nodes.group->addChild(m_nodes.coordinate);
  SoMFVec3f& field = m_nodes.coordinate->point;
  field.setNum(numNodes);
  SbVec3f* points = field.startEditing();
  view.forEachNode([&view, points](int node, SbVec2f xy) { points[node].setValue(xy[0], xy[1], view.z(node)); });
  PiDrawnNodes drawn(points, m_request.values, numNodes);
  field.finishEditing();
  return drawn;
}

#endif
