#include "graph/toolkit/offscreen/PiAnimatedPng.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

using Bytes = std::vector<uint8_t>;

// The check sum of chunks: the CRC of ISO 3309.
uint32_t checkSum(const Bytes& bytes, std::size_t start) {
  uint32_t sum = 0xffffffffu;
  for (std::size_t i = start; i < bytes.size(); ++i) {
    sum ^= bytes[i];
    for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ ((sum & 1) ? 0xedb88320u : 0u);
  }
  return ~sum;
}

void putWord(Bytes& bytes, uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<uint8_t>(value >> shift & 255));
}

uint32_t wordAt(const Bytes& bytes, std::size_t at) {
  return static_cast<uint32_t>(bytes[at]) << 24 | static_cast<uint32_t>(bytes[at + 1]) << 16 |
         static_cast<uint32_t>(bytes[at + 2]) << 8 | bytes[at + 3];
}

void putChunk(Bytes& out, const char* type, const Bytes& data) {
  putWord(out, static_cast<uint32_t>(data.size()));
  const std::size_t start = out.size();
  out.insert(out.end(), type, type + 4);
  out.insert(out.end(), data.begin(), data.end());
  putWord(out, checkSum(out, start));
}

}  // namespace

std::string PiAnimatedPng::add(const PiPicture& picture) {
  Bytes png;
  std::string problem = picture.encodePng(png, m_dpi, m_hasOpacity);
  if (!problem.empty()) return problem;
  Bytes head(png.begin(), png.begin() + 8);
  Bytes data;
  for (std::size_t at = 8; at + 12 <= png.size();) {
    const std::size_t length = wordAt(png, at);
    const auto start = png.begin() + static_cast<std::ptrdiff_t>(at);
    const auto end = start + static_cast<std::ptrdiff_t>(length + 12);
    if (std::memcmp(&png[at + 4], "IDAT", 4) == 0)
      data.insert(data.end(), start + 8, end - 4);
    else if (std::memcmp(&png[at + 4], "IEND", 4) != 0)
      head.insert(head.end(), start, end);
    at += length + 12;
  }
  if (m_data.empty()) {
    m_head = std::move(head);
    m_width = picture.width;
    m_height = picture.height;
  }
  m_data.push_back(std::move(data));
  return "";
}

void PiAnimatedPng::write(std::FILE* stream) const {
  const auto send = [stream](const Bytes& bytes) { std::fwrite(bytes.data(), 1, bytes.size(), stream); };
  Bytes out = m_head;
  Bytes control;
  putWord(control, static_cast<uint32_t>(m_data.size()));
  putWord(control, 0);  // played for ever
  putChunk(out, "acTL", control);
  uint32_t number = 0;
  for (std::size_t i = 0; i < m_data.size(); ++i) {
    Bytes frame;
    putWord(frame, number++);
    putWord(frame, static_cast<uint32_t>(m_width));
    putWord(frame, static_cast<uint32_t>(m_height));
    putWord(frame, 0);
    putWord(frame, 0);
    const auto milliseconds = static_cast<uint32_t>(std::clamp(1000.0 / m_framesPerSecond + 0.5, 1.0, 65535.0));
    for (const uint32_t value : {milliseconds, 1000u}) {
      frame.push_back(static_cast<uint8_t>(value >> 8));
      frame.push_back(static_cast<uint8_t>(value & 255));
    }
    frame.push_back(0);
    frame.push_back(0);
    putChunk(out, "fcTL", frame);
    if (i == 0) {
      putChunk(out, "IDAT", m_data[i]);
    } else {
      Bytes data;
      putWord(data, number++);
      data.insert(data.end(), m_data[i].begin(), m_data[i].end());
      putChunk(out, "fdAT", data);
    }
    send(out);
    out.clear();
  }
  putChunk(out, "IEND", {});
  send(out);
}
