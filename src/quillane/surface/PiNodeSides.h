#ifndef ORMELLE_PINODESIDES_H
#define ORMELLE_PINODESIDES_H

#include <cstddef>
#include <cstdint>

/// What a pass that compares values with a level came across.
struct PiSidesSeen {
  bool isAnyEqual = false;
  bool isAnyNaN = false;

  void add(const PiSidesSeen& other) {
    isAnyEqual |= other.isAnyEqual;
    isAnyNaN |= other.isAnyNaN;
  }
};

/// Sets `flags[n]` to 1 where values[n] is above the level, or if `isToMax` is off below it, else to 0.
PiSidesSeen findSides(const float* values, std::size_t num, float iso, bool isToMax, std::uint8_t* flags);

/// The same, 64 flags to a word, the first in the lowest bit.
PiSidesSeen findSides(const float* values, std::size_t num, float iso, bool isToMax, std::uint64_t* words);

#endif
