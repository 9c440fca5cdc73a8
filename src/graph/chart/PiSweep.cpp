#include "graph/chart/PiSweep.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoShapeHints.h>

#include <algorithm>
#include <cassert>
#include <utility>

#include "graph/chart/PiCurveShapes.h"

namespace {

// Sides of a tube are shaded as one as far as they are those of a circle; a step of stairs isn't.
constexpr float kCreaseAngle = 0.7F;

}  // namespace

PiSweep::PiSweep(int numCorners, Kind kind, std::size_t numSectionsExpected) : m_numCorners(numCorners), m_kind(kind) {
  assert(numCorners >= 2 && "a section of one point leaves no surface behind");
  m_points.reserve(numSectionsExpected * static_cast<std::size_t>(numCorners));
  m_entries.reserve(numSectionsExpected);
  const std::size_t numQuads = static_cast<std::size_t>(kind == CLOSED ? numCorners : numCorners - 1);
  m_coordIndex.reserve(5 * numQuads * numSectionsExpected);
  m_faceEntries.reserve(numQuads * numSectionsExpected);
}

void PiSweep::startRun() {
  endRun();
  m_runStart = m_entries.size();
}

void PiSweep::add(const SbVec3f* corners, int entry) {
  const auto second = static_cast<int>(m_points.size());
  const int first = second - m_numCorners;
  const bool isJoined = m_entries.size() > m_runStart;
  m_points.insert(m_points.end(), corners, corners + m_numCorners);
  m_entries.push_back(entry);
  if (!isJoined) return;
  const int face = m_entries[m_entries.size() - 2];
  for (int c = 0; c + 1 < m_numCorners; ++c) {
    int quad[] = {first + c, first + c + 1, second + c + 1, second + c};
    if (m_kind == FLAT && isClockwise(quad)) std::swap(quad[1], quad[3]);
    addFace(quad, face);
  }
  if (m_kind != CLOSED) return;
  const int quad[] = {second - 1, first, second, second + m_numCorners - 1};
  addFace(quad, face);
}

bool PiSweep::isClockwise(const int* quad) const {
  const auto point = [&](int corner) -> const SbVec3f& { return m_points[static_cast<std::size_t>(quad[corner])]; };
  const SbVec3f a = point(2) - point(0), b = point(3) - point(1);
  return a[0] * b[1] - a[1] * b[0] < 0;
}

void PiSweep::addFace(std::span<const int> corners, int entry) {
  m_coordIndex.addPart(corners.data(), static_cast<int>(corners.size()));
  m_faceEntries.push_back(entry);
}

void PiSweep::addCap(std::size_t section, bool isStart) {
  std::vector<int> corners(static_cast<std::size_t>(m_numCorners));
  for (int c = 0; c < m_numCorners; ++c)
    corners[static_cast<std::size_t>(c)] = static_cast<int>(section) * m_numCorners + c;
  if (isStart) std::reverse(corners.begin(), corners.end());
  addFace(corners, m_entries[isStart ? section : section - 1]);
}

void PiSweep::endRun() {
  if (m_kind != CLOSED || m_entries.size() < m_runStart + 2) return;
  addCap(m_runStart, true);
  addCap(m_entries.size() - 1, false);
}

SoGroup* PiSweep::finish(const Look& look) {
  endRun();
  if (m_coordIndex.size() == 0) return nullptr;
  auto* group = new SoGroup;
  if (m_kind == FLAT) PiCurveShapes::addOffset(*group);
  auto* hints = new SoShapeHints;
  group->addChild(hints);
  hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
  hints->shapeType = SoShapeHints::UNKNOWN_SHAPE_TYPE;
  hints->faceType = m_kind == CLOSED ? SoShapeHints::UNKNOWN_FACE_TYPE : SoShapeHints::CONVEX;
  hints->creaseAngle = kCreaseAngle;
  if (m_kind == FLAT) {
    // Else the toolkit looks for one.
    auto* normalBinding = new SoNormalBinding;
    group->addChild(normalBinding);
    normalBinding->value = SoNormalBinding::OVERALL;
    auto* normal = new SoNormal;
    group->addChild(normal);
    normal->vector.setValue(0, 0, 1);
  }
  if (look.material) {
    auto* binding = new SoMaterialBinding;
    group->addChild(binding);
    binding->value = look.isPerPart ? SoMaterialBinding::PER_FACE_INDEXED : SoMaterialBinding::PER_VERTEX_INDEXED;
    group->addChild(look.material);
  }
  auto* coordinate = new SoCoordinate3;
  group->addChild(coordinate);
  coordinate->point.setNum(static_cast<int>(m_points.size()));
  std::copy(m_points.begin(), m_points.end(), coordinate->point.startEditing());
  coordinate->point.finishEditing();
  auto* shape = new SoIndexedFaceSet;
  group->addChild(shape);
  m_coordIndex.handTo(shape->coordIndex);
  if (!look.material) return group;

  if (look.isPerPart) {
    shape->materialIndex.setNum(static_cast<int>(m_faceEntries.size()));
    std::copy(m_faceEntries.begin(), m_faceEntries.end(), shape->materialIndex.startEditing());
  } else {
    const int num = shape->coordIndex.getNum();
    const int32_t* coordIndex = shape->coordIndex.getValues(0);
    shape->materialIndex.setNum(num);
    int32_t* out = shape->materialIndex.startEditing();
    for (int i = 0; i < num; ++i)
      out[i] = coordIndex[i] < 0 ? -1 : m_entries[static_cast<std::size_t>(coordIndex[i] / m_numCorners)];
  }
  shape->materialIndex.finishEditing();
  return group;
}
