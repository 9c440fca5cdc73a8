#ifndef ORMELLE_PIPICTURE_H
#define ORMELLE_PIPICTURE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// The pixels of a picture: red, green, blue and opacity, a byte each, not premultiplied; the top row comes first.
struct PiPicture {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> rgba;

  /// The four bytes of a pixel, counted from the top left.
  const uint8_t* pixel(int x, int y) const {
    return rgba.data() +
           4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
  }
  bool isOpaque() const;

  /// Writes a PNG file, without an opacity channel if every pixel is opaque; with `dpi` above 0, it says how many
  /// pixels an inch has. The file is complete or isn't there at all. Returns what went wrong, empty if nothing did.
  std::string writePng(const std::string& file, double dpi = 0.0) const;
  /// The same into memory. With `hasOpacity`, always with an opacity channel.
  std::string encodePng(std::vector<uint8_t>& bytes, double dpi = 0.0, bool hasOpacity = false) const;
};

#endif
