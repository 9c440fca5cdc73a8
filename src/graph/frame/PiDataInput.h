#ifndef ORMELLE_PIDATAINPUT_H
#define ORMELLE_PIDATAINPUT_H

#include "graph/frame/PiConnectedSlot.h"

/// One data object that a kit uses: given by the application, or else found on the traversal state. The kit is
/// connected to it either way, so that a change of the object itself is seen even where no node was touched.
template <class T>
class PiDataInput {
 public:
  explicit PiDataInput(PiConnectedSlots& slots) : m_given(slots), m_found(slots) {}

  void give(T* object) { m_given.set(object); }
  T* given() const { return m_given.get(); }

  /// The object to use. Outside a traversal nothing can be found anew: then the one found last stays in use, which its
  /// connection keeps valid.
  T* resolve(bool isTraversed, const T* onState) {
    if (given())
      m_found.set(nullptr);
    else if (isTraversed)
      m_found.set(const_cast<T*>(onState));
    return given() ? given() : m_found.get();
  }

 private:
  PiConnectedSlot<T> m_given;
  PiConnectedSlot<T> m_found;
};

#endif
