#include "graph/toolkit/offscreen/PiPicture.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "graph/toolkit/offscreen/PiWholeFile.h"

namespace {

struct PngMessage {
  char text[128] = "";
};

void keepMessage(png_structp png, png_const_charp text) {
  auto* message = static_cast<PngMessage*>(png_get_error_ptr(png));
  std::snprintf(message->text, sizeof(message->text), "%s", text);
  png_longjmp(png, 1);
}

void dropWarning(png_structp, png_const_charp) {}

// Writes the picture row by row; false, with a message, if that fails. Nothing here needs a destructor: the library
// leaves by a long jump. `row` has room for one row.
bool writeRows(std::FILE* stream, const PiPicture& picture, bool isOpaque, double dpi, png_bytep row,
               PngMessage& message) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &message, keepMessage, dropWarning);
  png_infop info = png ? png_create_info_struct(png) : nullptr;
  if (!info || setjmp(png_jmpbuf(png))) {
    if (!message.text[0]) std::snprintf(message.text, sizeof(message.text), "not enough memory for the picture");
    png_destroy_write_struct(&png, &info);
    return false;
  }
  png_init_io(png, stream);
  png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width), static_cast<png_uint_32>(picture.height), 8,
               isOpaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE,
               PNG_FILTER_TYPE_BASE);
  png_set_sRGB_gAMA_and_cHRM(png, info, PNG_sRGB_INTENT_PERCEPTUAL);
  if (dpi > 0.0) {
    const auto perMetre = static_cast<png_uint_32>(std::clamp(dpi / 0.0254 + 0.5, 1.0, 1e9));
    png_set_pHYs(png, info, perMetre, perMetre, PNG_RESOLUTION_METER);
  }
  png_write_info(png, info);
  for (int y = 0; y < picture.height; ++y) {
    const uint8_t* in = picture.pixel(0, y);
    if (!isOpaque) {
      png_write_row(png, in);
      continue;
    }
    png_bytep out = row;
    for (int x = 0; x < picture.width; ++x, in += 4)
      for (int c = 0; c < 3; ++c) *out++ = in[c];
    png_write_row(png, row);
  }
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return true;
}

}  // namespace

bool PiPicture::isOpaque() const {
  for (std::size_t i = 3; i < rgba.size(); i += 4)
    if (rgba[i] != 255) return false;
  return true;
}

std::string PiPicture::writePng(const std::string& file, double dpi) const {
  PiWholeFile out(file);
  std::vector<uint8_t> row(3 * static_cast<std::size_t>(width));
  PngMessage message;
  if (out.stream() && !writeRows(out.stream(), *this, isOpaque(), dpi, row.data(), message)) return message.text;
  return out.close();
}

std::string PiPicture::encodePng(std::vector<uint8_t>& bytes, double dpi, bool hasOpacity) const {
  char* memory = nullptr;
  std::size_t size = 0;
  std::FILE* stream = open_memstream(&memory, &size);
  if (!stream) return "not enough memory for the picture";
  std::vector<uint8_t> row(3 * static_cast<std::size_t>(width));
  PngMessage message;
  const bool isWritten = writeRows(stream, *this, !hasOpacity && isOpaque(), dpi, row.data(), message);
  const bool isClosed = std::fclose(stream) == 0;
  if (isWritten && isClosed) bytes.assign(memory, memory + size);
  std::free(memory);
  return isWritten ? isClosed ? "" : "not enough memory for the picture" : message.text;
}
