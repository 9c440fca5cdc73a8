// What the workers of a rebuild ask of their kit.

#include <cmath>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedShape.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Ormelle/PoMesh.h>

#include "quillane/emit/PiColorWriter.h"
#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiMeshBuffers.h"
#include "quillane/rep/PiMeshScratch.h"

namespace {

/// Unit normal of a polygon by its first three points; straight up where they make no plane.
SbVec3f polygonNormal(const int32_t* corners, int numCorners, const SoMFVec3f& points) {
  const SbVec3f up(0, 0, 1);
  if (numCorners < 3) return up;
  for (int i = 0; i < 3; ++i)
    if (corners[i] >= points.getNum()) return up;
  const SbVec3f& first = points[corners[0]];
  SbVec3f normal = (first - points[corners[1]]).cross(points[corners[2]] - first);
  const float length = normal.length();
  if (!(length > 0) || !std::isfinite(length)) return up;
  return normal / length;
}

}  // namespace

void PoMesh::push_back_point(const SbVec3f& point) { PiMeshScratch::pushPoint(point); }

void PoMesh::push_back_value(float value) { PiMeshScratch::pushValue(value); }

void PoMesh::push_back_coord_index(int index) { m_buffers->coordIndices.push_back(index); }

void PoMesh::push_back_cell_index(int index) { m_buffers->cellIndices.push_back(index); }

SbVec3f* PoMesh::newSbVec3f(int count) { return m_buffers->vectors(count); }

int PoMesh::adjustIsoval(int num, const float* values, float& isovalue) {
  return m_buffers->isovalues.adjustIsoval(num, values, isovalue);
}

int PoMesh::adjustIsovalMultiple(int num1, const float* values1, int num2, const float* values2, int num3,
                                 const float* values3, float& isovalue) {
  return m_buffers->isovalues.adjustIsovalMultiple(num1, values1, num2, values2, num3, values3, isovalue);
}

int PoMesh::adjustIsovalList(int num1, const float* values1, int num2, const float* values2, int num3,
                             const float* values3) {
  if (!m_currentIsovaluesList) return 0;
  return m_buffers->isovalues.adjustIsovalList(*m_currentIsovaluesList, num1, values1, num2, values2, num3, values3);
}

const float* PoMesh::getAdjustedIsovalues(int& num) const {
  num = static_cast<int>(m_buffers->isovalues.getIsovalues().size());
  return m_buffers->isovalues.getIsovalues().data();
}

void PoMesh::update_coord_index(SoIndexedShape* shape) { m_buffers->coordIndices.handTo(shape->coordIndex); }

void PoMesh::mapColor(int numValues, const float* values, int newMaterial) {
  if (!values) {
    values = m_pointValues;
    numValues = m_numValues;
  }
  if (!values || numValues < 1 || !m_currentDataMapping) return;
  if (newMaterial) m_nodes->material = new SoMaterial;
  if (!m_nodes->material) return;
  PiColorWriter colors(*m_currentDataMapping, *m_nodes->material, numValues);
  for (int i = 0; i < numValues; ++i) colors.set(i, values[i]);
}

void PoMesh::computeNormal(SoIndexedShape* shape, SoCoordinate3* coordinate) {
  if (!m_nodes->group) return;
  m_nodes->normalBinding = new SoNormalBinding;
  m_nodes->group->insertChild(m_nodes->normalBinding, 0);
  m_nodes->normalBinding->value = SoNormalBinding::PER_FACE;
  m_nodes->normal = new SoNormal;
  m_nodes->group->insertChild(m_nodes->normal, 1);

  const int numIndices = shape->coordIndex.getNum();
  const int32_t* indices = shape->coordIndex.getValues(0);
  SoMFVec3f& normals = m_nodes->normal->vector;
  int numPolygons = 0;
  for (int i = 0; i < numIndices; ++i) numPolygons += indices[i] < 0;
  normals.setNum(numPolygons);
  if (numPolygons == 0) return;
  SbVec3f* normal = normals.startEditing();
  int first = 0;
  for (int i = 0; i < numIndices; ++i) {
    if (indices[i] >= 0) continue;
    *normal++ = polygonNormal(indices + first, i - first, coordinate->point);
    first = i + 1;
  }
  normals.finishEditing();
}
