#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh.h>

#include <algorithm>

#include "quillane/mesh/PbMeshDataSet.h"
#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/search/PiUniqueIndices.h"

unsigned int PbMesh::sm_nextGeometryId = 1;
unsigned int PbMesh::sm_nextTopologyId = 1;

PbMesh::PbMesh(int isDataDuplicate)
    : m_isDataDuplicate(isDataDuplicate != 0), m_dataSets(std::make_unique<PiMeshDataSets>()) {
  updateGeometryId();
  updateTopologyId();
}

PbMesh::PbMesh(const PbMesh& other)
    : PbBase(other),
      m_isDataDuplicate(other.m_isDataDuplicate),
      m_numMeshNodes(other.m_numMeshNodes),
      m_numMeshCells(other.m_numMeshCells),
      m_dataSets(std::make_unique<PiMeshDataSets>(*other.m_dataSets)),
      m_geometryId(other.m_geometryId),
      m_topologyId(other.m_topologyId) {}

PbMesh& PbMesh::operator=(const PbMesh& other) {
  if (this == &other) return *this;
  m_isDataDuplicate = other.m_isDataDuplicate;
  m_numMeshNodes = other.m_numMeshNodes;
  m_numMeshCells = other.m_numMeshCells;
  *m_dataSets = *other.m_dataSets;
  m_geometryId = other.m_geometryId;
  m_topologyId = other.m_topologyId;
  resetBoxes();
  PbBase::operator=(other);
  return *this;
}

PbMesh::~PbMesh() = default;

void PbMesh::getNodesOwnerCellsInd(const PbArrayOfInt& nod_indices, PbArrayOfInt& owner_cells) const {
  owner_cells.empty();
  if (nod_indices.getNum() == 0) return;
  getNodeOwnerCellsInd(nod_indices[0], owner_cells);
  PbArrayOfInt others;
  for (int n = 1; n < nod_indices.getNum() && owner_cells.getNum() > 0; ++n) {
    getNodeOwnerCellsInd(nod_indices[n], others);
    std::sort(others.get(), others.get() + others.getNum());
    const int num = owner_cells.getNum();
    PbArrayOfInt kept(num, 10);
    for (int c = 0; c < num; ++c) {
      const int cell = owner_cells.get(c);
      if (std::binary_search(others.get(), others.get() + others.getNum(), cell)) kept.add(cell);
    }
    owner_cells = std::move(kept);
  }
}

void PbMesh::getAdjacentCellsIndByNode(int cell_index, PbArrayOfInt& adjacent_cells) const {
  adjacent_cells.empty();
  const PbCell* cell = getCell(cell_index);
  if (!cell) return;
  PbArrayOfInt nodes, owners;
  cell->getNodesIndex(nodes);
  PiUniqueIndices result(adjacent_cells);
  for (int n = 0; n < nodes.getNum(); ++n) {
    getNodeOwnerCellsInd(nodes.get(n), owners);
    for (int o = 0; o < owners.getNum(); ++o)
      if (owners.get(o) != cell_index) result.add(owners.get(o));
  }
}

void PbMesh::getAdjacentCellsIndByFacet(int cell_index, PbArrayOfInt& adjacent_cells) const {
  adjacent_cells.empty();
  const PbCell* cell = getCell(cell_index);
  if (!cell) return;
  PbArrayOfInt nodes, owners;
  PiUniqueIndices result(adjacent_cells);
  for (int facet = 0; facet < cell->getNumFacets(); ++facet) {
    cell->getNodesIndexOfFacet(facet, nodes);
    getNodesOwnerCellsInd(nodes, owners);
    for (int o = 0; o < owners.getNum(); ++o)
      if (owners.get(o) != cell_index) result.add(owners.get(o));
  }
}

SbBox3f PbMesh::getSmallestCellBox(int& cell_index) const {
  if (!m_areCellBoxesValid) updateCellBoundingBox();
  cell_index = m_smallestCellIndex;
  return m_smallestCellBox;
}

SbBox3f PbMesh::getBiggestCellBox(int& cell_index) const {
  if (!m_areCellBoxesValid) updateCellBoundingBox();
  cell_index = m_biggestCellIndex;
  return m_biggestCellBox;
}

void PbMesh::updateCellBoundingBox() const {
  resetCellBoxes();
  for (int c = 0; c < m_numMeshCells; ++c) {
    const PbCell* cell = getCell(c);
    if (!cell) continue;
    PiFiniteBox box;
    for (int n = 0; n < cell->getNumNodes(); ++n) box.add(cell->getNodeCoord(n));
    if (box.isWhole()) compareCellBox(box.box(), c);
  }
}

void PbMesh::resetCellBoxes() const {
  m_areCellBoxesValid = 1;
  m_smallestCellBox.makeEmpty();
  m_biggestCellBox.makeEmpty();
  m_smallestCellIndex = m_biggestCellIndex = -1;
  m_smallestCellVolume = 3.4028235e38F;
  m_biggestCellVolume = -1.0F;
}

void PbMesh::compareCellBox(const SbBox3f& box, int cell_index) const {
  const SbVec3f size = box.getMax() - box.getMin();
  const float volume = size[0] * size[1] * size[2];
  if (volume < m_smallestCellVolume) {
    m_smallestCellVolume = volume;
    m_smallestCellBox = box;
    m_smallestCellIndex = cell_index;
  }
  if (volume > m_biggestCellVolume) {
    m_biggestCellVolume = volume;
    m_biggestCellBox = box;
    m_biggestCellIndex = cell_index;
  }
}

const PbCell* PbMesh::findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  m_adjacentCells.empty();
  return findContainingCellProtected(point, tolerance, pcoord, m_adjacentCells);
}

const PbCell* PbMesh::findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                         const PbCell* adjacent_cell) const {
  if (!adjacent_cell) return findContainingCell(point, tolerance, pcoord);
  if (adjacent_cell->locatePoint(point, tolerance, pcoord)) return adjacent_cell;

  // The start cell may be the very object that getCell fills, so it is known by its index from here on.
  const int start = adjacent_cell->getIndex();
  const auto holdsPoint = [&](int index) {
    const PbCell* cell = getCell(index);
    return cell && cell->locatePoint(point, tolerance, pcoord) ? cell : nullptr;
  };
  getAdjacentCellsIndByFacet(start, m_adjacentCells);
  for (int a = 0; a < m_adjacentCells.getNum(); ++a)
    if (const PbCell* found = holdsPoint(m_adjacentCells.get(a))) return found;

  static thread_local PbArrayOfInt s_nodeNeighbours;
  getAdjacentCellsIndByNode(start, s_nodeNeighbours);
  PiUniqueIndices tested(m_adjacentCells);
  for (int a = 0; a < s_nodeNeighbours.getNum(); ++a) {
    const int index = s_nodeNeighbours.get(a);
    if (!tested.add(index)) continue;
    if (const PbCell* found = holdsPoint(index)) return found;
  }
  tested.add(start);
  return findContainingCellProtected(point, tolerance, pcoord, m_adjacentCells);
}

void PbMesh::setCoordinates(const float*, const float*, const float*) {}
void PbMesh::getCoordinates(const float*&, const float*&, const float*&, int&, int&, int&) const {}
float PbMesh::getLongestEdgeLength() const { return 0; }
int PbMesh::isEmpty() const { return m_numMeshNodes < 1; }
const PbCell* PbMesh::getTopoCell(int) const { return nullptr; }

void PbMesh::print(FILE* file) const {
  std::fprintf(file, "PbMesh:: isDataDuplicate = %d\n", m_isDataDuplicate);
  std::fprintf(file, "PbMesh:: numMeshNodes = %d\n", m_numMeshNodes);
  std::fprintf(file, "PbMesh:: numMeshCells = %d\n", m_numMeshCells);
  std::fprintf(file, "PbMesh:: number of values sets = %d\n", getNumValuesSet());
  std::fprintf(file, "PbMesh:: number of strings sets = %d\n", getNumStringsSet());
  std::fprintf(file, "PbMesh:: number of vectors sets = %d\n", getNumVecsSet());
}

SbBox3f PbMesh::getBoundingBox() const {
  updateBoundingBox();
  return m_boundingBox;
}

void PbMesh::setBoundingBox(const SbBox3f& box) const {
  m_boundingBox = box;
  m_isBoundingBoxValid = 1;
}

void PbMesh::resetBoxes() const {
  m_isBoundingBoxValid = 0;
  m_areCellBoxesValid = 0;
  m_search.reset();
}

void PbMesh::setCounts(int numNodes, int numCells, int isTopologyNew) {
  const bool isSizeNew = numNodes != m_numMeshNodes || numCells != m_numMeshCells;
  m_numMeshNodes = numNodes;
  m_numMeshCells = numCells;
  resetBoxes();
  updateGeometryId();
  if (isTopologyNew) updateTopologyId();
  if (!isSizeNew) return;
  m_dataSets->strings.removeDuplicated();
  m_dataSets->vecs.removeDuplicated();
  if (m_isDataDuplicate) removeAllValuesSet();
}

void PbMesh::notifyGeometryChange() {
  setChangeType(MESH_GEOMETRY_CHANGE);
  notifyChange();
}
