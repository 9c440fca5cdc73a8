#ifndef ORMELLE_PISINGLENOTIFICATION_H
#define ORMELLE_PISINGLENOTIFICATION_H

#include <Ormelle/PbBase.h>

/// Keeps a data object silent while several of its setters run, and tells its kits once at the end, so that a kit that
/// rebuilds at every change does so once and with all of the new values.
class PiSingleNotification {
 public:
  explicit PiSingleNotification(PbBase& object) : m_object(object), m_wasEnabled(object.isConnectionEnabled()) {
    m_object.enableConnection(0);
  }
  ~PiSingleNotification() {
    m_object.enableConnection(m_wasEnabled);
    if (m_isChanged) m_object.touch();
  }
  PiSingleNotification(const PiSingleNotification&) = delete;
  PiSingleNotification& operator=(const PiSingleNotification&) = delete;

  void setChanged() { m_isChanged = true; }

 private:
  PbBase& m_object;
  int m_wasEnabled;
  bool m_isChanged = false;
};

#endif
