#include <Ormelle/PbIndexedMesh2D.h>
#include <Ormelle/PbQuadrangleCell.h>
#include <Ormelle/PbTriangleCell.h>

#include "quillane/mesh/PiConnectivity.h"
#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/mesh/PiIndexedMesh.h"
#include "quillane/mesh/PiLimits.h"
#include "quillane/mesh/PiNodesCoord.h"
#include "quillane/mesh/PiPrintArray.h"
#include "quillane/search/PiOwnerCells.h"
#include "quillane/view/PiIndexedView2D.h"

/// The objects that a mesh hands out as its cells.
struct PiSurfaceCells {
  explicit PiSurfaceCells(const PbMesh* mesh) : triangle(mesh), quadrangle(mesh) {}

  /// Calls `use` with the object of the cells of `size` nodes; null if there is none.
  template <class Use>
  const PbCell* with(std::size_t size, Use&& use) {
    if (size == 3) return use(triangle);
    if (size == 4) return use(quadrangle);
    return nullptr;
  }

  PbTriangleCell triangle;
  PbQuadrangleCell quadrangle;
};

PbIndexedMesh2D::PbIndexedMesh2D(int isDataDuplicate) : PbIndexedMesh2D(0, isDataDuplicate) {}

PbIndexedMesh2D::PbIndexedMesh2D(int cellSize, int isDataDuplicate)
    : PbMesh2D(isDataDuplicate),
      m_cells(std::make_unique<PiConnectivity>(2, cellSize)),
      m_cellObjects(std::make_unique<PiSurfaceCells>(this)) {}

PbIndexedMesh2D::PbIndexedMesh2D(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index,
                                 const int* cell_type, int isDataDuplicate)
    : PbIndexedMesh2D(num_nodes, x, y, nullptr, num_cells, cell_index, cell_type, isDataDuplicate) {}

PbIndexedMesh2D::PbIndexedMesh2D(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                 const int* cell_index, const int* cell_type, int isDataDuplicate)
    : PbIndexedMesh2D(isDataDuplicate) {
  setGeometry(num_nodes, x, y, z, num_cells, cell_index, cell_type);
}

PbIndexedMesh2D::PbIndexedMesh2D(const PbIndexedMesh2D& other)
    : PbMesh2D(other),
      m_x(other.m_x),
      m_y(other.m_y),
      m_cells(std::make_unique<PiConnectivity>(*other.m_cells)),
      m_orientation(other.m_orientation),
      m_orientFlags(other.m_orientFlags),
      m_cellObjects(std::make_unique<PiSurfaceCells>(this)) {}

PbIndexedMesh2D& PbIndexedMesh2D::operator=(const PbIndexedMesh2D& other) {
  if (this == &other) return *this;
  m_x = other.m_x;
  m_y = other.m_y;
  *m_cells = *other.m_cells;
  m_orientation = other.m_orientation;
  m_orientFlags = other.m_orientFlags;
  m_ownerCells.reset();
  m_cellRows.clear();
  PbMesh2D::operator=(other);
  return *this;
}

PbIndexedMesh2D::~PbIndexedMesh2D() = default;

void PbIndexedMesh2D::setGeometry(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index,
                                  const int* cell_type) {
  setGeometry(num_nodes, x, y, nullptr, num_cells, cell_index, cell_type);
}

void PbIndexedMesh2D::setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                  const int* cell_index, const int* cell_type) {
  // A mesh of one kind of cells, seen as its base, must be told their kind, too.
  storeGeometry(num_nodes, x, y, z, cell_type ? num_cells : 0, cell_index, cell_type, m_isDataDuplicate);
}

void PbIndexedMesh2D::storeGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                                    const int* cell_index, const int* cell_type, int copiesCells) {
  if (num_nodes < 1 || !x || !y) num_nodes = num_cells = 0;
  storeCoordinates(num_nodes, x, y, z);
  m_cells->set(num_nodes, num_cells, cell_index, cell_type, copiesCells);
  m_cellRows.clear();
  deleteOwnerCellsList();
  updateOrientFlags();
  setCounts(num_nodes, m_cells->numCells(), 1);
  notifyGeometryChange();
}

void PbIndexedMesh2D::storeCoordinates(int num_nodes, const float* x, const float* y, const float* z) {
  m_x.set(x, num_nodes, m_isDataDuplicate);
  m_y.set(y, num_nodes, m_isDataDuplicate);
  setZCoord(num_nodes, z);
}

void PbIndexedMesh2D::setVertices(const float* x, const float* y, const float* z) {
  if (!x || !y) return;
  storeCoordinates(m_numMeshNodes, x, y, z);
  updateOrientFlags();
  setCounts(m_numMeshNodes, m_numMeshCells, 0);
  notifyGeometryChange();
}

void PbIndexedMesh2D::setCoordinates(const float* x, const float* y, const float* z) { setVertices(x, y, z); }

void PbIndexedMesh2D::getCoordinates(const float*& x, const float*& y, const float*& z, int& num_x, int& num_y,
                                     int& num_z) const {
  x = m_x.get();
  y = m_y.get();
  z = getZcoord();
  num_x = m_numMeshNodes;
  num_y = num_z = 1;
}

void PbIndexedMesh2D::getGeometry(int& num_nodes, const float*& x, const float*& y, int& num_cells,
                                  const int*& cell_index, const int*& cell_type) const {
  num_nodes = m_numMeshNodes;
  x = m_x.get();
  y = m_y.get();
  num_cells = m_numMeshCells;
  cell_index = m_cells->nodes();
  cell_type = m_cells->sizes();
}

void PbIndexedMesh2D::getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                                  const int*& cell_index, const int*& cell_type) const {
  getGeometry(num_nodes, x, y, num_cells, cell_index, cell_type);
  z = getZcoord();
}

const int* PbIndexedMesh2D::getNodes(int cell_index, int& num_nodes) const {
  return PiIndexedMesh::nodesOf(*m_cells, cell_index, num_nodes);
}

const int* const* PbIndexedMesh2D::getCellRows() const { return PiIndexedMesh::updateRows(m_cellRows, *m_cells); }

SbVec3f PbIndexedMesh2D::getNodeCoord(int node) const { return SbVec3f(m_x[node], m_y[node], getNodeZ(node)); }

void PbIndexedMesh2D::updateOwnerCellsList() const {
  if (!m_ownerCells) m_ownerCells = std::make_unique<PiOwnerCells>(*m_cells);
}

void PbIndexedMesh2D::deleteOwnerCellsList() const { m_ownerCells.reset(); }

const PiOwnerCells& PbIndexedMesh2D::ownerCells() const {
  if (!m_ownerCells) PbIndexedMesh2D::updateOwnerCellsList();
  return *m_ownerCells;
}

void PbIndexedMesh2D::getNodeOwnerCellsInd(int nod_index, PbArrayOfInt& owner_cells) const {
  PiIndexedMesh::getOwnerCells(ownerCells(), nod_index, owner_cells);
}

void PbIndexedMesh2D::getNodesOwnerCellsInd(const PbArrayOfInt& nod_indices, PbArrayOfInt& owner_cells) const {
  PiIndexedMesh::getOwnerCells(ownerCells(), nod_indices, owner_cells);
}

void PbIndexedMesh2D::getAdjacentCellsIndByFacet(int cell_index, PbArrayOfInt& adjacent_cells) const {
  findFacetNeighbours(*m_cells, ownerCells(), cell_index, adjacent_cells);
}

const PbCell* PbIndexedMesh2D::getCell(int cell_index) const {
  const std::span<const int> nodes = m_cells->whole(cell_index);
  return m_cellObjects->with(nodes.size(), [&](auto& cell) {
    cell.set(cell_index, nodes.data(), m_x.get(), m_y.get(), getZcoord());
    return &cell;
  });
}

const PbCell* PbIndexedMesh2D::getTopoCell(int cell_index) const {
  const std::span<const int> nodes = m_cells->whole(cell_index);
  return m_cellObjects->with(nodes.size(), [&](auto& cell) {
    cell.setTopology(cell_index, nodes.data());
    return &cell;
  });
}

const PbCell* PbIndexedMesh2D::findContainingCellProtected(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                                           PbArrayOfInt&) const {
  return findFirstContainingCell(point, tolerance, pcoord);
}

float PbIndexedMesh2D::getLongestEdgeLength() const {
  return PiIndexedMesh::longestEdgeLength(*m_cells, [this](int node) { return getNodeCoord(node); });
}

int PbIndexedMesh2D::isEmpty() const { return m_numMeshNodes < 1 || !m_cells->nodes(); }

void PbIndexedMesh2D::print(FILE* file) const {
  PbMesh2D::print(file);
  printArray(file, "PbIndexedMesh2D", "x", m_x.get(), m_numMeshNodes);
  printArray(file, "PbIndexedMesh2D", "y", m_y.get(), m_numMeshNodes);
  printArray(file, "PbIndexedMesh2D", "z", getZcoord(), m_numMeshNodes);
  PiIndexedMesh::printCells(file, "PbIndexedMesh2D", *m_cells);
}

void PbIndexedMesh2D::updateBoundingBox() const {
  if (!isBoundingBoxValid()) setBoundingBox(boxOfNodes(viewOf(*this)));
}

void PbIndexedMesh2D::getNodesCoord(const float* z, SoMFVec3f& coords) const {
  fillNodesCoord(viewOf(*this, z), coords);
}

void PbIndexedMesh2D::getLimitIndices(PbArrayOfInt& sizes, PbArrayOfInt& indices) const {
  findLimits(*m_cells, sizes, indices);
}

SbVec3f PbIndexedMesh2D::getFirstCellNormal() const {
  const std::span<const int> nodes = m_cells->whole(0);
  if (nodes.empty()) return SbVec3f(0, 0, 0);
  const SbVec3f corner = getNodeCoord(nodes[1]);
  return (corner - getNodeCoord(nodes[0])).cross(getNodeCoord(nodes[2]) - corner);
}

PbIndexedMesh2D::ElemOrientation PbIndexedMesh2D::getElemOrientation() const { return m_orientation; }

void PbIndexedMesh2D::setElemOrientation(ElemOrientation orientation) {
  if (orientation == m_orientation) return;
  m_orientation = orientation;
  updateOrientFlags();
  notifyGeometryChange();
}

const int* PbIndexedMesh2D::getOrientFlags() const {
  return m_orientation != ORIENTATION_NONE && !m_orientFlags.empty() ? m_orientFlags.data() : nullptr;
}

void PbIndexedMesh2D::updateOrientFlags() {
  m_orientFlags.clear();
  if (m_orientation == ORIENTATION_NONE) return;
  m_orientFlags.assign(static_cast<std::size_t>(m_cells->numCells()), 0);
  m_cells->forEachWhole([this](int cell, std::span<const int> nodes) {
    const auto along = [&](int from, int to, const PbMeshArray<float>& c) { return double(c[to]) - double(c[from]); };
    const double turn = along(nodes[0], nodes[1], m_x) * along(nodes[1], nodes[2], m_y) -
                        along(nodes[0], nodes[1], m_y) * along(nodes[1], nodes[2], m_x);
    m_orientFlags[static_cast<std::size_t>(cell)] = turn > 0;
  });
}
