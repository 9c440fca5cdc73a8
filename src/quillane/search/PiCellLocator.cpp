#include "quillane/search/PiCellLocator.h"

#include "quillane/search/PiCellSearch.h"

PiCellLocator::PiCellLocator(const PbMesh& mesh, float tolerance)
    : m_search(PiCellSearch::of(mesh, tolerance)), m_tolerance(tolerance) {}

bool PiCellLocator::read(int index, PiPlainCell& cell) const { return m_search->read(index, cell); }

bool PiCellLocator::find(const SbVec3f& point, PiPlainCell& cell, SbVec3f& pcoord) const {
  return m_search->find(point, m_tolerance, cell, pcoord);
}

bool PiCellLocator::findFrom(const SbVec3f& point, PiPlainCell& cell, SbVec3f& pcoord) const {
  return cell.locate(point, m_tolerance, pcoord) || find(point, cell, pcoord);
}

int PiCellLocator::locate(const SbVec3f& point, int startCell, SbVec3f& pcoord) const {
  PiPlainCell cell;
  if (startCell >= 0) read(startCell, cell);
  return findFrom(point, cell, pcoord) ? cell.index() : -1;
}
