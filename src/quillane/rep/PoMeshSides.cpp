#include <Ormelle/PoMeshSides.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <Ormelle/PbMesh2D.h>

#include <cmath>
#include <memory>
#include <vector>

#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiBoundary.h"

PO_KIT_SOURCE(PoMeshSides)

namespace {

/// Horizontal normals of the faces of a wall, on the side from which their corners run clockwise, as the hints say they
/// do; there they are the mesh's own, turned round if need be. The toolkit reads one more than there are faces when it
/// picks.
std::vector<SbVec3f> wallNormals(const PiBoundaryPiece& piece, float level, const SbVec3f* meshNormals) {
  std::vector<SbVec3f> normals;
  for (std::size_t face = 0; face < piece.segments.size(); ++face) {
    const SbVec3f& from = piece.points[face];
    const SbVec3f& to = piece.points[face + 1];
    const float down = from[2] / 2 + to[2] / 2 < level ? -1.0F : 1.0F;
    SbVec3f normal((from[1] - to[1]) * down, (to[0] - from[0]) * down, 0);
    normal.normalize();
    if (meshNormals) {
      const SbVec3f& own = meshNormals[piece.segments[face]];
      normal = own.dot(normal) < 0 ? -own : own;
    }
    normals.push_back(normal);
  }
  normals.push_back(normals.back());
  return normals;
}

/// A quad mesh of one row between the piece and the same piece at height `level`.
SoQuadMesh* emitWall(const PiBoundaryPiece& piece, float level, SoGroup* group) {
  const int num = static_cast<int>(piece.points.size());
  auto* coordinate = new SoCoordinate3;
  group->addChild(coordinate);
  coordinate->point.setNum(2 * num);
  SbVec3f* points = coordinate->point.startEditing();
  for (const SbVec3f& point : piece.points) {
    points[num].setValue(point[0], point[1], level);
    *points++ = point;
  }
  coordinate->point.finishEditing();
  auto* wall = new SoQuadMesh;
  group->addChild(wall);
  wall->verticesPerColumn = 2;
  wall->verticesPerRow = num;
  return wall;
}

}  // namespace

PoMeshSides::PoMeshSides() {
  PO_KIT_CONSTRUCTOR(PoMeshSides);
  PO_KIT_ADD_CATALOG_ENTRY(groupSides, SoGroup, alternateRep);
  PO_KIT_DEFINE_ENUM_VALUE(ThresholdType, THRESHOLD_ZMIN);
  PO_KIT_DEFINE_ENUM_VALUE(ThresholdType, THRESHOLD_ZMAX);
  PO_KIT_DEFINE_ENUM_VALUE(ThresholdType, THRESHOLD_VALUE);
  PO_KIT_ADD_FIELD(thresholdType, (THRESHOLD_ZMIN));
  PO_KIT_ADD_FIELD(thresholdValue, (0.0F));
  PO_KIT_SET_ENUM_TYPE(thresholdType, ThresholdType);
  PO_KIT_CONSTRUCTED(PoMeshSides);
  watchField(thresholdType);
  watchField(thresholdValue);
  ownPart(groupSides);
  beginWatching();
}

PoMeshSides::~PoMeshSides() = default;

void PoMeshSides::rebuild() {
  preRebuild();
  clearZelNodes();
  if (drawnMesh()) drawWalls(*m_currentMesh2D);
  setAppearancePart("material", nullptr);
  setPart("groupSides", nodes().group);
  clearZelNodes();
  postRebuild();
}

float PoMeshSides::wallLevel(const PbMesh2D& mesh) const {
  float level = thresholdValue.getValue();
  const int type = thresholdType.getValue();
  const int index = heightsIndex(mesh);
  if (index >= 0 && type == THRESHOLD_ZMIN) mesh.getMinValuesSet(index, level);
  if (index >= 0 && type == THRESHOLD_ZMAX) mesh.getMaxValuesSet(index, level);
  return std::isfinite(level) ? level : thresholdValue.getValue();
}

void PoMeshSides::drawWalls(PbMesh2D& mesh) {
  const float level = wallLevel(mesh);
  const PiBoundary boundary(mesh, heightsIndex(mesh));
  if (boundary.pieces().empty() || !std::isfinite(level)) return;
  nodes().group = new SoGroup;
  insertDefaultShapeHints();

  std::unique_ptr<SbVec3f[]> normals;
  if (mesh.hasSidesNormals()) {
    SbVec3f* made = nullptr;
    mesh.getSidesNormals(made, boundary.sizes());
    normals.reset(made);
  }
  if (normals) {
    nodes().normalBinding = new SoNormalBinding;
    nodes().group->addChild(nodes().normalBinding);
    nodes().normalBinding->value = SoNormalBinding::PER_FACE;
  }
  for (const PiBoundaryPiece& piece : boundary.pieces()) {
    const std::vector<SbVec3f> vectors = wallNormals(piece, level, normals.get());
    const int num = static_cast<int>(vectors.size());
    if (normals) {
      // Each quad mesh counts its faces from 0, so each has its own normals before it.
      nodes().normal = new SoNormal;
      nodes().group->addChild(nodes().normal);
      nodes().normal->vector.setValues(0, num, vectors.data());
      emitWall(piece, level, nodes().group);
    } else {
      auto* property = new SoVertexProperty;
      emitWall(piece, level, nodes().group)->vertexProperty = property;
      property->normalBinding = SoVertexProperty::PER_FACE;
      property->normal.setValues(0, num, vectors.data());
    }
  }
}
