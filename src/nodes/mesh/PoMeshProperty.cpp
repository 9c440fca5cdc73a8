#include <Ormelle/PoMeshProperty.h>
#include <Ormelle/PoSFMesh.h>

PO_NODE_ABSTRACT_SOURCE(PoMeshProperty)

PoMeshProperty::PoMeshProperty() {
  PO_NODE_CONSTRUCTOR(PoMeshProperty);
  PO_NODE_CONSTRUCTED(PoMeshProperty);
}

PoMeshProperty::~PoMeshProperty() = default;

void PoMeshProperty::addValuesSet(int set_index, const float* val, const SbString& set_name) {
  getMesh()->addValuesSet(set_index, val, set_name);
  getMeshField().touch();
}

void PoMeshProperty::addValuesSet(int set_index, const float* val, PbMesh::DataBinding binding,
                                  const SbString& set_name) {
  getMesh()->addValuesSet(set_index, val, binding, set_name);
  getMeshField().touch();
}

void PoMeshProperty::addStringsSet(int set_index, const SbString* val, const SbString& set_name) {
  getMesh()->addStringsSet(set_index, val, set_name);
  getMeshField().touch();
}

void PoMeshProperty::addVecsSet(int set_index, const SbVec3f* val, const SbString& set_name) {
  getMesh()->addVecsSet(set_index, val, set_name);
  getMeshField().touch();
}

void PoMeshProperty::addVecsSet(int set_index, const SbVec3f* val, PbMesh::DataBinding binding,
                                const SbString& set_name) {
  getMesh()->addVecsSet(set_index, val, binding, set_name);
  getMeshField().touch();
}
