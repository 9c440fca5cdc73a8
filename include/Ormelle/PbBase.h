#ifndef ORMELLE_PBBASE_H
#define ORMELLE_PBBASE_H

#include <Ormelle/OrmelleExport.h>

class PoBase;

/// Root of the plain data objects: domains, data mappings, isovalue lists, formats, meshes and cells.
///
/// A data object isn't a node: it holds data that representation kits read, and it tells those kits when the data
/// changed. It belongs to the application; a kit that uses it registers itself as a connection and is told, latest
/// connection first, of every change and of the object's end. Deleting an object that live kits use is safe.
///
/// An object and the kits connected to it belong to one thread at a time. Booleans are ints, 0 and 1.
class ORMELLE_API PbBase {
 public:
  /// What the latest notification was about.
  enum ChangeType {
    OBJECT_CHANGE = 0,                ///< any plain setter, and touch()
    OBJECT_DELETED = 1,               ///< the destructor runs: only the address may still be used
    MESH_GEOMETRY_CHANGE = 2,         ///< nodes or cells of a mesh
    MESH_VALUES_CHANGE = 3,           ///< value sets added or removed, vector sets removed
    MESH_STRINGS_CHANGE = 4,          ///< string sets added or removed
    MESH_VECS_CHANGE = 5,             ///< vector sets added
    DOMAIN_TRANSFORM_TYPE_CHANGE = 6  ///< only the transform type of a domain
  };

  /// Tells every connection `OBJECT_DELETED`, even while connections are disabled.
  virtual ~PbBase();

  /// Adds `kit` in front of the list. A kit that is added twice is told twice, and must be removed twice.
  void addConnection(const PoBase* kit);
  /// Removes the latest connection of `kit`. Returns 0 if there is none, else 1.
  int removeConnection(const PoBase* kit);

  /// 0 silences all notifications but that of deletion.
  void enableConnection(int enabled) { m_isConnectionEnabled = enabled; }
  int isConnectionEnabled() const { return m_isConnectionEnabled; }

  ChangeType getChangeType() const { return m_changeType; }
  /// A detail of the latest change, if the class sets one.
  void getDataChange(int& dataChange) const { dataChange = m_dataChange; }

  /// Announces `OBJECT_CHANGE`.
  void touch();

 protected:
  PbBase() = default;
  /// Copies flags and change type; the copy has no connections.
  PbBase(const PbBase& other) { copy(other, 1); }
  /// Copies flags, keeps its own connections and announces `OBJECT_CHANGE`, unless assigned to itself.
  PbBase& operator=(const PbBase& other);

  void setChangeType(ChangeType changeType) { m_changeType = changeType; }
  void setDataChange(int dataChange) { m_dataChange = dataChange; }
  /// Calls `basicObjectChange` of every connected kit. Kits may connect and disconnect meanwhile: one that is removed
  /// before its turn isn't told, one that is added isn't told either.
  virtual void notifyChange();
  /// Frees all connections without telling anybody.
  void removeAllConnection();
  /// Copies flags and change type from `other`; unless `isConstructing`, also announces `OBJECT_CHANGE`.
  void copy(const PbBase& other, int isConstructing);

 private:
  struct Connection;
  struct Notification;

  Connection* m_connections = nullptr;
  Notification* m_notification = nullptr;
  int m_isConnectionEnabled = 1;
  ChangeType m_changeType = OBJECT_CHANGE;
  int m_dataChange = 0;
};

#endif
