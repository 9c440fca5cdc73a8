#ifndef ORMELLE_PIGROWINGARRAY_H
#define ORMELLE_PIGROWINGARRAY_H

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

/// A growing array of plain values for very many of them: new memory isn't touched before it is written, clearing keeps
/// it, and it can be given away to what frees it by `delete[]`.
template <class T>
class PiGrowingArray {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

 public:
  std::size_t size() const { return m_size; }
  std::size_t capacity() const { return m_capacity; }
  bool empty() const { return m_size == 0; }
  T* data() { return m_memory.get(); }
  const T* data() const { return m_memory.get(); }
  T& operator[](std::size_t i) { return m_memory[i]; }
  const T& operator[](std::size_t i) const { return m_memory[i]; }
  T* begin() { return data(); }
  T* end() { return data() + m_size; }
  const T* begin() const { return data(); }
  const T* end() const { return data() + m_size; }

  void clear() { m_size = 0; }
  void push_back(const T& value) {
    const T kept = value;  // it may be an element
    if (m_size == m_capacity) grow(1);
    m_memory[m_size++] = kept;
  }
  /// Makes room for `num` more elements and returns where they go; they are counted in by addWritten().
  T* room(std::size_t num) {
    if (m_capacity - m_size < num) grow(num);
    return m_memory.get() + m_size;
  }
  void addWritten(std::size_t num) { m_size += num; }
  /// `size` elements of which those that are new hold anything.
  void resize(std::size_t size) {
    if (size > m_size) room(size - m_size);
    m_size = size;
  }
  void reserve(std::size_t capacity) {
    if (capacity <= m_capacity) return;
    std::unique_ptr<T[]> larger(new T[capacity]);
    std::copy(begin(), end(), larger.get());
    m_memory = std::move(larger);
    m_capacity = capacity;
  }
  /// Gives the memory away and starts an empty array.
  std::unique_ptr<T[]> release() {
    m_size = m_capacity = 0;
    return std::move(m_memory);
  }

 private:
  void grow(std::size_t numMore) { reserve(std::max(m_capacity + m_capacity / 2, m_size + numMore + 64)); }

  std::unique_ptr<T[]> m_memory;
  std::size_t m_size = 0;
  std::size_t m_capacity = 0;
};

#endif
