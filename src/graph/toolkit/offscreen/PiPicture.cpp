#include "graph/toolkit/offscreen/PiPicture.h"

#include <png.h>

#include "graph/toolkit/offscreen/PiWholeFile.h"

bool PiPicture::isOpaque() const {
  for (std::size_t i = 3; i < rgba.size(); i += 4)
    if (rgba[i] != 255) return false;
  return true;
}

std::string PiPicture::writePng(const std::string& file) const {
  // The simple interface of libpng takes rows of three bytes or of four: pack those of an opaque picture.
  std::vector<uint8_t> packed;
  const bool opaque = isOpaque();
  if (opaque) {
    packed.reserve(rgba.size() / 4 * 3);
    for (std::size_t i = 0; i < rgba.size(); i += 4) packed.insert(packed.end(), &rgba[i], &rgba[i] + 3);
  }
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(width);
  image.height = static_cast<png_uint_32>(height);
  image.format = opaque ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA;

  PiWholeFile out(file);
  if (out.stream() &&
      !png_image_write_to_stdio(&image, out.stream(), 0, opaque ? packed.data() : rgba.data(), 0, nullptr))
    return std::string(image.message);
  return out.close();
}
