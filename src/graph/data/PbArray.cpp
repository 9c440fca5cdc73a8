#include <Ormelle/PbArray.h>

#include <algorithm>
#include <cassert>
#include <climits>
#include <cstddef>
#include <cstring>
#include <functional>

#include <Ormelle/PbArrayOfFloat.h>
#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbArrayOfLong.h>

#include "graph/frame/PiMemory.h"

template <class T, class Array>
PbArray<T, Array>::PbArray(int capacity, int growStep) : m_growStep(std::max(growStep, 1)) {
  if (moveTo(std::max(capacity, 1))) m_capacity = m_allocated;
}

template <class T, class Array>
PbArray<T, Array>::PbArray(const PbArray& other) {
  *this = other;
}

template <class T, class Array>
PbArray<T, Array>& PbArray<T, Array>::operator=(const PbArray& other) {
  if (this == &other) return *this;
  if (m_allocated < other.m_capacity) {
    // What is used now is about to be lost: no need to move it to another block.
    const int lastIndex = std::exchange(m_lastIndex, -1);
    if (!moveTo(other.m_capacity)) {
      m_lastIndex = lastIndex;
      return *this;
    }
  }
  m_capacity = other.m_capacity;
  m_growStep = other.m_growStep;
  m_lastIndex = other.m_lastIndex;
  assert(m_data || m_lastIndex < 0);
  if (m_lastIndex >= 0) std::memcpy(m_data, other.m_data, getNum() * sizeof(T));
  return *this;
}

template <class T, class Array>
PbArray<T, Array>::~PbArray() {
  PiMemory::free(m_data);
}

template <class T, class Array>
int PbArray<T, Array>::add(int n, const T* values) {
  if (n <= 0 || !values) return m_lastIndex;
  // Growing moves the block, and `values` with it if they lie inside.
  const std::less<const T*> isBefore;
  const bool isOwn = m_data && !isBefore(values, m_data) && isBefore(values, m_data + m_allocated);
  const std::ptrdiff_t offset = isOwn ? values - m_data : 0;
  if (!reach(static_cast<long long>(m_lastIndex) + n)) return m_lastIndex;
  assert(m_data);
  std::memmove(m_data + m_lastIndex + 1, isOwn ? m_data + offset : values, n * sizeof(T));
  return m_lastIndex += n;
}

template <class T, class Array>
void PbArray<T, Array>::squeeze() {
  if (m_allocated == getNum() || moveTo(getNum())) m_capacity = getNum();
}

template <class T, class Array>
void PbArray<T, Array>::setCapacity(int n, int growStep) {
  if (growStep > 0) m_growStep = growStep;
  if (n > m_capacity && (n <= m_allocated || moveTo(n))) m_capacity = n;
}

// Makes the capacity the old one plus the fewest whole steps that reach `n`.
template <class T, class Array>
bool PbArray<T, Array>::grow(long long n) {
  if (n > INT_MAX) return false;
  const long long steps = (n - m_capacity - 1) / m_growStep + 1;
  const long long capacity = std::min<long long>(m_capacity + steps * m_growStep, INT_MAX);
  const long long proportional = std::min<long long>(m_allocated + m_allocated / 2LL, INT_MAX);
  if (capacity > m_allocated && !moveTo(static_cast<int>(std::max(capacity, proportional)))) return false;
  m_capacity = static_cast<int>(capacity);
  return true;
}

// Moves the used elements to a block of exactly `allocated` elements, which must hold them.
template <class T, class Array>
bool PbArray<T, Array>::moveTo(int allocated) {
  T* data = nullptr;
  if (allocated > 0) {
    data = static_cast<T*>(PiMemory::allocate(allocated * sizeof(T)));
    if (!data) return false;
    if (m_lastIndex >= 0) std::memcpy(data, m_data, getNum() * sizeof(T));
  }
  PiMemory::free(m_data);
  m_data = data;
  m_allocated = allocated;
  return true;
}

namespace {

template <class T, class Order>
void sortNumbers(T* begin, T* end, Order order) {
  const auto isNumber = [](T value) { return value == value; };  // NOLINT(misc-redundant-expression): NaN isn't
  std::sort(begin, std::stable_partition(begin, end, isNumber), order);
}

}  // namespace

template <class T, class Array>
void PbArray<T, Array>::increasingSort() {
  if (m_lastIndex > 0) sortNumbers(m_data, m_data + getNum(), std::less<T>());
}

template <class T, class Array>
void PbArray<T, Array>::decreasingSort() {
  if (m_lastIndex > 0) sortNumbers(m_data, m_data + getNum(), std::greater<T>());
}

template <class T, class Array>
bool PbArray<T, Array>::operator==(const PbArray& other) const {
  return getNum() == other.getNum() && std::equal(m_data, m_data + getNum(), other.get());
}

template class PbArray<int, PbArrayOfInt>;
template class PbArray<int, PbArrayOfLong>;
template class PbArray<float, PbArrayOfFloat>;
