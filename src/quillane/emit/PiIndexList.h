#ifndef ORMELLE_PIINDEXLIST_H
#define ORMELLE_PIINDEXLIST_H

#include <algorithm>
#include <cstdint>

#include "quillane/surface/PiGrowBuffer.h"

class SoMFInt32;

/// A growing list of indices whose memory can be given away to a field.
class PiIndexList : public PiGrowBuffer<std::int32_t> {
 public:
  /// Appends the corners of a part and the -1 that closes it.
  void addPart(const int* corners, int num) {
    const auto numCorners = static_cast<std::size_t>(num);
    std::int32_t* end = room(numCorners + 1);
    std::copy(corners, corners + numCorners, end);
    end[numCorners] = -1;
    addWritten(numCorners + 1);
  }
  /// Gives the list to `field`, which frees it, and starts an empty one. A list that is longer than a field can be
  /// leaves the field empty.
  void handTo(SoMFInt32& field) { hand(*this, field); }
  /// The same for indices that were collected elsewhere.
  static void hand(PiGrowBuffer<std::int32_t>& indices, SoMFInt32& field);
};

#endif
