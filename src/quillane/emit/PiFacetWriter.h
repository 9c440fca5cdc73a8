#ifndef ORMELLE_PIFACETWRITER_H
#define ORMELLE_PIFACETWRITER_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

#include <Inventor/nodes/SoIndexedFaceSet.h>

#include "quillane/surface/PiGrowBuffer.h"

/// Writes facets into the memory of a face set and notes the cell of each. Facets without an inside are left out: those
/// with fewer than three different corners, and those that run to and fro. More facets than the indices of a field can
/// tell leave it empty.
class PiFacetWriter {
 public:
  /// Room for `numFacets` of up to four corners.
  PiFacetWriter(SoIndexedFaceSet& shape, PiGrowBuffer<int>& cells, std::size_t numFacets)
      : m_field(shape.coordIndex), m_cells(cells) {
    if (numFacets > static_cast<std::size_t>(std::numeric_limits<int>::max()) / 5) numFacets = 0;
    m_hasRoom = numFacets > 0;
    m_cells.reset(numFacets);
    m_field.setNum(static_cast<int>(5 * numFacets));
    m_begin = m_end = m_hasRoom ? m_field.startEditing() : nullptr;
  }
  ~PiFacetWriter() {
    m_cells.resize(m_numFacets);
    if (m_begin) m_field.finishEditing();
    m_field.setNum(static_cast<int>(m_end - m_begin));
  }
  PiFacetWriter(const PiFacetWriter&) = delete;
  PiFacetWriter& operator=(const PiFacetWriter&) = delete;

  /// Adds a facet of three or four corners; `isReversed` turns it round.
  void add(int cell, std::span<const int> corners, bool isReversed) {
    if (!m_hasRoom) return;
    if (corners.size() == 4) {
      const int a = corners[0], b = corners[1], c = corners[2], d = corners[3];
      if (a != b && b != c && c != d && d != a && a != c && b != d) {
        m_end[0] = isReversed ? d : a;
        m_end[1] = isReversed ? c : b;
        m_end[2] = isReversed ? b : c;
        m_end[3] = isReversed ? a : d;
        m_end[4] = -1;
        m_end += 5;
        m_cells[m_numFacets++] = cell;
        return;
      }
    }
    addAny(cell, corners, isReversed);
  }

 private:
  /// A facet of which corners may be the same.
  void addAny(int cell, std::span<const int> corners, bool isReversed) {
    std::int32_t* begin = m_end;
    const std::size_t num = corners.size();
    for (std::size_t c = 0; c < num; ++c) {
      const int corner = corners[isReversed ? num - 1 - c : c];
      if (m_end == begin || m_end[-1] != corner) *m_end++ = corner;
    }
    if (m_end - begin > 1 && m_end[-1] == *begin) --m_end;
    const bool isToAndFro = m_end - begin == 4 && (begin[0] == begin[2] || begin[1] == begin[3]);
    if (m_end - begin < 3 || isToAndFro) {
      m_end = begin;
      return;
    }
    *m_end++ = -1;
    m_cells[m_numFacets++] = cell;
  }

  SoMFInt32& m_field;
  PiGrowBuffer<int>& m_cells;
  bool m_hasRoom;
  std::size_t m_numFacets = 0;
  std::int32_t* m_begin;
  std::int32_t* m_end;
};

#endif
