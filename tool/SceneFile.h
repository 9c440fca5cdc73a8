#ifndef ORMELLE_TOOL_SCENEFILE_H
#define ORMELLE_TOOL_SCENEFILE_H

#include <string>

class SoNode;

namespace tool {

/// A reference to a node, given back at the end.
class NodePtr {
 public:
  NodePtr() = default;
  explicit NodePtr(SoNode* node);
  NodePtr(NodePtr&& other) noexcept : m_node(other.m_node) { other.m_node = nullptr; }
  NodePtr& operator=(NodePtr&& other) noexcept;
  ~NodePtr();

  SoNode* get() const { return m_node; }

 private:
  SoNode* m_node = nullptr;
};

/// A scene as it was read.
struct Scene {
  std::string file;
  NodePtr root;
  bool isVrml2 = false;  ///< written back, it needs the header of that language
};

/// Starts toolkit and library and keeps the toolkit's messages off the error output; they are told by Failures instead.
void startLibrary();

/// Reads a whole scene. Throws Failure if the file isn't there, isn't a scene, breaks off, names an unknown node, or
/// names a picture or another file that can't be read: what is drawn or written is the whole scene or nothing.
Scene readScene(const std::string& file);

}  // namespace tool

#endif
