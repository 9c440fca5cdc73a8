#ifndef ORMELLE_PIINDEXLIST_H
#define ORMELLE_PIINDEXLIST_H

#include <cstddef>
#include <cstdint>
#include <memory>

class SoMFInt32;

/// A growing list of indices whose memory can be given away to a field.
class PiIndexList {
 public:
  void push_back(int index) {
    if (m_size == m_capacity) reserve(m_capacity ? 2 * m_capacity : 64);
    m_indices[m_size++] = index;
  }
  void reserve(int capacity);
  void clear() { m_size = 0; }
  int size() const { return m_size; }
  int capacity() const { return m_capacity; }
  const std::int32_t* data() const { return m_indices.get(); }
  /// Gives the list to `field`, which frees it, and starts an empty one.
  void handTo(SoMFInt32& field);

 private:
  std::unique_ptr<std::int32_t[]> m_indices;
  int m_size = 0;
  int m_capacity = 0;
};

#endif
