#include "graph/data/ArrayBase.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <functional>
#include <type_traits>
#include <vector>

#include "graph/frame/PiMemory.h"
#include "graph/frame/PoException.h"

namespace {

// Elements are plain floats behind a class with constructors, so that blocks of them may be moved as bytes.
template <class T>
void moveElements(T* to, const T* from, int num) {
  static_assert(std::is_trivially_destructible_v<T>);
  if (num > 0) std::memmove(static_cast<void*>(to), from, num * sizeof(T));
}

}  // namespace

template <class T>
ArrayBase<T>::ArrayBase(int minGrowth, int maxGrowth, const T* defaultElement)
    : m_minGrowth(std::max(minGrowth, 1)), m_maxGrowth(std::max(maxGrowth, m_minGrowth)) {
  if (defaultElement) m_defaultElement = std::make_unique<T>(*defaultElement);
}

template <class T>
ArrayBase<T>::~ArrayBase() {
  PiMemory::free(m_data);
}

template <class T>
bool ArrayBase<T>::reserve(long long needed) {
  if (needed <= m_capacity) return true;
  if (needed > INT_MAX) return false;
  long long doubled = m_capacity > 0 ? 2LL * m_capacity : m_minGrowth;
  while (doubled < needed) doubled *= 2;
  const long long margin = std::clamp<long long>(doubled - needed, m_minGrowth, m_maxGrowth);
  const int capacity = static_cast<int>(std::min<long long>(needed + margin, INT_MAX));
  void* data = PiMemory::reallocate(nullptr, 0, m_data, capacity * sizeof(T));
  if (!data) return false;
  m_data = static_cast<T*>(data);
  m_capacity = capacity;
  return true;
}

template <class T>
void ArrayBase<T>::insert(int index, int n, const T* values) {
  if (index < 0 || n < 1 || !values) return;
  const std::less<const T*> isBefore;
  if (m_data && !isBefore(values, m_data) && isBefore(values, m_data + m_num)) {
    const std::vector<T> copy(values, values + n);
    insert(index, n, copy.data());
    return;
  }
  const int end = std::max(index, m_num);
  if (!reserve(static_cast<long long>(end) + n)) return;
  if (index > m_num) {
    if (!m_defaultElement)
      std::memset(static_cast<void*>(m_data + m_num), 0, (index - m_num) * sizeof(T));
    else
      std::fill(m_data + m_num, m_data + index, *m_defaultElement);
  }
  moveElements(m_data + index + n, m_data + index, end - index);
  moveElements(m_data + index, values, n);
  m_num = end + n;
}

template <class T>
void ArrayBase<T>::remove(int index, int n) {
  if (index < 0 || n < 1 || index >= m_num) return;
  n = std::min(n, m_num - index);
  moveElements(m_data + index, m_data + index + n, m_num - index - n);
  m_num -= n;
}

template <class T>
void ArrayBase<T>::removeAll(int numIndices, const int* indices) {
  std::vector<bool> isRemoved(m_num);
  for (int i = 0; i < numIndices; ++i)
    if (indices[i] >= 0 && indices[i] < m_num) isRemoved[indices[i]] = true;
  int kept = 0;
  for (int i = 0; i < m_num; ++i)
    if (!isRemoved[i]) m_data[kept++] = m_data[i];
  m_num = kept;
}

template <class T>
int ArrayBase<T>::find(const T& value, int start) const {
  for (int i = std::max(start, 0); i < m_num; ++i)
    if (m_data[i] == value) return i;
  PoException::raise(new ElementNotFound);
}

template class ArrayBase<SbVec2f>;
template class ArrayBase<SbVec3f>;
template class ArrayBase<SbColor>;
