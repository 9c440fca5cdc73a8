#include <Ormelle/PoNode.h>

#include <iterator>
#include <new>

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoGetMatrixAction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/actions/SoPickAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Ormelle/PoBase.h>
#include <Ormelle/PoBevelEdge.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoCircularProfile.h>
#include <Ormelle/PoCoordinateListFilter.h>
#include <Ormelle/PoDataMapping.h>
#include <Ormelle/PoDateFormatMapping.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoEllipticProfile.h>
#include <Ormelle/PoIndexListFilter.h>
#include <Ormelle/PoIntervalCellFilter.h>
#include <Ormelle/PoIsovaluesList.h>
#include <Ormelle/PoLabelHints.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoMesh1DFilter.h>
#include <Ormelle/PoMesh1DHints.h>
#include <Ormelle/PoMiscTextAttr.h>
#include <Ormelle/PoNonLinearDataMapping.h>
#include <Ormelle/PoNonLinearDataMapping2.h>
#include <Ormelle/PoNumericDisplayFormat.h>
#include <Ormelle/PoPeriodFilter.h>
#include <Ormelle/PoPeriodIndexFilter.h>
#include <Ormelle/PoProfile.h>
#include <Ormelle/PoProfileCoordinate2.h>
#include <Ormelle/PoSquareProfile.h>

#include "graph/frame/PiLibrary.h"
#include "nodes/field/PiMeshClasses.h"
#include "nodes/mesh/PiMeshNodeClasses.h"

PO_NODE_ABSTRACT_SOURCE(PoNode)

namespace {

struct NodeClass {
  void (*init)();
  void (*exit)();
};

template <class Node>
constexpr NodeClass classOf() {
  return {&Node::initClass, &Node::exitClass};
}

#define PI_MESH_NODE_CLASS(Name) classOf<Po##Name>(),

// In the order of registration: a class comes after its parent.
constexpr NodeClass kNodes[] = {
    classOf<PoNode>(),
    classOf<PoDomain>(),
    classOf<PoNumericDisplayFormat>(),
    classOf<PoIsovaluesList>(),
    classOf<PoDateFormatMapping>(),
    classOf<PoMiscTextAttr>(),
    classOf<PoDataMapping>(),
    classOf<PoLinearDataMapping>(),
    classOf<PoNonLinearDataMapping>(),
    classOf<PoNonLinearDataMapping2>(),
    classOf<PoMeshProperty>(),
    PI_FOR_EACH_MESH_CLASS(PI_MESH_NODE_CLASS) classOf<PoBevelEdge>(),
    classOf<PoMesh1DFilter>(),
    classOf<PoPeriodIndexFilter>(),
    classOf<PoIndexListFilter>(),
    classOf<PoPeriodFilter>(),
    classOf<PoCoordinateListFilter>(),
    classOf<PoMesh1DHints>(),
    classOf<PoProfile>(),
    classOf<PoCircularProfile>(),
    classOf<PoEllipticProfile>(),
    classOf<PoSquareProfile>(),
    classOf<PoProfileCoordinate2>(),
    classOf<PoLabelHints>(),
    classOf<PoCellFilter>(),
    classOf<PoIntervalCellFilter>(),
};

#undef PI_MESH_NODE_CLASS

}  // namespace

void PoNode::initClasses() {
  for (const NodeClass& node : kNodes) node.init();
}

void PoNode::exitClasses() {
  for (auto node = std::rbegin(kNodes); node != std::rend(kNodes); ++node) node->exit();
}

void* PoNode::operator new(std::size_t size) {
  PiLibrary::retain();
  try {
    return ::operator new(size);
  } catch (const std::bad_alloc&) {
    PiLibrary::release();
    throw;
  }
}

void PoNode::operator delete(void* memory) {
  ::operator delete(memory);
  PiLibrary::release();
}

PoNode::PoNode() {
  PO_NODE_CONSTRUCTOR(PoNode);
  PO_NODE_CONSTRUCTED(PoNode);
}

PoNode::~PoNode() = default;

void PoNode::GLRender(SoGLRenderAction* action) { doAction(action); }
void PoNode::callback(SoCallbackAction* action) { doAction(action); }
void PoNode::getBoundingBox(SoGetBoundingBoxAction* action) { doAction(action); }
void PoNode::getMatrix(SoGetMatrixAction* action) { doAction(action); }
void PoNode::handleEvent(SoHandleEventAction* action) { doAction(action); }
void PoNode::pick(SoPickAction* action) { doAction(action); }
void PoNode::getPrimitiveCount(SoGetPrimitiveCountAction* action) { doAction(action); }

void PoNode::search(SoSearchAction* action) {
  doAction(action);
  inherited::search(action);
}

void PoNode::write(SoWriteAction* action) {
  doAction(action);
  // A binary group says how many children follow: one that wrote nothing would make the file unreadable.
  if (PoBase::getNodeWriteFormat() == PoBase::WRITE_FIELDS || action->getOutput()->isBinary()) inherited::write(action);
}
