#include "quillane/emit/PiMeshEmitter.h"

#include "quillane/emit/PiColorWriter.h"

void PiMeshEmitter::bindMaterial(SoMaterialBinding::Binding binding) {
  m_nodes.materialBinding = new SoMaterialBinding;
  m_nodes.group->addChild(m_nodes.materialBinding);
  m_nodes.materialBinding->value = binding;
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
