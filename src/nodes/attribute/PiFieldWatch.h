#ifndef ORMELLE_PIFIELDWATCH_H
#define ORMELLE_PIFIELDWATCH_H

#include <vector>

#include <Inventor/sensors/SoFieldSensor.h>

/// Remembers that one of some fields was edited, so that a node can bring its data object up to date when it is next
/// traversed and not at every edit.
///
/// An edit is whatever notifies of the field: a new value, one read from a file, one that comes over a connection. The
/// fields must outlive the watch: declare it behind them in the node.
class PiFieldWatch {
 public:
  template <class... Fields>
  explicit PiFieldWatch(Fields&... fields) : m_sensors(sizeof...(fields)) {
    auto sensor = m_sensors.begin();
    for (SoField* field : {static_cast<SoField*>(&fields)...}) {
      sensor->setFunction(&edited);
      sensor->setData(this);
      sensor->setPriority(0);
      sensor->attach(field);
      ++sensor;
    }
  }
  PiFieldWatch(const PiFieldWatch&) = delete;
  PiFieldWatch& operator=(const PiFieldWatch&) = delete;

  /// Whether a field was edited since the last call. The first call says yes: the object knows no field yet.
  bool take() {
    const bool isEdited = m_isEdited;
    m_isEdited = false;
    return isEdited;
  }

 private:
  static void edited(void* watch, SoSensor*) { static_cast<PiFieldWatch*>(watch)->m_isEdited = true; }

  std::vector<SoFieldSensor> m_sensors;
  bool m_isEdited = true;
};

#endif
