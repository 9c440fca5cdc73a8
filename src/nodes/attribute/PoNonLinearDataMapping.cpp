#include <Ormelle/PoNonLinearDataMapping.h>

#include <Ormelle/PbNonLinearDataMapping.h>

#include "nodes/attribute/PiFieldWatch.h"

PO_NODE_SOURCE(PoNonLinearDataMapping)

PoNonLinearDataMapping::PoNonLinearDataMapping() : PoDataMapping(new PbNonLinearDataMapping) {
  PO_NODE_CONSTRUCTOR(PoNonLinearDataMapping);
  PO_NODE_CONSTRUCTED(PoNonLinearDataMapping);
}

PoNonLinearDataMapping::~PoNonLinearDataMapping() = default;

PbNonLinearDataMapping& PoNonLinearDataMapping::functions() const {
  return static_cast<PbNonLinearDataMapping&>(*m_mapping);
}

// The touch is for the caches of the scene, the kits hear from the object.
void PoNonLinearDataMapping::setRGBFunction(const SbColor* (*function)(float)) {
  functions().setRGBFunction(function);
  touch();
}

void PoNonLinearDataMapping::setRGBFunction(const SbColor* (*function)(void*, float), void* userData) {
  functions().setRGBFunction(function, userData);
  touch();
}

void PoNonLinearDataMapping::setHLSFunction(const float* (*function)(float)) {
  functions().setHLSFunction(function);
  touch();
}

void PoNonLinearDataMapping::setHLSFunction(const float* (*function)(void*, float), void* userData) {
  functions().setHLSFunction(function, userData);
  touch();
}

void PoNonLinearDataMapping::setTransparencyFunction(float (*function)(float)) {
  functions().setTransparencyFunction(function);
  touch();
}

void PoNonLinearDataMapping::setTransparencyFunction(float (*function)(void*, float), void* userData) {
  functions().setTransparencyFunction(function, userData);
  touch();
}

void PoNonLinearDataMapping::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  inherited::copyContents(from, copyConnections);
  functions() = static_cast<const PoNonLinearDataMapping*>(from)->functions();
}
