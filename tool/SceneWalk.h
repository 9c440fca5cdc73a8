#ifndef ORMELLE_TOOL_SCENEWALK_H
#define ORMELLE_TOOL_SCENEWALK_H

#include <Inventor/SbViewportRegion.h>

#include <array>
#include <cstdint>
#include <string>

class PoBase;
class SoCallbackAction;
class SoNode;
class SoPrimitiveVertex;

namespace tool {

struct Vertex {
  std::array<double, 3> position{};           ///< in world coordinates
  uint32_t color = 0;                         ///< 0xrrggbbaa
  int coordinate = -1;                        ///< its index among the shape's coordinates; -1 if the shape has none
  int material = 0;                           ///< the index of its colour among the shape's materials
  const SoPrimitiveVertex* source = nullptr;  ///< the toolkit's own vertex, during the call that tells of this one
};

/// What a walk shall work out.
struct WalkWishes {
  bool colors = false;
  /// Whether text that lies in the scene is told as the triangles of its letters, and SceneVisitor::text hears only of
  /// what can't be.
  bool lettersAsTriangles = false;
  SbViewportRegion viewport{800, 600};  ///< the picture that the scene's cameras make
};

/// What a walk tells of a scene, in traversal order.
class SceneVisitor {
 public:
  virtual ~SceneVisitor() = default;

  /// Until the matching endKit(), everything is inside this kit.
  virtual void beginKit(PoBase* /*kit*/) {}
  virtual void endKit(PoBase* /*kit*/) {}
  /// What follows belongs to another shape, or to another instance of the same one. The action has the traversal state
  /// that the shape is drawn with.
  virtual void beginShape(SoCallbackAction& /*action*/) {}
  virtual void triangle(const std::array<Vertex, 3>& corners) = 0;
  virtual void line(const std::array<Vertex, 2>& ends) = 0;
  virtual void point(const Vertex& vertex) = 0;
  /// A text node that shows something, at the end of the action's path; none of its outlines is told as a triangle.
  virtual void text(SoCallbackAction& /*action*/) {}
};

/// Walks over everything that the toolkit would draw of `scene`, kits rebuilding themselves first where they must.
/// Throws Failure, with `file` in its sentence, if a shape is unsound.
void walkScene(SoNode* scene, const std::string& file, const WalkWishes& wishes, SceneVisitor& visitor);

}  // namespace tool

#endif
