#include <Ormelle/PbCellFilterIterator.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PoCellFilter.h>

PbCellIterator::PbCellIterator(const PbMesh* mesh) : m_mesh(mesh) {}
PbCellIterator::~PbCellIterator() = default;

void PbCellIterator::first() { m_cellIndex = 0; }

void PbCellIterator::next() {
  if (notDone()) ++m_cellIndex;
}

int PbCellIterator::notDone() const { return m_mesh && m_cellIndex < m_mesh->getNumCells(); }
const PbCell* PbCellIterator::getCell() const { return m_mesh ? m_mesh->getCell(m_cellIndex) : nullptr; }
const PbCell* PbCellIterator::getTopoCell() const { return m_mesh ? m_mesh->getTopoCell(m_cellIndex) : nullptr; }

PbCellFilterIterator::PbCellFilterIterator(const PbMesh* mesh, const PoCellFilter* filter, int set_index)
    : PbCellIterator(mesh), m_filter(filter) {
  if (!mesh || set_index == -1) return;
  m_values = mesh->getValuesSet(set_index);
  if (m_values)
    m_numValues = mesh->getValuesBinding(set_index) == PbMesh::PER_NODE ? mesh->getNumNodes() : mesh->getNumCells();
}

void PbCellFilterIterator::first() {
  PbCellIterator::first();
  skipRefused();
}

void PbCellFilterIterator::next() {
  PbCellIterator::next();
  skipRefused();
}

void PbCellFilterIterator::skipRefused() {
  if (!m_filter) return;
  while (notDone() && !m_filter->acceptCell(m_cellIndex, m_cellIndex < m_numValues ? m_values[m_cellIndex] : 0.0F))
    PbCellIterator::next();
}
