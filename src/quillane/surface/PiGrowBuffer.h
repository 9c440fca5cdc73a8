#ifndef ORMELLE_PIGROWBUFFER_H
#define ORMELLE_PIGROWBUFFER_H

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

/// A growing array of plain elements that are not set to zero before they are written, and whose memory is kept when
/// it is emptied: what a rebuild needed, the next one finds. The memory can also be given to what frees it by
/// `delete[]`.
template <class Element>
class PiGrowBuffer {
  static_assert(std::is_trivially_copyable_v<Element>);

 public:
  std::size_t size() const { return m_size; }
  std::size_t capacity() const { return m_capacity; }
  bool empty() const { return m_size == 0; }
  Element* data() { return m_elements.get(); }
  const Element* data() const { return m_elements.get(); }
  Element& operator[](std::size_t i) { return m_elements[i]; }
  const Element& operator[](std::size_t i) const { return m_elements[i]; }
  Element* begin() { return data(); }
  Element* end() { return data() + m_size; }
  const Element* begin() const { return data(); }
  const Element* end() const { return data() + m_size; }

  void clear() { m_size = 0; }
  void push_back(const Element& element) {
    const Element kept = element;  // it may be one of those that move
    if (m_size == m_capacity) grow(m_size + 1, m_size);
    m_elements[m_size++] = kept;
  }
  /// Where `count` more elements go, which addWritten() then counts in.
  Element* room(std::size_t count) {
    if (m_capacity - m_size < count) grow(m_size + count, m_size);
    return m_elements.get() + m_size;
  }
  void addWritten(std::size_t count) { m_size += count; }
  /// Memory for `count` elements in all. What isn't written in the end is never touched.
  void reserve(std::size_t count) {
    if (count > m_capacity) grow(count, m_size);
  }
  /// Room for `count` elements, all of them unset.
  void reset(std::size_t count) {
    if (count > m_capacity) grow(count, 0);
    m_size = count;
  }
  /// `count` elements; those that were there stay, and the others are unset.
  void resize(std::size_t count) {
    if (count > m_capacity) grow(count, m_size);
    m_size = count;
  }
  void fill(std::size_t count, const Element& element) {
    reset(count);
    std::fill(begin(), end(), element);
  }
  /// Gives the memory away and leaves an empty array.
  std::unique_ptr<Element[]> release() {
    m_size = m_capacity = 0;
    return std::move(m_elements);
  }

 private:
  void grow(std::size_t needed, std::size_t numKept) {
    const std::size_t capacity = std::max(needed, m_capacity + m_capacity / 2 + 64);
    std::unique_ptr<Element[]> larger(new Element[capacity]);
    std::copy(m_elements.get(), m_elements.get() + numKept, larger.get());
    m_elements = std::move(larger);
    m_capacity = capacity;
  }

  std::unique_ptr<Element[]> m_elements;
  std::size_t m_size = 0;
  std::size_t m_capacity = 0;
};

#endif
