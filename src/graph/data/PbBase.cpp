#include <Ormelle/PbBase.h>
#include <Ormelle/PoBase.h>

struct PbBase::Connection {
  const PoBase* kit;
  Connection* next;
};

// One pass over the connections. The links may change under it, so it says which link comes next; a removal that hits
// that link moves it on. Passes nest when a kit that is told changes the object again, and the object may be deleted by
// one of them.
struct PbBase::Notification {
  Connection* next;
  Notification* outer;
  bool isObjectGone = false;
};

PbBase::~PbBase() {
  m_changeType = OBJECT_DELETED;
  notifyChange();
  removeAllConnection();
  for (Notification* pass = m_notification; pass; pass = pass->outer) pass->isObjectGone = true;
}

PbBase& PbBase::operator=(const PbBase& other) {
  if (this != &other) copy(other, 0);
  return *this;
}

void PbBase::addConnection(const PoBase* kit) { m_connections = new Connection{kit, m_connections}; }

int PbBase::removeConnection(const PoBase* kit) {
  for (Connection** link = &m_connections; *link; link = &(*link)->next) {
    Connection* found = *link;
    if (found->kit != kit) continue;
    *link = found->next;
    for (Notification* pass = m_notification; pass; pass = pass->outer)
      if (pass->next == found) pass->next = found->next;
    delete found;
    return 1;
  }
  return 0;
}

void PbBase::touch() {
  setChangeType(OBJECT_CHANGE);
  notifyChange();
}

void PbBase::notifyChange() {
  if (m_changeType != OBJECT_DELETED && !m_isConnectionEnabled) return;
  Notification pass{m_connections, m_notification};
  m_notification = &pass;
  while (Connection* current = pass.next) {
    pass.next = current->next;
    const_cast<PoBase*>(current->kit)->basicObjectChange(this);
    if (pass.isObjectGone) return;
  }
  m_notification = pass.outer;
}

void PbBase::removeAllConnection() {
  while (Connection* first = m_connections) {
    m_connections = first->next;
    delete first;
  }
  for (Notification* pass = m_notification; pass; pass = pass->outer) pass->next = nullptr;
}

void PbBase::copy(const PbBase& other, int isConstructing) {
  m_isConnectionEnabled = other.m_isConnectionEnabled;
  m_changeType = other.m_changeType;
  m_dataChange = other.m_dataChange;
  if (isConstructing) {
    m_connections = nullptr;
    return;
  }
  setChangeType(OBJECT_CHANGE);
  notifyChange();
}
