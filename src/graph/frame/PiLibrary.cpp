#include "graph/frame/PiLibrary.h"

#include <Ormelle/PoBase.h>
#include <Ormelle/PoDebugError.h>
#include <Ormelle/PoLibOrmelleP.h>
#include <Ormelle/PoNode.h>
#include <Ormelle/PoQuillane.h>
#include <Ormelle/PoSFMesh.h>
#include <Ormelle/PoTavernel.h>

#include "graph/toolkit/PiToolkit.h"
#include "graph/toolkit/PiWritePreparation.h"
#include "graph/toolkit/SoAnnoText3.h"
#include "nodes/element/PiElementClasses.h"

int PiLibrary::s_inits = 0;
int PiLibrary::s_nodes = 0;
bool PiLibrary::s_isRegistered = false;
bool PiLibrary::s_isFinishPending = false;

void PiLibrary::init() {
  start();
  ++s_inits;
}

void PiLibrary::finish() {
  if (s_inits == 0) return;
  --s_inits;
  PiToolkit::finish();
  s_isFinishPending = s_inits == 0;
  stopIfUnused();
}

void PiLibrary::retain() {
  start();
  ++s_nodes;
}

void PiLibrary::release() {
  if (s_nodes == 0) return;
  --s_nodes;
  PiToolkit::finish();
  stopIfUnused();
}

void PiLibrary::start() {
  PiToolkit::init();
  if (!s_isRegistered) registerClasses();
}

void PiLibrary::stopIfUnused() {
  if (s_inits + s_nodes == 0 && s_isFinishPending) unregisterClasses();
}

void PiLibrary::registerClasses() {
  s_isRegistered = true;
  s_isFinishPending = false;
  PiToolkit::callBeforeEnd(&PiLibrary::toolkitEnds);
  PiWritePreparation::install();
  PoDebugError::initClass();
  PoBase::initClass();
  PoTavernel::initClasses();
  PoQuillane::initClasses();
  PiElementTable::initClasses();
  PoNode::initClasses();
  PoSFMesh::initClasses();
  SoAnnoText3::initClass();
}

void PiLibrary::unregisterClasses() {
  if (!s_isRegistered) return;
  s_isRegistered = false;
  s_isFinishPending = false;
  SoAnnoText3::exitClass();
  PoSFMesh::exitClasses();
  PoNode::exitClasses();
  PiElementTable::exitClasses();
  PoLibOrmelleP::exitViewClasses();
  PoQuillane::exitClasses();
  PoTavernel::exitClasses();
  PoBase::exitClass();
}

void PiLibrary::toolkitEnds() {
  unregisterClasses();
  PoDebugError::exitClass();
  s_inits = 0;
  s_nodes = 0;
}
