#include "graph/chart/PiCurveColoring.h"

#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PoDataMappingElement.h>

#include <vector>

#include "quillane/emit/PiColorWriter.h"
#include "quillane/mesh/PiNodeValues.h"

PiCurveColoring::PiCurveColoring(const PoChart& chart, SoState* state, const PbMesh& mesh)
    : m_isPerPart(chart.getColorBinding() == PoChart::PER_PART), m_numNodes(mesh.getNumNodes()) {
  const PoChart::ColorSource source = chart.getColorSource();
  if (source == PoChart::COLOR_NONE_SOURCE || chart.getColorBinding() == PoChart::INHERITED) return;
  if (source == PoChart::COLOR_MAPPING_SOURCE) {
    m_mapping = state ? PoDataMappingElement::get(state) : nullptr;
    m_values = m_mapping ? findNodeValues(mesh, chart.colorValuesIndex.getValue()) : nullptr;
    if (m_values) return;
  }
  const SoNode* node = chart.material.getValue();
  if (node && node->isOfType(SoMaterial::getClassTypeId())) m_material = static_cast<const SoMaterial*>(node);
}

/// `nodeOf` gives the node of an entry.
template <class NodeOf>
SoMaterial* PiCurveColoring::makeEntries(int num, NodeOf nodeOf) const {
  if (!isColored() || num == 0) return nullptr;
  if (m_values) {
    auto* material = new SoMaterial;
    PiColorWriter writer(*m_mapping, *material, num);
    for (int e = 0; e < num; ++e) writer.set(e, m_values[nodeOf(e)]);
    return material;
  }
  std::vector<PiMaterialMix> mixes;
  mixes.reserve(static_cast<size_t>(num));
  for (int e = 0; e < num; ++e) mixes.push_back(PiMaterialMix::of(nodeOf(e)));
  return mixMaterial(*m_material, mixes);
}

SoMaterial* PiCurveColoring::makeMaterial() const {
  return makeEntries(m_numNodes, [](int entry) { return entry; });
}

SoMaterial* PiCurveColoring::makeMaterial(std::span<const int> nodes) const {
  return makeEntries(static_cast<int>(nodes.size()), [&](int entry) { return nodes[static_cast<size_t>(entry)]; });
}

SoMaterial* PiCurveColoring::makeMaterial(std::span<const PiMaterialMix> mixes) const {
  if (!isColored() || mixes.empty()) return nullptr;
  if (!m_values) return mixMaterial(*m_material, mixes);
  SoMaterial* nodeMaterial = makeMaterial();
  nodeMaterial->ref();
  SoMaterial* material = mixMaterial(*nodeMaterial, mixes);
  nodeMaterial->unref();
  return material;
}
