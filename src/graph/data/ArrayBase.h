#ifndef ORMELLE_ARRAYBASE_H
#define ORMELLE_ARRAYBASE_H

#include <Inventor/SbColor.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <memory>

/// Growable array of the profile and bevel code; see Vertex2Array, Vertex3Array and ColorArray.
///
/// A full array grows to what is needed plus a margin: what doubling would leave, but kept between the minimum and the
/// maximum growth. When memory runs out the array stays as it was.
template <class T>
class ArrayBase {
 public:
  /// Growths below 1 count as 1. `defaultElement`, which is copied, fills the gap left by an insertion beyond the end;
  /// without one the gap is filled with zeros.
  explicit ArrayBase(int minGrowth = 1, int maxGrowth = 5000, const T* defaultElement = nullptr);
  ArrayBase(const ArrayBase&) = delete;
  ArrayBase& operator=(const ArrayBase&) = delete;
  virtual ~ArrayBase();

  int getNum() const { return m_num; }
  int getCapacity() const { return m_capacity; }
  const T* get() const { return m_data; }
  T& operator[](int i) { return m_data[i]; }
  const T& operator[](int i) const { return m_data[i]; }

  virtual void append(const ArrayBase& other) { append(other.m_num, other.m_data); }
  virtual void append(int n, const T* values) { insert(m_num, n, values); }
  virtual void append(const T& value) { insert(m_num, value); }

  /// Inserts in front of element `index`; values may be elements of this array. A negative index or an `n` below 1 does
  /// nothing.
  virtual void insert(int index, const ArrayBase& other) { insert(index, other.m_num, other.m_data); }
  virtual void insert(int index, int n, const T* values);
  virtual void insert(int index, const T& value) {
    const T copy = value;
    insert(index, 1, &copy);
  }

  /// Removes up to `n` elements from `index` on. A negative index or an `n` below 1 does nothing.
  virtual void remove(int index, int n);
  /// Removes the elements whose indices are listed, in any order and as often as they like; others are ignored. Costs
  /// the length of the array and of the list.
  void removeAll(int numIndices, const int* indices);

  /// Index of the first element from `start` on that is exactly `value`. Raises ElementNotFound if there is none.
  int find(const T& value, int start = 0) const;

 private:
  bool reserve(long long needed);

  int m_minGrowth;
  int m_maxGrowth;
  int m_capacity = 0;
  int m_num = 0;
  T* m_data = nullptr;
  std::unique_ptr<T> m_defaultElement;
};

class Vertex2Array : public ArrayBase<SbVec2f> {
 public:
  using ArrayBase::ArrayBase;
};

class Vertex3Array : public ArrayBase<SbVec3f> {
 public:
  using ArrayBase::ArrayBase;
};

class ColorArray : public ArrayBase<SbColor> {
 public:
  using ArrayBase::ArrayBase;
};

#endif
