#ifndef ORMELLE_TOOL_OUT_SCENEMODEL_H
#define ORMELLE_TOOL_OUT_SCENEMODEL_H

#include <Inventor/SbMatrix.h>

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "SceneWalk.h"
#include "ShapeColors.h"
#include "TextNode.h"

namespace tool {

/// How a part of a model is drawn; what has one look is one part.
struct ModelLook {
  enum Kind { TRIANGLES, LINES, POINTS } kind = TRIANGLES;
  bool isLit = false;
  bool isTwoSided = true;
  bool isTransparent = false;
  uint32_t alpha = 255;     ///< that of the first vertex, if parts go by it
  uint32_t emissive = 0;    ///< 0xrrggbb
  uint32_t specular = 0;    ///< 0xrrggbb
  uint32_t shininess = 51;  ///< 0 to 255
  int texture = -1;         ///< the index of its texture
  // clang-tidy takes the 0 that the compiler compares with for a pointer.
  auto operator<=>(const ModelLook&) const = default;  // NOLINT(modernize-use-nullptr)
};

struct ModelVertex {
  std::array<double, 3> position{};  ///< in the world
  std::array<float, 3> normal{};     ///< of length 1; 0 in lines and points
  std::array<float, 2> place{};      ///< in the texture
  uint32_t color = 0;                ///< 0xrrggbbaa before lighting, without the texture
};

struct ModelPart {
  ModelLook look;
  std::vector<ModelVertex> vertices;
  std::vector<uint32_t>
      indices;  ///< three a triangle, turning left as seen from where the normals point; two a segment
};

struct ModelText {
  TextNode node;
  uint32_t color = 0;
  bool isLit = false;
  SbMatrix toWorld;
};

/// Collects what a scene shows as geometry in the world with its colours, for formats of models.
class SceneModel : public SceneVisitor {
 public:
  /// With `goesByAlpha`, a part has one opacity, for formats whose vertices have none.
  explicit SceneModel(bool goesByAlpha) : m_goesByAlpha(goesByAlpha) {}

  void beginShape(SoCallbackAction& action) override;
  void triangle(const std::array<Vertex, 3>& corners) override;
  void line(const std::array<Vertex, 2>& ends) override;
  void point(const Vertex& vertex) override;
  void text(SoCallbackAction& action) override;

  /// None is empty.
  const std::vector<ModelPart>& parts() const { return m_parts; }
  const std::vector<ShapeTexture>& textures() const { return m_textures; }
  const std::vector<ModelText>& texts() const { return m_texts; }
  /// A point to write the positions relative to: the middle of the model if it lies far off, else 0.
  std::array<double, 3> origin() const;

  /// What such formats don't carry.
  std::string notes() const;

 private:
  struct Key {
    ModelVertex vertex;
    std::size_t part;
    bool operator==(const Key& other) const;
  };
  struct Hash {
    std::size_t operator()(const Key& key) const;
  };

  std::size_t partOf(ModelLook look);
  uint32_t indexOf(std::size_t part, const ModelVertex& vertex);
  ModelVertex vertexOf(const Vertex& vertex) const;

  bool m_goesByAlpha;
  std::vector<ModelPart> m_parts;
  std::map<ModelLook, std::size_t> m_partByLook;
  std::vector<ShapeTexture> m_textures;
  std::vector<ModelText> m_texts;
  std::unordered_map<Key, uint32_t, Hash> m_known;  // vertices of the current shape

  // The state of the shape.
  ModelLook m_look;
  bool m_isLeftOut = false;
  bool m_isClockwise = false;
  bool m_isSolid = false;
  SbMatrix m_normals;
  std::optional<ShapeColors> m_colors;
  std::optional<ShapeTexture> m_texture;

  std::size_t m_overlays = 0;
  std::size_t m_screenTexts = 0;
  std::size_t m_notFinite = 0;
  bool m_hasLineStyles = false;
  bool m_hasOddTextures = false;
};

}  // namespace tool

#endif
