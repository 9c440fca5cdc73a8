#ifndef ORMELLE_TESTS_NODEPTR_H
#define ORMELLE_TESTS_NODEPTR_H

#include <Inventor/nodes/SoNode.h>

#include <utility>

/// Holds one reference on a node.
template <class Node>
class NodePtr {
 public:
  explicit NodePtr(Node* node = nullptr) : m_node(node) {
    if (m_node) m_node->ref();
  }
  NodePtr(const NodePtr& other) : NodePtr(other.m_node) {}
  NodePtr(NodePtr&& other) noexcept : m_node(std::exchange(other.m_node, nullptr)) {}
  NodePtr& operator=(NodePtr other) noexcept {
    std::swap(m_node, other.m_node);
    return *this;
  }
  ~NodePtr() {
    if (m_node) m_node->unref();
  }

  void reset(Node* node = nullptr) { *this = NodePtr(node); }
  Node* get() const { return m_node; }
  Node* operator->() const { return m_node; }
  Node& operator*() const { return *m_node; }
  explicit operator bool() const { return m_node != nullptr; }

 private:
  Node* m_node;
};

#endif
