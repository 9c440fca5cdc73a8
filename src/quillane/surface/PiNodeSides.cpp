#include "quillane/surface/PiNodeSides.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

/// One of the two comparisons, so that the loop has none but this to make and the compiler makes it for many at once.
template <bool kToMax>
PiSidesSeen compare(const float* values, std::size_t num, float iso, std::uint8_t* flags) {
  std::uint8_t areEqual = 0, areNaN = 0;
  for (std::size_t n = 0; n < num; ++n) {
    const float value = values[n];
    flags[n] = kToMax ? value > iso : value < iso;
    areEqual |= value == iso;
    areNaN |= value != value;
  }
  return {areEqual != 0, areNaN != 0};
}

/// The lowest bits of eight bytes, as a byte.
std::uint64_t packed(const std::uint8_t* flags) {
  std::uint64_t bytes;
  std::memcpy(&bytes, flags, sizeof bytes);
  if constexpr (std::endian::native == std::endian::big) bytes = __builtin_bswap64(bytes);
  return bytes * 0x0102040810204080U >> 56;
}

}  // namespace

PiSidesSeen findSides(const float* values, std::size_t num, float iso, bool isToMax, std::uint8_t* flags) {
  return isToMax ? compare<true>(values, num, iso, flags) : compare<false>(values, num, iso, flags);
}

PiSidesSeen findSides(const float* values, std::size_t num, float iso, bool isToMax, std::uint64_t* words) {
  constexpr std::size_t kBlock = 512;
  std::uint8_t flags[kBlock];
  PiSidesSeen seen;
  for (std::size_t first = 0; first < num; first += kBlock) {
    const std::size_t count = std::min(kBlock, num - first);
    seen.add(findSides(values + first, count, iso, isToMax, flags));
    const std::size_t whole = (count + 63) / 64 * 64;
    std::fill(flags + count, flags + whole, std::uint8_t{0});
    for (std::size_t word = 0; word < whole; word += 64) {
      std::uint64_t bits = 0;
      for (std::size_t byte = 0; byte < 8; ++byte) bits |= packed(flags + word + 8 * byte) << (8 * byte);
      *words++ = bits;
    }
  }
  return seen;
}
