#ifndef ORMELLE_PONODE_H
#define ORMELLE_PONODE_H

#include <cstddef>

#include <Inventor/actions/SoSubAction.h>
#include <Ormelle/PoSubNode.h>

/// Root of the attribute nodes, which put a data object on the traversal state for the kits behind them.
///
/// A subclass overrides `doAction` and sets its element there. Every action that traverses the scene is led to it; a
/// search calls it before the node itself is looked at, a write only writes the node while
/// `PoBase::getNodeWriteFormat()` is `WRITE_FIELDS`, or where the file is binary and a gap would make it unreadable.
///
/// Nodes live on the heap. Each one keeps the library initialised for as long as it lives.
class ORMELLE_API PoNode : public SoNode {
  PO_NODE_ABSTRACT_HEADER(PoNode, SoNode);

 public:
  /// Registers the attribute nodes in their fixed order, and takes them away again.
  static void initClasses();
  static void exitClasses();

  /// Start and end of the library around the life of a node: the toolkit must be up before any base constructor runs.
  static void* operator new(std::size_t size);
  static void operator delete(void* memory);

  void GLRender(SoGLRenderAction* action) override;
  void callback(SoCallbackAction* action) override;
  void getBoundingBox(SoGetBoundingBoxAction* action) override;
  void getMatrix(SoGetMatrixAction* action) override;
  void handleEvent(SoHandleEventAction* action) override;
  void pick(SoPickAction* action) override;
  void getPrimitiveCount(SoGetPrimitiveCountAction* action) override;
  void search(SoSearchAction* action) override;
  void write(SoWriteAction* action) override;

 protected:
  PoNode();
  ~PoNode() override;
};

#endif
