#ifndef ORMELLE_PICURVECOLORING_H
#define ORMELLE_PICURVECOLORING_H

#include <Ormelle/PoChart.h>

#include <span>

#include "graph/chart/PiMaterialMix.h"

class PbDataMapping;
class PbMesh;
class SoMaterial;
class SoState;

/// How a chart colours the nodes of a mesh, resolved once for a call.
class PiCurveColoring {
 public:
  /// `state` may be null. What the chart, the state and the mesh hold is borrowed.
  PiCurveColoring(const PoChart& chart, SoState* state, const PbMesh& mesh);

  /// Whether there is a material at all.
  bool isColored() const { return m_material || m_values; }
  bool isPerPart() const { return m_isPerPart; }

  /// A new material, without a reference, with an entry for each node of the mesh; each node listed; or each mix of
  /// nodes. Null if there is no material, or no entry.
  SoMaterial* makeMaterial() const;
  SoMaterial* makeMaterial(std::span<const int> nodes) const;
  SoMaterial* makeMaterial(std::span<const PiMaterialMix> mixes) const;

 private:
  template <class NodeOf>
  SoMaterial* makeEntries(int num, NodeOf nodeOf) const;

  bool m_isPerPart = false;
  int m_numNodes;
  const PbDataMapping* m_mapping = nullptr;
  const float* m_values = nullptr;  ///< null unless the mapping colours
  const SoMaterial* m_material = nullptr;
};

#endif
