#ifndef ORMELLE_PBMESHARRAY_H
#define ORMELLE_PBMESHARRAY_H

#include <functional>
#include <vector>

/// Elements that a mesh either copied or borrows from its caller.
///
/// A copy of an array that copied its elements copies them again; a copy of one that borrows them borrows the same.
template <class T>
class PbMeshArray {
 public:
  PbMeshArray() = default;
  PbMeshArray(const PbMeshArray& other) { *this = other; }
  PbMeshArray& operator=(const PbMeshArray& other) {
    if (this == &other) return *this;
    const bool isCopy = other.m_data && other.m_data == other.m_owned.data();
    m_owned = other.m_owned;
    m_data = isCopy ? m_owned.data() : other.m_data;
    m_num = other.m_num;
    return *this;
  }

  /// Takes `num` elements. With `copies` they are copied, into the memory already held if it suffices; otherwise only
  /// the pointer is kept. `values` may lie in this very array. Null, or a `num` below 1, leaves the array empty.
  void set(const T* values, int num, int copies) {
    if (!values || num < 1) {
      clear();
    } else if (!copies) {
      m_data = values;
      m_num = num;
      if (!holds(values)) std::vector<T>().swap(m_owned);
    } else {
      if (holds(values))
        m_owned = std::vector<T>(values, values + num);
      else
        m_owned.assign(values, values + num);
      m_data = m_owned.data();
      m_num = num;
    }
  }
  /// Lets go of the elements, and frees them if they are a copy.
  void clear() {
    std::vector<T>().swap(m_owned);
    m_data = nullptr;
    m_num = 0;
  }

  /// Null when empty. A pointer to copied elements lives until the next `set`.
  const T* get() const { return m_data; }
  int getNum() const { return m_num; }
  const T& operator[](int i) const { return m_data[i]; }

 private:
  bool holds(const T* values) const {
    const std::less<const T*> isBefore;
    return !m_owned.empty() && !isBefore(values, m_owned.data()) && isBefore(values, m_owned.data() + m_owned.size());
  }

  std::vector<T> m_owned;
  const T* m_data = nullptr;
  int m_num = 0;
};

#endif
