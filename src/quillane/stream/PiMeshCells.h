#ifndef ORMELLE_PIMESHCELLS_H
#define ORMELLE_PIMESHCELLS_H

#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh.h>

#include <limits>

#include "quillane/stream/PiStreamWalk.h"

/// The cells of any mesh by its public interface, for classes that have no quicker way. They are the mesh's own
/// objects, which it fills anew: only one path at a time.
class PiMeshCells {
 public:
  explicit PiMeshCells(const PiStreamField& field) : m_field(field), m_mesh(*field.mesh) {}

  bool start(const SbVec3f& point, SbVec3f& pcoord) {
    m_cell = m_mesh.findContainingCell(point, 0, pcoord);
    return m_cell != nullptr;
  }
  bool move(const SbVec3f& point, SbVec3f& pcoord) {
    m_cell = m_mesh.findContainingCell(point, 0, pcoord, m_cell);
    return m_cell != nullptr;
  }
  bool enter(int cell) {
    m_cell = m_mesh.getCell(cell);
    return m_cell != nullptr;
  }

  int index() const { return m_cell->getIndex(); }
  float longestEdge() const { return m_cell->getLongestEdgeLength(); }
  PiStreamPlace locate(const SbVec3f& point, SbVec3f& pcoord) const {
    constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
    pcoord.setValue(kNone, kNone, kNone);
    if (m_cell->locatePoint(point, 0, pcoord)) return PiStreamPlace::INSIDE;
    return isFinitePoint(pcoord) ? PiStreamPlace::OUTSIDE : PiStreamPlace::NOWHERE;
  }
  SbVec3f vector(const SbVec3f& pcoord) const {
    return m_field.areVectorsPerCell ? m_field.vectors[index()] : m_cell->getValue(pcoord, m_field.vectors);
  }
  float value(const SbVec3f& pcoord) const {
    return m_field.areValuesPerCell ? m_field.values[index()] : m_cell->getValue(pcoord, m_field.values);
  }

 private:
  const PiStreamField& m_field;
  const PbMesh& m_mesh;
  const PbCell* m_cell = nullptr;
};

static_assert(PiStreamCells<PiMeshCells>);

#endif
