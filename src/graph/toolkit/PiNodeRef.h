#ifndef ORMELLE_PINODEREF_H
#define ORMELLE_PINODEREF_H

#include <utility>

/// Holds one reference on a node of the toolkit, which keeps it alive. `Node` must be complete where it is used.
template <class Node>
class PiNodeRef {
 public:
  explicit PiNodeRef(Node* node = nullptr) : m_node(node) {
    if (m_node) m_node->ref();
  }
  PiNodeRef(const PiNodeRef& other) : PiNodeRef(other.m_node) {}
  PiNodeRef(PiNodeRef&& other) noexcept : m_node(std::exchange(other.m_node, nullptr)) {}
  PiNodeRef& operator=(PiNodeRef other) noexcept {
    std::swap(m_node, other.m_node);
    return *this;
  }
  ~PiNodeRef() {
    if (m_node) m_node->unref();
  }

  void reset(Node* node = nullptr) { *this = PiNodeRef(node); }
  Node* get() const { return m_node; }
  Node* operator->() const { return m_node; }
  Node& operator*() const { return *m_node; }
  explicit operator bool() const { return m_node != nullptr; }

 private:
  Node* m_node;
};

#endif
