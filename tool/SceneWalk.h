#ifndef ORMELLE_TOOL_SCENEWALK_H
#define ORMELLE_TOOL_SCENEWALK_H

#include <array>
#include <cstdint>
#include <string>

class PoBase;
class SoNode;
class SoPath;

namespace tool {

struct Vertex {
  std::array<double, 3> position{};  ///< in world coordinates
  uint32_t color = 0;                ///< 0xrrggbbaa
  int coordinate = -1;               ///< its index among the shape's coordinates; -1 if the shape has none
};

/// What a walk tells of a scene, in traversal order.
class SceneVisitor {
 public:
  virtual ~SceneVisitor() = default;

  /// Until the matching endKit(), everything is inside this kit.
  virtual void beginKit(PoBase* /*kit*/) {}
  virtual void endKit(PoBase* /*kit*/) {}
  /// What follows belongs to another shape, or to another instance of the same one.
  virtual void beginShape() {}
  virtual void triangle(const std::array<Vertex, 3>& corners) = 0;
  virtual void line(const std::array<Vertex, 2>& ends) = 0;
  virtual void point(const Vertex& vertex) = 0;
  /// A text node that shows something; none of its outlines is told as a triangle. The path is the walk's.
  virtual void text(const SoPath* /*path*/) {}
};

/// Walks over everything that the toolkit would draw of `scene`, kits rebuilding themselves first where they must.
/// Colours are worked out only if wanted. Throws Failure, with `file` in its sentence, if a shape is unsound.
void walkScene(SoNode* scene, const std::string& file, bool wantsColors, SceneVisitor& visitor);

/// Whether the node writes text, flat on the screen or in space.
bool isText(const SoNode* node);

}  // namespace tool

#endif
