#include "quillane/vector/PiVectorField.h"

#include <algorithm>
#include <cmath>

#include "graph/data/PiFinite.h"

void PiVectorField::start(const Selection& selection) {
  m_selection = selection;
  m_selection.density = std::max(1, selection.density);
  m_count = m_next = 0;
  m_vectors.clear();
}

void PiVectorField::add(const SbVec3f& point, const SbVec3f& vector) {
  const int index = m_count++;
  if (index != m_next) return;
  m_next += m_selection.density;
  const float module = vector.length();
  if (m_selection.hasMin && module < m_selection.minLength) return;
  if (m_selection.hasMax && module > m_selection.maxLength) return;
  SbVec3f along = vector * m_selection.lengthFactor;
  if (m_selection.isConstantLength && module > 0) along *= 1 / module;
  // What isn't finite in the sum isn't in one of its parts, or too large to be drawn.
  if (!std::isfinite(module) || !isFinitePoint(point) || !isFinitePoint(point + along)) return;
  m_vectors.push_back({point, along, module, index});
}
