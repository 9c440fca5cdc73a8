#ifndef ORMELLE_PBARRAY_H
#define ORMELLE_PBARRAY_H

#include <utility>

#include <Ormelle/OrmelleExport.h>

/// What PbArrayOfInt, PbArrayOfLong and PbArrayOfFloat have in common: a growable array by value in one plain block.
///
/// Name those classes, not this one; `Array` is the class made of it and `T` its element type.
///
/// The capacity grows by whole grow steps. The block behind it is enlarged in proportion to its size, so that
/// appending costs the same for an element however long the array is. When memory runs out, the operation that asked
/// for it leaves the array as it was. Elements that were never stored are uninitialised.
template <class T, class Array>
class ORMELLE_API PbArray {
 public:
  /// No data, capacity 0, grow step 10.
  PbArray() = default;
  /// Room for `capacity` elements, none of them used. Both arguments are raised to 1 if they are lower.
  PbArray(int capacity, int growStep);
  /// Copies the used elements, the capacity and the grow step.
  PbArray(const PbArray& other);
  PbArray(PbArray&& other) noexcept { swap(other); }
  PbArray& operator=(const PbArray& other);
  PbArray& operator=(PbArray&& other) noexcept {
    swap(other);
    return *this;
  }
  ~PbArray();

  /// The block; null while nothing is allocated. Valid until the next operation that grows or squeezes the array.
  const T* get() const { return m_data; }
  T* get() { return m_data; }
  /// Element `i`, which must be below the capacity; not tested.
  T get(int i) const { return m_data[i]; }
  T operator[](int i) const { return m_data[i]; }
  /// Element `i`, which counts as used from now on. Never grows: `i` must be below the capacity; not tested.
  T& operator[](int i) {
    if (i > m_lastIndex) m_lastIndex = i;
    return m_data[i];
  }

  /// Index of the first element equal to `value`, else -1.
  int find(T value) const {
    for (int i = 0; i <= m_lastIndex; ++i)
      if (m_data[i] == value) return i;
    return -1;
  }

  /// Stores element `i` and grows to hold it. A negative `i` is ignored.
  void set(int i, T value) {
    if (i < 0 || !reach(i)) return;
    m_data[i] = value;
    if (i > m_lastIndex) m_lastIndex = i;
  }
  /// Appends; returns the new last index, or the old one if memory ran out.
  int add(T value) {
    if (m_lastIndex + 1 < m_capacity || reach(static_cast<long long>(m_lastIndex) + 1)) m_data[++m_lastIndex] = value;
    return m_lastIndex;
  }
  /// Appends `n` elements, which may be elements of this array; the rest as above.
  int add(int n, const T* values);
  Array& operator+=(T value) {
    add(value);
    return self();
  }
  Array& operator+=(const Array& other) {
    add(other.getNum(), other.get());
    return self();
  }

  int getNum() const { return m_lastIndex + 1; }
  int getCapacity() const { return m_capacity; }
  /// Forgets all elements and keeps the memory.
  void empty() { m_lastIndex = -1; }
  /// Gives back the memory that isn't used.
  void squeeze();
  /// Sets the grow step, if `growStep` is positive, and makes room for `n` elements. Never shrinks.
  void setCapacity(int n, int growStep);

  /// Sort in place. Elements that aren't numbers go last, in either order.
  void increasingSort();
  void decreasingSort();

  bool operator==(const PbArray& other) const;
  bool operator!=(const PbArray& other) const { return !(*this == other); }

 private:
  Array& self() { return static_cast<Array&>(*this); }
  void swap(PbArray& other) noexcept {
    std::swap(m_data, other.m_data);
    std::swap(m_capacity, other.m_capacity);
    std::swap(m_lastIndex, other.m_lastIndex);
    std::swap(m_growStep, other.m_growStep);
    std::swap(m_allocated, other.m_allocated);
  }
  bool reach(long long index) { return index < m_capacity || grow(index + 1); }
  bool grow(long long n);
  bool moveTo(int allocated);

  T* m_data = nullptr;
  int m_capacity = 0;
  int m_lastIndex = -1;
  int m_growStep = 10;
  int m_allocated = 0;  // elements that the block really holds: at least the capacity
};

#endif
