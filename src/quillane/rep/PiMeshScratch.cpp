#include "quillane/rep/PiMeshScratch.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace {

constexpr int kFirstCapacity = 500;

template <class Element>
void grow(Element*& array, int used, int& capacity) {
  capacity = std::max(2 * capacity, kFirstCapacity);
  Element* larger = new Element[static_cast<std::size_t>(capacity)];
  if (used > 0) std::memcpy(larger, array, static_cast<std::size_t>(used) * sizeof(Element));
  delete[] array;
  array = larger;
}

}  // namespace

void PiMeshScratch::init() {
  if (!PoMesh::m_points) grow(PoMesh::m_points, 0, PoMesh::m_allocPoints = 0);
  if (!PoMesh::m_pointValues) grow(PoMesh::m_pointValues, 0, PoMesh::m_allocPointValues = 0);
}

void PiMeshScratch::finish() {
  delete[] PoMesh::m_points;
  delete[] PoMesh::m_pointValues;
  PoMesh::m_points = nullptr;
  PoMesh::m_pointValues = nullptr;
  PoMesh::m_numPoints = PoMesh::m_allocPoints = 0;
  PoMesh::m_numValues = PoMesh::m_allocPointValues = 0;
}

void PiMeshScratch::pushPoint(const SbVec3f& point) {
  if (PoMesh::m_numPoints == PoMesh::m_allocPoints) grow(PoMesh::m_points, PoMesh::m_numPoints, PoMesh::m_allocPoints);
  float* stored = PoMesh::m_points[PoMesh::m_numPoints++];
  point.getValue(stored[0], stored[1], stored[2]);
}

void PiMeshScratch::pushValue(float value) {
  if (PoMesh::m_numValues == PoMesh::m_allocPointValues)
    grow(PoMesh::m_pointValues, PoMesh::m_numValues, PoMesh::m_allocPointValues);
  PoMesh::m_pointValues[PoMesh::m_numValues++] = value;
}

bool PiRebuildScope::s_isOpen = false;

PiRebuildScope::PiRebuildScope() {
  assert(!s_isOpen && "one rebuild makes geometry at a time");
  s_isOpen = true;
  PiMeshScratch::clear();
}

PiRebuildScope::~PiRebuildScope() { s_isOpen = false; }
