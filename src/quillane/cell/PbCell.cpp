#include <Inventor/SbPlane.h>
#include <Inventor/SbVec3d.h>
#include <Ormelle/PbArrayOfFloat.h>
#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbCell.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "graph/data/PiFinite.h"
#include "quillane/cell/PiCellTopology.h"
#include "quillane/cell/PiLocate.h"

namespace {

template <class Item>
const Item* findItem(std::span<const Item> items, int i) {
  return i >= 0 && i < static_cast<int>(items.size()) ? &items[static_cast<std::size_t>(i)] : nullptr;
}

// Replaces `result` by the given local nodes, as they are or, with `meshNodes`, as indices of the mesh.
void setLocalNodes(std::span<const int> nodes, PbArrayOfInt& result, const int* meshNodes = nullptr) {
  result.empty();
  for (const int node : nodes) result.add(meshNodes ? meshNodes[node] : node);
}

template <class Value>
Value sumWeighted(const float* weights, const Value* values, const int* nodes, int numNodes, Value sum) {
  if (!nodes || !values) return sum;
  for (int node = 0; node < numNodes; ++node) sum += weights[node] * values[nodes[node]];
  return sum;
}

}  // namespace

PbCell::PbCell(const PbMesh* mesh, const PiCellTopology& topology)
    : m_numFaces(static_cast<int>(topology.facets.size())),
      m_numEdges(static_cast<int>(topology.edges.size())),
      m_numNodes(topology.numNodes),
      m_topology(&topology),
      m_mesh(mesh) {
  std::fill(std::begin(m_nodes), std::end(m_nodes), SbVec3f(0.0f, 0.0f, 0.0f));
}

PbCell::~PbCell() = default;

void PbCell::setTopology(int index, const int* nodes) {
  m_index = index;
  m_nodeIndices = nodes;
}

void PbCell::setNodes(int index, const int* nodes, const float* x, const float* y, const float* z) {
  setTopology(index, nodes);
  for (int node = 0; node < m_numNodes; ++node)
    m_nodes[node].setValue(x[nodes[node]], y[nodes[node]], z ? z[nodes[node]] : 0.0f);
}

bool PbCell::areNodesFinite() const { return std::all_of(m_nodes, m_nodes + m_numNodes, isFinitePoint); }

// ---- Indices

void PbCell::getNodesIndex(PbArrayOfInt& nodes) const {
  nodes.empty();
  if (m_nodeIndices) nodes.add(m_numNodes, m_nodeIndices);
}

void PbCell::getNodesIndexOfEdge(int edge, PbArrayOfInt& nodes) const {
  const auto* ends = findItem(m_topology->edges, edge);
  if (ends && m_nodeIndices)
    setLocalNodes(*ends, nodes, m_nodeIndices);
  else
    nodes.empty();
}

void PbCell::getNodesIndexOfFacet(int facet, PbArrayOfInt& nodes) const {
  const PiFacet* found = findItem(m_topology->facets, facet);
  if (found && m_nodeIndices)
    setLocalNodes(found->corners(), nodes, m_nodeIndices);
  else
    nodes.empty();
}

const int* PbCell::getNodesLocalIndexOfEdge(int edge) const {
  const auto* ends = findItem(m_topology->edges, edge);
  return ends ? *ends : nullptr;
}

void PbCell::getNodesLocalIndexOfEdge(int edge, PbArrayOfInt& nodes) const {
  const auto* ends = findItem(m_topology->edges, edge);
  setLocalNodes(ends ? std::span<const int>(*ends) : std::span<const int>(), nodes);
}

void PbCell::getNodesLocalIndexOfFacet(int facet, PbArrayOfInt& nodes) const {
  const PiFacet* found = findItem(m_topology->facets, facet);
  setLocalNodes(found ? found->corners() : std::span<const int>(), nodes);
}

// ---- Measures

float PbCell::getLongestEdgeLength() const { return longestEdgeOf(m_topology->edges, m_nodes); }

SbBox3f PbCell::getBoundingBox() const {
  SbVec3f low(FLT_MAX, FLT_MAX, FLT_MAX), high(-FLT_MAX, -FLT_MAX, -FLT_MAX);
  for (int node = 0; node < m_numNodes; ++node) {
    if (!isFinitePoint(m_nodes[node])) continue;
    for (int axis = 0; axis < 3; ++axis) {
      low[axis] = std::min(low[axis], m_nodes[node][axis]);
      high[axis] = std::max(high[axis], m_nodes[node][axis]);
    }
  }
  return SbBox3f(low, high);
}

void PbCell::getBounds(float& xmin, float& ymin, float& zmin, float& xmax, float& ymax, float& zmax) const {
  getBoundingBox().getBounds(xmin, ymin, zmin, xmax, ymax, zmax);
}

SbVec3f PbCell::getCenter() const {
  SbVec3f sum(0.0f, 0.0f, 0.0f);
  for (int node = 0; node < m_numNodes; ++node) sum += m_nodes[node];
  return sum / static_cast<float>(m_numNodes);
}

// The divergence theorem: the volume is the sum of the cones from node 0 to the facets. The cone to the bilinear patch
// of four corners is the mean of the cones to its two pairs of triangles.
float PbCell::getVolume() const {
  if (m_topology->dimension != 3 || !areNodesFinite()) return 0.0f;
  SbVec3d from0[8];
  for (int node = 0; node < m_numNodes; ++node) from0[node] = SbVec3d(m_nodes[node]) - SbVec3d(m_nodes[0]);
  const auto triple = [&](int a, int b, int c) { return from0[a].cross(from0[b]).dot(from0[c]); };
  double sum = 0.0;
  for (const PiFacet& facet : m_topology->facets) {
    const auto& [a, b, c, d] = facet.nodes;
    if (facet.numNodes == 3)
      sum += triple(a, b, c);
    else
      sum += (triple(a, b, c) + triple(a, c, d) + triple(a, b, d) + triple(b, c, d)) / 2;
  }
  return static_cast<float>(std::fabs(sum) / 6);
}

float PbCell::getArea() const {
  if (m_topology->dimension != 2 || !areNodesFinite()) return 0.0f;
  double sum = 0.0;
  for (int node = 2; node < m_numNodes; ++node) {
    const SbVec3d first = SbVec3d(m_nodes[node - 1]) - SbVec3d(m_nodes[0]);
    sum += first.cross(SbVec3d(m_nodes[node]) - SbVec3d(m_nodes[0])).length();
  }
  return static_cast<float>(sum / 2);
}

int PbCell::getOrdering() const {
  if (m_topology->dimension != 3) return 1;
  const auto& [a, b, c] = m_topology->ordering;
  const SbVec3d origin(m_nodes[0]);
  return (SbVec3d(m_nodes[a]) - origin).cross(SbVec3d(m_nodes[b]) - origin).dot(SbVec3d(m_nodes[c]) - origin) > 0.0;
}

// ---- Values

SbVec3f PbCell::getValue(const SbVec3f& pcoord, const SbVec3f* values) const {
  float weights[8];
  getWeight(pcoord, weights);
  return getValue(weights, values);
}

float PbCell::getValue(const SbVec3f& pcoord, const float* values) const {
  float weights[8];
  getWeight(pcoord, weights);
  return getValue(weights, values);
}

float PbCell::getValue(const float* weights, const float* values) const {
  return sumWeighted(weights, values, m_nodeIndices, m_numNodes, 0.0f);
}

SbVec3f PbCell::getValue(const float* weights, const SbVec3f* values) const {
  return sumWeighted(weights, values, m_nodeIndices, m_numNodes, SbVec3f(0.0f, 0.0f, 0.0f));
}

// ---- Cuts

void PbCell::getEdgesCrossingPlane(const SbPlane& plane, PbArrayOfInt& nodesOnPlane, PbArrayOfInt& edges,
                                   PbArrayOfFloat* edgeParams) const {
  float distances[8];
  for (int node = 0; node < m_numNodes; ++node) {
    distances[node] = plane.getNormal().dot(m_nodes[node]) - plane.getDistanceFromOrigin();
    if (distances[node] == 0.0f) nodesOnPlane.add(node);
  }
  for (int edge = 0; edge < m_numEdges; ++edge) {
    const auto& [first, second] = m_topology->edges[static_cast<std::size_t>(edge)];
    const float d0 = distances[first], d1 = distances[second];
    // Not the sign of the product, which may underflow to 0.
    if (!((d0 < 0.0f && d1 > 0.0f) || (d0 > 0.0f && d1 < 0.0f))) continue;
    const int place = edges.add(edge);
    if (edgeParams) edgeParams->set(place, d0 / (d0 - d1));
  }
}

PiMarchingCase* PbCell::getMCcase(unsigned char) const { return nullptr; }

unsigned char PbCell::getIsosurfCaseId(const std::vector<bool>& flags) const {
  if (m_topology->dimension != 3 || !m_nodeIndices) return 0;
  const unsigned fullMask = (1u << m_numNodes) - 1;
  unsigned id = 0;
  for (int node = 0; node < m_numNodes; ++node) {
    const auto meshNode = static_cast<std::size_t>(m_nodeIndices[node]);
    if (meshNode < flags.size() && flags[meshNode]) id |= 1u << node;
  }
  return static_cast<unsigned char>(id == fullMask ? 0 : id);
}

// ---- Text

void PbCell::print(FILE* file) const {
  fprintf(file, "=====================print cell informations ==================== \n");
  fprintf(file, "PbCell:: m_numFaces = %d\n", m_numFaces);
  fprintf(file, "PbCell:: m_numEdges = %d\n", m_numEdges);
  fprintf(file, "PbCell:: m_numNodes = %d\n", m_numNodes);
  fprintf(file, "PbCell:: m_index = %d\n", m_index);
  for (int node = 0; node < m_numNodes; ++node)
    fprintf(file, "PbCell:: node %d : %f %f %f\n", node, m_nodes[node][0], m_nodes[node][1], m_nodes[node][2]);
}
