#ifndef ORMELLE_TOOL_PLYFILE_H
#define ORMELLE_TOOL_PLYFILE_H

#include <array>
#include <cstdint>
#include <cstdio>
#include <unordered_map>
#include <vector>

#include "SceneWalk.h"

namespace tool {

/// Collects what a scene shows as a mesh of coloured vertices, triangles and edges, and writes it in the PLY format.
///
/// Within one shape, vertices of the same coordinate and the same colour are one vertex; shapes that have no
/// coordinates of their own (cubes, spheres) share by position instead. Points are vertices that nothing refers to.
class PlyMesh : public SceneVisitor {
 public:
  void beginShape(SoCallbackAction& /*action*/) override { ++m_shape; }
  void triangle(const std::array<Vertex, 3>& corners) override;
  void line(const std::array<Vertex, 2>& ends) override;
  void point(const Vertex& vertex) override { vertexOf(vertex); }

  /// Whether the counts fit the integers of the format.
  bool fits() const;
  /// Writes the whole file; a failure shows in the stream's error flag.
  void write(std::FILE* stream, bool isBinary) const;

 private:
  struct StoredVertex {
    std::array<float, 3> position;
    uint32_t color;
  };
  struct Use {
    uint32_t shape = 0;
    uint32_t vertex = 0;
  };
  struct Key {
    uint32_t shape;
    uint32_t color;
    std::array<uint32_t, 3> place;  // the coordinate's index, or the bits of a position
    bool operator==(const Key&) const = default;
  };
  struct Hash {
    std::size_t operator()(const Key& key) const;
  };

  uint32_t vertexOf(const Vertex& vertex);
  uint32_t store(const Vertex& vertex);
  uint32_t storeOnce(const Key& key, const Vertex& vertex);

  uint32_t m_shape = 0;
  std::vector<StoredVertex> m_vertices;
  std::vector<std::array<uint32_t, 3>> m_triangles;
  std::vector<std::array<uint32_t, 2>> m_edges;
  std::vector<Use> m_firstUse;  // by coordinate: its first vertex in the latest shape that used it
  std::unordered_map<Key, uint32_t, Hash> m_others;
};

}  // namespace tool

#endif
