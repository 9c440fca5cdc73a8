#include "quillane/marching/PiMarchingCase.h"

#include <algorithm>
#include <utility>

namespace {

int imageOf(int entry, int count, const int* table) {
  while (count-- > 0) entry = table[entry];
  return entry;
}

// `faces` is `strips` with the entries from `first` on taken from `sources`.
void reorder(std::vector<int>& faces, const std::vector<int>& strips, int first, std::initializer_list<int> sources) {
  auto face = faces.begin() + first;
  for (const int source : sources) *face++ = strips[static_cast<std::size_t>(source)];
}

}  // namespace

void PiMarchingCase::setStripSet(const std::vector<int>& strips) {
  m_edgeStripSet = strips;
  setNodeStripSet();
  setFaceSet(strips);
  setNodeFaceSet();
}

void PiMarchingCase::setFaceSet(const std::vector<int>& strips) {
  m_edgeFaceSet = strips;
  switch (strips.size()) {
    case 4:  // a quadrangle
    case 8:  // a quadrangle and a triangle
      reorder(m_edgeFaceSet, strips, 2, {3, 2});
      break;
    case 5:  // a pentagon
      reorder(m_edgeFaceSet, strips, 2, {3, 4, 2});
      break;
    case 6:  // a hexagon
      reorder(m_edgeFaceSet, strips, 2, {3, 5, 4, 2});
      break;
    case 9:
      if (strips[3] == -1) {  // a triangle and a pentagon
        reorder(m_edgeFaceSet, strips, 6, {7, 8, 6});
      } else {  // two quadrangles
        reorder(m_edgeFaceSet, strips, 2, {3, 2});
        reorder(m_edgeFaceSet, strips, 7, {8, 7});
      }
      break;
    default:  // triangles
      break;
  }
}

void PiMarchingCase::setNodeStripSet() { m_nodeStripSet = nodesOfEdges(m_edgeStripSet); }

void PiMarchingCase::setNodeFaceSet() { m_nodeFaceSet = nodesOfEdges(m_edgeFaceSet); }

std::vector<int> PiMarchingCase::nodesOfEdges(const std::vector<int>& edges) const {
  std::vector<int> nodes;
  for (const int edge : edges) {
    if (edge == -1) {
      nodes.push_back(-1);
    } else {
      nodes.push_back(getEdgeNode0(edge));
      nodes.push_back(getEdgeNode1(edge));
    }
  }
  return nodes;
}

void PiMarchingCase::rot(int count, const int* nodeRot, const int* edgeRot) {
  unsigned id = 0;
  for (int node = 0; node < getNumNodes(); ++node)
    if (m_id & (1u << node)) id |= 1u << imageOf(node, count, nodeRot);
  m_id = static_cast<unsigned char>(id);
  rotateIsoPts(count, edgeRot);
  setNodeStripSet();
  setNodeFaceSet();
}

void PiMarchingCase::rotateIsoPts(int count, const int* edgeRot) {
  for (std::vector<int>* edges : {&m_edgeStripSet, &m_edgeFaceSet})
    for (int& edge : *edges)
      if (edge != -1) edge = imageOf(edge, count, edgeRot);
}

void PiMarchingCase::revert() {
  m_id = getRevertId();
  revertOptQuad();
  revertStripSet(m_edgeStripSet);
  setFaceSet(m_edgeStripSet);
  setNodeStripSet();
  setNodeFaceSet();
}

void PiMarchingCase::revertStripSet(std::vector<int>& strips) {
  for (auto strip = strips.begin(); strip != strips.end();) {
    const auto end = std::find(strip, strips.end(), -1);
    for (auto entry = strip + 1; strip != end && end - entry >= 2; entry += 2) std::swap(entry[0], entry[1]);
    strip = end == strips.end() ? end : end + 1;
  }
}

void PiMarchingCase::revertOptQuad() {
  // The positions, flipped as the strips are: entry n is the new position of the point at position n. The flip
  // exchanges pairs, so it is its own inverse.
  std::vector<int> positions = m_edgeStripSet;
  int numPoints = 0;
  for (int& position : positions)
    if (position != -1) position = numPoints++;
  revertStripSet(positions);
  std::erase(positions, -1);
  for (std::vector<int>* quadrangles : {&m_optQuad, &m_completion}) {
    for (int& position : *quadrangles)
      if (position != -1) position = positions[static_cast<std::size_t>(position)];
    std::reverse(quadrangles->begin(), quadrangles->end());
  }
}
