#ifndef ORMELLE_TESTS_FAKEKIT_H
#define ORMELLE_TESTS_FAKEKIT_H

#include <Inventor/fields/SoSFFloat.h>
#include <Ormelle/PbBase.h>
#include <Ormelle/PoBase.h>

class FakeData : public PbBase {};

/// The smallest kit: a cube of the size of its field, which may hold a data object and counts its rebuilds.
class FakeKit : public PoBase {
  PO_KIT_HEADER(FakeKit, PoBase);
  PO_KIT_CATALOG_ENTRY_HEADER(cube);

 public:
  FakeKit();

  SoSFFloat size;
  int rebuilds = 0;
  PbBase* data = nullptr;

  void rebuild() override;
  void setData(PbBase* object);
  void basicObjectChange(PbBase* object) override;
  void useDomainForRebuild(int used) { setDomainUsedForRebuild(used); }

 protected:
  ~FakeKit() override;
  SbBool setUpConnections(SbBool onOff, SbBool doItAlways = FALSE) override;
  void setDefaultOnNonWritingFields() override;

 private:
  SoFieldList m_fields;
  FieldSensorList m_sensors;
};

#endif
