#include "SceneWalk.h"

#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/details/SoFaceDetail.h>
#include <Inventor/details/SoLineDetail.h>
#include <Inventor/details/SoPointDetail.h>
#include <Inventor/elements/SoCoordinateElement.h>
#include <Inventor/elements/SoDrawStyleElement.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoText2.h>

#include <Ormelle/PoBase.h>

#include <cstring>
#include <optional>
#include <unordered_map>

#include "Failure.h"
#include "SceneCheck.h"
#include "ShapeColors.h"
#include "TextNode.h"

namespace tool {

namespace {

// Finds which of a face's coordinates a vertex is. The toolkit says which coordinates a face has, but not which of
// them a corner of a triangle is that it made of the face: that follows from where the corner stands.
class CornerFinder {
 public:
  void beginShape(const SoCoordinateElement* coordinates) {
    m_coordinates = coordinates;
    m_known.clear();
    m_face = nullptr;
    m_lineEnd = -1;
  }

  int find(const SoPrimitiveVertex& vertex) {
    const SoDetail* detail = vertex.getDetail();
    if (!detail) return -1;
    if (detail->isOfType(SoFaceDetail::getClassTypeId()))
      return findInFace(static_cast<const SoFaceDetail*>(detail), vertex.getPoint());
    if (detail->isOfType(SoLineDetail::getClassTypeId())) {
      // Along a polyline, the toolkit keeps telling its first vertex as the start of each segment.
      const auto* line = static_cast<const SoLineDetail*>(detail);
      const int end = line->getPoint1()->getCoordinateIndex();
      const int candidates[] = {line->getPoint0()->getCoordinateIndex(), end, m_lineEnd};
      m_lineEnd = end;
      for (const int index : candidates)
        if (standsAt(index, vertex.getPoint())) return index;
      return -1;
    }
    if (detail->isOfType(SoPointDetail::getClassTypeId())) {
      const int index = static_cast<const SoPointDetail*>(detail)->getCoordinateIndex();
      return standsAt(index, vertex.getPoint()) ? index : -1;
    }
    return -1;
  }

 private:
  struct Key {
    std::array<uint32_t, 3> bits;
    bool operator==(const Key&) const = default;
  };
  struct Hash {
    std::size_t operator()(const Key& key) const {
      uint64_t hash = key.bits[0];
      hash = hash * 0x9E3779B97F4A7C15u + key.bits[1];
      hash = hash * 0x9E3779B97F4A7C15u + key.bits[2];
      return static_cast<std::size_t>(hash ^ hash >> 29);
    }
  };
  static Key keyOf(const SbVec3f& point) {
    Key key;
    std::memcpy(key.bits.data(), point.getValue(), sizeof(key.bits));
    return key;
  }

  bool standsAt(int index, const SbVec3f& point) const {
    if (!m_coordinates || index < 0 || index >= m_coordinates->getNum()) return false;
    return keyOf(m_coordinates->get3(index)) == keyOf(point);
  }

  int findInFace(const SoFaceDetail* face, const SbVec3f& point) {
    const int count = face->getNumPoints();
    if (count <= 8) {
      for (int i = 0; i < count; ++i) {
        const int index = face->getPoint(i)->getCoordinateIndex();
        if (standsAt(index, point)) return index;
      }
      return -1;
    }
    // A polygon of many corners makes as many triangles: look its corners up once.
    const FaceKey key{face->getPartIndex(), face->getFaceIndex(), count, face->getPoint(0)->getCoordinateIndex()};
    if (m_face != face || !(m_faceKey == key)) {
      m_face = face;
      m_faceKey = key;
      m_known.clear();
      for (int i = 0; i < count; ++i) {
        const int index = face->getPoint(i)->getCoordinateIndex();
        if (m_coordinates && index >= 0 && index < m_coordinates->getNum())
          m_known.emplace(keyOf(m_coordinates->get3(index)), index);
      }
    }
    const auto found = m_known.find(keyOf(point));
    return found == m_known.end() ? -1 : found->second;
  }

  struct FaceKey {
    int part, face, count, first;
    bool operator==(const FaceKey&) const = default;
  };

  const SoCoordinateElement* m_coordinates = nullptr;
  const SoFaceDetail* m_face = nullptr;
  FaceKey m_faceKey{};
  int m_lineEnd = -1;
  std::unordered_map<Key, int, Hash> m_known;
};

class Walk {
 public:
  Walk(SceneVisitor& visitor, const WalkWishes& wishes)
      : m_visitor(visitor), m_wishes(wishes), m_action(wishes.viewport) {
    m_action.addPreCallback(PoBase::getClassTypeId(), callNode<&Walk::beginKit>, this);
    m_action.addPostCallback(PoBase::getClassTypeId(), callNode<&Walk::endKit>, this);
    m_action.addPreCallback(SoShape::getClassTypeId(), callNode<&Walk::beginShape>, this);
    m_action.addPostCallback(SoShape::getClassTypeId(), callNode<&Walk::endShape>, this);
    const SoType shape = SoShape::getClassTypeId();
    m_action.addTriangleCallback(
        shape,
        [](void* self, SoCallbackAction*, const SoPrimitiveVertex* a, const SoPrimitiveVertex* b,
           const SoPrimitiveVertex* c) { static_cast<Walk*>(self)->triangle(a, b, c); },
        this);
    m_action.addLineSegmentCallback(
        shape,
        [](void* self, SoCallbackAction*, const SoPrimitiveVertex* a, const SoPrimitiveVertex* b) {
          static_cast<Walk*>(self)->line(a, b);
        },
        this);
    m_action.addPointCallback(
        shape, [](void* self, SoCallbackAction*, const SoPrimitiveVertex* a) { static_cast<Walk*>(self)->point(a); },
        this);
  }

  // Returns what was wrong with a shape; empty if nothing was.
  std::string apply(SoNode* scene) {
    m_action.apply(scene);
    return m_fault;
  }

 private:
  using Response = SoCallbackAction::Response;

  template <Response (Walk::*method)(const SoNode*)>
  static Response callNode(void* self, SoCallbackAction*, const SoNode* node) {
    return (static_cast<Walk*>(self)->*method)(node);
  }

  Response beginKit(const SoNode* node) {
    m_visitor.beginKit(static_cast<PoBase*>(const_cast<SoNode*>(node)));
    return SoCallbackAction::CONTINUE;
  }

  Response endKit(const SoNode* node) {
    m_visitor.endKit(static_cast<PoBase*>(const_cast<SoNode*>(node)));
    return SoCallbackAction::CONTINUE;
  }

  Response beginShape(const SoNode* node) {
    SoState* state = m_action.getState();
    m_depth = state->getDepth();
    if (SoDrawStyleElement::get(state) == SoDrawStyleElement::INVISIBLE) return SoCallbackAction::PRUNE;
    const bool isFlatOnScreen = node->isOfType(SoText2::getClassTypeId()) != FALSE;
    if (isText(node) && (isFlatOnScreen || !m_wishes.lettersAsTriangles)) {
      m_visitor.text(m_action);
      return SoCallbackAction::PRUNE;
    }
    m_fault = faultOf(static_cast<const SoShape*>(node), state);
    if (!m_fault.empty()) return SoCallbackAction::ABORT;
    m_colors.reset();
    m_isBegun = false;
    m_triangles = 0;
    m_isQuadMesh = node->isOfType(SoQuadMesh::getClassTypeId()) != FALSE;
    return SoCallbackAction::CONTINUE;
  }

  Response endShape(const SoNode*) {
    // A line set with a vertex property and a material for each segment leaves the state pushed.
    SoState* state = m_action.getState();
    while (state->getDepth() > m_depth) state->pop();
    return SoCallbackAction::CONTINUE;
  }

  // Reads what all primitives of the shape have in common, at its first one: only there are the shape's own vertex
  // properties on the state.
  void ensureBegun() {
    if (m_isBegun) return;
    m_isBegun = true;
    m_matrix = m_action.getModelMatrix();
    m_corners.beginShape(SoCoordinateElement::getInstance(m_action.getState()));
    if (m_wishes.colors) m_colors.emplace(&m_action);
    m_visitor.beginShape(m_action);
  }

  Vertex vertexOf(const SoPrimitiveVertex& vertex, int materialIndex) {
    Vertex out;
    const SbVec3f& p = vertex.getPoint();
    double w = m_matrix[3][3];
    for (int axis = 0; axis < 3; ++axis) w += static_cast<double>(p[axis]) * m_matrix[axis][3];
    for (std::size_t column = 0; column < 3; ++column) {
      const int c = static_cast<int>(column);
      double sum = m_matrix[3][c];
      for (int axis = 0; axis < 3; ++axis) sum += static_cast<double>(p[axis]) * m_matrix[axis][c];
      out.position[column] = w == 1.0 ? sum : sum / w;
    }
    out.source = &vertex;
    out.material = materialIndex;
    if (m_colors) {
      out.color = m_colors->colorOf(vertex, materialIndex);
      out.coordinate = m_corners.find(vertex);
    }
    return out;
  }

  void triangle(const SoPrimitiveVertex* a, const SoPrimitiveVertex* b, const SoPrimitiveVertex* c) {
    ensureBegun();
    const int ordinal = m_triangles++;
    std::array<int, 3> materials{a->getMaterialIndex(), b->getMaterialIndex(), c->getMaterialIndex()};
    if (m_colors && m_colors->isPerPart()) {
      // One colour a face, that of its latest vertex. The toolkit miscounts the cells of a quad mesh, which come as
      // two triangles each.
      const int ofFace = m_isQuadMesh && m_colors->isPerFace() ? ordinal / 2 : c->getMaterialIndex();
      materials = {ofFace, ofFace, ofFace};
    }
    m_visitor.triangle({vertexOf(*a, materials[0]), vertexOf(*b, materials[1]), vertexOf(*c, materials[2])});
  }

  void line(const SoPrimitiveVertex* a, const SoPrimitiveVertex* b) {
    ensureBegun();
    m_visitor.line({vertexOf(*a, a->getMaterialIndex()), vertexOf(*b, b->getMaterialIndex())});
  }

  void point(const SoPrimitiveVertex* a) {
    ensureBegun();
    m_visitor.point(vertexOf(*a, a->getMaterialIndex()));
  }

  SceneVisitor& m_visitor;
  WalkWishes m_wishes;
  SoCallbackAction m_action;
  std::string m_fault;
  int m_depth = 0;
  bool m_isBegun = false;
  bool m_isQuadMesh = false;
  int m_triangles = 0;
  SbMatrix m_matrix;
  CornerFinder m_corners;
  std::optional<ShapeColors> m_colors;
};

}  // namespace

void walkScene(SoNode* scene, const std::string& file, const WalkWishes& wishes, SceneVisitor& visitor) {
  const std::string fault = Walk(visitor, wishes).apply(scene);
  if (!fault.empty()) throw Failure(file + ": " + fault);
}

}  // namespace tool
