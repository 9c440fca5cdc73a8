#ifndef ORMELLE_PICONNECTEDSLOT_H
#define ORMELLE_PICONNECTEDSLOT_H

#include <vector>

class PbBase;
class PoBase;
class PiConnectedSlotBase;

/// All places of one kit that hold data objects. An object has one connection to the kit, however many of them hold it,
/// so that the kit is told of each change once.
class PiConnectedSlots {
 public:
  explicit PiConnectedSlots(const PoBase* kit) : m_kit(kit) {}
  /// The slots must be gone by now, and with them their connections.
  ~PiConnectedSlots();
  PiConnectedSlots(const PiConnectedSlots&) = delete;
  PiConnectedSlots& operator=(const PiConnectedSlots&) = delete;

  bool holds(const PbBase* object) const;
  /// Empties every slot that holds `object`, which is about to die: its own end takes the connection away.
  void forget(const PbBase* object);

 private:
  friend class PiConnectedSlotBase;

  const PoBase* m_kit;
  std::vector<PiConnectedSlotBase*> m_slots;
};

class PiConnectedSlotBase {
 public:
  PiConnectedSlotBase(const PiConnectedSlotBase&) = delete;
  PiConnectedSlotBase& operator=(const PiConnectedSlotBase&) = delete;

 protected:
  explicit PiConnectedSlotBase(PiConnectedSlots& slots);
  ~PiConnectedSlotBase();

  void setObject(PbBase* object);
  PbBase* object() const { return m_object; }

 private:
  friend class PiConnectedSlots;

  PiConnectedSlots& m_slots;
  PbBase* m_object = nullptr;
};

/// One such place: holds a pointer, not the object, and sees to the connection. `T` must be complete where it is used.
template <class T>
class PiConnectedSlot : private PiConnectedSlotBase {
 public:
  explicit PiConnectedSlot(PiConnectedSlots& slots) : PiConnectedSlotBase(slots) {}

  T* get() const { return static_cast<T*>(object()); }
  void set(T* object) { setObject(object); }
};

#endif
