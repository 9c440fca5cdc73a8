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
    if (m_size == m_capacity) grow(1);
    m_indices[m_size++] = index;
  }
  /// Appends the corners of a part and the -1 that closes it.
  void addPart(const int* corners, int num) {
    const auto numCorners = static_cast<std::size_t>(num);
    if (m_capacity - m_size <= numCorners) grow(numCorners + 1);
    std::int32_t* end = m_indices.get() + m_size;
    for (std::size_t i = 0; i < numCorners; ++i) end[i] = corners[i];
    end[numCorners] = -1;
    m_size += numCorners + 1;
  }
  void reserve(std::size_t capacity);
  void clear() { m_size = 0; }
  const std::int32_t* data() const { return m_indices.get(); }
  std::size_t size() const { return m_size; }
  std::size_t capacity() const { return m_capacity; }
  /// Gives the list to `field`, which frees it, and starts an empty one. A list that is longer than a field can be
  /// leaves the field empty.
  void handTo(SoMFInt32& field);

 private:
  void grow(std::size_t numMore);

  std::unique_ptr<std::int32_t[]> m_indices;
  std::size_t m_size = 0;
  std::size_t m_capacity = 0;
};

#endif
