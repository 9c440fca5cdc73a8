#ifndef ORMELLE_PINEWARRAY_H
#define ORMELLE_PINEWARRAY_H

#include <cassert>
#include <cstddef>
#include <memory>
#include <span>

/// An array that is filled up to a size known beforehand and then handed to a caller, who frees it with `delete[]`.
template <class T>
class PiNewArray {
 public:
  PiNewArray() = default;
  /// Room for `capacity` elements, none of them used.
  explicit PiNewArray(std::size_t capacity)
      : m_elements(capacity ? std::make_unique_for_overwrite<T[]>(capacity) : nullptr), m_capacity(capacity) {}
  /// Takes over `num` elements, which may be null if there are none.
  PiNewArray(T* elements, std::size_t num) : m_elements(elements), m_capacity(num), m_num(num) {}

  void add(const T& element) {
    assert(m_num < m_capacity && "the capacity is the largest size that can be needed");
    m_elements[m_num++] = element;
  }

  /// Takes the elements from `num` on away again.
  void truncate(std::size_t num) { m_num = num < m_num ? num : m_num; }

  std::size_t num() const { return m_num; }
  const T& operator[](std::size_t i) const { return m_elements[i]; }
  const T& back() const { return m_elements[m_num - 1]; }
  std::span<const T> span() const { return {m_elements.get(), m_num}; }

  /// Null if there is no element.
  T* release() {
    if (m_num == 0) m_elements.reset();
    m_num = m_capacity = 0;
    return m_elements.release();
  }

 private:
  std::unique_ptr<T[]> m_elements;
  std::size_t m_capacity = 0;
  std::size_t m_num = 0;
};

#endif
