#include "quillane/marching/PiFlatCases.h"

#include <memory>
#include <span>

#include "quillane/marching/PiMarchingCases.h"
#include "quillane/marching/PiMarchingTable.h"

namespace {

struct KindTable {
  int numNodes, numEdges;
  std::array<int, 8> mirror;  ///< local node n of the mirrored cell is this one of the cell as it stands
  std::array<std::array<std::uint8_t, 2>, 12> ends;
  PiMarchingTable table;
};

template <class Case>
std::unique_ptr<KindTable> makeKind(std::span<const PiBaseCase> rows, const std::array<int, 8>& mirror) {
  auto kind = std::make_unique<KindTable>();
  kind->numNodes = Case::kNumNodes;
  kind->numEdges = static_cast<int>(std::size(Case::c_EdgeNod0));
  kind->mirror = mirror;
  for (std::size_t edge = 0; edge < std::size(Case::c_EdgeNod0); ++edge)
    kind->ends[edge] = {static_cast<std::uint8_t>(Case::c_EdgeNod0[edge]),
                        static_cast<std::uint8_t>(Case::c_EdgeNod1[edge])};
  kind->table.build<Case>(rows);
  return kind;
}

const KindTable& kindTable(PiSolidKind kind) {
  static const std::unique_ptr<KindTable> tables[4] = {
      makeKind<PiMarchingTetraCase>(PiBaseCases::kTetra, {1, 0, 2, 3}),
      makeKind<PiMarchingPyraCase>(PiBaseCases::kPyramid, {0, 3, 2, 1, 4}),
      makeKind<PiMarchingWedgeCase>(PiBaseCases::kWedge, {3, 4, 5, 0, 1, 2}),
      makeKind<PiMarchingCubeCase>(PiBaseCases::kCube, {4, 5, 6, 7, 0, 1, 2, 3})};
  return *tables[static_cast<std::size_t>(kind)];
}

/// The edge of the cell as it stands that is edge `edge` of the mirrored one.
std::uint8_t mirroredEdge(const KindTable& kind, int edge) {
  const auto& ends = kind.ends[static_cast<std::size_t>(edge)];
  const int first = kind.mirror[ends[0]], second = kind.mirror[ends[1]];
  for (int e = 0; e < kind.numEdges; ++e) {
    const auto& [a, b] = kind.ends[static_cast<std::size_t>(e)];
    if ((a == first && b == second) || (a == second && b == first)) return static_cast<std::uint8_t>(e);
  }
  return PiFlatCase::kEnd;
}

}  // namespace

PiFlatCases::PiFlatCases(PiSolidKind kind, bool asStrips, bool isMirrored) {
  const KindTable& source = kindTable(kind);
  m_numNodes = source.numNodes;
  m_ends = source.ends;
  const auto edgeOf = [&](int edge) {
    return isMirrored ? mirroredEdge(source, edge) : static_cast<std::uint8_t>(edge);
  };
  const unsigned numIds = 1U << source.numNodes;
  for (unsigned id = 1; id + 1 < numIds; ++id) {
    unsigned ownId = id;
    if (isMirrored) {
      ownId = 0;
      for (int node = 0; node < source.numNodes; ++node)
        if (id & (1U << source.mirror[static_cast<std::size_t>(node)])) ownId |= 1U << node;
    }
    const PiMarchingCase* found = source.table.at(static_cast<unsigned char>(ownId));
    if (!found) continue;
    PiFlatCase& flat = m_cases[id];
    const auto addEnd = [&] {
      flat.entries[flat.numEntries++] = PiFlatCase::kEnd;
      ++flat.numFacets;
    };
    for (const int edge : asStrips ? found->getEdgeStripSet() : found->getEdgeFaceSet()) {
      if (edge == -1)
        addEnd();
      else
        flat.entries[flat.numEntries++] = edgeOf(edge);
    }
    addEnd();
    unsigned seen = 0;
    std::vector<std::uint8_t> edgeAt;  // by position in the strips
    for (const int edge : found->getEdgeStripSet()) {
      if (edge == -1) continue;
      edgeAt.push_back(edgeOf(edge));
      if (!(seen & (1U << edge))) flat.edges[flat.numEdges++] = edgeAt.back();
      seen |= 1U << edge;
    }
    for (const std::vector<int>* quads : {&found->getOptQuad(), &found->getCompletion()})
      for (const int position : *quads)
        if (position != -1) m_quads[id].push_back(edgeAt[static_cast<std::size_t>(position)]);
    flat.numQuads = static_cast<std::uint8_t>(m_quads[id].size() / 4);
  }
}

const PiFlatCases& PiFlatCases::of(PiSolidKind kind, bool asStrips, bool isMirrored) {
  using Owner = std::unique_ptr<const PiFlatCases>;
  static const auto tables = [] {
    std::array<Owner, 16> made;
    for (unsigned t = 0; t < made.size(); ++t)
      made[t] = Owner(new PiFlatCases(static_cast<PiSolidKind>(t / 4), (t & 2) != 0, (t & 1) != 0));
    return made;
  }();
  return *tables[4 * static_cast<unsigned>(kind) + (asStrips ? 2 : 0) + (isMirrored ? 1 : 0)];
}
