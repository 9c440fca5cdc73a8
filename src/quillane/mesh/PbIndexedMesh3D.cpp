#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbTetrahedronCell.h>
#include <Ormelle/PbWedgeCell.h>

#include "quillane/mesh/PiConnectivity.h"
#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/mesh/PiIndexedMesh.h"
#include "quillane/mesh/PiPrintArray.h"
#include "quillane/search/PiOwnerCells.h"

/// The objects that a mesh hands out as its cells.
struct PiSolidCells {
  explicit PiSolidCells(const PbMesh* mesh) : tetrahedron(mesh), pyramid(mesh), wedge(mesh), hexahedron(mesh) {}

  /// Calls `use` with the object of the cells of `size` nodes; null if there is none.
  template <class Use>
  const PbCell* with(std::size_t size, Use&& use) {
    switch (size) {
      case 4:
        return use(tetrahedron);
      case 5:
        return use(pyramid);
      case 6:
        return use(wedge);
      case 8:
        return use(hexahedron);
      default:
        return nullptr;
    }
  }

  PbTetrahedronCell tetrahedron;
  PbPyramidCell pyramid;
  PbWedgeCell wedge;
  PbHexahedronCell hexahedron;
};

PbIndexedMesh3D::PbIndexedMesh3D(int isDataDuplicate) : PbIndexedMesh3D(0, isDataDuplicate) {}

PbIndexedMesh3D::PbIndexedMesh3D(int cellSize, int isDataDuplicate)
    : PbMesh3D(isDataDuplicate),
      m_cells(std::make_unique<PiConnectivity>(3, cellSize)),
      m_cellObjects(std::make_unique<PiSolidCells>(this)) {}

PbIndexedMesh3D::PbIndexedMesh3D(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                 const int* cell_index, const int* cell_type, int isDataDuplicate)
    : PbIndexedMesh3D(isDataDuplicate) {
  setGeometry(num_nodes, x, y, z, num_cells, cell_index, cell_type);
}

PbIndexedMesh3D::PbIndexedMesh3D(const PbIndexedMesh3D& other)
    : PbMesh3D(other),
      m_x(other.m_x),
      m_y(other.m_y),
      m_z(other.m_z),
      m_cells(std::make_unique<PiConnectivity>(*other.m_cells)),
      m_cellObjects(std::make_unique<PiSolidCells>(this)) {}

PbIndexedMesh3D& PbIndexedMesh3D::operator=(const PbIndexedMesh3D& other) {
  if (this == &other) return *this;
  m_x = other.m_x;
  m_y = other.m_y;
  m_z = other.m_z;
  *m_cells = *other.m_cells;
  m_ownerCells.reset();
  m_cellRows.clear();
  PbMesh3D::operator=(other);
  return *this;
}

PbIndexedMesh3D::~PbIndexedMesh3D() = default;

void PbIndexedMesh3D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                  const int* cell_index, const int* cell_type) {
  // A mesh of one kind of cells, seen as its base, must be told their kind, too.
  storeGeometry(num_nodes, x, y, z, cell_type ? num_cells : 0, cell_index, cell_type);
}

void PbIndexedMesh3D::storeGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                    const int* cell_index, const int* cell_type) {
  if (num_nodes < 1 || !x || !y || !z) num_nodes = num_cells = 0;
  storeCoordinates(num_nodes, x, y, z);
  m_cells->set(num_nodes, num_cells, cell_index, cell_type, m_isDataDuplicate);
  m_cellRows.clear();
  deleteOwnerCellsList();
  setCounts(num_nodes, m_cells->numCells(), 1);
  notifyGeometryChange();
}

void PbIndexedMesh3D::storeCoordinates(int num_nodes, const float* x, const float* y, const float* z) {
  m_x.set(x, num_nodes, m_isDataDuplicate);
  m_y.set(y, num_nodes, m_isDataDuplicate);
  m_z.set(z, num_nodes, m_isDataDuplicate);
}

void PbIndexedMesh3D::setVertices(const float* x, const float* y, const float* z) {
  if (!x || !y || !z) return;
  storeCoordinates(m_numMeshNodes, x, y, z);
  setCounts(m_numMeshNodes, m_numMeshCells, 0);
  notifyGeometryChange();
}

void PbIndexedMesh3D::setCoordinates(const float* x, const float* y, const float* z) { setVertices(x, y, z); }

void PbIndexedMesh3D::getCoordinates(const float*& x, const float*& y, const float*& z, int& num_x, int& num_y,
                                     int& num_z) const {
  x = m_x.get();
  y = m_y.get();
  z = m_z.get();
  num_x = m_numMeshNodes;
  num_y = num_z = 1;
}

void PbIndexedMesh3D::getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                                  const int*& cell_index, const int*& cell_type) const {
  num_nodes = m_numMeshNodes;
  x = m_x.get();
  y = m_y.get();
  z = m_z.get();
  num_cells = m_numMeshCells;
  cell_index = m_cells->nodes();
  cell_type = m_cells->sizes();
}

const int* PbIndexedMesh3D::getNodes(int cell_index, int& num_nodes) const {
  return PiIndexedMesh::nodesOf(*m_cells, cell_index, num_nodes);
}

const int* const* PbIndexedMesh3D::getCellRows() const { return PiIndexedMesh::updateRows(m_cellRows, *m_cells); }

SbVec3f PbIndexedMesh3D::getNodeCoord(int node) const { return SbVec3f(m_x[node], m_y[node], m_z[node]); }

void PbIndexedMesh3D::updateOwnerCellsList() const {
  if (!m_ownerCells) m_ownerCells = std::make_unique<PiOwnerCells>(*m_cells);
}

void PbIndexedMesh3D::deleteOwnerCellsList() const { m_ownerCells.reset(); }

const PiOwnerCells& PbIndexedMesh3D::ownerCells() const {
  if (!m_ownerCells) PbIndexedMesh3D::updateOwnerCellsList();
  return *m_ownerCells;
}

void PbIndexedMesh3D::getNodeOwnerCellsInd(int nod_index, PbArrayOfInt& owner_cells) const {
  PiIndexedMesh::getOwnerCells(ownerCells(), nod_index, owner_cells);
}

void PbIndexedMesh3D::getNodesOwnerCellsInd(const PbArrayOfInt& nod_indices, PbArrayOfInt& owner_cells) const {
  PiIndexedMesh::getOwnerCells(ownerCells(), nod_indices, owner_cells);
}

void PbIndexedMesh3D::getAdjacentCellsIndByFacet(int cell_index, PbArrayOfInt& adjacent_cells) const {
  findFacetNeighbours(*m_cells, ownerCells(), cell_index, adjacent_cells);
}

const PbCell* PbIndexedMesh3D::getCell(int cell_index) const {
  const std::span<const int> nodes = m_cells->whole(cell_index);
  return m_cellObjects->with(nodes.size(), [&](auto& cell) {
    cell.set(cell_index, nodes.data(), m_x.get(), m_y.get(), m_z.get());
    return &cell;
  });
}

const PbCell* PbIndexedMesh3D::getTopoCell(int cell_index) const {
  const std::span<const int> nodes = m_cells->whole(cell_index);
  return m_cellObjects->with(nodes.size(), [&](auto& cell) {
    cell.setTopology(cell_index, nodes.data());
    return &cell;
  });
}

float PbIndexedMesh3D::getLongestEdgeLength() const {
  return PiIndexedMesh::longestEdgeLength(*m_cells, [this](int node) { return getNodeCoord(node); });
}

int PbIndexedMesh3D::isEmpty() const { return m_numMeshNodes < 1 || !m_cells->nodes(); }

void PbIndexedMesh3D::print(FILE* file) const {
  PbMesh3D::print(file);
  printArray(file, "PbIndexedMesh3D", "x", m_x.get(), m_numMeshNodes);
  printArray(file, "PbIndexedMesh3D", "y", m_y.get(), m_numMeshNodes);
  printArray(file, "PbIndexedMesh3D", "z", m_z.get(), m_numMeshNodes);
  PiIndexedMesh::printCells(file, "PbIndexedMesh3D", *m_cells);
}

void PbIndexedMesh3D::updateBoundingBox() const {
  if (isBoundingBoxValid()) return;
  PiFiniteBox box;
  for (int node = 0; node < m_numMeshNodes; ++node) box.add(getNodeCoord(node));
  setBoundingBox(box.box());
}
