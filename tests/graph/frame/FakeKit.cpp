#include "FakeKit.h"

#include <Inventor/nodes/SoCube.h>

PO_KIT_SOURCE(FakeKit)

FakeKit::FakeKit() {
  PO_KIT_CONSTRUCTOR(FakeKit);
  PO_KIT_ADD_CATALOG_ENTRY(cube, SoCube, alternateRep);
  PO_KIT_ADD_FIELD(size, (2));
  PO_KIT_CONSTRUCTED(FakeKit);
  m_fields.append(&size);
  createFieldSensorList(1, &m_sensors);
  addGeneratedAppearance("lightModel");
  setUpConnections(TRUE, TRUE);
}

FakeKit::~FakeKit() {
  changeConnection(data, nullptr);
  deleteFieldSensorList(&m_sensors);
}

void FakeKit::rebuild() {
  preRebuild();
  ++rebuilds;
  auto* shape = new SoCube;
  shape->width = size;
  shape->height = size;
  shape->depth = size;
  setPart("cube", shape);
  setLightModel(SoLightModel::BASE_COLOR);
  postRebuild();
}

void FakeKit::setData(PbBase* object) {
  changeConnection(data, object);
  data = object;
  touchKit();
}

void FakeKit::basicObjectChange(PbBase* object) {
  PoBase::basicObjectChange(object);
  if (object == data) manageBasicObjectChange(object, &data);
}

SbBool FakeKit::setUpConnections(SbBool onOff, SbBool doItAlways) {
  if (!doItAlways && onOff == connectionsSetUp) return onOff;
  if (onOff) {
    PoBase::setUpConnections(onOff, doItAlways);
    attachFieldSensorList(m_sensors, m_fields);
  } else {
    detachFieldSensorList(m_sensors);
    PoBase::setUpConnections(onOff, doItAlways);
  }
  connectionsSetUp = onOff;
  return !onOff;
}

void FakeKit::setDefaultOnNonWritingFields() {
  PoBase::setDefaultOnNonWritingFields();
  if (getNodeWriteFormat() == WRITE_GEOMETRY)
    setListFieldsDefault(m_fields);
  else
    leaveOutOfFile(cube);
}
