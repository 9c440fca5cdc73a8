#ifndef ORMELLE_TESTS_NODESTEST_H
#define ORMELLE_TESTS_NODESTEST_H

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoBase.h>
#include <Ormelle/PoOrmelle.h>

#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <string>

#include "support/NodePtr.h"

/// Looks at the traversal state at its place in the scene, in every action.
inline SoCallback* newProbe(const std::function<void(SoState*)>& look) {
  auto* probe = new SoCallback;
  probe->setCallback(
      [](void* data, SoAction* action) { (*static_cast<std::function<void(SoState*)>*>(data))(action->getState()); },
      const_cast<std::function<void(SoState*)>*>(&look));
  return probe;
}

inline NodePtr<SoSeparator> newScene(std::initializer_list<SoNode*> children) {
  NodePtr<SoSeparator> scene(new SoSeparator);
  scene->boundingBoxCaching = SoSeparator::OFF;  // so that every traversal reaches the probes
  for (SoNode* child : children) scene->addChild(child);
  return scene;
}

inline void traverse(SoNode* scene) {
  SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
  action.apply(scene);
}

inline std::string textOf(SoNode* scene, bool isBinary = false) {
  SoOutput out;
  out.setBinary(isBinary);
  const size_t size = 1 << 16;
  out.setBuffer(std::malloc(size), size, [](void* memory, size_t wanted) { return std::realloc(memory, wanted); });
  SoWriteAction action(&out);
  action.apply(scene);
  void* buffer;
  size_t used;
  out.getBuffer(buffer, used);
  std::string text(static_cast<const char*>(buffer), used);
  std::free(buffer);
  return text;
}

inline NodePtr<SoSeparator> sceneOf(const std::string& text) {
  SoInput in;
  in.setBuffer(text.data(), text.size());
  return NodePtr<SoSeparator>(SoDB::readAll(&in));
}

/// Connects itself to one data object and counts what it is told.
class CountingKit : public PoBase {
  PO_KIT_HEADER(CountingKit, PoBase);

 public:
  CountingKit();

  void connect(const PbBase* object) {
    m_object = const_cast<PbBase*>(object);
    changeConnection(nullptr, m_object);
  }
  void basicObjectChange(PbBase* object) override {
    PoBase::basicObjectChange(object);
    if (object->getChangeType() == PbBase::OBJECT_DELETED) {
      ++deletions;
      m_object = nullptr;
    } else {
      ++changes;
      lastChange = object->getChangeType();
    }
  }

  int changes = 0;
  int deletions = 0;
  PbBase::ChangeType lastChange = PbBase::OBJECT_CHANGE;

 protected:
  ~CountingKit() override {
    if (m_object) changeConnection(m_object, nullptr);
  }

 private:
  PbBase* m_object = nullptr;
};

#endif
