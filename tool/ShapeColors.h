#ifndef ORMELLE_TOOL_SHAPECOLORS_H
#define ORMELLE_TOOL_SHAPECOLORS_H

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec2s.h>
#include <Inventor/SbVec4f.h>
#include <Inventor/elements/SoMaterialBindingElement.h>

#include <cstdint>
#include <memory>
#include <vector>

class SoCallbackAction;
class SoLazyElement;
class SoPrimitiveVertex;

namespace tool {

/// The texture that a shape is drawn with.
class ShapeTexture {
 public:
  /// Reads the traversal state of `action`.
  explicit ShapeTexture(SoCallbackAction* action);

  /// Whether there is one.
  explicit operator bool() const { return m_texels != nullptr; }
  int width() const { return m_size[0]; }
  int height() const { return m_size[1]; }
  /// Keeps the texels for use after the traversal.
  void own();
  /// The place in the texture, 0 to 1 and repeated beyond, of a vertex's texture coordinates.
  SbVec2f place(const SbVec4f& coordinates) const;
  /// A colour combined with the texture at a place, as the texture's model says. Without interpolation, or, if
  /// `isSmooth` and the scene doesn't want sharp texels, with it.
  uint32_t combined(uint32_t material, const SbVec2f& place, bool isSmooth) const;
  /// A texel, 0xrrggbbaa; row 0 is at the bottom.
  uint32_t texel(int column, int row) const;
  /// Whether the texture stands for the colours of vertices instead of multiplying them.
  bool isReplacing() const;
  bool isSharp() const { return m_isSharp; }
  bool repeatsS() const { return m_repeatS; }
  bool repeatsT() const { return m_repeatT; }

 private:
  uint32_t combined(uint32_t material, const float (&tex)[4]) const;

  const unsigned char* m_texels = nullptr;
  std::shared_ptr<const std::vector<unsigned char>> m_owned;
  SbVec2s m_size = SbVec2s(0, 0);
  int m_components = 0;
  int m_model = 0;
  bool m_repeatS = true;
  bool m_repeatT = true;
  bool m_isSharp = false;
  SbMatrix m_matrix;
  float m_blendColor[3] = {0.0f, 0.0f, 0.0f};
};

/// The colours of one shape before lighting: its materials, times its texture if it has one. A colour is packed as
/// 0xrrggbbaa.
///
/// A texture is looked up at the vertices, without interpolation: what it shows between them a colour of vertices
/// can't tell.
class ShapeColors {
 public:
  /// Reads the traversal state of `action`, in which a primitive of the shape is being told. Valid until the next
  /// shape.
  explicit ShapeColors(SoCallbackAction* action);

  /// Whether all vertices of a face or of a line have one colour.
  bool isPerPart() const { return m_isPerPart; }
  bool isPerFace() const { return m_isPerFace; }
  uint32_t colorOf(const SoPrimitiveVertex& vertex, int materialIndex) const;
  /// The colour without the texture.
  uint32_t materialOf(int index) const;

 private:
  const SoLazyElement* m_materials;
  bool m_isPerPart = false;
  bool m_isPerFace = false;
  ShapeTexture m_texture;
};

}  // namespace tool

#endif
