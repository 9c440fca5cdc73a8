#include "quillane/mesh/PiCurveColoring.h"

#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PoDataMappingElement.h>

#include <numeric>
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

SoMaterial* PiCurveColoring::makeMaterial(std::span<const int> nodes) const {
  if (!isColored() || nodes.empty()) return nullptr;
  if (m_values) {
    auto* material = new SoMaterial;
    PiColorWriter writer(*m_mapping, *material, static_cast<int>(nodes.size()));
    for (size_t n = 0; n < nodes.size(); ++n) writer.set(static_cast<int>(n), m_values[nodes[n]]);
    return material;
  }
  std::vector<PiMaterialMix> mixes;
  mixes.reserve(nodes.size());
  for (const int node : nodes) mixes.push_back(PiMaterialMix::of(node));
  return mixMaterial(*m_material, mixes);
}

SoMaterial* PiCurveColoring::makeMaterial(std::span<const PiMaterialMix> mixes) const {
  if (!isColored() || mixes.empty()) return nullptr;
  if (!m_values) return mixMaterial(*m_material, mixes);
  std::vector<int> nodes(static_cast<size_t>(m_numNodes));
  std::iota(nodes.begin(), nodes.end(), 0);
  SoMaterial* nodeMaterial = makeMaterial(nodes);
  nodeMaterial->ref();
  SoMaterial* material = mixMaterial(*nodeMaterial, mixes);
  nodeMaterial->unref();
  return material;
}
