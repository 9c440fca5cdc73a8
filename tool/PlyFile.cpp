#include "PlyFile.h"

#include <bit>
#include <charconv>
#include <cstring>
#include <limits>

#include <Ormelle/PoOrmelle.h>

namespace tool {

namespace {

// Gathers output into blocks; one call of the C library for each number would dominate the time.
class Block {
 public:
  explicit Block(std::FILE* stream) : m_stream(stream) { m_bytes.reserve(kSize + 128); }
  ~Block() { flush(); }
  Block(const Block&) = delete;
  Block& operator=(const Block&) = delete;

  void text(const char* characters) { m_bytes.insert(m_bytes.end(), characters, characters + std::strlen(characters)); }
  template <class Number>
  void number(Number value) {
    char digits[40];
    const auto result = std::to_chars(digits, digits + sizeof(digits), value);
    m_bytes.insert(m_bytes.end(), digits, result.ptr);
  }
  void byte(uint32_t value) { m_bytes.push_back(static_cast<char>(value & 255)); }
  void word(uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) byte(value >> shift);
  }
  void flushIfFull() {
    if (m_bytes.size() >= kSize) flush();
  }

 private:
  static constexpr std::size_t kSize = 1 << 16;

  void flush() {
    std::fwrite(m_bytes.data(), 1, m_bytes.size(), m_stream);
    m_bytes.clear();
  }

  std::FILE* m_stream;
  std::vector<char> m_bytes;
};

template <std::size_t count>
void writeIndices(Block& block, const std::array<uint32_t, count>& indices, bool isBinary) {
  for (std::size_t i = 0; i < count; ++i) {
    if (isBinary) {
      block.word(indices[i]);
    } else {
      if (i > 0) block.text(" ");
      block.number(indices[i]);
    }
  }
  if (!isBinary) block.text("\n");
}

}  // namespace

std::size_t PlyMesh::Hash::operator()(const Key& key) const {
  uint64_t hash = static_cast<uint64_t>(key.shape) << 32 | key.color;
  for (const uint32_t part : key.place) hash = (hash ^ hash >> 31) * 0x9E3779B97F4A7C15u + part;
  return static_cast<std::size_t>(hash ^ hash >> 32);
}

void PlyMesh::triangle(const std::array<Vertex, 3>& corners) {
  // One after the other: a corner's number is its place in the order of first use.
  const uint32_t a = vertexOf(corners[0]);
  const uint32_t b = vertexOf(corners[1]);
  const uint32_t c = vertexOf(corners[2]);
  m_triangles.push_back({a, b, c});
}

void PlyMesh::line(const std::array<Vertex, 2>& ends) {
  const uint32_t a = vertexOf(ends[0]);
  const uint32_t b = vertexOf(ends[1]);
  m_edges.push_back({a, b});
}

uint32_t PlyMesh::vertexOf(const Vertex& vertex) {
  if (vertex.coordinate < 0) {
    std::array<uint32_t, 3> place{};
    for (std::size_t axis = 0; axis < 3; ++axis)
      place[axis] = std::bit_cast<uint32_t>(static_cast<float>(vertex.position[axis]) + 0.0f);  // -0 is 0
    return storeOnce({m_shape, vertex.color, place}, vertex);
  }
  const auto coordinate = static_cast<std::size_t>(vertex.coordinate);
  if (coordinate >= m_firstUse.size()) m_firstUse.resize(std::max(coordinate + 1, 2 * m_firstUse.size()));
  Use& use = m_firstUse[coordinate];
  if (use.shape != m_shape) {
    use = {m_shape, store(vertex)};
    return use.vertex;
  }
  if (m_vertices[use.vertex].color == vertex.color) return use.vertex;
  // A second colour at one coordinate. The marks keep such keys apart from those of positions.
  constexpr uint32_t kMark = 0x7fc0abcd;
  return storeOnce({m_shape, vertex.color, {static_cast<uint32_t>(vertex.coordinate), kMark, kMark}}, vertex);
}

uint32_t PlyMesh::storeOnce(const Key& key, const Vertex& vertex) {
  const auto [entry, isNew] = m_others.try_emplace(key, 0);
  if (isNew) entry->second = store(vertex);
  return entry->second;
}

uint32_t PlyMesh::store(const Vertex& vertex) {
  m_vertices.push_back({{static_cast<float>(vertex.position[0]), static_cast<float>(vertex.position[1]),
                         static_cast<float>(vertex.position[2])},
                        vertex.color});
  return static_cast<uint32_t>(m_vertices.size() - 1);
}

bool PlyMesh::fits() const {
  constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<int32_t>::max());
  return m_vertices.size() <= kMost && m_triangles.size() <= kMost && m_edges.size() <= kMost;
}

void PlyMesh::write(std::FILE* stream, bool isBinary) const {
  Block block(stream);
  block.text("ply\nformat ");
  block.text(isBinary ? "binary_little_endian" : "ascii");
  block.text(" 1.0\ncomment made by ormelle ");
  block.text(PoOrmelle::getVersion());
  block.text("\nelement vertex ");
  block.number(m_vertices.size());
  block.text(
      "\nproperty float x\nproperty float y\nproperty float z\nproperty uchar red\nproperty uchar green\n"
      "property uchar blue\nproperty uchar alpha\nelement face ");
  block.number(m_triangles.size());
  block.text("\nproperty list uchar int vertex_indices\nelement edge ");
  block.number(m_edges.size());
  block.text("\nproperty int vertex1\nproperty int vertex2\nend_header\n");

  for (const StoredVertex& vertex : m_vertices) {
    for (const float coordinate : vertex.position) {
      if (isBinary) {
        block.word(std::bit_cast<uint32_t>(coordinate));
      } else {
        block.number(coordinate);
        block.text(" ");
      }
    }
    for (int shift = 24; shift >= 0; shift -= 8) {
      if (isBinary) {
        block.byte(vertex.color >> shift);
      } else {
        block.number(vertex.color >> shift & 255);
        block.text(shift > 0 ? " " : "\n");
      }
    }
    block.flushIfFull();
  }
  for (const auto& triangle : m_triangles) {
    if (isBinary)
      block.byte(3);
    else
      block.text("3 ");
    writeIndices(block, triangle, isBinary);
    block.flushIfFull();
  }
  for (const auto& edge : m_edges) {
    writeIndices(block, edge, isBinary);
    block.flushIfFull();
  }
}

}  // namespace tool
