#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbHexahedronCell.h>

#include <cmath>

#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/mesh/PiPrintArray.h"
#include "quillane/mesh/PiRowTable.h"

// Pointers to the rows of the three arrays, and to the rows of those.
struct PbCartesianGrid3D::RowTable {
  std::vector<const float*> rows[3];
  std::vector<const float* const*> planes[3];
};

PbCartesianGrid3D::PbCartesianGrid3D(int isDataDuplicate)
    : PbGrid3D(isDataDuplicate), m_hexahedron(std::make_unique<PbHexahedronCell>(this)) {}

PbCartesianGrid3D::PbCartesianGrid3D(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z,
                                     int isDataDuplicate)
    : PbCartesianGrid3D(isDataDuplicate) {
  setGeometry(num_x, num_y, num_z, x, y, z);
}

PbCartesianGrid3D::PbCartesianGrid3D(const PbCartesianGrid3D& other)
    : PbGrid3D(other),
      m_x(other.m_x),
      m_y(other.m_y),
      m_z(other.m_z),
      m_hexahedron(std::make_unique<PbHexahedronCell>(this)) {}

PbCartesianGrid3D& PbCartesianGrid3D::operator=(const PbCartesianGrid3D& other) {
  if (this == &other) return *this;
  m_x = other.m_x;
  m_y = other.m_y;
  m_z = other.m_z;
  m_rows.reset();
  PbGrid3D::operator=(other);
  return *this;
}

PbCartesianGrid3D::~PbCartesianGrid3D() = default;

void PbCartesianGrid3D::setXYZGeometry(int num_x, int num_y, int num_z, const float* x, const float* y,
                                       const float* z) {
  const int num = num_x * num_y * num_z;
  m_x.set(x, num, m_isDataDuplicate);
  m_y.set(y, num, m_isDataDuplicate);
  m_z.set(z, num, m_isDataDuplicate);
  m_rows.reset();
}

void PbCartesianGrid3D::getXYZGeometry(const float*& x, const float*& y, const float*& z) const {
  x = m_x.get();
  y = m_y.get();
  z = m_z.get();
}

void PbCartesianGrid3D::getGeometry(int& num_x, int& num_y, int& num_z, const float*& x, const float*& y,
                                    const float*& z) const {
  getDim(num_x, num_y, num_z);
  getXYZGeometry(x, y, z);
}

void PbCartesianGrid3D::getGeometry(int& num_x, int& num_y, int& num_z, const float* const* const*& x,
                                    const float* const* const*& y, const float* const* const*& z) const {
  getDim(num_x, num_y, num_z);
  x = y = z = nullptr;
  // A grid with one coordinate a line, seen as its base, has no such rows.
  if (m_numMeshNodes < 1 || m_x.getNum() != m_numMeshNodes || m_y.getNum() != m_numMeshNodes ||
      m_z.getNum() != m_numMeshNodes)
    return;
  if (!m_rows) {
    m_rows = std::make_unique<RowTable>();
    const float* arrays[3] = {m_x.get(), m_y.get(), m_z.get()};
    for (int a = 0; a < 3; ++a) {
      const float* const* rows = PiRowTable::update(m_rows->rows[a], arrays[a], m_numX * m_numY, m_numZ);
      for (int i = 0; i < m_numX; ++i) m_rows->planes[a].push_back(rows + i * m_numY);
    }
  }
  x = m_rows->planes[0].data();
  y = m_rows->planes[1].data();
  z = m_rows->planes[2].data();
}

const PbCell* PbCartesianGrid3D::getCell(int cell_index) const {
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  m_hexahedron->set(cell_index, getCellNodeIds(cell_index), m_x.get(), m_y.get(), m_z.get());
  return m_hexahedron.get();
}

const PbCell* PbCartesianGrid3D::getTopoCell(int cell_index) const {
  if (cell_index < 0 || cell_index >= m_numMeshCells) return nullptr;
  m_hexahedron->setTopology(cell_index, getCellNodeIds(cell_index));
  return m_hexahedron.get();
}

float PbCartesianGrid3D::getLongestEdgeLength() const {
  float longest = 0;
  const auto consider = [&](int a, int b) {
    const float x = m_x[b] - m_x[a], y = m_y[b] - m_y[a], z = m_z[b] - m_z[a];
    const float length = x * x + y * y + z * z;
    if (length > longest && std::isfinite(length)) longest = length;
  };
  const int stepI = m_numY * m_numZ, stepJ = m_numZ;
  int node = 0;
  for (int i = 0; i < m_numX; ++i)
    for (int j = 0; j < m_numY; ++j)
      for (int k = 0; k < m_numZ; ++k, ++node) {
        if (i + 1 < m_numX) consider(node, node + stepI);
        if (j + 1 < m_numY) consider(node, node + stepJ);
        if (k + 1 < m_numZ) consider(node, node + 1);
      }
  return std::sqrt(longest);
}

void PbCartesianGrid3D::print(FILE* file) const {
  PbGrid3D::print(file);
  printArray(file, "PbCartesianGrid3D", "x", m_x.get(), m_x.getNum());
  printArray(file, "PbCartesianGrid3D", "y", m_y.get(), m_y.getNum());
  printArray(file, "PbCartesianGrid3D", "z", m_z.get(), m_z.getNum());
}

SbVec3f PbCartesianGrid3D::getNodeCoord(int i, int j, int k) const {
  const int node = getNodeIndex(i, j, k);
  return SbVec3f(m_x[node], m_y[node], m_z[node]);
}

void PbCartesianGrid3D::updateBoundingBox() const {
  if (isBoundingBoxValid()) return;
  PiFiniteBox box;
  for (int node = 0; node < m_numMeshNodes; ++node) box.add(SbVec3f(m_x[node], m_y[node], m_z[node]));
  setBoundingBox(box.box());
}
