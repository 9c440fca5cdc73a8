#ifndef ORMELLE_PIANIMATEDPNG_H
#define ORMELLE_PIANIMATEDPNG_H

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "graph/toolkit/offscreen/PiPicture.h"

/// Gathers pictures of one size into an animated PNG picture (the `acTL`, `fcTL` and `fdAT` chunks of the third edition
/// of the format), which browsers play for ever and other programs show the first picture of.
class PiAnimatedPng {
 public:
  PiAnimatedPng(double framesPerSecond, double dpi, bool hasOpacity)
      : m_framesPerSecond(framesPerSecond), m_dpi(dpi), m_hasOpacity(hasOpacity) {}

  /// Returns what went wrong, empty if nothing did.
  std::string add(const PiPicture& picture);
  /// Writes the file; a failure shows in the stream's error flag.
  void write(std::FILE* stream) const;

 private:
  using Bytes = std::vector<uint8_t>;

  double m_framesPerSecond;
  double m_dpi;
  bool m_hasOpacity;
  int m_width = 0;
  int m_height = 0;
  Bytes m_head;               // signature and the chunks before the first picture's data
  std::vector<Bytes> m_data;  // the compressed data of each picture
};

#endif
