#ifndef ORMELLE_PIUNIQUEINDICES_H
#define ORMELLE_PIUNIQUEINDICES_H

#include <Ormelle/PbArrayOfInt.h>

#include <unordered_set>

/// Appends indices to a list, each once. Short lists are searched; long ones get a hash set, so that a node with
/// thousands of cells costs no quadratic walk.
class PiUniqueIndices {
 public:
  /// What `list` holds already counts as appended. Nothing else may change the list meanwhile.
  explicit PiUniqueIndices(PbArrayOfInt& list) : m_list(list) {}

  /// Appends `index` and returns true unless it is in the list already.
  bool add(int index) {
    if (m_list.getNum() <= kShort) {
      if (m_list.find(index) >= 0) return false;
    } else {
      if (m_seen.empty()) m_seen.insert(m_list.get(), m_list.get() + m_list.getNum());
      if (!m_seen.insert(index).second) return false;
    }
    m_list.add(index);
    return true;
  }

 private:
  static constexpr int kShort = 64;

  PbArrayOfInt& m_list;
  std::unordered_set<int> m_seen;
};

#endif
