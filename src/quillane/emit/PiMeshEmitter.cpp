#include "quillane/emit/PiMeshEmitter.h"

#include <Inventor/nodes/SoTextureCoordinate2.h>
#include <Inventor/nodes/SoTextureCoordinateBinding.h>

#include "quillane/emit/PiColorWriter.h"

void PiMeshEmitter::bindMaterial(SoMaterialBinding::Binding binding) {
  m_nodes.materialBinding = new SoMaterialBinding;
  m_nodes.group->addChild(m_nodes.materialBinding);
  m_nodes.materialBinding->value = binding;
}

void PiMeshEmitter::bindTexture() {
  m_nodes.textureCoordinateBinding = new SoTextureCoordinateBinding;
  m_nodes.group->addChild(m_nodes.textureCoordinateBinding);
  m_nodes.textureCoordinateBinding->value = SoTextureCoordinateBinding::PER_VERTEX_INDEXED;
  m_nodes.textureCoordinate = new SoTextureCoordinate2;
  m_nodes.group->addChild(m_nodes.textureCoordinate);
  m_nodes.texture = m_request.bands->getTexture();
}

void PiMeshEmitter::textureNodes(int numNodes) {
  m_request.bands->fill(*m_nodes.textureCoordinate, numNodes, m_request.values);
}

void PiMeshEmitter::colorNodes(const PiDrawnNodes& drawn, int numNodes) {
  m_nodes.material = new SoMaterial;
  PiColorWriter colors(*m_request.mapping, *m_nodes.material, numNodes);
  for (int node = 0; node < numNodes; ++node) {
    if (drawn.has(node))
      colors.set(node, m_request.values[node]);
    else
      colors.setUnused(node);
  }
}
