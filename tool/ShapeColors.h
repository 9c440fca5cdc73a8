#ifndef ORMELLE_TOOL_SHAPECOLORS_H
#define ORMELLE_TOOL_SHAPECOLORS_H

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec2s.h>
#include <Inventor/elements/SoMaterialBindingElement.h>

#include <cstdint>

class SoCallbackAction;
class SoLazyElement;
class SoPrimitiveVertex;

namespace tool {

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

 private:
  struct Texture {
    const unsigned char* texels = nullptr;
    SbVec2s size = SbVec2s(0, 0);
    int components = 0;
    int model = 0;
    bool repeatS = true;
    bool repeatT = true;
    SbMatrix matrix;
    float blendColor[3] = {0.0f, 0.0f, 0.0f};
  };

  uint32_t materialOf(int index) const;
  uint32_t textured(uint32_t material, const SoPrimitiveVertex& vertex) const;

  const SoLazyElement* m_materials;
  bool m_isPerPart = false;
  bool m_isPerFace = false;
  Texture m_texture;
};

}  // namespace tool

#endif
